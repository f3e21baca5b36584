#include "platform/button.h"

#include <QKeyEvent>
#include <QShortcutEvent>

namespace platform {

Button::Button(const QString& name, const QString& caption, QWidget* parent) : QPushButton(caption, parent) {
    setObjectName(name);
    setAccessibleName(QString(caption).remove('&'));
    setFocusPolicy(Qt::StrongFocus);
    setAutoDefault(false);
}

bool Button::event(QEvent* event) {
    if (event->type() == QEvent::Shortcut && !static_cast<QShortcutEvent*>(event)->isAmbiguous())
        setFocus(Qt::ShortcutFocusReason);
    return QPushButton::event(event);
}

}  // namespace platform
