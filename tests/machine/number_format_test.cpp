#include "machine/number_format.h"

#include <gtest/gtest.h>

namespace m8085 {

TEST(NumberFormat, WritesAndReadsHexDigits) {
    EXPECT_EQ(FormatHexByte(0xA), "0A");
    EXPECT_EQ(FormatHexLong(0xFFF), "0FFF");
    EXPECT_EQ(FormatHexLong(65536), "10000");
    EXPECT_EQ(FormatHexShort(0), "0");
    EXPECT_EQ(FormatHexShort(0xFFE0), "FFE0");
    EXPECT_EQ(HexDigitValue(U'9'), 9);
    EXPECT_EQ(HexDigitValue(U'a'), 10);
    EXPECT_EQ(HexDigitValue(U'F'), 15);
    for (const char32_t other : U"/:@G`g \u0661\uFF11") EXPECT_EQ(HexDigitValue(other), -1);
}

}  // namespace m8085
