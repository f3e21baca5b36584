#include "datafiles/memory_image.h"

#include <gtest/gtest.h>

#include <tuple>

namespace memedata {

namespace {

// Address and bytes of each stretch, or the problem.
std::string Read(const std::string& file, std::optional<std::int32_t> origin = std::nullopt) {
    const MemoryImage image = ReadMemoryImage(file, origin);
    if (!image.Problem.empty()) return image.Problem;
    std::string text;
    for (const auto& [address, bytes] : image.Stretches) {
        text += std::to_string(address) + ':';
        for (const std::uint8_t byte : bytes) text += ' ' + std::to_string(byte);
        text += ';';
    }
    return text;
}

}  // namespace

TEST(MemoryImage, ReadsIntelHexDataFilesAndBytes) {
    const std::string end = "\n:00000001FF";
    const std::tuple<std::string, std::optional<std::int32_t>, std::string> files[] = {
        {"\n:0200100001ffee \r\n:0100120007E6\r\n:01800000057A\r\n:00000001FF\r\nleft", {}, "16: 1 255 7;32768: 5;"},
        {":020000020800F4\n:0100120007E6\n:020000040000FA\n:040000050000800077\n:0200100001FFEE" + end,
         {},
         "16: 1 255;32786: 7;"},
        {":0200100001FFEE\r:00000001FF", {}, "16: 1 255;"},
        {":0200100001FFEE" + end + "\n:0100120007E6" + end, {}, "line 3: a record after the last one"},
        {":0200100001FFEE", {}, "its last record, :00000001FF, is missing"},
        {":0200100001FFEE\n:0100120007E7" + end, {}, "line 2: its checksum is wrong"},
        {":0200100001FF" + end, {}, "line 1: it is not a record of Intel HEX"},
        {":0100000201FC" + end, {}, "line 1: it is not a record of Intel HEX"},
        {":00000006FA" + end, {}, "line 1: it is not a record of Intel HEX"},
        {":02FFFF000102FD" + end, {}, "line 1: its bytes lie beyond FFFF"},
        {":020000040001F9\n:01800000057A" + end, {}, "line 2: its bytes lie beyond FFFF"},
        {end, {}, "there is no byte in it"},
        {"; hex: x\n0010 : 1 FF, 7\n8000: 5 8000: 0", {}, "16: 1 255 7;32768: 0;"},
        {"FFFF: 1 2", {}, "a byte in it lies beyond FFFF, or a number is above 7FFFFFFF"},
        {"add: mov b,c", {}, "it is neither Intel HEX nor a data file; bytes as they are need --origin"},
        {"8000: 5", 0x2000, "it has its addresses in it, and goes without --origin"},
        {":v", 0x2000, "8192: 58 118;"},
        {"", 0x2000, "there is no byte in it"},
    };
    for (const auto& [file, origin, expected] : files) EXPECT_EQ(Read(file, origin), expected) << file;
}

}  // namespace memedata
