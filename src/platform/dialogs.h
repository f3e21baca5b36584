#pragma once

#include <QCoreApplication>
#include <QMessageBox>

namespace platform {

// Modal boxes over the window that the control belongs to, which must outlive them. Their texts are plain, whatever
// signs are in them. Details are shown when the user asks for them.
void ShowMessage(QWidget& control, const QString& text, QMessageBox::Icon icon,
                 const QString& caption = QCoreApplication::applicationName(), const QString& details = {});
QMessageBox::StandardButton AskYesNoCancel(QWidget& control, const QString& text, const QString& caption);

// The empty text when it is cancelled.
QString AskText(QWidget& control, const QString& prompt, const QString& caption);

}  // namespace platform
