#pragma once

#include "console/options.h"

namespace console {

// Sees that no file that is to be written is lost with it: it must not be one that is read in the same call, be named
// like a program or hold one, or be written twice. Throws a UsageError that names it.
void CheckOutputs(const Options& options);

// Sees that the first file, which is to be written, is not the second one, which is read. Throws a UsageError that
// names it.
void KeepFromInput(const std::string& path, const std::string& input);

}  // namespace console
