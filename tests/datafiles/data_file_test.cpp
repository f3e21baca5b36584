#include "datafiles/data_file.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <sstream>
#include <vector>

namespace memedata {

namespace {

using Bytes = std::map<int, int>;

struct Sample {
    const char* Text;
    Bytes Stored;
    bool Succeeds = true;
};

constexpr std::uint8_t untouched = 0xEE;

Bytes StoredIn(const m8085::MemoryBytes& memory) {
    Bytes stored;
    for (std::size_t address = 0; address < memory.size(); ++address)
        if (memory[address] != untouched) stored[static_cast<int>(address)] = memory[address];
    return stored;
}

void Check(const std::vector<Sample>& samples) {
    for (const Sample& sample : samples) {
        m8085::MemoryBytes memory;
        memory.fill(untouched);
        std::istringstream file(sample.Text);
        EXPECT_EQ(LoadDataFile(file, memory), sample.Succeeds) << sample.Text;
        EXPECT_EQ(StoredIn(memory), sample.Stored) << sample.Text;
    }
}

}  // namespace

TEST(DataFile, ReadsAddressesAndBytesHoweverTheyAreSetApart) {
    const Bytes three = {{0x8000, 0x3E}, {0x8001, 5}, {0x8002, 0x76}};
    Check({{"8000 : 3E 5 76", three},
           {"8000:3e,05,76", three},
           {"8000: 3E\r\n5\r\n76\r\n", three},
           {"8000\n\t:,3e\r05 ,, 76", three},
           {"8000: 1 9000: 2", {{0x8000, 1}, {0x9000, 2}}},
           {"8000: 1 2 8000: 3", {{0x8000, 3}, {0x8001, 2}}},
           {"8000 : 12 : 34", {{0x12, 0x34}}},
           {"8000: : 5", {{0x8000, 5}}},
           {":5", {{0, 5}}}});
}

TEST(DataFile, StoresTheLowEightBitsOfAByte) {
    Check({{"8000: 1234", {{0x8000, 0x34}}}, {"8000: 100 7FFFFFFF", {{0x8000, 0}, {0x8001, 0xFF}}}});
}

TEST(DataFile, StoresNothingWithoutAnAddressOrWithoutBytes) {
    Check({{"", {}}, {"; 8000: 5\n;6", {}}, {"3E 5 76", {}}, {"8000:", {}}, {"10000:", {}}, {"8000", {}}});
}

TEST(DataFile, CommentsRunToTheLineEnd) {
    Check({{"8000: 1;comment", {{0x8000, 1}}},
           {"8000: 1 ; a: 7 ; b\r2 ;c\n3", {{0x8000, 1}, {0x8001, 2}, {0x8002, 3}}},
           {"8000; : 9\r\n: 4", {{0x8000, 4}}}});
}

TEST(DataFile, PassesOverAnyOtherCharacter) {
    Check({{"8000H: 1G2 0x10 \xC3\xA4"
            "5-6",
            {{0x8000, 0x12}, {0x8001, 0x10}, {0x8002, 0x56}}},
           {"zz:\xFF 8", {{0, 8}}}});
}

TEST(DataFile, StopsAtANumberTooLargeAndBeyondTheEndOfMemory) {
    Check({{"8000: 1 80000000 2", {{0x8000, 1}}, false},
           {"8000: 1 123456789", {{0x8000, 1}}, false},
           {"000000000008000: 1", {{0x8000, 1}}},
           {"FFFF: 1 2", {{0xFFFF, 1}}, false},
           {"FFFF: 1 2 8000: 5", {{0xFFFF, 1}}, false},
           {"10000: 1", {}, false},
           {"7FFFFFFF: 1", {}, false},
           {"10000: 8000: 1", {{0x8000, 1}}}});
}

TEST(DataFile, ANumberMayLieAcrossTheBlocksOfReading) {
    for (std::size_t padding = 65530; padding < 65542; ++padding) {
        std::istringstream file(std::string(padding, ' ') + "8000:12;x\n34");
        m8085::MemoryBytes memory{};
        ASSERT_TRUE(LoadDataFile(file, memory));
        ASSERT_EQ(memory[0x8000], 0x12);
        ASSERT_EQ(memory[0x8001], 0x34);
    }
}

TEST(DataFile, AStreamThatCannotBeReadIsAFailure) {
    m8085::MemoryBytes memory{};
    std::istringstream file("8000: 1");
    file.setstate(std::ios::failbit);
    EXPECT_FALSE(LoadDataFile(file, memory));
}

TEST(DataFile, ComposesALineForEachRange) {
    m8085::MemoryBytes memory{};
    memory[0x8000] = 0x3E;
    memory[0x8001] = 0x05;
    memory[0x8002] = 0x76;
    memory[0xFFFF] = 0xA0;
    const std::vector<AddressRange> ranges = {{0x8000, 0x8002}, {0x12, 0x12}, {0x9000, 0x8000}, {0xFFFF, 0xFFFF}};
    EXPECT_EQ(ComposeDataFile(ranges, memory, "1/2/26", "3:04:05 PM"),
              "; Data file created on 1/2/26 at 3:04:05 PM\r\n\r\n8000 : 3E 5 76 \r\n12 : 0 \r\n9000 : \r\nFFFF : A0 "
              "\r\n");
    EXPECT_EQ(ComposeDataFile({}, memory, "1\r2", "3\n4"), "; Data file created on 1 2 at 3 4\r\n\r\n");
}

TEST(DataFile, WhatIsWrittenReadsBackAtTheSameAddresses) {
    std::mt19937 random(8085);
    for (int round = 0; round < 60; ++round) {
        m8085::MemoryBytes memory;
        for (std::uint8_t& byte : memory) byte = static_cast<std::uint8_t>(random());
        std::vector<AddressRange> ranges(random() % 6);
        for (AddressRange& range : ranges) range = {std::uint16_t(random()), std::uint16_t(random())};
        if (round == 0) ranges = {{0x0000, 0xFFFF}};

        m8085::MemoryBytes expected{};
        for (const AddressRange& range : ranges)
            for (int address = range.First; address <= range.Last; ++address)
                expected[std::size_t(address)] = memory[std::size_t(address)];
        std::istringstream file(ComposeDataFile(ranges, memory, "24.11.2026", "17:24:23"));
        m8085::MemoryBytes reread{};
        ASSERT_TRUE(LoadDataFile(file, reread));
        ASSERT_EQ(reread, expected);
    }
}

TEST(DataFile, AnAddressIsHexadecimalDigitsAndNothingElse) {
    EXPECT_EQ(ReadAddress(u"0"), 0);
    EXPECT_EQ(ReadAddress(u"80fF"), 0x80FF);
    EXPECT_EQ(ReadAddress(u"FFFF"), 0xFFFF);
    EXPECT_EQ(ReadAddress(u"00000000000000008000"), 0x8000);
    for (const char16_t* text : {u"", u"10000", u"FFFFFFFF", u"100000000", u" 8000", u"8000 ", u"&H80", u"8000H", u"-1",
                                 u"0x80", u"80 - 90", u"\uFF18"})
        EXPECT_EQ(ReadAddress(text), std::nullopt);
}

}  // namespace memedata
