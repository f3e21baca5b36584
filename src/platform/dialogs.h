#pragma once

#include <QString>

class QWidget;

namespace platform {

inline constexpr auto ApplicationTitle = "Velmora";

enum class Icon { None, Information, Question, Critical };
enum class Answer { Yes, No, Cancel };

// Modal boxes over the window that the control belongs to.
void ShowMessage(QWidget& control, const QString& text, const QString& caption, Icon icon);
Answer AskYesNoCancel(QWidget& control, const QString& text, const QString& caption);

// The empty text when it is cancelled.
QString AskText(QWidget& control, const QString& prompt, const QString& caption);

}  // namespace platform
