#include "shell/start_options.h"

#include <gtest/gtest.h>

namespace shell {

namespace {

bool Fits(const std::string& text, const std::string& part) {
    return part.empty() ? text.empty() : text.find(part) != std::string::npos;
}

}  // namespace

TEST(StartOptions, OneFileAndOneFactorAreTakenWhereverTheyStand) {
    struct Row {
        std::vector<std::string> Words;
        std::string Scale, File, Problem, Surplus;
    };
    const Row rows[] = {
        {{}, "", "", "", ""},
        {{"sum.asm"}, "", "sum.asm", "", ""},
        {{"--scale", "1.5", "sum.asm"}, "1.5", "sum.asm", "", ""},
        {{"-", "--scale=1", "--scale=4"}, "4", "-", "", ""},
        {{"--scale", "2", "--", "--scale"}, "2", "--scale", "", ""},
        {{"--scale", "0.99"}, "", "", "0.99", ""},
        {{"--scale=4.01"}, "", "", "4.01", ""},
        {{"--scale", "2x"}, "", "", "2x", ""},
        {{"--scale", "nan"}, "", "", "nan", ""},
        {{"--scale"}, "", "", "\"\"", ""},
        {{"a", "b"}, "", "a", "", "\"b\""},
        {{"-platform", "xcb"}, "", "xcb", "", "-platform"},
    };
    for (const Row& row : rows) {
        const StartOptions options = ReadStartOptions(row.Words);
        const std::string all = testing::PrintToString(row.Words);
        EXPECT_EQ(options.Scale, row.Scale) << all;
        EXPECT_EQ(options.File, row.File) << all;
        EXPECT_TRUE(Fits(options.Problem, row.Problem)) << all;
        EXPECT_TRUE(Fits(options.Surplus, row.Surplus)) << all;
    }
    EXPECT_TRUE(Fits(ReadStartOptions({"--help"}).Answer, "--scale FACTOR"));
    EXPECT_EQ(ReadStartOptions({"--version"}).Answer, "velmora " VELMORA_VERSION "\n");
}

}  // namespace shell
