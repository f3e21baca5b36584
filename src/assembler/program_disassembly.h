#pragma once

#include <span>
#include <string>
#include <vector>

#include "machine/address_space.h"

namespace assembler {

struct DisassembledProgram {
    std::string Text;                    // a line for each instruction; lines end in a line feed
    std::vector<std::string> Obstacles;  // why Text does not assemble to the same bytes; empty if it does
};

// Writes the bytes as a program that assembles to the same bytes at the same address, which a comment names if it is
// not 8000. Jumps and calls go to labels named by their addresses, "L8003". What has no place in a program, such as a
// gap, is marked in the text, too. The stretches are in the order of their addresses, and do not meet. Bytes beyond
// FFFF are left out, which is an obstacle.
DisassembledProgram DisassembleProgram(std::span<const m8085::MemoryStretch> stretches);

}  // namespace assembler
