#include "containers/pool.h"

#include <cstring>

namespace orvix::gsl::pool {

namespace {

// Larger requests do not look for a block that was released.
constexpr unsigned most_searched_units = 510;

// Larger blocks move even if they keep their size.
constexpr unsigned most_kept_units = 509;

constexpr std::int64_t most_bytes = most_data_units * unit_bytes;

// Gives false for a negative count, and for more units than a block can have.
bool units_of(std::uint32_t size, std::int32_t count, unsigned* units) {
    const std::int64_t bytes = std::int64_t{size} * count;
    if (bytes < 0 || bytes > most_bytes) return false;
    *units = static_cast<unsigned>((static_cast<std::size_t>(bytes) + unit_bytes - 1) / unit_bytes);
    return true;
}

}  // namespace

void* Pool::allocate(std::uint32_t size, std::int32_t count) {
    unsigned units;
    return units_of(size, count, &units) ? allocate_units(units) : nullptr;
}

void* Pool::allocate_units(unsigned units) {
    if (units <= most_searched_units) {
        for (Arena* arena = newest(); arena != nullptr; arena = arena->older()) {
            if (void* const block = arena->allocate(units)) return block;
        }
    }
    Arena* const arena = Arena::create(units, newest());
    if (arena == nullptr) return nullptr;
    *state_ = arena;
    return arena->allocate(units);
}

void* Pool::reallocate(void* block, std::uint32_t size, std::int32_t count) {
    unsigned units;
    if (!Arena::is_used(block) || !units_of(size, count, &units)) return nullptr;
    Arena* const arena = Arena::of(block);
    const Index index = Arena::index_of(block);
    const unsigned present = arena->size(index);
    if (units == present && units <= most_kept_units) return block;
    if (units < present) {
        arena->shrink(index, units);
        return block;
    }
    void* const larger = allocate_units(units);
    if (larger == nullptr) return nullptr;
    std::memcpy(larger, block, present * unit_bytes);
    arena->release(index);
    return larger;
}

bool Pool::release(void* block) { return Arena::of(block)->release(Arena::index_of(block)); }

bool Pool::is_sound() const {
    for (const Arena* arena = newest(); arena != nullptr; arena = arena->older()) {
        if (!arena->is_sound()) return false;
    }
    return true;
}

}  // namespace orvix::gsl::pool
