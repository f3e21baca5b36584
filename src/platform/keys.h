#pragma once

#include <QKeyEvent>

namespace platform {

// Whether a key press stands for a character: letters, digits and signs, and also Backspace, Tab, Enter, Esc and the
// control characters. Delete, the arrows and the function keys do not.
inline bool IsCharacterKey(const QKeyEvent& event) {
    return !event.text().isEmpty() && event.key() != Qt::Key_Delete;
}

}  // namespace platform
