#include "platform/style.h"

#include <QPainter>
#include <QStyleFactory>
#include <QStyleOptionGroupBox>

namespace platform {

void DrawEdge(QPainter& painter, const QRect& rectangle, const QColor& colour) {
    for (const QRect& line : QRegion(rectangle) - rectangle.adjusted(1, 1, -1, -1)) painter.fillRect(line, colour);
}

Style::Style() : QProxyStyle(QStyleFactory::create("Fusion")) {}

int Style::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                     QStyleHintReturn* returnData) const {
    if (hint == SH_DialogButtonBox_ButtonsHaveIcons) return 0;
    return QProxyStyle::styleHint(hint, option, widget, returnData);
}

void Style::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                          const QWidget* widget) const {
    constexpr int darker = 130;  // than the window's ground, in percent
    if (element == PE_Frame)
        DrawEdge(*painter, option->rect, option->palette.window().color().darker(darker));
    else
        QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void Style::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                               const QWidget* widget) const {
    const auto* frame = qstyleoption_cast<const QStyleOptionGroupBox*>(option);
    if (control != CC_GroupBox || frame == nullptr) {
        QProxyStyle::drawComplexControl(control, option, painter, widget);
        return;
    }
    constexpr int indent = 8;
    constexpr int gap = 3;  // between the caption and the border on either side
    const int height = frame->fontMetrics.height();
    const QRect caption(indent, 0, frame->fontMetrics.horizontalAdvance(frame->text) + 2 * gap, height);
    DrawEdge(*painter, frame->rect.adjusted(0, height / 2, 0, 0), frame->palette.color(QPalette::Mid));
    painter->fillRect(caption, frame->palette.window());
    // On a scaled screen a letter may reach out of its font's height.
    drawItemText(painter, caption, Qt::AlignCenter | Qt::TextDontClip, frame->palette,
                 widget == nullptr || widget->isEnabled(), frame->text, QPalette::WindowText);
}

}  // namespace platform
