#pragma once

#include <QKeyEvent>

namespace platform {

// Whether a key press stands for a character: letters, digits and signs, and also Backspace, Tab, Enter, Esc and the
// control characters. Delete, the arrows and the function keys do not.
inline bool IsCharacterKey(const QKeyEvent& event) {
    return !event.text().isEmpty() && event.key() != Qt::Key_Delete;
}

// Whether a key presses the button that has the focus.
inline bool PressesButton(const QKeyEvent& event) {
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter || event.key() == Qt::Key_Space;
}

// Whether a key press is Alt with a letter, a digit or a sign. AltGr, which types characters of its own, is not Alt;
// some systems report it as Alt with Ctrl.
inline bool IsAltCharacter(const QKeyEvent& event) {
    const bool alt = (event.modifiers() & (Qt::AltModifier | Qt::ControlModifier)) == Qt::AltModifier;
    return alt && !event.text().isEmpty() && event.text().front().isPrint();
}

}  // namespace platform
