#include "platform/button.h"

#include <QKeyEvent>
#include <QShortcutEvent>

namespace platform {

Button::Button(const QString& name, const QString& caption, QWidget* parent) : QPushButton(parent) {
    setObjectName(name);
    SetCaption(caption);
    setFocusPolicy(Qt::StrongFocus);
    setAutoDefault(false);
}

void Button::SetCaption(const QString& caption) {
    setText(caption);
    setAccessibleName(QString(caption).remove('&'));
    if (!hasAccessKey_) setShortcut({});
}

void Button::GiveUpAccessKey() {
    hasAccessKey_ = false;
    setShortcut({});
}

bool Button::event(QEvent* event) {
    if (event->type() == QEvent::Shortcut && !static_cast<QShortcutEvent*>(event)->isAmbiguous())
        setFocus(Qt::ShortcutFocusReason);
    return QPushButton::event(event);
}

// Qt leaves Enter to the default button of a dialog.
void Button::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        click();
    else
        QPushButton::keyPressEvent(event);
}

}  // namespace platform
