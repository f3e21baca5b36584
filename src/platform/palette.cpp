#include "platform/palette.h"

#include <QWidget>

#include "platform/fonts.h"
#include "platform/style.h"

namespace platform {

void SetColour(QWidget& control, QPalette::ColorRole role, const QColor& colour) {
    QPalette palette = control.palette();
    if (palette.color(role) == colour) return;
    palette.setColor(role, colour);
    control.setPalette(palette);
}

void ApplyFixedAppearance(QApplication& application) {
    QApplication::setStyle(new Style);
    QPalette palette(QColor(240, 240, 240), QColor(240, 240, 240));
    const auto set = [&palette](QPalette::ColorRole role, const QColor& colour, const QColor& disabled) {
        palette.setColor(QPalette::Active, role, colour);
        palette.setColor(QPalette::Inactive, role, colour);
        palette.setColor(QPalette::Disabled, role, disabled);
    };
    const QColor grey(150, 150, 150);
    set(QPalette::WindowText, Qt::black, grey);
    set(QPalette::Text, Qt::black, grey);
    set(QPalette::ButtonText, Qt::black, grey);
    set(QPalette::PlaceholderText, grey, grey);
    set(QPalette::Base, Qt::white, QColor(240, 240, 240));
    set(QPalette::AlternateBase, QColor(245, 245, 245), QColor(245, 245, 245));
    set(QPalette::ToolTipBase, QColor(255, 255, 225), QColor(255, 255, 225));
    set(QPalette::ToolTipText, Qt::black, Qt::black);
    // The same with and without the focus: the selected line is also the mark of the current instruction.
    set(QPalette::Highlight, NextText, grey);
    set(QPalette::HighlightedText, Qt::white, Qt::white);
    set(QPalette::Link, QColor(0, 0, 255), grey);
    QApplication::setPalette(palette);
    QApplication::setFont(SansSerif(9));
    application.setEffectEnabled(Qt::UI_AnimateMenu, false);
}

}  // namespace platform
