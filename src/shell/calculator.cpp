#include "shell/calculator.h"

#include <QProcess>
#include <QStringList>
#include <algorithm>

#include "platform/dialogs.h"

namespace shell {

namespace {

// The names under which this system is likely to have a calculator, the likeliest first.
QStringList CalculatorPrograms() {
#if defined(Q_OS_WIN)
    return {"calc.exe"};
#elif defined(Q_OS_MACOS)
    return {"/System/Applications/Calculator.app/Contents/MacOS/Calculator"};
#else
    return {"gnome-calculator", "kcalc", "mate-calc", "galculator", "qalculate-gtk", "xcalc"};
#endif
}

}  // namespace

void StartCalculator(QWidget& control) {
    const QStringList programs = CalculatorPrograms();
    if (std::ranges::any_of(programs, [](const QString& name) { return QProcess::startDetached(name, {}); })) return;
    platform::ShowMessage(control, "No calculator could be started. Tried: " + programs.join(", ") + ".",
                          QMessageBox::Information);
}

}  // namespace shell
