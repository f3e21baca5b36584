#include "datafiles/data_file.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <sstream>
#include <tuple>
#include <vector>

namespace memedata {

TEST(DataFile, ReadsAddressesBytesAndComments) {
    const std::tuple<std::string, std::map<std::size_t, std::uint8_t>, bool> samples[] = {
        {"8000:3e,5 ,, 076", {{0x8000, 0x3E}, {0x8001, 5}, {0x8002, 0x76}}, true},
        {"8000\n\t: 1 9000: 2 8000:\r3", {{0x8000, 3}, {0x9000, 2}}, true},
        {":5", {{0, 5}}, true},
        {"8000: 1234 100 7FFFFFFF", {{0x8000, 0x34}, {0x8001, 0}, {0x8002, 0xFF}}, true},
        {"3E 5 76 10000:", {}, true},
        {"8000: 1 ; a: 7 ; b\r2;c\n3", {{0x8000, 1}, {0x8001, 2}, {0x8002, 3}}, true},
        {"8000; : 9\r\n: 4;", {{0x8000, 4}}, true},
        {"8000H: /1@G2`g 0x10 5\xC3\xA4-6", {{0x8000, 0x12}, {0x8001, 0x10}, {0x8002, 0x56}}, true},
        {std::string(65533, ' ') + "8000:12;\n34", {{0x8000, 0x12}, {0x8001, 0x34}}, true},  // across blocks of reading
        {"8000: 1 80000000 2", {{0x8000, 1}}, false},
        {"FFFF: 1 2 8000: 5", {{0xFFFF, 1}}, false},
    };
    for (const auto& [text, stored, succeeds] : samples) {
        m8085::MemoryBytes expected;
        expected.fill(0xEE);
        m8085::MemoryBytes memory = expected;
        for (const auto& [address, byte] : stored) expected[address] = byte;
        std::istringstream file(text);
        EXPECT_EQ(LoadDataFile(file, memory), succeeds) << text;
        EXPECT_TRUE(memory == expected) << text;
    }
}

TEST(DataFile, WhatIsWrittenReadsBackAtTheSameAddresses) {
    std::mt19937 random(8085);
    for (int round = 0; round < 60; ++round) {
        m8085::MemoryBytes memory, expected{}, reread{};
        for (std::uint8_t& byte : memory) byte = static_cast<std::uint8_t>(random());
        std::vector<AddressRange> ranges(random() % 6);
        for (AddressRange& range : ranges) range = {std::uint16_t(random()), std::uint16_t(random())};
        if (round == 0) ranges = {{0x0000, 0xFFFF}};

        for (const AddressRange& range : ranges)
            for (std::size_t address = range.First; address <= range.Last; ++address)
                expected[address] = memory[address];
        std::istringstream file(ComposeDataFile(ranges, memory, "24.11.\n2026", "17:24:23"));
        ASSERT_TRUE(LoadDataFile(file, reread));
        ASSERT_EQ(reread, expected);
    }
}

TEST(DataFile, TheFirstLineSaysTheDateAndThenTheTime) {
    EXPECT_EQ(ComposeDataFile({}, {}, "24.11.\r\n2026", "17:24"),
              "; Data file created on 24.11.  2026 at 17:24\r\n\r\n");
}

TEST(DataFile, AnAddressIsHexadecimalDigitsAndNothingElse) {
    EXPECT_EQ(ReadAddress(u"0000000000080fF"), 0x80FF);
    for (const char16_t* text : {u"", u"10000", u"100000000", u" 8000", u"8000H", u"-1", u"\uFF18"})
        EXPECT_EQ(ReadAddress(text), std::nullopt);
}

}  // namespace memedata
