#include "aids/delay_loop.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace aids {

TEST(DelayLoop, CountsForTheTimeInOneLoopOrTwo) {
    const std::map<std::u16string, std::u16string> countsOf = {
        {u"0", u"lxi d,0\r"},
        {u"511", u"lxi d,FFE8\r"},
        {u"512", u"mvi b,2\r\ndd_2:\r\nlxi d,8034\r"},
        {u"1000",
         u"mvi b,3\r\ndd_2:\r\nlxi d,A6EF\r\ndd_1:\r\ndcx d\r\nmov a,e\r\nora d\r\njnz dd_1\r\ndcr b\r\njnz dd_2\r\n"},
        {u"129000", u"mvi b,FF\r\ndd_2:\r\nlxi d,FD59\r"},
    };
    for (const auto& [time, counts] : countsOf)
        EXPECT_TRUE(DelayLoops().Design(time).Text.starts_with(u"\r\n" + counts));
}

TEST(DelayLoop, GivesNothingForWhatIsNoTimeAndNumbersTheLabelsOn) {
    DelayLoops loops;
    for (const char16_t* answer : {u"", u"1e3", u"-1", u"697933"})
        EXPECT_EQ(loops.Design(answer).Outcome, DelayOutcome::Nothing);
    EXPECT_EQ(loops.Design(u"697932").Outcome, DelayOutcome::TooLong);
    for (int label = 1; label < 32767; ++label) ASSERT_EQ(loops.Design(u"1").Outcome, DelayOutcome::Insert);
    EXPECT_EQ(loops.Design(u"1000").Outcome, DelayOutcome::Nothing);
    EXPECT_TRUE(loops.Design(u"1").Text.ends_with(u"jnz dd_32767\r\n"));
}

TEST(DelayLoop, ReadsDecimalNumbersAndRoundsAHalfToTheEvenNeighbour) {
    const std::map<std::u16string, std::int32_t> valueOf = {
        {u" \t+042 ", 42}, {u"2.5", 2}, {u"3.50", 4}, {u"2.50001", 3}, {u"-1.5", -2}, {u"2147483647.4", 2147483647}};
    for (const auto& [text, value] : valueOf) EXPECT_EQ(ReadWholeNumber(text), value);
    for (const char16_t* text : {u"-", u".5", u"5.", u"1 2", u"1.2.3", u"2147483647.5"})
        EXPECT_EQ(ReadWholeNumber(text), std::nullopt);
}

}  // namespace aids
