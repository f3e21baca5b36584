#include "assembler/explanation.h"

#include <gtest/gtest.h>

#include "support/bench.h"

namespace assembler {

namespace {

std::string Narrow(std::u16string_view text) {
    return {text.begin(), text.end()};
}

// The line at fault in the file, and the note.
std::string Explain(const std::string& source) {
    const PreparedProgram program = PrepareProgram(std::u16string(source.begin(), source.end()));
    support::Bench bench;
    const Assembly assembly = AssembleProgram(program.Text, bench.machine, bench.codeMap);
    return std::to_string(program.SourceLine(assembly.FaultLine)) + ": " + Narrow(ExplainFailure(program, assembly));
}

std::string Repeat(const std::string& text, int times) {
    std::string repeated;
    while (times-- > 0) repeated += text;
    return repeated;
}

}  // namespace

TEST(Explanation, NamesTheCauseAndTheLineOfTheFile) {
    const std::pair<std::string, std::string> lines[] = {
        {"nop ; note: hello", "1: a colon in a comment breaks the line there: leave it out"},
        {"a: b: nop\n\r; x: y: z", "3: a colon in a comment breaks the line there: leave it out"},
        {"nop\nlda 2006h;store", "2: a comment needs a blank before its \";\""},
        {"hlt;end", "1: a comment needs a blank before its \";\""},
        {"l: jmp l;again", "1: a comment needs a blank before its \";\""},
        {"SUB 07H", "1: SUB takes a register here; SUI takes a number"},
        {"MOV A,0FH", "1: MOV takes a register here; MVI takes a number"},
        {"adi h", "1: ADI takes a number; ADD takes a register"},
        {"lda hl", "1: LDA takes a number here, not a register"},
        {"STAX H", "1: STAX takes B or D, not H"},
        {"mov m,m", "1: MOV takes A, B, C, D, E, H or L as its second operand, not M"},
        {"push", "1: PUSH takes B, D, H or PSW, which is missing"},
        {"mov a", "1: MOV takes A, B, C, D, E, H, L or M as its second operand, which is missing"},
        {"#ORG 8000H", "1: ORG is a directive, and there are none here: a program always begins at 8000"},
        {"five equ 5", "1: EQU is a directive, and there are none here: write the number itself"},
        {"data: db 5",
         "1: DB is a directive, and there are none here: put data into memory by instructions or by a "
         "data file"},
        {"rst 1", "1: this machine has no interrupts, and so no RST"},
        {"l: LNZ l", "1: there is no LNZ; is RNZ, JNZ or CNZ meant?"},
        {"HALT", "1: there is no HALT; is HLT meant?"},
        {"MVOI a,5", "1: there is no MVOI; is MVI meant?"},
        {"loop mvi a,5", "1: if LOOP is a label, it needs a colon: LOOP:"},
        {"jmp calc\ncalc\nnop", "2: if CALC is a label, it needs a colon: CALC:"},
        {"\nfinished", "2: if FINISHED is a label, it needs a colon: FINISHED:"},
        {"loop : nop", "1: no blank belongs between a label and its colon"},
        {"8000 mvi a,5", "1: no address belongs in front of an instruction"},
        {"// sum", "1: a line begins with a label or a mnemonic; a comment begins with \";\""},
        {"mov,a b", "1: a comma stands between two operands and nowhere else"},
        {"add two numbers", "1: ADD takes A, B, C, D, E, H, L or M, not TWO"},
        {"this is it", "1: there is no mnemonic THIS; a label needs a colon, a comment a \";\" in front"},
        {"mvi a,255", "1: all numbers are hexadecimal: decimal 255 is FF"},
        {"mvi a,100d", "1: all numbers are hexadecimal: decimal 100 is 64"},
        {"mvi a,00000101b", "1: all numbers are hexadecimal: binary 00000101 is 05"},
        {"mvi a,fff", "1: FFF is too large for a byte: the largest is FF"},
        {"lxi h,90000", "1: 90000 is too large for 16 bits: the largest number is FFFF"},
        {"adi", "1: the number that ADI takes is missing"},
        {"adi 3g", "1: 3G is no number: those are hexadecimal digits and nothing else, but for a final H"},
        {"lda 9o00", "1: there is a letter O in 9O00 where a 0 belongs"},
        {"lxi h,table\ntable: nop", "1: a label is no number: write the address that it stands for"},
        {"mvi a,5: ret", "1: a colon belongs behind a label only, first on its line"},
        {"nop\ncall 2000", "2: a jump or call goes to a label, not to an address: put a label there"},
        {"loop: nop\njnz lop", "2: there is no label LOP; is LOOP meant?"},
        {"jz done", "1: no line defines it: put DONE: where it is to go"},
        {"jmp", "1: a jump or call needs a label to go to"},
        {"l: jmp l:", "1: no colon belongs behind the label of a jump or call"},
        {Repeat("x:\n", 101) + "y:", "102: all 101 places that there are for labels, jumps and calls are taken"},
        {Repeat("x:\n", 101) + "jmp x", "102: all 101 places that there are for labels, jumps and calls are taken"},
        {Repeat("x:\n", 99) + "jmp y\ny:",
         "100: Y has the last of the 101 places for labels and jumps, where it cannot be found"},
        {"nop\n" + std::string(40000, ' '), "0: "},
        {"adi " + std::string(99, 'z'), "1: " + std::string(30, 'Z') +
                                            "... is no number: those are hexadecimal digits and nothing else, but for "
                                            "a final H"},
    };
    for (const auto& [source, expected] : lines) EXPECT_EQ(Explain(source), expected) << source.substr(0, 80);
}

}  // namespace assembler
