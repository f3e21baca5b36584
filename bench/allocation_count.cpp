#include "allocation_count.h"

#include <cstdlib>
#include <new>

void* operator new(std::size_t size) {
    ++bench::Allocations;
    if (void* memory = std::malloc(size)) return memory;
    throw std::bad_alloc();
}

// A sort asks for its room in this form, and frees it in the other.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    ++bench::Allocations;
    return std::malloc(size);
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
