#pragma once

#include <array>
#include <cstdint>

namespace m8085 {

inline constexpr int MemorySize = 65536;
inline constexpr int PortCount = 256;

using MemoryBytes = std::array<std::uint8_t, MemorySize>;
using PortBytes = std::array<std::uint8_t, PortCount>;

// Every fetch covers three bytes.
inline constexpr std::int32_t LastFetchAddress = MemorySize - 3;

// Where programs are assembled to and begin, and where their stack begins.
inline constexpr std::int32_t ProgramOrigin = 0x8000;
inline constexpr std::int32_t ProgramStack = 0xFFF0;

}  // namespace m8085
