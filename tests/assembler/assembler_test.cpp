#include "assembler/assembler.h"

#include <gtest/gtest.h>

#include <array>
#include <sstream>
#include <string>
#include <vector>

#include "support/bench.h"

namespace assembler {

using support::Bench;

namespace {

using Bytes = std::vector<int>;

std::string Narrow(std::u16string_view text) {
    std::string narrow;
    for (const char16_t character : text) narrow += character < 0x80 ? static_cast<char>(character) : '?';
    return narrow;
}

// The bytes from 8000 up to the last that is not zero.
Bytes Program(const Bench& bench) {
    Bytes bytes(bench.machine.Memory.begin() + m8085::ProgramOrigin,
                bench.machine.Memory.begin() + m8085::ProgramOrigin + 16);
    while (!bytes.empty() && bytes.back() == 0) bytes.pop_back();
    return bytes;
}

// The 256 codes as the data book's chart shows them; "-" where there is no instruction. Operands stand behind a comma
// or a blank; I8 and I16 stand for numbers and labels.
std::array<std::string, 256> OpcodeChart() {
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

std::u16string Repeat(std::u16string_view text, int times) {
    std::u16string repeated;
    while (times-- > 0) repeated += text;
    return repeated;
}

}  // namespace

TEST(Assembler, EveryInstructionGetsItsOwnOpcode) {
    const auto chart = OpcodeChart();
    for (std::size_t opcode = 0; opcode < 256; ++opcode) {
        std::string source = chart[opcode];
        if (source == "-") continue;
        Bytes expected{static_cast<int>(opcode)};
        const bool branch = source[0] == 'J' || source[0] == 'C';
        if (const auto number = source.find("I16"); number != std::string::npos) {
            source.replace(number, 3, branch ? "there\r\nthere:" : "1234");
            expected.insert(expected.end(), {branch ? 0x03 : 0x34, branch ? 0x80 : 0x12});
        } else if (const auto byte = source.find("I8"); byte != std::string::npos) {
            source.replace(byte, 2, "5A");
            expected.push_back(0x5A);
        }
        Bench bench;
        EXPECT_TRUE(bench.Assemble(std::u16string(source.begin(), source.end())).Succeeded) << source;
        if (opcode == 0) expected.clear();  // a NOP is a zero
        EXPECT_EQ(Program(bench), expected) << source;
    }
}

TEST(Assembler, SourceFormat) {
    const std::pair<std::u16string_view, Bytes> sources[] = {
        {u"", {}},
        {u"mov a,b", {0x78}},
        {u"rz", {0xC8}},
        {u"MOV A , B", {0x78}},
        {u"MOV A B", {0x78}},
        {u"\tMOV\tA,,\t,B\t;C", {0x78}},
        {u";MOV A,B\r\n  ; x\r\n\r\nRET ;y;z", {0xC9}},
        {u"MOV A,B XRA", {0xAF}},    // the fourth word takes the place of the first
        {u"MOV A,B XRA C", {0xA9}},  // and the fifth that of the second
        {u"MOV A,B MVI C 5", {0x0E, 5}},
        {u"RET 5", {0xC9}},  // words that the instruction does not want
        {u"INR A,B", {0x3C}},
        {u"MVI A,5 ;x\r\nRET", {0x3E, 5, 0xC9}},
        {u"MVI A,0ffH", {0x3E, 0xFF}},
        {u"MVI A,000000007", {0x3E, 7}},
        {u"MOV B,H", {0x44}},  // H is no suffix here
        {u"LXI H,9000", {0x21, 0, 0x90}},
        {u"LXI HL,9000H", {0x21, 0, 0x90}},
        {u"PUSH P\r\nPUSH PSW\r\nDAD S", {0xF5, 0xF5, 0x39}},
        {u"search:\r\nJMP SEARCH", {0xC3, 0, 0x80}},
        {u"NOP:MOV A,B\r\nJMP NOP", {0x78, 0xC3, 0, 0x80}},
        {u"9000H:RET\r\nJMP 9000h", {0xC9, 0xC3, 0, 0x80}},
        {u"RET\r\nX:RET\r\nX:JMP X", {0xC9, 0xC9, 0xC3, 1, 0x80}},  // the first definition holds
        {u"RET\r\n:\r\nJMP", {0xC9, 0xC3, 1, 0x80}},                // a label with no name
        {u"\u00E4:RET\r\nJMP \u00E4", {0xC9, 0xC3, 0, 0x80}},
    };
    for (const auto& [source, bytes] : sources) {
        Bench bench;
        bench.machine.Halted = true;
        const Assembly assembly = bench.Assemble(source);
        EXPECT_TRUE(assembly.Succeeded) << Narrow(source) << ": " << Narrow(assembly.AsmErrorText);
        EXPECT_EQ(Program(bench), bytes) << Narrow(source);
        EXPECT_FALSE(bench.machine.Halted);
    }
}

TEST(Assembler, FailuresTellTextAndLineAndKeepWhatWasWritten) {
    struct Failure {
        std::u16string_view Source;
        std::u16string_view Text;
        int Line;
        Bytes Left;
    };
    const Failure failures[] = {
        {u"RET\r\norg 9000", u"Bad opcode - ORG", 2, {0xC9}},
        {u"\r\n;\r\nDI", u"Bad opcode - DI", 3, {}},
        {u"B", u"Bad opcode - B", 1, {}},
        {u"MO A,B", u"Bad opcode - MO", 1, {}},
        {u"OV", u"Bad opcode - OV", 1, {}},
        {u"PUSHX A", u"Bad opcode - PUSHX", 1, {}},
        {u"NOP;X", u"Bad opcode - NOP;X", 1, {}},
        {u"MOV, A", u"Bad opcode - MOV,", 1, {}},
        {u",RET", u"Bad opcode - ,RET", 1, {}},
        {u"; note: hello", u"Bad opcode - HELLO", 2, {}},
        {u"MOV ,A,B", u"Bad operand - ,A", 1, {0x7C}},
        {u"MOV A,B,C", u"Bad operand - B,C", 1, {0x7C}},
        {u"MOV", u"Bad operand - ", 1, {0x7C}},
        {u"MOV B", u"Bad operand - ", 1, {0x40}},
        {u"MOV A,B\r\nMOV A", u"Bad operand - ", 2, {0x78, 0x7C}},  // the words of one line are gone on the next
        {u"ADI 5\r\nADI", u"Bad operand", 2, {0xC6, 5, 0xC6}},
        {u"MOV M,M", u"Bad operand - M", 1, {0x70}},
        {u"STAX H", u"Bad operand - H", 1, {0x02}},
        {u"MOV A;x", u"Bad operand - A;X", 1, {0x7C}},
        {u"RET\r\nMVI A,100", u"Bad operand", 2, {0xC9, 0x3E}},
        {u"MVI A,5;X", u"Bad operand", 1, {0x3E}},
        {u"MVI A,5: RET", u"Bad operand", 1, {0x3E}},
        {u"MVI A", u"Bad operand", 1, {0x3E}},
        {u"ADI", u"Bad operand", 1, {0xC6}},
        {u"ADI H", u"Bad operand", 1, {0xC6}},
        {u"ADI 10HH", u"Bad operand", 1, {0xC6}},
        {u"ADI -1", u"Bad operand", 1, {0xC6}},
        {u"ADI &H10", u"Bad operand", 1, {0xC6}},
        {u"LXI H,START\r\nSTART:RET", u"Bad operand", 1, {0x21}},
        {u"LDA 12345", u"Bad operand", 1, {0x3A, 0x45}},
        {u"LDA 100000000000000007", u"Bad operand", 1, {0x3A, 0x07}},
        {u"RET\r\nJMP 8000H", u"Bad label - 8000H", 2, {0xC9, 0xC3}},
        {u"\r\nCALL", u"Bad label - ", 2, {0xCD}},
        {u"X:JMP X\r\nJMP Y", u"Bad label - Y", 3, {0xC3, 0, 0x80, 0xC3}},
        {u"\u00E4:JMP \u00C4", u"Bad label - \u00C4", 2, {0xC3}},
        // a first word that is too long is told at the byte before it
        {u"PUSHXY A", u"Bad operand", 0, {}},
        {u"RET\r\n\r\nPUSHXY A", u"Bad operand", 1, {0xC9}},
        {u"RET\r\nMVI A,5\r\nPUSHXY A", u"Bad operand", 0, {0xC9, 0x3E, 5}},
    };
    for (const auto& [source, text, line, left] : failures) {
        SCOPED_TRACE(Narrow(source));
        Bench bench;
        bench.machine.Halted = true;
        const Assembly assembly = bench.Assemble(source);
        EXPECT_FALSE(assembly.Succeeded);
        EXPECT_EQ(assembly.AsmErrorText, text) << Narrow(assembly.AsmErrorText);
        EXPECT_EQ(assembly.AsmErrorLine, line);
        EXPECT_EQ(Program(bench), left);
        EXPECT_TRUE(bench.machine.Halted);
    }
}

TEST(Assembler, NotesLinesAndLabels) {
    Bench bench;
    const Assembly assembly = bench.Assemble(u"; count down\r\nMVI A,5\r\nLOOP:\r\nDCR A\r\nJNZ LOOP\r\nHLT");
    EXPECT_EQ(Program(bench), (Bytes{0x3E, 5, 0x3D, 0xC2, 2, 0x80, 0x76}));
    const int lines[] = {2, 0, 4, 5, 0, 0, 6, 0};
    for (int i = 0; i < 8; ++i) EXPECT_EQ(bench.codeMap.LineAt(m8085::ProgramOrigin + i), lines[i]);
    ASSERT_EQ(assembly.Labels.LabelCount(), 2);
    EXPECT_EQ(assembly.Labels[0].Name, u"LOOP");
    EXPECT_EQ(assembly.Labels[0].Address, 0x8002);
    EXPECT_EQ(assembly.Labels[0].Kind, LabelKind::Definition);
    EXPECT_EQ(assembly.Labels[1].Address, 0x8004);
    EXPECT_EQ(assembly.Labels[1].Kind, LabelKind::Reference);
    EXPECT_EQ(assembly.Labels[1].Line, 5);

    bench.Assemble(u"\r\n\r\nMVI A,6");
    EXPECT_EQ(Program(bench), (Bytes{0x3E, 6, 0x3D, 0xC2, 2, 0x80, 0x76})) << "nothing clears what lies behind";
    EXPECT_EQ(bench.codeMap.LineAt(0x8000), 3);
    EXPECT_EQ(bench.codeMap.LineAt(0x8006), 6);
    bench.Assemble(u"NOP\r\nTOOLONG");
    EXPECT_EQ(bench.codeMap.LineAt(0x8001), 2) << "the failing line is noted";
}

TEST(Assembler, HundredAndOneLabelsOfWhichTheLastIsOutOfReach) {
    const auto outcome = [](const std::u16string& source) {
        Bench bench;
        const Assembly assembly = bench.Assemble(source);
        return Narrow(assembly.AsmErrorText) + ' ' + std::to_string(assembly.AsmErrorLine);
    };
    EXPECT_EQ(outcome(Repeat(u"X:\r\n", 101)), " 0");
    EXPECT_EQ(outcome(Repeat(u"X:\r\n", 98) + u"JMP Y\r\nY:"), " 0");                 // Y in slot 99
    EXPECT_EQ(outcome(Repeat(u"X:\r\n", 99) + u"JMP Y\r\nY:"), "Bad label - Y 100");  // in slot 100
    EXPECT_EQ(outcome(Repeat(u"X:\r\n", 101) + u"JMP X"), "Bad operand 102");
    EXPECT_EQ(outcome(Repeat(u"X:\r\n", 101) + u"Y:"), "Bad operand 0");
    EXPECT_EQ(outcome(Repeat(u"X:\r\n", 101) + u"NOP\r\nY:"), "Bad operand 102");
}

TEST(Assembler, TakesNoLongerTextThanTheEditorMayHold) {
    Bench bench;
    std::u16string text(LongestPreparedText, u' ');
    text.back() = u'\n';
    EXPECT_TRUE(AssembleProgram(text, bench.machine, bench.codeMap).Succeeded);
    const Assembly tooLong = AssembleProgram(u" " + text, bench.machine, bench.codeMap);
    EXPECT_EQ(tooLong.AsmErrorText, u"Bad operand");
    EXPECT_EQ(tooLong.AsmErrorLine, 0);
}

}  // namespace assembler
