#include "platform/fonts.h"

#include <QFontDatabase>
#include <QFontMetrics>
#include <QStringList>
#include <QtMath>
#include <algorithm>

namespace platform {

namespace {

constexpr double pixelsPerPoint = 96.0 / 72.0;

QFont FontOf(const QStringList& families, QFont::StyleHint hint, double points, QFont::Weight weight) {
    QFont font;
    font.setFamilies(families);
    font.setStyleHint(hint);
    font.setPixelSize(qRound(points * pixelsPerPoint));
    font.setWeight(weight);
    return font;
}

}  // namespace

QFont SansSerif(double points, QFont::Weight weight) {
    // On Windows the first of these two is a raster font in a few sizes, which are not those of a scaled screen.
    return FontOf({"Microsoft Sans Serif", "MS Sans Serif", "Liberation Sans", "Arial", "Helvetica"}, QFont::SansSerif,
                  points, weight);
}

QFont CourierNew(double points, QFont::Weight weight) {
    QFont font = FontOf({"Courier New", "Liberation Mono", "Cousine", "Courier"}, QFont::TypeWriter, points, weight);
    font.setFixedPitch(true);
    return font;
}

QFont Verdana(double points, QFont::Weight weight) {
    return FontOf({"Verdana", "DejaVu Sans", "Bitstream Vera Sans"}, QFont::SansSerif, points, weight);
}

QFont Display(double points, const QString& name, int width) {
    QFont font = FontOf({"Decollage", "DejaVu Sans", "Verdana"}, QFont::Decorative, points, QFont::Bold);
    const int natural = QFontMetrics(font).horizontalAdvance(name);
    if (natural > width) font.setStretch(100 * width / natural);
    // What draws letters on scaled screens on Windows moves them together, but leaves them as wide as they were.
    font.setHintingPreference(QFont::PreferFullHinting);
    return font;
}

QFont WindowFont() {
    return SansSerif(8.25, QFont::Bold);
}

QFont BoxFont() {
    constexpr double smallest = 9;
    constexpr double largest = 24;
    const QFont desktop = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
    const double points = desktop.pixelSize() > 0 ? desktop.pixelSize() / pixelsPerPoint : desktop.pointSizeF();
    return SansSerif(std::clamp(points, smallest, largest));
}

}  // namespace platform
