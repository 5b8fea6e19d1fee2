// Texts on the heap of the `gmem_ee_` family, owned until they are handed to the caller.
#pragma once

#include <orvix/gsl/status.h>

#include <cstring>
#include <memory>
#include <new>
#include <string_view>

namespace orvix::gsl::paths {

struct FreeBlock {
    void operator()(char* block) const { gmem_ee_free(block); }
};

using Block = std::unique_ptr<char, FreeBlock>;

// A copy with a zero byte behind it.
inline Block copy_of(std::string_view text) {
    Block block(gmem_ee_malloc(text.size() + 1, 1));
    if (block == nullptr) throw std::bad_alloc();
    std::memcpy(block.get(), text.data(), text.size());
    block.get()[text.size()] = '\0';
    return block;
}

}  // namespace orvix::gsl::paths
