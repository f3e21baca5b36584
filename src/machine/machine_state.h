#pragma once

#include <cstdint>
#include <limits>

#include "machine/address_space.h"
#include "machine/bytes.h"
#include "machine/refusal.h"
#include "machine/registers.h"

namespace m8085 {

// What an operand in memory adds to an instruction.
inline constexpr std::int32_t MemoryOperandTStates = 3;

// The one record of the simulated chip: registers, flags, 64 KB of memory, 256 ports. All of it starts at zero.
// A port is a latch that IN and OUT share.
//
// Register codes 0 to 7 stand for B, C, D, E, H, L, M and A, where M is the byte at the address in HL. Pair codes 0 to
// 3 stand for BC, DE, HL and, by the selector usePSW, PSW or SP. Only the low three or two bits of a code count.
struct MachineState : Registers {
    MemoryBytes Memory{};
    PortBytes Ports{};

    // The latest refusal. Instructions only ever set it; the run commands clear it before they start.
    Refusal Refused;

    std::uint8_t GetReg(std::uint8_t code);
    void SetReg(std::uint8_t code, std::uint8_t value);

    // The byte at HL. Each pass costs its T-states.
    std::uint8_t ReadHLOperand();
    void WriteHLOperand(std::uint8_t value);

    std::int32_t GetRegPair(std::uint8_t code, bool usePSW) const;
    void SetRegPair(std::uint8_t code, std::uint8_t high, std::uint8_t low, bool usePSW);

    // S Z 0 AC 0 P 0 CY, from bit 7 down to bit 0.
    std::uint8_t GetFlagByte() const;

    // A in the high byte, the flag byte in the low one. Setting drops bits 1, 3 and 5.
    std::uint16_t GetPSW() const;
    void SetPSW(std::uint16_t value);

    static constexpr int FlagBit(bool flag) { return flag ? 1 : 0; }

    // Adds to the T-states, 0 or more, up to their limit.
    void Charge(std::int32_t tStates);

    // Whether the three bytes that every fetch covers lie in memory.
    bool CanFetch() const { return static_cast<std::uint32_t>(PC) <= LastFetchAddress; }

    // Executes the one instruction at PC. A code that is not an instruction changes nothing. An instruction that would
    // reach past memory is refused: Refused says why, and nothing else has changed.
    void ExecuteInstruction();

    bool operator==(const MachineState&) const = default;
};

// PC, SP and TStates as Reset and a successful assembly leave them.
void SetToProgramStart(MachineState& machine);

// What executes instructions wants these inline, where the code is a constant.

inline void MachineState::Charge(std::int32_t tStates) {
    constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max();
    TStates = tStates > most - TStates ? most : TStates + tStates;
}

inline std::int32_t MachineState::GetRegPair(std::uint8_t code, bool usePSW) const {
    switch (code & 3) {
        case 0: return Join(B, C);
        case 1: return Join(D, E);
        case 2: return Join(H, L);
        default: return usePSW ? GetPSW() : SP;
    }
}

inline void MachineState::SetRegPair(std::uint8_t code, std::uint8_t high, std::uint8_t low, bool usePSW) {
    switch (code & 3) {
        case 0: B = high, C = low; break;
        case 1: D = high, E = low; break;
        case 2: H = high, L = low; break;
        default:
            if (usePSW)
                SetPSW(Join(high, low));
            else
                SP = Join(high, low);
    }
}

inline std::uint8_t MachineState::GetFlagByte() const {
    return Low(FlagBit(S) << 7 | FlagBit(Z) << 6 | FlagBit(AC) << 4 | FlagBit(P) << 2 | FlagBit(CY));
}

inline std::uint16_t MachineState::GetPSW() const {
    return Join(A, GetFlagByte());
}

inline void MachineState::SetPSW(std::uint16_t value) {
    A = High(value);
    CY = (value >> 0 & 1) != 0;
    P = (value >> 2 & 1) != 0;
    AC = (value >> 4 & 1) != 0;
    Z = (value >> 6 & 1) != 0;
    S = (value >> 7 & 1) != 0;
}

}  // namespace m8085
