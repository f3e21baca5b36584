#include "aids/program_tip.h"

#include <gtest/gtest.h>

#include "machine/text.h"
#include "support/test_rig.h"

namespace aids {

TEST(ProgramTip, SaysWhatStandsAtAPlaceAndOfTheAssembledTextAlsoWhere) {
    constexpr bool onlyAssembled = true;
    struct Row {
        int Line;
        std::u16string_view At;  // a place in the line, and what is right of it
        std::u16string_view Tip;
        bool IsOnlyOfAssembledText = false;
    };
    const Row rows[] = {
        {1, u"mvi", u""},
        {2, u"tart:", u"START is 8000, defined in line 2", onlyAssembled},
        {3, u"vi a", u"Puts a number into a register or memory byte\n2 bytes; 7 T-states, 10 with M; no flags"},
        {3, u"a ,", u"A is 2A\nBinary 0010 1010, decimal 42"},
        {3, u"fh", u"Binary 1111 1111, decimal 255, signed -1"},
        {3, u", 0", u"8000: 3E FF", onlyAssembled},
        {3, u"mvi b", u"8000: 3E FF", onlyAssembled},
        {4, u"m,a", u"M, the byte at 9041, is 07\nBinary 0000 0111, decimal 7"},
        {5, u"h,", u"HL is 9041\nDecimal 36929"},
        {6, u"psw", u"PSW is 2A40\nA is 2A, F is 40"},
        {7, u"p", u"SP is FFF0\nDecimal 65520"},
        {9, u"A", u"Binary 0010 1010, decimal 42, character *"},
        {10, u"START", u"START is 8000, defined in line 2", onlyAssembled},
        {10, u"nz",
         u"Jumps to a label if Z is 0: not zero, not equal\n3 bytes; 7 T-states, 10 if the condition holds; no flags"},
        {11, u"b,b", u"B is 00\nBinary 0000 0000, decimal 0"},
        {11, u"b", u"Binary 0000 1011, decimal 11"},
        {12, u"mp", u"Jumps to a label\n3 bytes; 10 T-states; no flags"},
        {13, u"dd", u"Adds a register or memory byte to A\n1 byte; 4 T-states, 7 with M; flags S Z AC P CY"},
        {14, u"", u"8014: 76", onlyAssembled},
    };
    support::TestRig rig;
    constexpr std::u16string_view source =
        u"; no mvi\r\nstart:\r\n\tmvi a , 0ffh ; mvi b\r\nmov m,a\r\nlxi h,9041\r\npush psw\r\ninx\tsp\r\nldax b\r\n"
        u"out 2A\r\njnz START\r\nmvi b,b\r\njmp start\r\nadd b\r\nhlt";
    const assembler::Assembly assembly = rig.Assemble(source);
    ASSERT_TRUE(assembly.Succeeded);
    rig.machine.SetPSW(0x2A40);
    rig.machine.SetRegPair(2, 0x90, 0x41, false);
    rig.machine.Memory[0x9041] = 7;
    const std::u16string prepared = assembler::ConvertLineEnds(source);
    const auto lines = m8085::LinesOf(prepared);
    for (const auto& [line, at, tip, isOnlyOfAssembledText] : rows) {
        const std::u16string_view text = lines[std::size_t(line - 1)];
        const TextPlace place{text, line, at.empty() ? text.size() : text.rfind(at)};
        EXPECT_EQ(ProgramTip(place, rig.machine, rig.codeMap, &assembly), tip) << line;
        EXPECT_EQ(ProgramTip(place, rig.machine, rig.codeMap, nullptr), isOnlyOfAssembledText ? u"" : tip) << line;
    }
    const std::u16string_view unbroken = u"a: b:mov x,c : mov e,g : lxi b,12 : lxi b,ffff";
    for (const auto& [column, begins] : {std::pair{5u, u"Copies"},
                                         {19u, u"E is"},
                                         {21u, u""},
                                         {31u, u"Binary 0000 0000 0001"},
                                         {42u, u"Binary 1111 1111 1"}}) {
        const std::u16string tip = ProgramTip({unbroken, 1, column}, rig.machine, rig.codeMap, nullptr);
        EXPECT_TRUE(tip.starts_with(begins) && tip.empty() == std::u16string_view(begins).empty()) << column;
    }
}

}  // namespace aids
