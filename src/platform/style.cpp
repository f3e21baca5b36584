#include "platform/style.h"

#include <QPainter>
#include <QStyleFactory>
#include <QStyleOptionGroupBox>

namespace platform {

Style::Style() : QProxyStyle(QStyleFactory::create("Fusion")) {}

int Style::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                     QStyleHintReturn* returnData) const {
    if (hint == SH_DialogButtonBox_ButtonsHaveIcons) return 0;
    return QProxyStyle::styleHint(hint, option, widget, returnData);
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
    painter->save();
    painter->setPen(frame->palette.color(QPalette::Mid));
    constexpr double halfPen = 0.5;
    painter->drawRect(QRectF(frame->rect).adjusted(halfPen, height / 2 + halfPen, -halfPen, -halfPen));
    painter->fillRect(caption, frame->palette.window());
    painter->restore();
    drawItemText(painter, caption, Qt::AlignCenter, frame->palette, widget == nullptr || widget->isEnabled(),
                 frame->text, QPalette::WindowText);
}

}  // namespace platform
