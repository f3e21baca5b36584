#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace m8085 {

inline constexpr int MemorySize = 65536;
inline constexpr int PortCount = 256;

using MemoryBytes = std::array<std::uint8_t, MemorySize>;
using PortBytes = std::array<std::uint8_t, PortCount>;

// Bytes that follow each other in memory.
struct MemoryStretch {
    std::int32_t Address = 0;  // of the first
    std::vector<std::uint8_t> Bytes;
};

// Every fetch covers three bytes.
inline constexpr std::int32_t LastFetchAddress = MemorySize - 3;

// Where programs are assembled to and begin, and where their stack begins.
inline constexpr std::int32_t ProgramOrigin = 0x8000;
inline constexpr std::int32_t ProgramStack = 0xFFF0;

}  // namespace m8085
