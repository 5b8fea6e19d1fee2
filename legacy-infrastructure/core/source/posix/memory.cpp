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

}  // namespace orvix::core
