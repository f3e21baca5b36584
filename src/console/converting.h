#pragma once

#include <ostream>

#include "console/inputs.h"
#include "console/options.h"

namespace console {

// Prints the program in this language, and on `err` what was changed in it and what could not be. Writes its data to
// their file. Gives the exit code: success only if all of it could be converted.
int Convert(const Options& options, const Inputs& inputs, std::ostream& out, std::ostream& err);

}  // namespace console
