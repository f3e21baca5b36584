#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace m8085 {

// How long the chip takes for one T-state.
inline constexpr int NanosecondsPerTState = 325;

// Everything of the simulated 8085 but its memory and ports.
struct Registers {
    std::uint8_t A = 0;
    std::uint8_t B = 0;
    std::uint8_t C = 0;
    std::uint8_t D = 0;
    std::uint8_t E = 0;
    std::uint8_t H = 0;
    std::uint8_t L = 0;

    bool AC = false;  // auxiliary carry: a decimal carry out of the low digit
    bool P = false;   // parity; true for an even number of one bits
    bool CY = false;  // carry, and borrow after a subtraction
    bool S = false;   // sign
    bool Z = false;   // zero

    // Wider than the chip's, and never masked: PC is 65536 after the instruction that ends at FFFF, SP after a pop
    // from FFFE.
    std::int32_t SP = 0;
    std::int32_t PC = 0;

    bool Halted = false;

    // T-states since the last Reset or successful assembly. Stays at the largest 32-bit value once it is there.
    std::int32_t TStates = 0;

    bool operator==(const Registers&) const = default;
};

// A register or a flag by its name. Its width is that of its type: a byte, a bit or an address.
template <class T>
struct Named {
    std::string_view Name;
    T Registers::*Member;
};

// In the order in which they are shown; the flags from bit 7 of the flag byte down.
inline constexpr Named<std::uint8_t> ByteRegisters[] = {
    {"A", &Registers::A}, {"B", &Registers::B}, {"C", &Registers::C}, {"D", &Registers::D},
    {"E", &Registers::E}, {"H", &Registers::H}, {"L", &Registers::L}};
inline constexpr Named<bool> Flags[] = {
    {"S", &Registers::S}, {"Z", &Registers::Z}, {"AC", &Registers::AC}, {"P", &Registers::P}, {"CY", &Registers::CY}};
inline constexpr Named<std::int32_t> AddressRegisters[] = {{"PC", &Registers::PC}, {"SP", &Registers::SP}};

// The registers by their codes. 6 stands for M, the byte in memory at the address in HL.
inline constexpr std::array<std::uint8_t Registers::*, 8> RegisterOfCode = {
    &Registers::B, &Registers::C, &Registers::D, &Registers::E, &Registers::H, &Registers::L, nullptr, &Registers::A};
inline constexpr std::uint8_t CodeOfM = 6;

// The pairs by their codes, and on the stack, where PSW has the place of SP.
inline constexpr std::array<std::string_view, 4> PairNames = {"BC", "DE", "HL", "SP"};
inline constexpr std::array<std::string_view, 4> StackPairNames = {"BC", "DE", "HL", "PSW"};

}  // namespace m8085
