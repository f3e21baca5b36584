#pragma once

#include <cstddef>
#include <cstdint>

namespace m8085 {

constexpr std::uint16_t Join(std::uint8_t high, std::uint8_t low) {
    return static_cast<std::uint16_t>(high << 8 | low);
}

// The lowest eight bits, and the eight above them.
constexpr std::uint8_t Low(int value) {
    return static_cast<std::uint8_t>(value & 0xFF);
}
constexpr std::uint8_t High(int value) {
    return static_cast<std::uint8_t>(value >> 8 & 0xFF);
}

// The index into an array for an address. One below 0 lies beyond every array.
constexpr std::size_t Index(std::int32_t address) {
    return static_cast<std::uint32_t>(address);
}

}  // namespace m8085
