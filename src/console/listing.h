#pragma once

#include <string>

#include "console/simulation.h"

namespace console {

// What was assembled: for every line of the file its address, its bytes, its number and its text, and after them the
// labels with their addresses. Takes a program that did assemble and has not been run.
std::string ComposeListing(const Simulation& simulation);

}  // namespace console
