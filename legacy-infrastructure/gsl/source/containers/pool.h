// Allocation from a list of arenas, the newest first. Arenas are never given back to the heap.
#pragma once

#include "containers/arena.h"

#include <cstdint>

namespace orvix::gsl::pool {

// A view of the pool whose newest arena the state word of a controller points at.
class Pool {
public:
    explicit Pool(void** state) : state_(state) {}

    // Null without memory, for a negative count, and for more than a block can have.
    void* allocate(std::uint32_t size, std::int32_t count);

    // Null as above, and for a block that is not in use; the block then stays as it was.
    void* reallocate(void* block, std::uint32_t size, std::int32_t count);

    // False for a block that is not in use.
    bool release(void* block);

    bool is_sound() const;

private:
    Arena* newest() const { return static_cast<Arena*>(*state_); }
    void* allocate_units(unsigned units);

    void** state_;
};

}  // namespace orvix::gsl::pool
