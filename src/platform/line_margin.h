#pragma once

#include <QWidget>

namespace platform {

class ProgramText;

// The strip at the left edge of the program text, with a dot at each marked line. A click there marks a line, or takes
// its mark away.
class LineMargin : public QWidget {
    Q_OBJECT

public:
    static constexpr int Width = 14;

    explicit LineMargin(ProgramText& text);

    // To be called when the text has scrolled by so many pixels, or is to be painted anew in a part of its viewport.
    void Follow(const QRect& part, int scrolled);

    // Shows the marks as they are now, and tells their lines to those who hear them.
    void ShowMarks();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override { event->accept(); }
    void wheelEvent(QWheelEvent* event) override;

private:
    ProgramText& text_;
};

}  // namespace platform
