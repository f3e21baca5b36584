#pragma once

namespace support {

// How often the whole test program has taken memory with `new`.
inline int Allocations = 0;

}  // namespace support
