#include "platform/button.h"

#include <QKeyEvent>
#include <QShortcutEvent>

namespace platform {

namespace {

// Qt leaves Enter to the default button of a dialog. Like a blank, it is to press a button when it is released: a held
// key must not act on whatever control has the focus by then.
QKeyEvent WithBlankForEnter(const QKeyEvent& event) {
    const bool isEnter = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
    return QKeyEvent(event.type(), isEnter ? Qt::Key_Space : event.key(), event.modifiers(), event.text(),
                     event.isAutoRepeat());
}

}  // namespace

Button::Button(const QString& name, const QString& caption, QWidget* parent) : QPushButton(parent) {
    setObjectName(name);
    SetCaption(caption);
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
    if (event->type() == QEvent::Shortcut && !static_cast<QShortcutEvent*>(event)->isAmbiguous()) {
        // Qt would press it a tenth of a second later, whatever is open by then, and the next keys would come before.
        setFocus(Qt::ShortcutFocusReason);
        click();
        return true;
    }
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease) return QPushButton::event(event);
    QKeyEvent key = WithBlankForEnter(static_cast<QKeyEvent&>(*event));
    const bool isHandled = QPushButton::event(&key);
    event->setAccepted(key.isAccepted());
    return isHandled;
}

void Button::mouseDoubleClickEvent(QMouseEvent* event) {
    if (countsDoubleClicks_) QPushButton::mouseDoubleClickEvent(event);
}

}  // namespace platform
