#pragma once

#include <QKeyEvent>

namespace platform {

// Whether a key press stands for a character: letters, digits and signs, and also Backspace, Tab, Enter, Esc and the
// control characters. Delete, the arrows and the function keys do not.
inline bool IsCharacterKey(const QKeyEvent& event) {
    return !event.text().isEmpty() && event.key() != Qt::Key_Delete;
}

// Whether Alt is held, which makes of a letter an access key. AltGr, by which some keyboards type signs, is not Alt; it
// can come as Ctrl and Alt together.
inline bool IsAltHeld(const QKeyEvent& event) {
    return event.modifiers().testFlag(Qt::AltModifier) &&
           !event.modifiers().testAnyFlags(Qt::ControlModifier | Qt::GroupSwitchModifier);
}

}  // namespace platform
