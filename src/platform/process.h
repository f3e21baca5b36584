#pragma once

#include <QString>
#include <QStringList>

namespace platform {

// The directory of the program's own file.
QString ProgramDirectory();

// Starts the first of these programs that can be started and returns at once. False if none could.
bool StartAnyProgram(const QStringList& names);

// The names under which this system is likely to have a calculator, the likeliest first.
QStringList CalculatorPrograms();

// Opens a web page in the system's browser. False if that could not be done.
bool OpenPage(const QString& address);

// Ends the process without running anything else.
[[noreturn]] void EndProcess();

}  // namespace platform
