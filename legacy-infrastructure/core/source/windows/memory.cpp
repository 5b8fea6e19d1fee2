#include <orvix/core/memory.h>

#include <cerrno>
#include <memory>

#include <windows.h>

namespace orvix::core {

// Large pages are a privilege here, and not to be had for memory that is taken already.
void expect_to_be_filled(void*, std::size_t) {}

void* allocate_large(std::size_t bytes) {
    // Aligned memory lies somewhere in a place that is a page larger, of which only what is needed is made memory.
    std::size_t place_bytes = bytes + large_page_bytes;
    void* const place = VirtualAlloc(nullptr, place_bytes, MEM_RESERVE, PAGE_READWRITE);
    void* block = place;
    if (place != nullptr) {
        std::align(large_page_bytes, bytes, block, place_bytes);
        if (VirtualAlloc(block, bytes, MEM_COMMIT, PAGE_READWRITE) != nullptr) return block;
        VirtualFree(place, 0, MEM_RELEASE);
    }
    errno = ENOMEM;
    return nullptr;
}

void free_large(void* block, std::size_t) {
    MEMORY_BASIC_INFORMATION place;
    if (VirtualQuery(block, &place, sizeof place) != 0) VirtualFree(place.AllocationBase, 0, MEM_RELEASE);
}

}  // namespace orvix::core
