#pragma once

#include <gtest/gtest.h>

#include <QtTest>
#include <QtWidgets>
#include <ostream>

// What every test with a window includes, compiled once for all of them.

// Lets a failed comparison show its texts. Were it missing in one test, the linker would choose among two printers.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}
