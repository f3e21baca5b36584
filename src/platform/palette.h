#pragma once

#include <QApplication>
#include <QColor>
#include <QPalette>

namespace platform {

// Text that is set apart from the black text around it, on any of the light grounds of boxes and cells: what has just
// changed, and what comes next, which has the colour of the selected line. Both keep a contrast of 4.5 to 1 where they
// stand, and differ from black for people who see no red, no green or no blue.
inline constexpr QColor ChangedText(160, 0, 190);
inline constexpr QColor NextText(49, 106, 197);

// A line that is marked: its ground, on which the colours of the program text keep their contrast, and the dot beside
// it.
inline constexpr QColor MarkGround(255, 228, 222);
inline constexpr QColor MarkDot(200, 30, 30);

// The grounds of notes beside the lines of the program, under black text.
inline constexpr QColor GoodNoteGround(222, 242, 222);
inline constexpr QColor NeutralNoteGround(232, 232, 232);
inline constexpr QColor BadNoteGround(255, 240, 190);

// Gives a control a colour of its own. One that has it already is not painted again.
void SetColour(QWidget& control, QPalette::ColorRole role, const QColor& colour);

// Fixes style and colours, so that the program looks the same under every desktop theme, a dark one included.
void ApplyFixedAppearance(QApplication& application);

}  // namespace platform
