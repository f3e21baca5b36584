#pragma once

#include <QRect>
#include <QString>

class QWidget;

namespace platform {

// Shows a tooltip of plain text, below the place, or above it where the screen ends, but not over it. The place is in
// pixels of the screen.
void ShowTip(const QRect& place, const QString& text, QWidget& control);

// Hides the tooltip that is shown, if any: what it says may no longer be true.
void HideTip();

}  // namespace platform
