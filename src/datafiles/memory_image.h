#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "machine/address_space.h"

namespace memedata {

// What a file has for the machine's memory.
struct MemoryImage {
    std::vector<m8085::MemoryStretch> Stretches;  // by their addresses, with gaps between them
    std::string Problem;                          // why the file cannot be read; empty where it can
};

// Reads Intel HEX, or a data file of digits, colons, commas and comments alone; or, where an origin of 0 to FFFF is
// given, bytes as they are, the first of which stands there. Of these the stretch can go beyond FFFF.
MemoryImage ReadMemoryImage(std::string_view file, std::optional<std::int32_t> origin);

}  // namespace memedata
