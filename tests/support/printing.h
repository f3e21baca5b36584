#pragma once

#include <QString>
#include <ostream>

// Lets a failed comparison show its texts. Every window test has this, or the linker would choose among two printers.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}
