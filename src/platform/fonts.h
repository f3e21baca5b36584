#pragma once

#include <QFont>

namespace platform {

// Fonts by their size in points. Sizes are set in pixels at the scale of the layout, so that text and layout grow
// together. Each family has substitutes of like width for systems that lack it.
QFont SansSerif(double points, QFont::Weight weight = QFont::Normal);   // MS Sans Serif
QFont CourierNew(double points, QFont::Weight weight = QFont::Normal);  // fixed pitch
QFont Verdana(double points, QFont::Weight weight = QFont::Normal);

// Bold and wide, for a name that is to fill a width in pixels; where the system's face is wider it is condensed.
QFont Display(double points, const QString& name, int width);

// The font of the window and of all its controls unless said otherwise: bold, 8.25 points.
QFont WindowFont();

// The font of message and input boxes: 9 points, or as large as the desktop's own letters where those are larger, up to
// 24 points.
QFont BoxFont();

}  // namespace platform
