#pragma once

#include <QProxyStyle>

namespace platform {

// Fusion, but with a frame's caption inside its upper border, so that the frame's inside is free for its controls, and
// with no pictures on the buttons of boxes.
class Style : public QProxyStyle {
public:
    Style();

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returnData) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;
};

}  // namespace platform
