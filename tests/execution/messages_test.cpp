#include "execution/messages.h"

#include <gtest/gtest.h>

namespace execution {

TEST(Messages, ARefusalNamesThePlaceAndWhatWasWanted) {
    using m8085::Limit;
    struct Case {
        m8085::Refusal Refused;
        std::string Place;
        std::string Wanted;
    };
    const Case cases[] = {
        {{Limit::Fetch, 0xFFFE, 0, 0xFFFE}, "address FFFE", "FFFD"},
        {{Limit::WordAddress, 0x8000, 0x2A, 0xFFFF}, "address 8000 (opcode 2A)", "at FFFF"},
        {{Limit::Push, 0x8003, 0xC5, 1}, "address 8003 (opcode C5)", "SP is 0001"},
        {{Limit::Pop, 0x8003, 0xC1, 0x10000}, "address 8003 (opcode C1)", "SP is 10000"},
        {{Limit::ReturnAddress, 0xFFFD, 0xCD, 0x10000}, "address FFFD", "10000"},
    };
    for (const auto& [refusal, place, wanted] : cases) {
        const std::string text = RefusalMessage(refusal);
        EXPECT_NE(text.find(place), std::string::npos) << text;
        EXPECT_NE(text.find(wanted), std::string::npos) << text;
    }
}

}  // namespace execution
