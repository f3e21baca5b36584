#pragma once

#include <array>
#include <sstream>
#include <string>

namespace support {

// The 256 codes as the data book's chart shows them; "-" where there is no instruction. Operands stand behind a comma
// or a blank; I8 and I16 stand for numbers and labels.
inline std::array<std::string, 256> OpcodeChart() {
    constexpr const char* chart =
        "NOP|LXI BC,I16|STAX BC|INX BC|INR B|DCR B|MVI B,I8|RLC|-|DAD BC|LDAX BC|DCX BC|INR C|DCR C|MVI C,I8|RRC|"
        "-|LXI DE,I16|STAX DE|INX DE|INR D|DCR D|MVI D,I8|RAL|-|DAD DE|LDAX DE|DCX DE|INR E|DCR E|MVI E,I8|RAR|"
        "-|LXI HL,I16|SHLD I16|INX HL|INR H|DCR H|MVI H,I8|DAA|-|DAD HL|LHLD I16|DCX HL|INR L|DCR L|MVI L,I8|CMA|"
        "-|LXI SP,I16|STA I16|INX SP|INR M|DCR M|MVI M,I8|STC|-|DAD SP|LDA I16|DCX SP|INR A|DCR A|MVI A,I8|CMC|"
        "RNZ|POP BC|JNZ I16|JMP I16|CNZ I16|PUSH BC|ADI I8|-|RZ|RET|JZ I16|-|CZ I16|CALL I16|ACI I8|-|"
        "RNC|POP DE|JNC I16|OUT I8|CNC I16|PUSH DE|SUI I8|-|RC|-|JC I16|IN I8|CC I16|-|SBI I8|-|"
        "RPO|POP HL|JPO I16|XTHL|CPO I16|PUSH HL|ANI I8|-|RPE|PCHL|JPE I16|XCHG|CPE I16|-|XRI I8|-|"
        "RP|POP PSW|JP I16|-|CP I16|PUSH PSW|ORI I8|-|RM|SPHL|JM I16|-|CM I16|-|CPI I8|-|";
    const std::string registers = "BCDEHLMA";
    const std::string accumulatorOperations[] = {"ADD ", "ADC ", "SUB ", "SBB ", "ANA ", "XRA ", "ORA ", "CMP "};

    std::array<std::string, 256> forms;
    std::istringstream cells(chart);
    for (std::size_t opcode = 0; opcode < 256; ++opcode) {
        const std::string source(1, registers[opcode & 7]);
        const std::size_t row = opcode >> 3 & 7;
        if (opcode < 0x40 || opcode >= 0xC0)
            std::getline(cells, forms[opcode], '|');
        else if (opcode == 0x76)
            forms[opcode] = "HLT";
        else if (opcode < 0x80)
            forms[opcode] = std::string("MOV ") + registers[row] + ',' + source;
        else
            forms[opcode] = accumulatorOperations[row] + source;
    }
    return forms;
}

}  // namespace support
