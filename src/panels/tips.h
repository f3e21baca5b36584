#pragma once

#include <cstdint>
#include <string>

#include "machine/changes.h"

namespace panels {

// Lines for tooltips and screen readers.

// A byte in binary and decimal, and as a signed number where that is another one.
std::string ByteTip(std::uint8_t value);

// An address in decimal: "Decimal 32768". Takes 0 and more.
std::string AddressTip(std::int32_t address);

// How long the chip takes for so many T-states.
std::string TimeTip(std::int32_t tStates);

// A byte that stands in memory or in a port, as it is read there, also as a character if it is a printable one.
std::string StoredByteTip(std::uint8_t byte);

// What has changed, with the values after the change, those of memory and ports from `machine`; of memory no more than
// the first bytes one by one. Empty if nothing has.
std::string TellChanges(const m8085::Changes& changes, const m8085::MachineState& machine);

}  // namespace panels
