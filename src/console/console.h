#pragma once

#include <istream>
#include <ostream>
#include <string>
#include <vector>

namespace console {

// The whole program: reads the arguments (its own name not among them), assembles, runs and reports. Gives the exit
// code, or any when a signal has interrupted a run. Never throws.
int Main(std::vector<std::string> arguments, std::istream& in, std::ostream& out, std::ostream& err);

}  // namespace console
