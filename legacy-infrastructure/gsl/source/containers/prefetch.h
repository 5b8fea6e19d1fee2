// A hint to the processor that memory will be read soon.
#pragma once

namespace orvix::gsl {

// Any address will do, null too: a hint never faults.
inline void prefetch(const void* address) {
#if defined(__GNUC__)
    __builtin_prefetch(address);
#else
    static_cast<void>(address);
#endif
}

}  // namespace orvix::gsl
