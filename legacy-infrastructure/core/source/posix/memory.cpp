#include <orvix/core/memory.h>

#include <memory>

#include <sys/mman.h>
#include <unistd.h>

namespace orvix::core {

namespace {

// From this size on malloc gives a mapping of its own. Advice on a smaller block would touch its neighbours.
constexpr std::size_t worth_it = 64U << 20U;

}  // namespace

void expect_to_be_filled(void* block, std::size_t bytes) {
    if (bytes < worth_it) return;
#ifdef MADV_HUGEPAGE
    // Whole pages inside the block.
    const auto page_bytes = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    void* start = block;
    if (std::align(page_bytes, page_bytes, start, bytes) != nullptr) madvise(start, bytes, MADV_HUGEPAGE);
#endif
}

void* allocate_large(std::size_t bytes) {
    // Aligned memory lies somewhere in twice as much; what it does not need is given back.
    const std::size_t mapped = bytes + large_page_bytes;
    void* const mapping = mmap(nullptr, mapped, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (mapping == MAP_FAILED) return nullptr;
    void* block = mapping;
    std::size_t rest = mapped;
    std::align(large_page_bytes, bytes, block, rest);
    if (rest != mapped) munmap(mapping, mapped - rest);
    if (rest != bytes) munmap(static_cast<char*>(block) + bytes, rest - bytes);
#ifdef MADV_HUGEPAGE
    madvise(block, bytes, MADV_HUGEPAGE);
#endif
    return block;
}

void free_large(void* block, std::size_t bytes) { munmap(block, bytes); }

}  // namespace orvix::core
