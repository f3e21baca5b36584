#include "assembler/warnings.h"

#include <gtest/gtest.h>

namespace assembler {

namespace {

std::u16string WarningsOf(std::u16string_view source) {
    std::u16string text;
    for (const Warning& warning : FindWarnings(PrepareProgram(source)))
        text += char16_t(u'0' + warning.Line) + (u": " + warning.Text + u"\n");
    return text;
}

}  // namespace

TEST(Warnings, NameWhatAssemblesAsSomethingElse) {
    const std::pair<std::u16string_view, std::u16string_view> programs[] = {
        {u"mvi a,5 ; it was: hlt", u"1: the colon in the comment ends it: HLT is part of the program\n"},
        {u"nop\n; a: b: c: nop", u"2: the colon in the comment ends it: B: is part of the program\n"},
        {u"hlt // a: nop", u"1: a comment begins with \";\", not with //: NOP is part of the program\n"},
        {u"this is a hlt", u"1: only HLT counts on this line: THIS is lost\n"},
        {u"l: nop\nhlt\nL: nop", u"3: the label L is defined in line 1 already, and jumps and calls go there\n"},
        {u"mov a,b xra", u"1: only XRA counts on this line: MOV is lost\n"},
        {u"mov a,b l:", u"1: only L: counts on this line: MOV is lost\n"},
        {u"inr a hlt", u"1: only INR counts on this line: HLT is lost\n"},
        {u"ret l: nop", u"1: only RET counts on this line: L: is lost\n"},
        {u"add a,b", u"1: ADD takes one operand: B is lost\n"},
        {u"l: ret 5 ; x", u"1: RET takes no operand: 5 is lost\n"},
        {u"mvi a,5 mvi b,6", u"1: only the last MVI counts on this line\n"},
        {u"mvi a,b\nlda a,2050h",
         u"1: B is the number 0B here, not the register\n2: LDA takes one operand: 2050H is lost\n"
         u"2: A is the number 000A here, not the register\n"},
        {u"lxi h,de\nlda b1\nb1: hlt",
         u"1: DE is the number 00DE here, not the register\n2: B1 is the number 00B1 here, not the label\n"},
        {u"mvi a,20\nlxi h,9000H", u"1: 20 is hexadecimal too, though line 2 has 9000H\n"},
    };
    for (const auto& [source, warnings] : programs) EXPECT_EQ(WarningsOf(source), warnings);
}

TEST(Warnings, LeaveAloneWhatIsMeantSo) {
    for (const std::u16string_view source :
         {u"mvi a,5 ; it was: nothing", u"; a:\n; b: ; nop", u"l: nop ; l:", u"jmp hlt\nhlt: hlt", u"mvi a cc",
          u"sta 9000\nmvi a,0AH", u"mvi a,9\nadi 0AH", u"adi 1AH\nadi 1A", u"jmp 10\n10: adi 0AH", u"loop: mvi a,5",
          u"nop ; a: mvi a,q\nadi 0AH\nmvi q,10 ; faulty", u"nop ; a: jmp b", u"hlt // ret", u"mvi a,bc", u"mvi a,0b",
          u"ret early", u"adi 10\n10: nop"})
        EXPECT_EQ(WarningsOf(source), u"");
}

}  // namespace assembler
