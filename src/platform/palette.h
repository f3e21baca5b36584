#pragma once

#include <QApplication>

namespace platform {

// Fixes style and colours, so that the program looks the same under every desktop theme, a dark one included.
void ApplyFixedAppearance(QApplication& application);

}  // namespace platform
