#include "aids/instruction_entry.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace aids {

namespace {

void ExpectStep(const EntryStep& step, const std::u16string& text, NextEntry next) {
    EXPECT_EQ(step.Text, text);
    EXPECT_EQ(step.Next, next);
}

std::string LiveKeys(const InstructionEntry& entry) {
    std::string live;
    for (const char* key : {"A", "B", "C", "D", "E", "H", "L", "M", "BC", "DE", "HL", "SP", "PSW"})
        if (entry.IsLive(key)) live += std::string(live.empty() ? "" : " ") + key;
    return live;
}

}  // namespace

TEST(InstructionEntry, AsksForOneOperandAfterTheOther) {
    InstructionEntry entry;
    ExpectStep(entry.ChooseMnemonic("NOP"), u"nop \r\n", NextEntry::Mnemonic);

    ExpectStep(entry.ChooseMnemonic("MVI"), u"mvi ", NextEntry::Register);
    ExpectStep(entry.ChooseRegister("A"), u"a,", NextEntry::Digit);
    ExpectStep(entry.ChooseDigit(3), u"3", NextEntry::Digit);
    ExpectStep(entry.ChooseDigit(15), u"f\r\n", NextEntry::Mnemonic);

    ExpectStep(entry.ChooseMnemonic("MOV"), u"mov ", NextEntry::Register);
    ExpectStep(entry.ChooseRegister("M"), u"m,", NextEntry::Register);
    ExpectStep(entry.ChooseRegister("M"), u"m\r\n", NextEntry::Mnemonic);

    ExpectStep(entry.ChooseMnemonic("LXI"), u"lxi ", NextEntry::Register);
    ExpectStep(entry.ChooseRegister("SP"), u"sp,", NextEntry::Digit);
    for (int i = 0; i < 3; ++i) ExpectStep(entry.ChooseDigit(0), u"0", NextEntry::Digit);
    ExpectStep(entry.ChooseDigit(0), u"0\r\n", NextEntry::Mnemonic);

    ExpectStep(entry.ChooseMnemonic("PUSH"), u"push ", NextEntry::Register);
    ExpectStep(entry.ChooseRegister("PSW"), u"psw\r\n", NextEntry::Mnemonic);
    ExpectStep(entry.ChooseMnemonic("POP"), u"pop ", NextEntry::Register);
    ExpectStep(entry.ChooseRegister("HL"), u"h\r\n", NextEntry::Mnemonic);

    ExpectStep(entry.ChooseMnemonic("LDA"), u"lda ", NextEntry::Digit);
    ExpectStep(entry.ChooseMnemonic("CPI"), u"cpi ", NextEntry::Digit);
    ExpectStep(entry.ChooseMnemonic("CMP"), u"cmp ", NextEntry::Register);
    ExpectStep(entry.ChooseMnemonic("JNZ"), u"jnz ", NextEntry::Label);
    EXPECT_EQ(entry.Mnemonic(), "JNZ");
    ExpectStep(InstructionEntry::ChooseLabel(u"loop"), u"loop\r\n", NextEntry::Mnemonic);
    ExpectStep(entry.ChooseMnemonic("CALL"), u"call ", NextEntry::Label);
}

TEST(InstructionEntry, OnlyKeysThatSomeFormHasAreLive) {
    InstructionEntry entry;
    for (const char* mnemonic : {"LDAX", "STAX"}) {
        entry.ChooseMnemonic(mnemonic);
        EXPECT_EQ(LiveKeys(entry), "BC DE");
    }
    for (const char* mnemonic : {"PUSH", "POP"}) {
        entry.ChooseMnemonic(mnemonic);
        EXPECT_EQ(LiveKeys(entry), "BC DE HL PSW");
    }
    for (const char* mnemonic : {"LXI", "DAD", "INX", "DCX"}) {
        entry.ChooseMnemonic(mnemonic);
        EXPECT_EQ(LiveKeys(entry), "BC DE HL SP");
    }
    for (const char* mnemonic : {"MVI", "INR", "DCR", "ADD", "CMP", "MOV"}) {
        entry.ChooseMnemonic(mnemonic);
        EXPECT_EQ(LiveKeys(entry), "A B C D E H L M");
    }
    entry.ChooseRegister("M");
    EXPECT_EQ(LiveKeys(entry), "A B C D E H L M");
}

TEST(InstructionEntry, ALabelLineEndsInOneColon) {
    EXPECT_EQ(LabelLine(u"loop"), u"loop:\r\n");
    EXPECT_EQ(LabelLine(u"loop:"), u"loop:\r\n");
    EXPECT_EQ(LabelLine(u""), u":\r\n");
}

}  // namespace aids
