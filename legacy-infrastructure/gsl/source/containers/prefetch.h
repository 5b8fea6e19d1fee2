// A hint to the processor that memory will be read soon.
#pragma once

#include <cstddef>
#include <cstdint>

namespace orvix::gsl {

// Any address will do, null too: a hint never faults.
inline void prefetch(const void* address, std::size_t offset = 0) {
#if defined(__GNUC__)
    // NOLINTNEXTLINE(performance-no-int-to-ptr): no object, and an offset from null would have no meaning
    __builtin_prefetch(reinterpret_cast<const void*>(reinterpret_cast<std::uintptr_t>(address) + offset));
#else
    static_cast<void>(address);
    static_cast<void>(offset);
#endif
}

}  // namespace orvix::gsl
