// A pool that gives its arenas back when the test is over, which the library leaves to the end of the process; and what
// lies in memory before a block.
#pragma once

#include <orvix/gsl/memory_controller.h>
#include <orvix/gsl/status.h>

#include <cstdint>
#include <cstring>

namespace orvix::test {

// The word at an address, whatever it is aligned to.
template <class Word>
Word word_at(const void* address) {
    Word word;
    std::memcpy(&word, address, sizeof word);
    return word;
}

// The header before a block.
struct PoolHeader {
    std::uint16_t next;
    std::uint16_t prev;
    std::uint16_t self;
    std::uint16_t magic;

    static PoolHeader of(const void* block) { return word_at<PoolHeader>(static_cast<const char*>(block) - 8); }
    bool operator==(const PoolHeader&) const = default;
};

class PoolMemory {
public:
    PoolMemory() { initialize_MemCntl(&memory_, poolMem); }
    ~PoolMemory() {
        for (void* arena = memory_.state; arena != nullptr;) {
            void* const older = word_at<void*>(arena);
            gmem_ee_free(static_cast<char*>(arena));
            arena = older;
        }
    }
    PoolMemory(const PoolMemory&) = delete;
    PoolMemory& operator=(const PoolMemory&) = delete;

    MEMC* controller() { return &memory_; }
    void* allocate(std::uint32_t size, std::int32_t count = 1) { return alloc_Mem(&memory_, size, count); }
    void* reallocate(void* block, std::uint32_t size, std::int32_t count = 1) {
        return realloc_Mem(&memory_, block, size, count);
    }
    bool release(void* block) { return free_Mem(&memory_, block); }
    bool check() { return memory_.methods->check(&memory_.state); }
    const void* newest_arena() const { return memory_.state; }

private:
    MEMC memory_;
};

}  // namespace orvix::test
