#include "platform/line_margin.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include "platform/palette.h"
#include "platform/program_text.h"

namespace platform {

LineMargin::LineMargin(ProgramText& text) : QWidget(&text), text_(text) {
    setObjectName("margin");
    setAccessibleName("Marks of lines");
    setAttribute(Qt::WA_OpaquePaintEvent);
    setToolTip("Click to stop runs at a line, or no longer (F9)");
}

// Without a mark it always looks the same, and each painting would make a Slow Run slower.
void LineMargin::Follow(const QRect&, int scrolled) {
    if (scrolled != 0 && !text_.Marks().IsEmpty()) update();
}

void LineMargin::ShowMarks() {
    QStringList lines;
    for (const int line : text_.Marks().Lines()) lines += QString::number(line);
    const QString description = lines.isEmpty() ? QString() : "Runs stop at line " + lines.join(", ");
    if (accessibleDescription() != description) setAccessibleDescription(description);
    update();
}

void LineMargin::paintEvent(QPaintEvent* event) {
    constexpr qreal diameter = 9;
    QPainter painter(this);
    painter.fillRect(event->rect(), palette().window());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(MarkDot);
    for (const QRectF& line : text_.VisibleMarkedLines()) {
        QRectF dot(0, 0, diameter, diameter);
        dot.moveCenter({width() / 2.0, line.center().y()});
        painter.drawEllipse(dot);
    }
}

void LineMargin::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) text_.ToggleMark(text_.LineAt(event->position().toPoint().y()));
}

void LineMargin::wheelEvent(QWheelEvent* event) {
    QCoreApplication::sendEvent(text_.viewport(), event);
}

}  // namespace platform
