#pragma once

#include <QPushButton>

namespace platform {

// A button that takes the focus before its command runs, by mouse and by access key alike, so that a text box with
// the focus has given up its text by then; but for one whose focus policy keeps it from that. Enter presses it as a
// blank does.
class Button : public QPushButton {
    Q_OBJECT

public:
    // The name becomes the object name; "&" in the caption marks the access key.
    Button(const QString& name, const QString& caption, QWidget* parent);

    void SetCaption(const QString& caption);

    // From now on the letter marked in the caption presses nothing, because it opens a menu.
    void GiveUpAccessKey();

    // Whether the second click of a double click presses it too. It does unless this says that it does not.
    void SetCountsDoubleClicks(bool counts) { countsDoubleClicks_ = counts; }

protected:
    bool event(QEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    bool countsDoubleClicks_ = true;
    bool hasAccessKey_ = true;
};

}  // namespace platform
