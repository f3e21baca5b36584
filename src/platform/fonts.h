#pragma once

#include <QFont>

namespace platform {

enum class Weight { Normal, Bold };

// Fonts by their size in points. Sizes are set in pixels at the scale of the layout, so that text and layout grow
// together. Each family has metric-compatible substitutes for systems that lack it.
QFont SansSerif(double points, Weight weight = Weight::Normal);   // MS Sans Serif
QFont CourierNew(double points, Weight weight = Weight::Normal);  // fixed pitch
QFont Verdana(double points, Weight weight = Weight::Normal);
QFont Display(double points);  // bold and wide, for the product name

// The font of the window and of all its controls unless said otherwise: bold, 8.25 points.
QFont WindowFont();

}  // namespace platform
