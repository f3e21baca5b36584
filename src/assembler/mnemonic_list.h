#pragma once

#include <string_view>

namespace assembler {

// The mnemonics in five lines, one for each group of instructions, as the colouring and the Code Assistant read them.
// A space or a line feed stands before every word.
inline constexpr std::string_view MnemonicList =
    " LDA LDAX LHLD LXI MOV MVI POP PUSH SHLD SPHL STA STAX XCHG XTHL \n"
    "ACI ADC ADD ADI DAA DAD DCR DCX INR INX RAL RAR RLC RRC SBB SBI SUB SUI \n"
    "ANA ANI CMA CMC CMP CPI ORA ORI STC XRA XRI \n"
    "CALL CC CM CNC CNZ CP CPE CPO CZ JC JM JMP JNC JNZ JP JPE JPO JZ RC RET RM RNC RNZ RP RPE RPO RZ PCHL \n"
    "HLT IN NOP OUT";

static_assert(MnemonicList.size() == 301);

}  // namespace assembler
