#include "support/allocation_limit.h"

#include <cstdlib>
#include <new>

namespace {

// Counts down to the allocation that fails; below zero none does.
int allocations_left = -1;

}  // namespace

// In place of the standard library's in every program that uses the class: its libraries call them too.
void* operator new(std::size_t size) {
    if (allocations_left == 0) throw std::bad_alloc();
    if (allocations_left > 0) --allocations_left;
    void* const block = std::malloc(size);
    if (block == nullptr) throw std::bad_alloc();
    return block;
}

// Seen through, these would look like the freeing of what `new` gave.
[[gnu::noinline]] void operator delete(void* block) noexcept { std::free(block); }
[[gnu::noinline]] void operator delete(void* block, std::size_t) noexcept { std::free(block); }

namespace orvix::test {

AllocationLimit::AllocationLimit(int blocks) { allocations_left = blocks; }

AllocationLimit::~AllocationLimit() { allocations_left = -1; }

}  // namespace orvix::test
