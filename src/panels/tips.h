#pragma once

#include <cstdint>
#include <string>

#include "machine/changes.h"

namespace panels {

// Lines for tooltips and screen readers.

// A byte in binary and decimal, and as a signed number where that differs.
std::string ByteTip(std::uint8_t value);

// An address in decimal: "Decimal 32768". Takes 0 and more.
std::string AddressTip(std::int32_t address);

// A number of a program in the other bases; one of 8 bits also as a signed number and as a character, where it is one.
// Takes 0 to FFFF (hexadecimal).
std::string NumberTip(std::int32_t number, int bits);

// The four words on top of the stack, a line for each with its address; fewer where memory ends.
std::string StackTip(const m8085::MachineState& machine);

// Which of PC, SP and the register pairs hold an address: "PC and HL point here". Empty for none.
std::string PointersTip(const m8085::MachineState& machine, std::int32_t address);

// How long the chip takes for so many T-states.
std::string TimeTip(std::int32_t tStates);

// A byte of memory or of a port in hexadecimal, binary and decimal, and as a character if it is printable.
std::string StoredByteTip(std::uint8_t byte);

// What has changed, with the values after the change, those of memory and ports from `machine`. Of memory, and of the
// ports, it lists the first eight bytes and counts the others. Empty if nothing has changed.
std::string DescribeChanges(const m8085::Changes& changes, const m8085::MachineState& machine);

}  // namespace panels
