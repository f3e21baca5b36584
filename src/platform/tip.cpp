#include "platform/tip.h"

#include <QApplication>
#include <QFontMetrics>
#include <QScreen>
#include <QToolTip>
#include <QWidget>

namespace platform {

// The words of a program may look like markup. Qt shows a tip some pixels below and to the right of the point that it
// is given, and somewhere else where that does not fit on the screen.
void ShowTip(const QRect& place, const QString& text, QWidget& control) {
    constexpr int offset = 21;
    constexpr int margins = 12;
    const QString asItIs = Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
    const int height = QFontMetrics(QToolTip::font()).size(0, text).height() + margins;
    const bool fitsBelow = place.bottom() + height <= control.screen()->availableGeometry().bottom();
    const int top = fitsBelow ? place.bottom() + 1 : place.top() - height;
    QToolTip::showText({place.left(), top - offset + 4}, asItIs, &control);
    // Qt leaves room for the pointer, which has another size on every desktop.
    for (QWidget* tip : QApplication::topLevelWidgets())
        if (tip->inherits("QTipLabel") && tip->geometry().intersects(place)) tip->move(tip->x(), top);
}

void HideTip() {
    if (QToolTip::isVisible()) QToolTip::hideText();
}

}  // namespace platform
