#include "execution/stop_addresses.h"

#include <algorithm>

namespace execution {

std::vector<std::int32_t> StopAddresses(const std::vector<int>& lines, const std::vector<std::int32_t>& instructions,
                                        const m8085::CodeMap& codeMap) {
    const auto lineOf = [&codeMap](std::int32_t address) { return codeMap.LineAt(address); };
    std::vector<std::int32_t> addresses;
    for (const int line : lines) {
        const auto first = std::ranges::lower_bound(instructions, line, {}, lineOf);
        if (first != instructions.end()) addresses.push_back(*first);
    }
    std::ranges::sort(addresses);
    return addresses;
}

}  // namespace execution
