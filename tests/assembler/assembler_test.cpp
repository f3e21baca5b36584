#include "assembler/assembler.h"

#include <gtest/gtest.h>

#include <array>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include "assembler/explanation.h"
#include "assembler/instruction_table.h"
#include "support/test_rig.h"

namespace assembler {

using support::Narrow;
using support::TestRig;

namespace {

using Bytes = std::vector<int>;

// The bytes from 8000 up to the last that is not zero.
Bytes Program(const TestRig& rig) {
    Bytes bytes(rig.machine.Memory.begin() + m8085::ProgramOrigin,
                rig.machine.Memory.begin() + m8085::ProgramOrigin + 16);
    while (!bytes.empty() && bytes.back() == 0) bytes.pop_back();
    return bytes;
}

// The 256 codes as the data book's chart shows them; "-" where there is no instruction. Operands stand after a comma
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
        TestRig rig;
        EXPECT_TRUE(rig.Assemble(std::u16string(source.begin(), source.end())).Succeeded) << source;
        if (opcode == 0) expected.clear();  // a NOP is a zero
        EXPECT_EQ(Program(rig), expected) << source;
    }
}

TEST(Assembler, SourceFormat) {
    const std::pair<std::u16string, Bytes> sources[] = {
        {u"MOV A B", {0x78}},
        {u"\tMOV\tA,,\t,B\t;C", {0x78}},
        {u";MOV A,B\r\n  ; x\r\n\r\nRET ;y;z", {0xC9}},
        {u"MOV A,B MVI C 5", {0x0E, 5}},  // the fourth word takes the place of the first, and so on
        {u"INR A,B", {0x3C}},             // a word that the instruction does not want
        {u"MVI A,0ffH", {0x3E, 0xFF}},
        {u"MVI A,000000007", {0x3E, 7}},
        {u"PUSH P\r\nPUSH PSW\r\nDAD S", {0xF5, 0xF5, 0x39}},
        {u"search:\r\nJMP SEARCH", {0xC3, 0, 0x80}},
        {u"NOP:MOV A,B\r\nJMP NOP", {0x78, 0xC3, 0, 0x80}},
        {u"9000H:RET\r\nJMP 9000h", {0xC9, 0xC3, 0, 0x80}},
        {u"RET\r\nX:RET\r\nX:JMP X", {0xC9, 0xC9, 0xC3, 1, 0x80}},  // the first definition holds
        {u"RET\r\n:\r\nJMP", {0xC9, 0xC3, 1, 0x80}},                // a label with no name
        {u"\u00E4:RET\r\nJMP \u00E4", {0xC9, 0xC3, 0, 0x80}},
        {Repeat(u"X:\r\n", 98) + u"JMP Y\r\nY:", {0xC3, 3, 0x80}},  // in the last slot that is searched
        {std::u16string(LongestPreparedText - 1, u' '), {}},
    };
    for (const auto& [source, bytes] : sources) {
        TestRig rig;
        rig.machine.Halted = true;
        const Assembly assembly = rig.Assemble(source);
        EXPECT_TRUE(assembly.Succeeded) << Narrow(source) << ": " << Narrow(assembly.AsmErrorText);
        EXPECT_EQ(Program(rig), bytes) << Narrow(source);
        EXPECT_FALSE(rig.machine.Halted);
    }
}

TEST(Assembler, FailuresReportTextAndLineAndKeepWhatWasWritten) {
    const std::tuple<std::u16string, std::u16string_view, int, Bytes> failures[] = {
        {u"RET\r\norg 9000", u"Bad opcode - ORG", 2, {0xC9}},
        {u"MO A,B", u"Bad opcode - MO", 1, {}},
        {u"OV", u"Bad opcode - OV", 1, {}},
        {u"PUSHX A", u"Bad opcode - PUSHX", 1, {}},
        {u"MOV, A", u"Bad opcode - MOV,", 1, {}},
        {u"MOV ,A,B", u"Bad operand - ,A", 1, {0x7C}},
        {u"MOV A,B,C", u"Bad operand - B,C", 1, {0x7C}},
        {u"MOV A,B\r\nMOV A", u"Bad operand - ", 2, {0x78, 0x7C}},  // the words of one line are gone on the next
        {u"ADI 5\r\nADI", u"Bad operand", 2, {0xC6, 5, 0xC6}},
        {u"MOV M,M", u"Bad operand - M", 1, {0x70}},
        {u"RET\r\nMVI A,100", u"Bad operand", 2, {0xC9, 0x3E}},
        {u"ADI 10HH", u"Bad operand", 1, {0xC6}},
        {u"LXI H,START\r\nSTART:RET", u"Bad operand", 1, {0x21}},
        {u"LDA 100000000000000007", u"Bad operand", 1, {0x3A, 0x07}},
        {u"\r\nCALL", u"Bad label - ", 2, {0xCD}},
        {u"X:JMP X\r\nJMP Y", u"Bad label - Y", 3, {0xC3, 0, 0x80, 0xC3}},
        {u"\u00E4:JMP \u00C4", u"Bad label - \u00C4", 2, {0xC3}},
        // a first word that is too long is reported at the byte before it
        {u"RET\r\n\r\nPUSHXY A", u"Bad operand", 1, {0xC9}},
        {u"RET\r\nMVI A,5\r\nPUSHXY A", u"Bad operand", 0, {0xC9, 0x3E, 5}},
        {Repeat(u"X:\r\n", 101) + u"JMP X", u"Bad operand", 102, {0xC3}},
        {Repeat(u"X:\r\n", 101) + u"Y:", u"Bad operand", 0, {}},
        {std::u16string(LongestPreparedText, u' '), u"Bad operand", 0, {}},
    };
    for (const auto& [source, text, line, left] : failures) {
        SCOPED_TRACE(Narrow(source));
        TestRig rig;
        rig.machine.Halted = true;
        const Assembly assembly = rig.Assemble(source);
        EXPECT_FALSE(assembly.Succeeded);
        EXPECT_EQ(assembly.AsmErrorText, text) << Narrow(assembly.AsmErrorText);
        EXPECT_EQ(assembly.AsmErrorLine, line);
        EXPECT_EQ(Program(rig), left);
        EXPECT_TRUE(rig.machine.Halted);
    }
}

// What stands before the note is the line of the file.
TEST(Assembler, NotesNameTheCauseOfAFailure) {
    const std::pair<std::u16string, std::string> lines[] = {
        {u"nop ; note: hello", "1: a colon in a comment breaks the line there: leave it out"},
        {u"a: b: nop\n\r; x: y: z", "3: a colon in a comment breaks the line there: leave it out"},
        {u"a: jmp a ; see: jmp b", "1: a colon in a comment breaks the line there: leave it out"},
        {u"nop\nlda 2006h;store", "2: a comment needs a blank before its \";\""},
        {u"hlt;\u00A0end", "1: a comment needs a blank before its \";\""},
        {u"SUB 07H", "1: SUB takes a register here; SUI takes a number: sui 07h"},
        {u"MOV A,0FH", "1: MOV takes a register here; MVI takes a number: mvi a,0fh"},
        {u"mov 2000h,a", "1: MOV takes a register or M, not 2000H: mov a,b"},
        {u"adi h", "1: ADI takes a number; ADD takes a register: add h"},
        {u"lda hl", "1: LDA takes a number here, not a register: lda 9005"},
        {u"STAX H", "1: STAX takes B or D, not H: stax b"},
        {u"mov m,m", "1: MOV takes a register as its second operand, not M: mov m,a"},
        {u"push", "1: PUSH takes B, D, H or PSW, which is missing: push b"},
        {u"mov a", "1: MOV takes a register or M as its second operand, which is missing: mov a,b"},
        {u"#ORG 8000H",
         "1: ORG is a directive, and there are none here: a program begins at 8000, and elsewhere by the --origin of "
         "velmora-run"},
        {u"five equ 5", "1: EQU is a directive, and there are none here: write the number itself"},
        {u"rst 1", "1: this machine has no interrupts, and so no RST"},
        {u"l: LNZ l", "1: there is no LNZ; is RNZ, JNZ or CNZ meant?"},
        {u"MVOI a,5", "1: there is no MVOI; is MVI meant?"},
        {u"begin mvi a,5", "1: if BEGIN is a label, it needs a colon: BEGIN:"},
        {u"\nfinished", "2: if FINISHED is a label, it needs a colon: FINISHED:"},
        {u"loop : nop", "1: no blank belongs between a label and its colon"},
        {u"A000 mvi a,5", "1: no address belongs before an instruction"},
        {u"// sum", "1: a comment begins with \";\", not with //"},
        {u"----", "1: a line begins with a label or a mnemonic; a comment begins with \";\""},
        {u"hlt // see: mvi q", "1: a comment begins with \";\", not with //"},
        {u"hlt /* stop\nadd two\n*/", "2: a comment begins with \";\", not with /*"},
        {u"hlt /* */\nadd two\nhlt /*", "2: ADD takes a register or M, not TWO: add b"},
        {u"\"note: sum\"", "1: a comment begins with \";\", not with \""},
        {u"; a // b: mvi", "1: a colon in a comment breaks the line there: leave it out"},
        {u"cpu \"8085.tbl\"", "1: CPU is a directive, and there are none here: leave it out"},
        {u".title sum;x", "1: TITLE is a directive, and there are none here: leave it out"},
        {u"word: .word 5, 6, 7",
         "1: WORD is a directive, and there are none here: put data into memory by instructions or by a data file"},
        {u"if x", "1: IF is a directive, and there are none here: leave it out"},
        {u"end of the program", "1: END is a directive, and there are none here: leave it out"},
        {u"jz end\nend\nhlt", "2: if END is a label, it needs a colon: END:"},
        {u"this is a comment", "1: there is no mnemonic THIS; a label needs a colon, and a comment a \";\" before it"},
        {u"l: jmp l if it is", "1: IF is too much for JMP; a comment needs a \";\" before it"},
        {u"mvi a,100d as a start", "1: all numbers are hexadecimal: decimal 100 is 64"},
        {u"mov a,b adi 100", "1: a line holds one instruction: ADI belongs on the next"},
        {u"mvia,05", "1: a blank belongs after MVI"},
        {u"lda9000h", "1: a blank belongs after LDA"},
        {u"out1\njmp out1", "1: if OUT1 is a label, it needs a colon: OUT1:"},
        {u"jmp hl", "1: PCHL jumps to the address in HL"},
        {u"mov,a b", "1: a comma stands between two operands and nowhere else"},
        {u"mov a b c", "1: C is too much for MOV; a comment needs a \";\" before it"},
        {u"mvi a,255", "1: all numbers are hexadecimal: decimal 255 is FF"},
        {u"mvi a,00000101b", "1: all numbers are hexadecimal: binary 00000101 is 05"},
        {u"mvi a,fff", "1: FFF is too large for a byte: the largest is FF"},
        {u"lxi h,90000", "1: 90000 is too large for 16 bits: the largest number is FFFF"},
        {u"mvi 12", "1: MVI takes a register or M, not 12: mvi a,05"},
        {u"adi", "1: the number that ADI takes is missing: adi 05"},
        {u"adi 'x'", "1: characters are not numbers: write their codes"},
        {u"lda 9o00", "1: there is a letter O in 9O00 where a 0 belongs"},
        {u"lxi h,table\ntable: nop", "1: a label is not a number: write the address that it stands for"},
        {u"mvi a,5: ret", "1: a colon belongs after a label only, first on its line"},
        {u"nop\ncall 2000", "2: a jump or call goes to a label, not to an address: put a label there"},
        {u"loop: nop\njnz lop", "2: there is no label LOP; is LOOP meant?"},
        {u"jnz c010h", "1: a jump or call goes to a label, not to an address: put a label there"},
        {u":\njmp a", "2: no line defines it: put A: where it is to go"},
        {u"jmp", "1: a jump or call needs a label to go to: jmp loop"},
        {u"hlt l: nop\njmp l", "2: L: does not come first on its line, and so is not a label"},
        {u"l: jmp l:", "1: no colon belongs after the label of a jump or call"},
        {Repeat(u"x:\n", 101) + u"jmp x", "102: all 101 places that there are for labels, jumps and calls are taken"},
        {Repeat(u"x:\n", 99) + u"jmp y\ny:",
         "100: Y has the last of the 101 places for labels and jumps, where it cannot be found"},
        {Repeat(u"x:\n", 100) + u"jmp zz", "101: no line defines it: put ZZ: where it is to go"},
        {u"nop\n" + std::u16string(40000, u' '), "0: "},
        {u"adi " + std::u16string(99, u'z'),
         "1: " + std::string(30, 'Z') +
             "... is not a number: those are hexadecimal digits and nothing else, but for a final H"},
    };
    for (const auto& [source, expected] : lines) {
        TestRig rig;
        const PreparedProgram program = PrepareProgram(source);
        const Assembly assembly = AssembleProgram(program.Text, rig.machine, rig.codeMap);
        const std::string line = std::to_string(program.SourceLine(assembly.FaultLine));
        EXPECT_EQ(line + ": " + Narrow(ExplainFailure(program, assembly)), expected) << Narrow(source.substr(0, 80));
    }
}

// By their lines and what follows "Bad ".
TEST(Assembler, FindsAllFaults) {
    const std::pair<std::u16string, std::string> programs[] = {
        {u"nop\nmvi a,5\nx: jmp x", ""},
        {u"jmp a\nmvi q,1\nadi\nnop ; note: hello", "1 label - A, 2 operand - Q, 3 operand, 4 opcode - HELLO, "},
        // labels that faulty lines define, with or without a colon, and none that a comment does
        {u"jmp a\nA mvi b,5\njmp b\nb;x\njmp c\nthe c: nop", "2 opcode - A, 4 opcode - B;X, 6 opcode - THE, "},
        {u"jmp a\n; x: a", "1 label - A, 2 opcode - A, "},
        // one line of the source, and once more its comment
        {u"foo a: bar ; b: c: d e: f\nadd ; b: c", "1 opcode - FOO, 1 opcode - D, 2 operand - , 2 opcode - C, "},
        {Repeat(u"x:\n", 101) + u"jmp y\ny: foo", "102 operand, 103 opcode - FOO, "},
        {Repeat(u"foo\n", 20000), ""},
    };
    for (const auto& [source, expected] : programs) {
        std::string found;
        for (const LineFault& fault : FindFaults(PrepareProgram(source)))
            found += std::to_string(fault.Line) + Narrow(fault.Message).substr(3) + ", ";
        EXPECT_EQ(found, expected) << Narrow(source.substr(0, 80));
    }
}

TEST(Assembler, NotesLinesAndLabels) {
    TestRig rig;
    const Assembly assembly = rig.Assemble(u"; count down\r\nMVI A,5\r\nLOOP:\r\nDCR A\r\nJNZ LOOP\r\nHLT");
    EXPECT_EQ(Program(rig), (Bytes{0x3E, 5, 0x3D, 0xC2, 2, 0x80, 0x76}));
    const int lines[] = {2, 0, 4, 5, 0, 0, 6, 0};
    for (int i = 0; i < 8; ++i) EXPECT_EQ(rig.codeMap.LineAt(m8085::ProgramOrigin + i), lines[i]);
    ASSERT_EQ(assembly.Labels.LabelCount(), 2);
    const auto& [name, address, kind, lineOfLabel] = assembly.Labels[0];
    EXPECT_TRUE(name == u"LOOP" && address == 0x8002 && kind == LabelKind::Definition);
    const auto& [target, place, reference, lineOfJump] = assembly.Labels[1];
    EXPECT_TRUE(place == 0x8004 && reference == LabelKind::Reference && lineOfJump == 5);

    rig.Assemble(u"\r\n\r\nMVI A,6");
    EXPECT_EQ(Program(rig), (Bytes{0x3E, 6, 0x3D, 0xC2, 2, 0x80, 0x76})) << "nothing clears what lies after it";
    EXPECT_EQ(rig.codeMap.LineAt(0x8000), 3);
    EXPECT_EQ(rig.codeMap.LineAt(0x8006), 6);
    rig.Assemble(u"NOP\r\nTOOLONG");
    EXPECT_EQ(rig.codeMap.LineAt(0x8001), 2) << "the failing line is noted";
}

}  // namespace assembler
