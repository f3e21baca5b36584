#pragma once

namespace support {

// How often the whole test program has taken memory with `new`.
int AllocationCount();

}  // namespace support
