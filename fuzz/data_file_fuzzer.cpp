#include <algorithm>
#include <sstream>
#include <string>

#include "check.h"
#include "datafiles/data_file.h"

// Any file may be read. What it leaves in memory comes back when it is written and read again.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static m8085::MemoryBytes memory;
    static m8085::MemoryBytes reread;
    memory.fill(0);
    reread.fill(0);
    std::istringstream file(std::string(reinterpret_cast<const char*>(data), size));
    memedata::LoadDataFile(file, memory);

    const auto isSet = [](std::uint8_t byte) { return byte != 0; };
    const auto first = std::find_if(memory.begin(), memory.end(), isSet);
    if (first == memory.end()) return 0;
    const auto last = std::find_if(memory.rbegin(), memory.rend(), isSet).base() - 1;
    const memedata::AddressRange range{static_cast<std::uint16_t>(first - memory.begin()),
                                       static_cast<std::uint16_t>(last - memory.begin())};
    std::istringstream written(memedata::ComposeDataFile({&range, 1}, memory, "date", "time"));
    CHECK(memedata::LoadDataFile(written, reread));
    CHECK(reread == memory);
    return 0;
}
