#include "platform/process.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QProcess>
#include <QUrl>
#include <algorithm>
#include <cstdlib>

namespace platform {

QString ProgramDirectory() {
    return QCoreApplication::applicationDirPath();
}

bool StartAnyProgram(const QStringList& names) {
    return std::any_of(names.begin(), names.end(),
                       [](const QString& name) { return QProcess::startDetached(name, {}); });
}

QStringList CalculatorPrograms() {
#if defined(Q_OS_WIN)
    return {"calc.exe"};
#elif defined(Q_OS_MACOS)
    return {"/System/Applications/Calculator.app/Contents/MacOS/Calculator"};
#else
    return {"gnome-calculator", "kcalc", "mate-calc", "galculator", "qalculate-gtk", "xcalc"};
#endif
}

bool OpenPage(const QString& address) {
    return QDesktopServices::openUrl(QUrl(address));
}

void EndProcess() {
    std::_Exit(EXIT_SUCCESS);
}

}  // namespace platform
