#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace assembler {

struct DisassembledProgram {
    std::string Text;                    // a line for each instruction; lines end in a line feed
    std::vector<std::string> Obstacles;  // why Text does not assemble to the same bytes; empty if it does
};

// Writes the bytes as a program whose first byte stands at `origin`, 0 to FFFF, and which assembles to the same bytes
// there. Jumps and calls go to labels named by their addresses, "L8003". What has no place in a program is marked in
// the text, too. Bytes beyond FFFF are left out, which is an obstacle.
DisassembledProgram DisassembleProgram(std::span<const std::uint8_t> bytes, std::int32_t origin);

}  // namespace assembler
