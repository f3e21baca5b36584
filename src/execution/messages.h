#pragma once

#include <cstdint>
#include <string>

#include "machine/refusal.h"
#include "machine/registers.h"

namespace execution {

// Microseconds on the real chip for one T-state. Single Step has its own figure.
inline constexpr double RunMicroseconds = m8085::NanosecondsPerTState / 1000.0;
inline constexpr double SingleStepMicroseconds = 0.33;

// The report of a program's end. It calls a count at its limit a lower bound.
std::string EndMessage(std::int32_t tStates, double microsecondsPerTState);

// Says in plain words what the program tried, where, and why the machine could not do it. Expects a refusal
// with a reason.
std::string RefusalMessage(const m8085::Refusal& refusal);

}  // namespace execution
