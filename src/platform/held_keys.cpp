#include "platform/held_keys.h"

#include <QApplication>
#include <QKeyEvent>

namespace platform {

namespace {

bool PressesAButton(int key) {
    return key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space;
}

}  // namespace

// A press comes twice, first as the question whether it is a shortcut. The answer that it is not keeps it from being
// one.
bool HeldKeys::eventFilter(QObject* watched, QEvent* event) {
    const bool isPress = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
    if (!isPress || !watched->isWidgetType()) return false;
    if (!IsMeantForAnother(static_cast<QKeyEvent&>(*event), static_cast<QWidget*>(watched)->window())) return false;
    event->accept();
    return true;
}

// Notes a press that is not.
bool HeldKeys::IsMeantForAnother(const QKeyEvent& key, QWidget* window) {
    // What stands on the key may change with Shift while it is held; where it stands does not.
    const quint32 place = key.nativeScanCode() != 0 ? key.nativeScanCode() : static_cast<quint32>(key.key());
    const auto latest = presses_.constFind(place);
    const bool wasElsewhere = latest == presses_.cend() || latest->Window != window;
    if (key.isAutoRepeat()) return wasElsewhere;

    const bool isSecondOfTwo = latest != presses_.cend() && place == latest_ && wasElsewhere &&
                               PressesAButton(key.key()) &&
                               (latest->Window == nullptr || !latest->Window->isVisible()) &&
                               !latest->Since.hasExpired(QApplication::doubleClickInterval());
    if (isSecondOfTwo) return true;
    Press press{window, {}};
    press.Since.start();
    presses_.insert(place, press);
    latest_ = place;
    return false;
}

}  // namespace platform
