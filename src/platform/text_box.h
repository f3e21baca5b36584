#pragma once

#include <QLineEdit>
#include <functional>

namespace platform {

// A single-line text box whose key presses can be filtered and which signals that the focus has gone to another control
// of its window. Opening a menu and switching to another window do not take the focus away. A character pressed with
// Alt is left to the window, whose access key it may be, and never typed.
class TextBox : public QLineEdit {
    Q_OBJECT

public:
    TextBox(const QString& name, QWidget* parent);
    ~TextBox() override;

    // Asked before a key press puts a character into the box, with Backspace (8), Enter (13), Esc (27) and the other
    // control characters included; false drops the character. Keys without a character (Delete, arrows) pass by.
    void SetKeyFilter(std::function<bool(int character)> filter) { acceptsKey_ = std::move(filter); }

    // A click that brings the focus selects the whole text, as Tab does, and not a place in it; and text that is
    // dropped brings the focus and takes the place of the whole text, as if its characters were typed. Files are not
    // dropped here.
    void SelectAllWhenClicked() { selectsAll_ = true; }

signals:
    void LostFocus();
    void KeyReleased(int key);

protected:
    // Selects the whole text, until the mouse button that is down has come up.
    void KeepAllSelected();

    // The standard menu, but what is cut or copied by it can be pasted in the program.
    QMenu* MakeContextMenu();

    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void FollowFocus(const QWidget* focused);

    std::function<bool(int character)> acceptsKey_;
    bool selectsAll_ = false;
    bool keepsAllSelected_ = false;
    bool holdsFocus_ = false;  // of all the controls of its window it had the focus last
};

}  // namespace platform
