#include "editor/program_file.h"

#include <gtest/gtest.h>

#include "editor/plain_source.h"

namespace editor {

TEST(ProgramFile, ValidUtf8IsReadAsSuchWithoutItsMark) {
    const std::string bytes =
        "; \xC2\x80 \xDF\xBF \xE0\xA0\x80 \xED\x9F\xBF \xEE\x80\x80 \xEF\xBF\xBF \xF0\x90\x80\x80 \xF4\x8F\xBF\xBF\r\n";
    const ProgramFile file = DecodeProgramFile("\xEF\xBB\xBF" + bytes);
    EXPECT_EQ(file.Text, u"; \u0080 \u07FF \u0800 \uD7FF \uE000 \uFFFF \U00010000 \U0010FFFF\r\n");
    EXPECT_EQ(file.ReadAs, Encoding::Utf8);
    EXPECT_EQ(EncodeProgramFile(file.Text, file.ReadAs).Bytes, bytes);
}

TEST(ProgramFile, WhatIsNotUtf8IsReadAsWindows1252) {
    for (const char* bytes : {"caf\xE9", "\x80", "\xC0\xAF", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xED\xBF\xBF",
                              "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xE2\x82", "\xFF"})
        EXPECT_EQ(DecodeProgramFile(bytes).ReadAs, Encoding::Windows1252) << bytes;
    EXPECT_EQ(DecodeProgramFile("\x80 caf\xE9").Text, u"\u20AC caf\u00E9");
}

TEST(ProgramFile, EveryByteOfAWindows1252FileComesBack) {
    std::string bytes = ";";  // outside comments not all stay
    for (int byte = ' '; byte < 256; ++byte)
        if (byte != 0x7F) bytes += static_cast<char>(byte);
    const ProgramFile file = DecodeProgramFile(bytes);
    EXPECT_EQ(file.ReadAs, Encoding::Windows1252);
    EXPECT_EQ(
        file.Text.substr(0x80 - 0x20, 0x21),
        u"\u20AC\u0081\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030\u0160\u2039\u0152\u008D\u017D\u008F"
        u"\u0090\u2018\u2019\u201C\u201D\u2022\u2013\u2014\u02DC\u2122\u0161\u203A\u0153\u009D\u017E\u0178\u00A0");
    EXPECT_EQ(EncodeProgramFile(file.Text, file.ReadAs).Bytes, bytes);
}

TEST(ProgramFile, WhatWasWrittenReadsBackAsTheSameText) {
    // A character that the encoding lacks, and bytes that would pass for UTF-8.
    for (const std::u16string_view text : {u"\u00E9\u03A9", u"\u00C3\u00A9"}) {
        const EncodedProgram file = EncodeProgramFile(text, Encoding::Windows1252);
        EXPECT_EQ(file.WrittenAs, Encoding::Utf8);
        EXPECT_EQ(DecodeProgramFile(file.Bytes).Text, text);
    }
    const std::u16string halves{char16_t{0xD83D}, u'x', char16_t{0xDC00}, char16_t{0xDBFF}};
    EXPECT_EQ(EncodeProgramFile(halves, Encoding::Utf8).Bytes, "\xEF\xBF\xBDx\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(ProgramFile, Utf16IsReadByItsMarkAndWhatIsNotATextIsRefused) {
    for (const std::string_view bytes :
         {std::string_view("\xFF\xFEn\0\xE9\0", 6), std::string_view("\xFE\xFF\0n\0\xE9", 6)}) {
        const ProgramFile file = DecodeProgramFile(bytes);
        EXPECT_EQ(file.Text, u"n\u00E9");
        EXPECT_EQ(file.Problem, "");
        EXPECT_EQ(EncodeProgramFile(file.Text, file.ReadAs).Bytes, "n\xC3\xA9");
    }
    EXPECT_EQ(DecodeProgramFile("nop\t;\v\f\r\n\x1A\x1A").Text, u"nop\t;\v\f\r\n");
    for (const std::string_view bytes :
         {std::string_view("n\0", 2), std::string_view("\xFF\xFEn\0x", 5), std::string_view("{\\rtf1"),
          std::string_view("a\x1A nop"), std::string_view("\x7F")})
        EXPECT_EQ(DecodeProgramFile(bytes).Problem, "It is not a text file.") << bytes;
    for (const auto& [line, size] : {std::pair(u"~\u0080\u07FF\n", 7), {u"\u0800\r\n", 5}, {u"\U0010FFFF\r", 6}}) {
        std::u16string largest(LargestProgramFile % std::size_t(size), u'x');
        for (std::size_t i = 0; i < LargestProgramFile / std::size_t(size); ++i) largest += line;
        EXPECT_EQ(FindProblem(largest), "");
        EXPECT_NE(FindProblem(largest + u'x'), "");
    }
}

TEST(PlainSource, OutsideCommentsItIsWhatItLooksLike) {
    const std::u16string odd =
        u"a\u00A0\u2000\u200A\u202F\u205F\u3000\v\f\u00AD\u200B\u200E\u200F\u202A\u2060\uFEFF\u200Db\u0085\u2028\u2029";
    const std::u16string plain = u"a        \u200Db\n\n\n";
    EXPECT_EQ(PlainSource(odd + u"x;" + odd + u"y\r" + odd), plain + u"x;" + odd + u"y\r" + plain);
    EXPECT_EQ(PlainSource(plain), plain);
    EXPECT_EQ(DecodeProgramFile("\xC2\xA0nop").Text, u" nop");
}

}  // namespace editor
