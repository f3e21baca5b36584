#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <limits>
#include <type_traits>

#include "machine/refusal.h"
#include "machine/registers.h"

namespace m8085 {

inline constexpr int MemorySize = 65536;
inline constexpr int PortCount = 256;

// Where programs are assembled to and begin.
inline constexpr std::int32_t ProgramOrigin = 0x8000;

inline constexpr std::int32_t LastFetchAddress = MemorySize - 3;

using MemoryBytes = std::array<std::uint8_t, MemorySize>;
using PortBytes = std::array<std::uint8_t, PortCount>;

enum class Storage { Own, Borrowed };

// The simulated 8085 with its operand routines and its instructions. It is used in two forms that share this one
// statement of every instruction: MachineState owns its memory and ports; the full-speed loop works for a slice of
// instructions on a copy of the registers, which the compiler can keep in the host's registers, and borrows the
// memory and the ports of the machine.
//
// Register codes 0 to 7 stand for B, C, D, E, H, L, M and A, where M is the byte at the address in HL. Pair codes 0 to
// 3 stand for BC, DE, HL and, by the selector usePSW, PSW or SP. Only the low three or two bits of a code count.
template <Storage Where>
struct Processor : Registers {
    template <class T>
    using Held = std::conditional_t<Where == Storage::Own, T, T&>;

    Held<MemoryBytes> Memory;
    Held<PortBytes> Ports;

    // The latest refusal. Instructions only ever set it; the run commands clear it before they start.
    Held<Refusal> Refused;

    std::uint8_t GetReg(std::uint8_t code);
    void SetReg(std::uint8_t code, std::uint8_t value);

    // The byte at HL. Each pass costs 3 T-states.
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

    // Whether the three bytes that every fetch covers lie in memory.
    bool CanFetch() const { return static_cast<std::uint32_t>(PC) <= LastFetchAddress; }

    // Executes the instruction at PC, where CanFetch() must hold. Returns false where a run has to look up: after HLT,
    // on a code that is no instruction (nothing has changed), and on an instruction that was refused (only Refused has
    // changed).
    bool Execute();

protected:
    bool Refuse(Limit limit, std::int32_t operand);

private:
    void Charge(int tStates);
    bool Next(int length, int tStates);

    std::uint8_t Byte2() const { return Memory[Index(PC + 1)]; }
    std::uint16_t Word() const { return Join(Memory[Index(PC + 2)], Byte2()); }
    std::uint8_t CarryIn() const { return static_cast<std::uint8_t>(FlagBit(CY)); }

    bool HasRoomToPush() const { return SP >= 2 && SP <= MemorySize; }
    bool HasWordToPop() const { return SP >= 0 && SP <= MemorySize - 2; }

    void SetFlagsFrom(std::uint8_t value);
    void UpdateFlags() { SetFlagsFrom(A); }
    void StoreResult(int value);

    void Add(std::uint8_t value, std::uint8_t carryIn);
    std::uint8_t Difference(std::uint8_t value, std::uint8_t borrowIn);
    void Subtract(std::uint8_t value, std::uint8_t borrowIn) { A = Difference(value, borrowIn); }
    void Compare(std::uint8_t value) { Difference(value, 0); }
    void StoreLogical(int value);
    void Step(std::uint8_t code, int change);
    void StepPair(std::uint8_t code, int change);
    void AddToHL(std::uint8_t code);
    void DecimalAdjust();
    void RotateLeft(bool into);
    void RotateRight(bool into);
    void Exchange();

    bool LoadHL(std::uint16_t address);
    bool StoreHL(std::uint16_t address);
    bool Jump(bool condition);
    bool Call(bool condition);
    bool Return(bool condition, int tStates);
    bool Push(std::uint8_t code);
    bool Pop(std::uint8_t code);
    bool ExchangeStackTop();
    void DoCall();
    void DoReturn(int tStates);

    // Only for addresses that are known to lie in Memory.
    static constexpr std::size_t Index(std::int32_t address) { return static_cast<std::uint32_t>(address); }
    static constexpr std::uint16_t Join(std::uint8_t high, std::uint8_t low) {
        return static_cast<std::uint16_t>(high << 8 | low);
    }
    static constexpr std::uint8_t Low(int value) { return static_cast<std::uint8_t>(value & 0xFF); }
    static constexpr std::uint8_t High(int value) { return static_cast<std::uint8_t>(value >> 8 & 0xFF); }
};

template <Storage Where>
inline void Processor<Where>::Charge(int tStates) {
    const std::uint32_t sum = static_cast<std::uint32_t>(TStates) + static_cast<std::uint32_t>(tStates);
    constexpr std::uint32_t most = std::numeric_limits<std::int32_t>::max();
    TStates = static_cast<std::int32_t>(sum);
    if (sum > most) [[unlikely]]
        TStates = most;
}

template <Storage Where>
inline std::uint8_t Processor<Where>::GetReg(std::uint8_t code) {
    switch (code & 7) {
        case 0: return B;
        case 1: return C;
        case 2: return D;
        case 3: return E;
        case 4: return H;
        case 5: return L;
        case 6: return ReadHLOperand();
        default: return A;
    }
}

template <Storage Where>
inline void Processor<Where>::SetReg(std::uint8_t code, std::uint8_t value) {
    switch (code & 7) {
        case 0: B = value; break;
        case 1: C = value; break;
        case 2: D = value; break;
        case 3: E = value; break;
        case 4: H = value; break;
        case 5: L = value; break;
        case 6: WriteHLOperand(value); break;
        default: A = value; break;
    }
}

template <Storage Where>
inline std::uint8_t Processor<Where>::ReadHLOperand() {
    Charge(3);
    return Memory[Join(H, L)];
}

template <Storage Where>
inline void Processor<Where>::WriteHLOperand(std::uint8_t value) {
    Charge(3);
    Memory[Join(H, L)] = value;
}

template <Storage Where>
inline std::int32_t Processor<Where>::GetRegPair(std::uint8_t code, bool usePSW) const {
    switch (code & 3) {
        case 0: return Join(B, C);
        case 1: return Join(D, E);
        case 2: return Join(H, L);
        default: return usePSW ? GetPSW() : SP;
    }
}

template <Storage Where>
inline void Processor<Where>::SetRegPair(std::uint8_t code, std::uint8_t high, std::uint8_t low, bool usePSW) {
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

template <Storage Where>
inline std::uint8_t Processor<Where>::GetFlagByte() const {
    return static_cast<std::uint8_t>(FlagBit(S) << 7 | FlagBit(Z) << 6 | FlagBit(AC) << 4 | FlagBit(P) << 2 |
                                     FlagBit(CY));
}

template <Storage Where>
inline std::uint16_t Processor<Where>::GetPSW() const {
    return Join(A, GetFlagByte());
}

template <Storage Where>
inline void Processor<Where>::SetPSW(std::uint16_t value) {
    A = High(value);
    CY = (value >> 0 & 1) != 0;
    P = (value >> 2 & 1) != 0;
    AC = (value >> 4 & 1) != 0;
    Z = (value >> 6 & 1) != 0;
    S = (value >> 7 & 1) != 0;
}

}  // namespace m8085
