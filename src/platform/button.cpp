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
    if (!hasAccessKey) setShortcut({});
}

void Button::GiveUpAccessKey() {
    hasAccessKey = false;
    setShortcut({});
}

bool Button::event(QEvent* event) {
    if (event->type() == QEvent::Shortcut && !static_cast<QShortcutEvent*>(event)->isAmbiguous())
        setFocus(Qt::ShortcutFocusReason);
    return QPushButton::event(event);
}

}  // namespace platform
