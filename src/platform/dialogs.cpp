#include "platform/dialogs.h"

#include <QInputDialog>
#include <QLabel>
#include <QMessageBox>

namespace platform {

namespace {

QMessageBox::Icon ToQt(Icon icon) {
    switch (icon) {
        case Icon::None: return QMessageBox::NoIcon;
        case Icon::Information: return QMessageBox::Information;
        case Icon::Question: return QMessageBox::Question;
        case Icon::Critical: return QMessageBox::Critical;
    }
    return QMessageBox::NoIcon;
}

}  // namespace

void ShowMessage(QWidget& control, const QString& text, const QString& caption, Icon icon) {
    QMessageBox box(ToQt(icon), caption, text, QMessageBox::Ok, control.window());
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

Answer AskYesNoCancel(QWidget& control, const QString& text, const QString& caption) {
    QMessageBox box(QMessageBox::Question, caption, text, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel,
                    control.window());
    box.setTextFormat(Qt::PlainText);
    switch (box.exec()) {
        case QMessageBox::Yes: return Answer::Yes;
        case QMessageBox::No: return Answer::No;
        default: return Answer::Cancel;
    }
}

QString AskText(QWidget& control, const QString& prompt, const QString& caption) {
    QInputDialog box(control.window());
    box.setWindowTitle(caption);
    box.setLabelText(prompt);
    box.setInputMode(QInputDialog::TextInput);
    // A prompt with a long list goes on to more lines.
    box.findChild<QLabel*>()->setWordWrap(true);
    return box.exec() == QDialog::Accepted ? box.textValue() : QString();
}

}  // namespace platform
