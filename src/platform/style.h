#pragma once

#include <QProxyStyle>

namespace platform {

// Draws a line of one pixel just inside a rectangle. At a scale like 1.5 a pen of one pixel may fall between two rows
// of the screen's pixels; this never does.
void DrawEdge(QPainter& painter, const QRect& rectangle, const QColor& colour);

// Fusion, but with a frame's caption inside its upper border, so that the frame's inside is free for its controls, and
// with frames that are seen at every scale and no pictures on the buttons of boxes.
class Style : public QProxyStyle {
public:
    Style();

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returnData) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;
};

}  // namespace platform
