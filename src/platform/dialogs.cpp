#include "platform/dialogs.h"

#include <QInputDialog>
#include <QLabel>
#include <QLayout>
#include <QScreen>
#include <QScrollArea>
#include <algorithm>

#include "platform/fonts.h"

namespace platform {

namespace {

// A long word, such as the name of a file, continues on the next line where a part of it is as wide as that.
QString WithBreaks(const QString& text, const QFontMetrics& metrics, int most) {
    constexpr QChar placeForBreak(0x200B);
    QString result;
    int width = 0;
    for (const QChar character : text) {
        const int advance = metrics.horizontalAdvance(character);
        const bool isBreak = character.isSpace() || character == '/';
        width = isBreak ? 0 : width + advance;
        if (width > most && !character.isLowSurrogate()) {
            result += placeForBreak;
            width = advance;
        }
        result += character;
    }
    return result;
}

// A line of the text stays whole as long as there is room for it: Qt would break it sooner, even at a hyphen. The box
// with its picture and its edges must fit on the screen.
void GiveRoom(QLabel& label) {
    constexpr int mostPixels = 640;
    constexpr int beside = 120;
    const int most = std::min(mostPixels, label.screen()->availableGeometry().width() - beside);
    const int needed = label.fontMetrics().size(0, label.text()).width();
    label.setMinimumWidth(std::min(needed + 1, most));
    label.setMaximumWidth(most);
    label.setText(WithBreaks(label.text(), label.fontMetrics(), most));
}

// Over the middle of the layout that the control belongs to, as far as it is in view, and not over the empty part of a
// large window. All of it is on the screen, where the window may not be.
void PlaceOver(const QWidget& control, QDialog& box) {
    const QWidget* layout = &control;
    while (layout != nullptr && qobject_cast<QScrollArea*>(layout->parentWidget()) == nullptr)
        layout = layout->parentWidget();
    if (layout == nullptr) return;
    const QRect shown = layout->childrenRect().intersected(layout->rect());
    // Qt would make it no larger than two thirds of the screen at first.
    box.resize(box.sizeHint().expandedTo(box.layout()->totalMinimumSize()));
    const QPoint place = layout->mapToGlobal(shown.center()) - box.rect().center();
    const QRect screen = control.screen()->availableGeometry();
    box.move(std::clamp(place.x(), screen.left(), std::max(screen.left(), screen.right() - box.width())),
             std::clamp(place.y(), screen.top(), std::max(screen.top(), screen.bottom() - box.height())));
}

QMessageBox::StandardButton Ask(QWidget& control, const QString& text, QMessageBox::Icon icon, const QString& caption,
                                QMessageBox::StandardButtons buttons, const QString& details = {}) {
    QMessageBox box(icon, caption, text, buttons, control.window());
    box.setFont(BoxFont());
    box.setTextFormat(Qt::PlainText);
    box.setDetailedText(details);
    GiveRoom(*box.findChild<QLabel*>("qt_msgbox_label"));
    PlaceOver(control, box);
    return static_cast<QMessageBox::StandardButton>(box.exec());
}

}  // namespace

void ShowMessage(QWidget& control, const QString& text, QMessageBox::Icon icon, const QString& caption,
                 const QString& details) {
    Ask(control, text, icon, caption, QMessageBox::Ok, details);
}

QMessageBox::StandardButton AskYesNoCancel(QWidget& control, const QString& text, const QString& caption) {
    return Ask(control, text, QMessageBox::Question, caption, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
}

QString AskText(QWidget& control, const QString& prompt, const QString& caption) {
    QInputDialog box(control.window());
    box.setFont(BoxFont());
    box.setWindowTitle(caption);
    box.setLabelText(prompt);
    // A prompt with a long list continues on more lines.
    auto& label = *box.findChild<QLabel*>();
    label.setWordWrap(true);
    label.setTextFormat(Qt::PlainText);
    GiveRoom(label);
    PlaceOver(control, box);
    return box.exec() == QDialog::Accepted ? box.textValue() : QString();
}

}  // namespace platform
