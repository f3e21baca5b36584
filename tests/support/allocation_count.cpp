#include "support/allocation_count.h"

#include <cstdlib>
#include <new>

static int allocationCount = 0;

int support::AllocationCount() {
    return allocationCount;
}

void* operator new(std::size_t size) {
    ++allocationCount;
    void* memory = std::malloc(size);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
