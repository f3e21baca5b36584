#include "platform/text_box.h"

#include <QFocusEvent>
#include <QKeyEvent>

namespace platform {

TextBox::TextBox(const QString& name, QWidget* parent) : QLineEdit(parent) {
    setObjectName(name);
}

void TextBox::keyPressEvent(QKeyEvent* event) {
    const QString text = event->text();
    if (acceptsKey && !text.isEmpty() && event->key() != Qt::Key_Delete && !acceptsKey(text.front().unicode())) {
        event->accept();
        return;
    }
    QLineEdit::keyPressEvent(event);
}

void TextBox::keyReleaseEvent(QKeyEvent* event) {
    QLineEdit::keyReleaseEvent(event);
    if (!event->isAutoRepeat()) emit KeyReleased(event->key());
}

void TextBox::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    if (IsLeavingControl(event->reason())) emit LostFocus();
}

bool IsLeavingControl(Qt::FocusReason reason) {
    return reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason && reason != Qt::MenuBarFocusReason;
}

}  // namespace platform
