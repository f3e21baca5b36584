#pragma once

#include <QProxyStyle>

namespace platform {

// Fusion, but with a frame's caption inside its upper border, so that the frame's inside is free for its controls.
class Style : public QProxyStyle {
public:
    Style();

    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;
};

}  // namespace platform
