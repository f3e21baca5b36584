#include "platform/input_guard.h"

#include <QApplication>
#include <QMenu>
#include <QMouseEvent>
#include <QStyleHints>

#include "platform/keys.h"

namespace platform {

namespace {

bool IsBoxOrMenu(const QWidget& widget) {
    return widget.isWindow() && (widget.isModal() || qobject_cast<const QMenu*>(&widget) != nullptr);
}

}  // namespace

// Whether it was in another window, which is closed since, and a moment ago.
bool InputGuard::Press::WasJustIn(const QWidget* other) const {
    const bool isClosed = Window == nullptr || !Window->isVisible();
    return Since.isValid() && Window != other && isClosed && !Since.hasExpired(QApplication::doubleClickInterval());
}

// A press of a key comes twice, first as the question whether it is a shortcut. The answer that it is not keeps it from
// being one.
bool InputGuard::eventFilter(QObject* watched, QEvent* event) {
    if (!watched->isWidgetType()) return false;
    auto& widget = static_cast<QWidget&>(*watched);
    bool isMeantForAnother = false;
    switch (event->type()) {
        case QEvent::Hide:
            if (IsBoxOrMenu(widget))
                for (Press& press : presses_) press.IsOver = true;
            return false;
        case QEvent::ShortcutOverride:
        case QEvent::KeyPress:
            isMeantForAnother = IsMeantForAnother(static_cast<QKeyEvent&>(*event), widget.window());
            break;
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
            isMeantForAnother = IsMeantForAnother(static_cast<QMouseEvent&>(*event), widget.window());
            break;
        default: return false;
    }
    if (isMeantForAnother) event->accept();
    return isMeantForAnother;
}

// Notes a press that is not.
bool InputGuard::IsMeantForAnother(const QKeyEvent& key, QWidget* window) {
    // What stands on the key may change with Shift while it is held; where it stands does not.
    const quint32 place = key.nativeScanCode() != 0 ? key.nativeScanCode() : static_cast<quint32>(key.key());
    const auto latest = presses_.constFind(place);
    const bool isKnown = latest != presses_.cend();
    if (key.isAutoRepeat()) {
        const bool isCommand = (key.modifiers() & Qt::AltModifier) != 0;
        return isCommand || !isKnown || latest->IsOver || latest->Window != window;
    }
    if (isKnown && place == latest_ && PressesButton(key) && latest->WasJustIn(window)) return true;
    Press press{window, {}};
    press.Since.start();
    presses_.insert(place, press);
    latest_ = place;
    return false;
}

// A press outside of an open menu, which gets it first, is not in its window, and comes again to the one under it.
bool InputGuard::IsMeantForAnother(const QMouseEvent& press, QWidget* window) {
    const QPoint place = press.globalPosition().toPoint();
    if (!window->geometry().contains(place)) return false;
    const int way = (place - clickedAt_).manhattanLength();
    if (click_.WasJustIn(window) && way <= QApplication::styleHints()->mouseDoubleClickDistance()) return true;
    click_ = {window, {}};
    click_.Since.start();
    clickedAt_ = place;
    return false;
}

}  // namespace platform
