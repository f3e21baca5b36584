#pragma once

// The instructions of the simulated 8085. Only what executes instructions includes this file.

#include <utility>

#include "machine/processor.h"

namespace m8085 {

// A family of eight opcodes whose low three bits name the source register s, and one whose bits 5 to 3 name the
// destination register d. The code is a constant in each case, so that operand access costs no decoding.
#define VELMORA_REGISTER_CASE(opcode, name, code, statement) \
    case (opcode): {                                         \
        constexpr std::uint8_t name = (code);                \
        statement;                                           \
    }
#define VELMORA_EACH_SOURCE_BUT_M(base, statement)     \
    VELMORA_REGISTER_CASE((base) + 0, s, 0, statement) \
    VELMORA_REGISTER_CASE((base) + 1, s, 1, statement) \
    VELMORA_REGISTER_CASE((base) + 2, s, 2, statement) \
    VELMORA_REGISTER_CASE((base) + 3, s, 3, statement) \
    VELMORA_REGISTER_CASE((base) + 4, s, 4, statement) \
    VELMORA_REGISTER_CASE((base) + 5, s, 5, statement) \
    VELMORA_REGISTER_CASE((base) + 7, s, 7, statement)
#define VELMORA_EACH_SOURCE(base, statement)   \
    VELMORA_EACH_SOURCE_BUT_M(base, statement) \
    VELMORA_REGISTER_CASE((base) + 6, s, 6, statement)
#define VELMORA_EACH_DESTINATION(base, statement)          \
    VELMORA_REGISTER_CASE((base) + 0 * 8, d, 0, statement) \
    VELMORA_REGISTER_CASE((base) + 1 * 8, d, 1, statement) \
    VELMORA_REGISTER_CASE((base) + 2 * 8, d, 2, statement) \
    VELMORA_REGISTER_CASE((base) + 3 * 8, d, 3, statement) \
    VELMORA_REGISTER_CASE((base) + 4 * 8, d, 4, statement) \
    VELMORA_REGISTER_CASE((base) + 5 * 8, d, 5, statement) \
    VELMORA_REGISTER_CASE((base) + 6 * 8, d, 6, statement) \
    VELMORA_REGISTER_CASE((base) + 7 * 8, d, 7, statement)
#define VELMORA_EACH_PAIR(base, statement)                 \
    VELMORA_REGISTER_CASE((base) + 0x00, pp, 0, statement) \
    VELMORA_REGISTER_CASE((base) + 0x10, pp, 1, statement) \
    VELMORA_REGISTER_CASE((base) + 0x20, pp, 2, statement) \
    VELMORA_REGISTER_CASE((base) + 0x30, pp, 3, statement)

// Next(length, T-states) ends an instruction. An operand in memory charges its own 3 T-states on top.
// clang-format off
template <Storage Where>
inline bool Processor<Where>::Execute() {
    switch (Memory[Index(PC)]) {
        // Data transfer
        VELMORA_EACH_SOURCE(0x40, SetReg(0, GetReg(s)); return Next(1, 4))        // MOV B,s
        VELMORA_EACH_SOURCE(0x48, SetReg(1, GetReg(s)); return Next(1, 4))        // MOV C,s
        VELMORA_EACH_SOURCE(0x50, SetReg(2, GetReg(s)); return Next(1, 4))        // MOV D,s
        VELMORA_EACH_SOURCE(0x58, SetReg(3, GetReg(s)); return Next(1, 4))        // MOV E,s
        VELMORA_EACH_SOURCE(0x60, SetReg(4, GetReg(s)); return Next(1, 4))        // MOV H,s
        VELMORA_EACH_SOURCE(0x68, SetReg(5, GetReg(s)); return Next(1, 4))        // MOV L,s
        VELMORA_EACH_SOURCE_BUT_M(0x70, SetReg(6, GetReg(s)); return Next(1, 4))  // MOV M,s
        VELMORA_EACH_SOURCE(0x78, SetReg(7, GetReg(s)); return Next(1, 4))        // MOV A,s
        VELMORA_EACH_DESTINATION(0x06, SetReg(d, Byte2()); return Next(2, 7))     // MVI d,byte
        VELMORA_EACH_PAIR(0x01, SetRegPair(pp, High(Word()), Byte2(), false); return Next(3, 10))  // LXI pp,word
        case 0x3A: A = Memory[Word()]; return Next(3, 13);                        // LDA addr
        case 0x32: Memory[Word()] = A; return Next(3, 13);                        // STA addr
        case 0x0A: A = Memory[Join(B, C)]; return Next(1, 7);                     // LDAX B
        case 0x1A: A = Memory[Join(D, E)]; return Next(1, 7);                     // LDAX D
        case 0x02: Memory[Join(B, C)] = A; return Next(1, 7);                     // STAX B
        case 0x12: Memory[Join(D, E)] = A; return Next(1, 7);                     // STAX D
        case 0x2A: return LoadHL(Word());                                         // LHLD addr
        case 0x22: return StoreHL(Word());                                        // SHLD addr
        case 0xEB: Exchange(); return Next(1, 4);                                 // XCHG

        // Arithmetic
        VELMORA_EACH_SOURCE(0x80, Add(GetReg(s), 0); return Next(1, 4))               // ADD s
        VELMORA_EACH_SOURCE(0x88, Add(GetReg(s), CarryIn()); return Next(1, 4))       // ADC s
        VELMORA_EACH_SOURCE(0x90, Subtract(GetReg(s), 0); return Next(1, 4))          // SUB s
        VELMORA_EACH_SOURCE(0x98, Subtract(GetReg(s), CarryIn()); return Next(1, 4))  // SBB s
        case 0xC6: Add(Byte2(), 0); return Next(2, 7);                                // ADI byte
        case 0xCE: Add(Byte2(), CarryIn()); return Next(2, 7);                        // ACI byte
        case 0xD6: Subtract(Byte2(), 0); return Next(2, 7);                           // SUI byte
        case 0xDE: Subtract(Byte2(), CarryIn()); return Next(2, 7);                   // SBI byte
        VELMORA_EACH_DESTINATION(0x04, Step(d, +1); return Next(1, 4))                // INR d
        VELMORA_EACH_DESTINATION(0x05, Step(d, -1); return Next(1, 4))                // DCR d
        VELMORA_EACH_PAIR(0x03, StepPair(pp, +1); return Next(1, 6))                  // INX pp
        VELMORA_EACH_PAIR(0x0B, StepPair(pp, -1); return Next(1, 6))                  // DCX pp
        VELMORA_EACH_PAIR(0x09, AddToHL(pp); return Next(1, 10))                      // DAD pp
        case 0x27: DecimalAdjust(); return Next(1, 4);                                // DAA
        case 0x07: RotateLeft(A > 0x7F); return Next(1, 4);                           // RLC
        case 0x0F: RotateRight((A & 1) != 0); return Next(1, 4);                      // RRC
        case 0x17: RotateLeft(CY); return Next(1, 4);                                 // RAL
        case 0x1F: RotateRight(CY); return Next(1, 4);                                // RAR

        // Logic
        VELMORA_EACH_SOURCE(0xA0, StoreLogical(A & GetReg(s)); return Next(1, 4))  // ANA s
        VELMORA_EACH_SOURCE(0xA8, StoreLogical(A ^ GetReg(s)); return Next(1, 4))  // XRA s
        VELMORA_EACH_SOURCE(0xB0, StoreLogical(A | GetReg(s)); return Next(1, 4))  // ORA s
        VELMORA_EACH_SOURCE(0xB8, Compare(GetReg(s)); return Next(1, 4))           // CMP s
        case 0xE6: StoreLogical(A & Byte2()); return Next(2, 7);                   // ANI byte
        case 0xEE: StoreLogical(A ^ Byte2()); return Next(2, 7);                   // XRI byte
        case 0xF6: StoreLogical(A | Byte2()); return Next(2, 7);                   // ORI byte
        case 0xFE: Compare(Byte2()); return Next(2, 7);                            // CPI byte
        case 0x2F: A = Low(~A); return Next(1, 4);                                 // CMA
        case 0x37: CY = true; return Next(1, 4);                                   // STC
        case 0x3F: CY = !CY; return Next(1, 4);                                    // CMC

        // Control transfer
        case 0xC3: return Jump(true);           // JMP addr
        case 0xC2: return Jump(!Z);             // JNZ addr
        case 0xCA: return Jump(Z);              // JZ addr
        case 0xD2: return Jump(!CY);            // JNC addr
        case 0xDA: return Jump(CY);             // JC addr
        case 0xE2: return Jump(!P);             // JPO addr
        case 0xEA: return Jump(P);              // JPE addr
        case 0xF2: return Jump(!S);             // JP addr
        case 0xFA: return Jump(S);              // JM addr
        case 0xCD: return Call(true);           // CALL addr
        case 0xC4: return Call(!Z);             // CNZ addr
        case 0xCC: return Call(Z);              // CZ addr
        case 0xD4: return Call(!CY);            // CNC addr
        case 0xDC: return Call(CY);             // CC addr
        case 0xE4: return Call(!P);             // CPO addr
        case 0xEC: return Call(P);              // CPE addr
        case 0xF4: return Call(!S);             // CP addr
        case 0xFC: return Call(S);              // CM addr
        case 0xC9: return Return(true, 10);     // RET
        case 0xC0: return Return(!Z, 12);       // RNZ
        case 0xC8: return Return(Z, 12);        // RZ
        case 0xD0: return Return(!CY, 12);      // RNC
        case 0xD8: return Return(CY, 12);       // RC
        case 0xE0: return Return(!P, 12);       // RPO
        case 0xE8: return Return(P, 12);        // RPE
        case 0xF0: return Return(!S, 12);       // RP
        case 0xF8: return Return(S, 12);        // RM
        case 0xE9: PC = Join(H, L); return Next(0, 6);  // PCHL

        // Stack, ports and machine control
        VELMORA_EACH_PAIR(0xC5, return Push(pp))                            // PUSH pp
        VELMORA_EACH_PAIR(0xC1, return Pop(pp))                             // POP pp
        case 0xE3: return ExchangeStackTop();                               // XTHL
        case 0xF9: SP = Join(H, L); return Next(1, 6);                      // SPHL
        case 0xDB: A = Ports[Byte2()]; return Next(2, 10);                  // IN port
        case 0xD3: Ports[Byte2()] = A; return Next(2, 10);                  // OUT port
        case 0x00: return Next(1, 4);                                       // NOP
        case 0x76: Halted = true; Next(0, 5); return false;                 // HLT

        // No instructions of this machine. Naming them all spares the decoding a range check.
        case 0x08: case 0x10: case 0x18: case 0x20: case 0x28: case 0x30: case 0x38: case 0xC7: case 0xCB: case 0xCF:
        case 0xD7: case 0xD9: case 0xDD: case 0xDF: case 0xE7: case 0xED: case 0xEF: case 0xF3: case 0xF7: case 0xFB:
        case 0xFD: case 0xFF: return false;
    }
    return false;
}
// clang-format on

#undef VELMORA_EACH_PAIR
#undef VELMORA_EACH_DESTINATION
#undef VELMORA_EACH_SOURCE
#undef VELMORA_EACH_SOURCE_BUT_M
#undef VELMORA_REGISTER_CASE

template <Storage Where>
inline bool Processor<Where>::Next(int length, int tStates) {
    PC += length;
    Charge(tStates);
    return true;
}

template <Storage Where>
inline bool Processor<Where>::Refuse(Limit limit, std::int32_t operand) {
    const bool fetched = limit != Limit::Fetch;
    Refused = {limit, PC, fetched ? Memory[Index(PC)] : std::uint8_t{0}, operand};
    return false;
}

// Flags and arithmetic

template <Storage Where>
inline void Processor<Where>::SetFlagsFrom(std::uint8_t value) {
    S = value > 127;
    Z = value == 0;
    P = (std::popcount(value) & 1) == 0;
}

// A takes the value modulo 256, CY tells whether it was above 255.
template <Storage Where>
inline void Processor<Where>::StoreResult(int value) {
    A = Low(value);
    CY = value > 255;
    UpdateFlags();
}

// AC is a decimal carry: a low digit sum of 10 sets it.
template <Storage Where>
inline void Processor<Where>::Add(std::uint8_t value, std::uint8_t carryIn) {
    AC = (A & 15) + (value & 15) + carryIn >= 10;
    StoreResult(A + value + carryIn);
}

// Sets the flags of A - value - borrowIn and returns that difference; A and AC stay.
template <Storage Where>
inline std::uint8_t Processor<Where>::Difference(std::uint8_t value, std::uint8_t borrowIn) {
    const int difference = A - value - borrowIn;
    CY = difference < 0;
    SetFlagsFrom(Low(difference));
    return Low(difference);
}

template <Storage Where>
inline void Processor<Where>::StoreLogical(int value) {
    A = Low(value);
    CY = false;
    UpdateFlags();
}

// INR and DCR: CY and AC stay.
template <Storage Where>
inline void Processor<Where>::Step(std::uint8_t code, int change) {
    const std::uint8_t value = Low(GetReg(code) + change);
    SetReg(code, value);
    SetFlagsFrom(value);
}

// INX and DCX: 16 bits, no flags.
template <Storage Where>
inline void Processor<Where>::StepPair(std::uint8_t code, int change) {
    const int value = GetRegPair(code, false) + change;
    SetRegPair(code, High(value), Low(value), false);
}

template <Storage Where>
inline void Processor<Where>::AddToHL(std::uint8_t code) {
    const int sum = GetRegPair(code, false) + Join(H, L);
    CY = sum > 0xFFFF;
    SetRegPair(2, High(sum), Low(sum), false);
}

// S, Z, P and CY change only with the high adjust. A low adjust that wraps, from FA up, always leads to the high one.
template <Storage Where>
inline void Processor<Where>::DecimalAdjust() {
    const bool adjustLow = (A & 15) > 9 || AC;
    const int lowAdjusted = A + (adjustLow ? 6 : 0);
    const bool wrapped = lowAdjusted > 255;
    A = Low(lowAdjusted);
    if (wrapped || (A & 0xF0) > 0x90 || CY) {
        StoreResult(A + 0x60);
        CY = true;
    }
}

template <Storage Where>
inline void Processor<Where>::RotateLeft(bool into) {
    CY = A > 0x7F;
    A = Low(A << 1 | FlagBit(into));
}

template <Storage Where>
inline void Processor<Where>::RotateRight(bool into) {
    CY = (A & 1) != 0;
    A = Low(A >> 1 | FlagBit(into) << 7);
}

template <Storage Where>
inline void Processor<Where>::Exchange() {
    std::swap(D, H);
    std::swap(E, L);
}

template <Storage Where>
inline bool Processor<Where>::LoadHL(std::uint16_t address) {
    if (address == MemorySize - 1) return Refuse(Limit::WordAddress, address);
    L = Memory[address];
    H = Memory[address + 1U];
    return Next(3, 16);
}

template <Storage Where>
inline bool Processor<Where>::StoreHL(std::uint16_t address) {
    if (address == MemorySize - 1) return Refuse(Limit::WordAddress, address);
    Memory[address] = L;
    Memory[address + 1U] = H;
    return Next(3, 16);
}

// Control transfer and stack

template <Storage Where>
inline bool Processor<Where>::Jump(bool condition) {
    if (!condition) return Next(3, 7);
    PC = Word();
    return Next(0, 10);
}

template <Storage Where>
inline bool Processor<Where>::Call(bool condition) {
    if (!condition) return Next(3, 9);
    if (!HasRoomToPush()) return Refuse(Limit::Push, SP);
    if (PC == LastFetchAddress) return Refuse(Limit::ReturnAddress, PC + 3);
    DoCall();
    return true;
}

// The target is read after the pushes, which may have written over it.
template <Storage Where>
inline void Processor<Where>::DoCall() {
    Memory[Index(SP - 1)] = High(PC + 3);
    Memory[Index(SP - 2)] = Low(PC + 3);
    SP -= 2;
    PC = Word();
    Charge(18);
}

template <Storage Where>
inline bool Processor<Where>::Return(bool condition, int tStates) {
    if (!condition) return Next(1, 6);
    if (!HasWordToPop()) return Refuse(Limit::Pop, SP);
    DoReturn(tStates);
    return true;
}

template <Storage Where>
inline void Processor<Where>::DoReturn(int tStates) {
    PC = Join(Memory[Index(SP + 1)], Memory[Index(SP)]);
    SP += 2;
    Charge(tStates);
}

template <Storage Where>
inline bool Processor<Where>::Push(std::uint8_t code) {
    if (!HasRoomToPush()) return Refuse(Limit::Push, SP);
    const int value = GetRegPair(code, true);
    Memory[Index(SP - 2)] = Low(value);
    Memory[Index(SP - 1)] = High(value);
    SP -= 2;
    return Next(1, 12);
}

template <Storage Where>
inline bool Processor<Where>::Pop(std::uint8_t code) {
    if (!HasWordToPop()) return Refuse(Limit::Pop, SP);
    SetRegPair(code, Memory[Index(SP + 1)], Memory[Index(SP)], true);
    SP += 2;
    return Next(1, 10);
}

template <Storage Where>
inline bool Processor<Where>::ExchangeStackTop() {
    if (!HasWordToPop()) return Refuse(Limit::Pop, SP);
    std::swap(L, Memory[Index(SP)]);
    std::swap(H, Memory[Index(SP + 1)]);
    return Next(1, 16);
}

}  // namespace m8085
