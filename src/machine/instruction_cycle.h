#pragma once

// The instructions of the simulated 8085. Only the loop that executes them includes this file.

#include <bit>
#include <utility>

#include "machine/machine_state.h"

namespace m8085 {

// One instruction on its way through the machine. PC and T-states travel beside the machine, where the compiler can
// keep them in the host's registers; whoever executes the last instruction takes them back.
class InstructionCycle {
public:
    // tStates are those since the burst began.
    InstructionCycle(MachineState& machine, std::int32_t pc, std::int32_t tStates)
        : machine_(machine), pc_(pc), tStates_(tStates) {}

    // Executes the instruction at PC, whose code is Opcode and whose three bytes lie in memory. Returns false where a
    // run has to look up: after HLT, on a code that is not an instruction (nothing has changed), and on an instruction
    // that was refused (only Refused has changed).
    template <std::uint8_t Opcode>
    bool Execute();

    std::int32_t PC() const { return pc_; }
    std::int32_t TStates() const { return tStates_; }

    // The byte at PC, which must lie in memory.
    std::uint8_t FetchOpcode() const { return At(pc_); }

private:
    bool Next(int length, int tStates);
    bool Refuse(Limit limit, std::int32_t operand);

    // Only for addresses that are known to lie in memory.
    std::uint8_t& At(std::int32_t address) const { return machine_.Memory[Index(address)]; }

    std::uint8_t Byte2() const { return At(pc_ + 1); }
    std::uint16_t Word() const { return Join(At(pc_ + 2), Byte2()); }
    std::uint8_t CarryIn() const { return Low(MachineState::FlagBit(machine_.CY)); }

    template <std::uint8_t Code>
    std::uint8_t Get();
    template <std::uint8_t Code>
    void Set(std::uint8_t value);

    std::int32_t Pair(std::uint8_t code) const { return machine_.GetRegPair(code, false); }
    void SetPair(std::uint8_t code, int value) { machine_.SetRegPair(code, High(value), Low(value), false); }

    bool HasRoomToPush() const { return machine_.SP >= 2 && machine_.SP <= MemorySize; }
    bool HasWordToPop() const { return machine_.SP >= 0 && machine_.SP <= MemorySize - 2; }

    void SetFlagsFrom(std::uint8_t value);
    void StoreResult(int value);

    void Add(std::uint8_t value, std::uint8_t carryIn);
    std::uint8_t Difference(std::uint8_t value, std::uint8_t borrowIn);
    void Subtract(std::uint8_t value, std::uint8_t borrowIn) { machine_.A = Difference(value, borrowIn); }
    void Compare(std::uint8_t value) { Difference(value, 0); }
    void StoreLogical(int value);
    std::uint8_t Stepped(std::uint8_t value, int change);
    void AddToHL(std::int32_t value);
    void DecimalAdjust();
    void RotateLeft(bool into);
    void RotateRight(bool into);
    void Exchange();

    bool Holds(std::uint8_t condition) const;
    bool LoadHL(std::uint16_t address);
    bool StoreHL(std::uint16_t address);
    bool Jump(bool condition);
    bool Call(bool condition);
    bool Return(bool condition, int tStates);
    void PushWord(int value);
    bool Push(std::uint8_t code);
    bool Pop(std::uint8_t code);
    bool ExchangeStackTop();
    void DoCall();
    void DoReturn(int tStates);

    MachineState& machine_;
    std::int32_t pc_;
    std::int32_t tStates_;
};

// The codes of the pairs.
inline constexpr std::uint8_t BC = 0;
inline constexpr std::uint8_t DE = 1;
inline constexpr std::uint8_t HL = 2;

// The labels of the families. Bits 2 to 0 of a code name the source register s, bits 5 to 3 the destination register d
// or the condition c, bits 5 and 4 the register pair pp.
// clang-format off
#define EachSource(base) \
    case (base) + 0: case (base) + 1: case (base) + 2: case (base) + 3: \
    case (base) + 4: case (base) + 5: case (base) + 6: case (base) + 7
#define EachDestination(base) \
    case (base) + 0 * 8: case (base) + 1 * 8: case (base) + 2 * 8: case (base) + 3 * 8: \
    case (base) + 4 * 8: case (base) + 5 * 8: case (base) + 6 * 8: case (base) + 7 * 8
#define EachCondition(base) EachDestination(base)
#define EachPair(base) \
    case (base) + 0x00: case (base) + 0x10: case (base) + 0x20: case (base) + 0x30
#define EachMove \
    EachSource(0x40): EachSource(0x48): EachSource(0x50): EachSource(0x58): EachSource(0x60): EachSource(0x68): \
    case 0x70: case 0x71: case 0x72: case 0x73: case 0x74: case 0x75: case 0x77: EachSource(0x78)

// Next(length, T-states) ends an instruction. An operand in memory charges its own 3 T-states on top.
template <std::uint8_t Opcode>
inline bool InstructionCycle::Execute() {
    constexpr std::uint8_t s = Opcode & 7;
    constexpr std::uint8_t d = Opcode >> 3 & 7;
    constexpr std::uint8_t c = d;
    constexpr std::uint8_t pp = Opcode >> 4 & 3;
    switch (Opcode) {
        // Data transfer
        EachMove: Set<d>(Get<s>()); return Next(1, 4);                             // MOV d,s
        EachDestination(0x06): Set<d>(Byte2()); return Next(2, 7);                 // MVI d,byte
        EachPair(0x01): SetPair(pp, Word()); return Next(3, 10);                   // LXI pp,word
        case 0x3A: machine_.A = At(Word()); return Next(3, 13);                    // LDA addr
        case 0x32: At(Word()) = machine_.A; return Next(3, 13);                    // STA addr
        case 0x0A: machine_.A = At(Pair(BC)); return Next(1, 7);                   // LDAX B
        case 0x1A: machine_.A = At(Pair(DE)); return Next(1, 7);                   // LDAX D
        case 0x02: At(Pair(BC)) = machine_.A; return Next(1, 7);                   // STAX B
        case 0x12: At(Pair(DE)) = machine_.A; return Next(1, 7);                   // STAX D
        case 0x2A: return LoadHL(Word());                                          // LHLD addr
        case 0x22: return StoreHL(Word());                                         // SHLD addr
        case 0xEB: Exchange(); return Next(1, 4);                                  // XCHG

        // Arithmetic
        EachSource(0x80): Add(Get<s>(), 0); return Next(1, 4);                     // ADD s
        EachSource(0x88): Add(Get<s>(), CarryIn()); return Next(1, 4);             // ADC s
        EachSource(0x90): Subtract(Get<s>(), 0); return Next(1, 4);                // SUB s
        EachSource(0x98): Subtract(Get<s>(), CarryIn()); return Next(1, 4);        // SBB s
        case 0xC6: Add(Byte2(), 0); return Next(2, 7);                             // ADI byte
        case 0xCE: Add(Byte2(), CarryIn()); return Next(2, 7);                     // ACI byte
        case 0xD6: Subtract(Byte2(), 0); return Next(2, 7);                        // SUI byte
        case 0xDE: Subtract(Byte2(), CarryIn()); return Next(2, 7);                // SBI byte
        EachDestination(0x04): Set<d>(Stepped(Get<d>(), +1)); return Next(1, 4);   // INR d
        EachDestination(0x05): Set<d>(Stepped(Get<d>(), -1)); return Next(1, 4);   // DCR d
        EachPair(0x03): SetPair(pp, Pair(pp) + 1); return Next(1, 6);              // INX pp
        EachPair(0x0B): SetPair(pp, Pair(pp) - 1); return Next(1, 6);              // DCX pp
        EachPair(0x09): AddToHL(Pair(pp)); return Next(1, 10);                     // DAD pp
        case 0x27: DecimalAdjust(); return Next(1, 4);                             // DAA
        case 0x07: RotateLeft(machine_.A > 0x7F); return Next(1, 4);               // RLC
        case 0x0F: RotateRight((machine_.A & 1) != 0); return Next(1, 4);          // RRC
        case 0x17: RotateLeft(machine_.CY); return Next(1, 4);                     // RAL
        case 0x1F: RotateRight(machine_.CY); return Next(1, 4);                    // RAR

        // Logic
        EachSource(0xA0): StoreLogical(machine_.A & Get<s>()); return Next(1, 4);  // ANA s
        EachSource(0xA8): StoreLogical(machine_.A ^ Get<s>()); return Next(1, 4);  // XRA s
        EachSource(0xB0): StoreLogical(machine_.A | Get<s>()); return Next(1, 4);  // ORA s
        EachSource(0xB8): Compare(Get<s>()); return Next(1, 4);                    // CMP s
        case 0xE6: StoreLogical(machine_.A & Byte2()); return Next(2, 7);          // ANI byte
        case 0xEE: StoreLogical(machine_.A ^ Byte2()); return Next(2, 7);          // XRI byte
        case 0xF6: StoreLogical(machine_.A | Byte2()); return Next(2, 7);          // ORI byte
        case 0xFE: Compare(Byte2()); return Next(2, 7);                            // CPI byte
        case 0x2F: machine_.A = Low(~machine_.A); return Next(1, 4);               // CMA
        case 0x37: machine_.CY = true; return Next(1, 4);                          // STC
        case 0x3F: machine_.CY = !machine_.CY; return Next(1, 4);                  // CMC

        // Control transfer
        case 0xC3: return Jump(true);                                              // JMP addr
        EachCondition(0xC2): return Jump(Holds(c));                                // JNZ JZ JNC JC JPO JPE JP JM addr
        case 0xCD: return Call(true);                                              // CALL addr
        EachCondition(0xC4): return Call(Holds(c));                                // CNZ CZ CNC CC CPO CPE CP CM addr
        case 0xC9: return Return(true, 10);                                        // RET
        EachCondition(0xC0): return Return(Holds(c), 12);                          // RNZ RZ RNC RC RPO RPE RP RM
        case 0xE9: pc_ = Pair(HL); return Next(0, 6);                              // PCHL

        // Stack, ports and machine control
        EachPair(0xC5): return Push(pp);                                           // PUSH pp
        EachPair(0xC1): return Pop(pp);                                            // POP pp
        case 0xE3: return ExchangeStackTop();                                      // XTHL
        case 0xF9: machine_.SP = Pair(HL); return Next(1, 6);                      // SPHL
        case 0xDB: machine_.A = machine_.Ports[Byte2()]; return Next(2, 10);       // IN port
        case 0xD3: machine_.Ports[Byte2()] = machine_.A; return Next(2, 10);       // OUT port
        case 0x00: return Next(1, 4);                                              // NOP
        case 0x76: machine_.Halted = true; Next(0, 5); return false;               // HLT

        // not an instruction of this machine
        default: return false;
    }
}
// clang-format on

#undef EachMove
#undef EachPair
#undef EachCondition
#undef EachDestination
#undef EachSource

inline bool InstructionCycle::Next(int length, int tStates) {
    pc_ += length;
    tStates_ += tStates;
    return true;
}

inline bool InstructionCycle::Refuse(Limit limit, std::int32_t operand) {
    machine_.Refused = {limit, pc_, FetchOpcode(), operand};
    return false;
}

// Operands

template <std::uint8_t Code>
inline std::uint8_t InstructionCycle::Get() {
    if constexpr (Code != CodeOfM) return machine_.*RegisterOfCode[Code];
    tStates_ += MemoryOperandTStates;
    return At(Pair(HL));
}

template <std::uint8_t Code>
inline void InstructionCycle::Set(std::uint8_t value) {
    if constexpr (Code == CodeOfM) {
        tStates_ += MemoryOperandTStates;
        At(Pair(HL)) = value;
    } else {
        machine_.*RegisterOfCode[Code] = value;
    }
}

// The odd conditions, Z, C, PE and M, want their flag set.
inline bool InstructionCycle::Holds(std::uint8_t condition) const {
    constexpr bool Registers::*flags[] = {&Registers::Z, &Registers::CY, &Registers::P, &Registers::S};
    const bool flag = machine_.*flags[condition / 2];
    return condition % 2 == 0 ? !flag : flag;
}

// Flags and arithmetic

inline void InstructionCycle::SetFlagsFrom(std::uint8_t value) {
    machine_.S = value > 127;
    machine_.Z = value == 0;
    machine_.P = (std::popcount(value) & 1) == 0;
}

// A takes the value modulo 256, CY says whether it was above 255.
inline void InstructionCycle::StoreResult(int value) {
    machine_.A = Low(value);
    machine_.CY = value > 255;
    SetFlagsFrom(machine_.A);
}

// AC is a decimal carry: a low digit sum of 10 sets it.
inline void InstructionCycle::Add(std::uint8_t value, std::uint8_t carryIn) {
    machine_.AC = (machine_.A & 15) + (value & 15) + carryIn >= 10;
    StoreResult(machine_.A + value + carryIn);
}

// Sets the flags of A - value - borrowIn and returns that difference; A and AC stay.
inline std::uint8_t InstructionCycle::Difference(std::uint8_t value, std::uint8_t borrowIn) {
    const int difference = machine_.A - value - borrowIn;
    machine_.CY = difference < 0;
    SetFlagsFrom(Low(difference));
    return Low(difference);
}

inline void InstructionCycle::StoreLogical(int value) {
    machine_.A = Low(value);
    machine_.CY = false;
    SetFlagsFrom(machine_.A);
}

// INR and DCR: CY and AC stay.
inline std::uint8_t InstructionCycle::Stepped(std::uint8_t value, int change) {
    const std::uint8_t result = Low(value + change);
    SetFlagsFrom(result);
    return result;
}

inline void InstructionCycle::AddToHL(std::int32_t value) {
    const std::int32_t sum = Pair(HL) + value;
    machine_.CY = sum > 0xFFFF;
    SetPair(HL, sum);
}

// S, Z, P and CY change only with the high adjust. A low adjust that wraps, from FA up, always leads to the high one.
inline void InstructionCycle::DecimalAdjust() {
    const bool adjustLow = (machine_.A & 15) > 9 || machine_.AC;
    const int lowAdjusted = machine_.A + (adjustLow ? 6 : 0);
    const bool wrapped = lowAdjusted > 255;
    machine_.A = Low(lowAdjusted);
    if (wrapped || (machine_.A & 0xF0) > 0x90 || machine_.CY) {
        StoreResult(machine_.A + 0x60);
        machine_.CY = true;
    }
}

inline void InstructionCycle::RotateLeft(bool into) {
    machine_.CY = machine_.A > 0x7F;
    machine_.A = Low(machine_.A << 1 | MachineState::FlagBit(into));
}

inline void InstructionCycle::RotateRight(bool into) {
    machine_.CY = (machine_.A & 1) != 0;
    machine_.A = Low(machine_.A >> 1 | MachineState::FlagBit(into) << 7);
}

inline void InstructionCycle::Exchange() {
    std::swap(machine_.D, machine_.H);
    std::swap(machine_.E, machine_.L);
}

inline bool InstructionCycle::LoadHL(std::uint16_t address) {
    if (address == MemorySize - 1) return Refuse(Limit::WordAddress, address);
    machine_.L = At(address);
    machine_.H = At(address + 1);
    return Next(3, 16);
}

inline bool InstructionCycle::StoreHL(std::uint16_t address) {
    if (address == MemorySize - 1) return Refuse(Limit::WordAddress, address);
    At(address) = machine_.L;
    At(address + 1) = machine_.H;
    return Next(3, 16);
}

// Control transfer and stack

inline bool InstructionCycle::Jump(bool condition) {
    if (!condition) return Next(3, 7);
    pc_ = Word();
    return Next(0, 10);
}

inline bool InstructionCycle::Call(bool condition) {
    if (!condition) return Next(3, 9);
    if (!HasRoomToPush()) return Refuse(Limit::Push, machine_.SP);
    if (pc_ == LastFetchAddress) return Refuse(Limit::ReturnAddress, pc_ + 3);
    DoCall();
    return true;
}

// The target is read after the pushes, which may have written over it.
inline void InstructionCycle::DoCall() {
    PushWord(pc_ + 3);
    pc_ = Word();
    Next(0, 18);
}

inline bool InstructionCycle::Return(bool condition, int tStates) {
    if (!condition) return Next(1, 6);
    if (!HasWordToPop()) return Refuse(Limit::Pop, machine_.SP);
    DoReturn(tStates);
    return true;
}

inline void InstructionCycle::DoReturn(int tStates) {
    pc_ = Join(At(machine_.SP + 1), At(machine_.SP));
    machine_.SP += 2;
    tStates_ += tStates;
}

inline void InstructionCycle::PushWord(int value) {
    At(machine_.SP - 1) = High(value);
    At(machine_.SP - 2) = Low(value);
    machine_.SP -= 2;
}

inline bool InstructionCycle::Push(std::uint8_t code) {
    if (!HasRoomToPush()) return Refuse(Limit::Push, machine_.SP);
    PushWord(machine_.GetRegPair(code, true));
    return Next(1, 12);
}

inline bool InstructionCycle::Pop(std::uint8_t code) {
    if (!HasWordToPop()) return Refuse(Limit::Pop, machine_.SP);
    machine_.SetRegPair(code, At(machine_.SP + 1), At(machine_.SP), true);
    machine_.SP += 2;
    return Next(1, 10);
}

inline bool InstructionCycle::ExchangeStackTop() {
    if (!HasWordToPop()) return Refuse(Limit::Pop, machine_.SP);
    std::swap(machine_.L, At(machine_.SP));
    std::swap(machine_.H, At(machine_.SP + 1));
    return Next(1, 16);
}

}  // namespace m8085
