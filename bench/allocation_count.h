#pragma once

namespace bench {

// How often the program has taken memory with `new`.
inline int Allocations = 0;

}  // namespace bench
