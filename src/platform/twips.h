#pragma once

#include <QRect>
#include <QWidget>

namespace platform {

// Layouts are measured in twips; 15 twips are one device-independent pixel.
constexpr int Pixels(int twips) {
    return (twips + 7) / 15;
}

// Gives a control its fixed place inside its parent, in twips.
inline void Place(QWidget& control, int left, int top, int width, int height) {
    control.setGeometry(Pixels(left), Pixels(top), Pixels(width), Pixels(height));
}

}  // namespace platform
