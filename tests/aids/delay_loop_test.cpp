#include "aids/delay_loop.h"

#include <gtest/gtest.h>

#include <string>

namespace aids {

namespace {

// The number in hexadecimal behind the first such beginning of a line; -1 if there is none.
int NumberBehind(const std::u16string& text, const std::u16string& beginning) {
    const std::size_t found = text.find(u"\r\n" + beginning);
    if (found == text.npos) return -1;
    const std::u16string digits = text.substr(found + 2 + beginning.size(), 4);
    return std::stoi(std::string(digits.begin(), digits.end()), nullptr, 16);
}

}  // namespace

TEST(DelayLoop, WritesOneLoopOrTwoAndNumbersTheirLabelsOn) {
    DelayLoops loops;
    EXPECT_EQ(loops.Design(u"100").Text, u"\r\nlxi d,3214\r\ndd_1:\r\ndcx d\r\nmov a,e\r\nora d\r\njnz dd_1\r\n");
    EXPECT_EQ(loops.Design(u"1000").Text,
              u"\r\nmvi b,3\r\ndd_3:\r\nlxi d,A6EF\r\ndd_2:\r\ndcx d\r\nmov a,e\r\nora d\r\njnz dd_2\r\ndcr b\r\n"
              u"jnz dd_3\r\n");
    EXPECT_EQ(loops.Design(u"129001").Outcome, DelayOutcome::TooLong);
    EXPECT_NE(loops.Design(u"0").Text.find(u"jnz dd_4\r\n"), std::u16string::npos);
}

TEST(DelayLoop, CountsForTheTime) {
    struct Counts {
        const char16_t* Answer;
        int Outer;
        int Inner;
    };
    DelayLoops loops;
    for (const Counts& counts :
         {Counts{u"0", -1, 0}, Counts{u"1", -1, 0x80}, Counts{u"511", -1, 0xFFE8}, Counts{u"512", 2, 0x8034},
          Counts{u"10000", 0x15, 0xEE7A}, Counts{u"129000", 0xFF, 0xFD59}, Counts{u"511.5", 2, 0x8034}}) {
        const Delay delay = loops.Design(counts.Answer);
        EXPECT_EQ(delay.Outcome, DelayOutcome::Insert);
        EXPECT_EQ(NumberBehind(delay.Text, u"mvi b,"), counts.Outer);
        EXPECT_EQ(NumberBehind(delay.Text, u"lxi d,"), counts.Inner);
    }
}

TEST(DelayLoop, CountsFitTheirRegistersForEveryTime) {
    for (int milliseconds = 0; milliseconds <= 129000; ++milliseconds) {
        const std::string answer = std::to_string(milliseconds);
        const std::u16string text = DelayLoops().Design(std::u16string(answer.begin(), answer.end())).Text;
        const int outer = NumberBehind(text, u"mvi b,");
        const int inner = NumberBehind(text, u"lxi d,");
        ASSERT_EQ(outer == -1, milliseconds < 512);
        if (outer != -1) {
            ASSERT_TRUE(outer >= 2 && outer <= 255) << milliseconds;
            ASSERT_TRUE(inner >= 32521 && inner <= 64872) << milliseconds;
        }
    }
}

TEST(DelayLoop, GivesNothingForWhatIsNoTime) {
    DelayLoops loops;
    for (const char16_t* answer :
         {u"", u"ten", u"1e3", u"12a", u"-1", u"2147483648", u"697933", u"99999999999999999999"})
        EXPECT_EQ(loops.Design(answer).Outcome, DelayOutcome::Nothing);
    EXPECT_EQ(loops.Design(u"697932").Outcome, DelayOutcome::TooLong);
    EXPECT_NE(loops.Design(u"1").Text.find(u"dd_1:"), std::u16string::npos);
}

TEST(DelayLoop, GivesNothingOnceTheLabelsAreUsedUp) {
    DelayLoops loops;
    for (int i = 0; i < 32766; ++i) ASSERT_EQ(loops.Design(u"1").Outcome, DelayOutcome::Insert);
    EXPECT_EQ(loops.Design(u"1000").Outcome, DelayOutcome::Nothing);
    EXPECT_NE(loops.Design(u"1").Text.find(u"dd_32767:"), std::u16string::npos);
    EXPECT_EQ(loops.Design(u"1").Outcome, DelayOutcome::Nothing);
}

TEST(DelayLoop, ReadsDecimalNumbersAndRoundsAHalfToTheEvenNeighbour) {
    EXPECT_EQ(ReadWholeNumber(u" \t42 "), 42);
    EXPECT_EQ(ReadWholeNumber(u"+007"), 7);
    EXPECT_EQ(ReadWholeNumber(u"2.5"), 2);
    EXPECT_EQ(ReadWholeNumber(u"3.50"), 4);
    EXPECT_EQ(ReadWholeNumber(u"2.500000000000000000000001"), 3);
    EXPECT_EQ(ReadWholeNumber(u"2.49"), 2);
    EXPECT_EQ(ReadWholeNumber(u"2.6"), 3);
    EXPECT_EQ(ReadWholeNumber(u"-0.5"), 0);
    EXPECT_EQ(ReadWholeNumber(u"-1.5"), -2);
    EXPECT_EQ(ReadWholeNumber(u"2147483647.4"), 2147483647);
    EXPECT_EQ(ReadWholeNumber(u"2147483647.5"), std::nullopt);
    EXPECT_EQ(ReadWholeNumber(u"-2147483648.5"), -2147483647 - 1);
    for (const char16_t* text : {u" ", u"+", u"-", u".", u".5", u"5.", u"1 2", u"--1", u"1,5", u"1.2.3", u"\u0664"})
        EXPECT_EQ(ReadWholeNumber(text), std::nullopt);
}

}  // namespace aids
