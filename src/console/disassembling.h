#pragma once

#include <ostream>

#include "console/inputs.h"
#include "console/options.h"

namespace console {

// Prints the bytes of a file as a program, and on `err` why they are not one where they are not. Gives the exit
// code.
int Disassemble(const Options& options, const Inputs& inputs, std::ostream& out, std::ostream& err);

}  // namespace console
