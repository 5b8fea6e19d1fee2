// Texts on the heap, and reading texts of unknown length into them.
#pragma once

#include <orvix/gsl/status.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace orvix::gsl::env {

struct FreeText {
    void operator()(char* text) const { std::free(text); }
};

using HeapText = std::unique_ptr<char, FreeText>;

// Makes a block that many bytes long. Without memory it does not return. A size that is 0 in its low 32 bits counts as
// no memory: such texts are refused.
inline void resize(HeapText* text, std::size_t bytes) {
    char* block = nullptr;
    if (static_cast<std::uint32_t>(bytes) != 0) block = static_cast<char*>(std::realloc(text->get(), bytes));
    if (block == nullptr) aerr_memory_error();
    static_cast<void>(text->release());
    text->reset(block);
}

// Reads a text through `read(buffer, bytes)`, which gives 0 when it is done, the bytes that it needs, or a negative
// number if there is nothing to read. It may ask for room more than once, and starts over each time. The block that
// comes back is as long as the text; null if there is nothing to read.
template <class Read>
HeapText fetch(const Read& read) {
    constexpr std::size_t first_bytes = 100;
    std::size_t bytes = first_bytes;
    HeapText text;
    resize(&text, bytes);
    while (true) {
        const long long needed = read(text.get(), bytes);
        if (needed < 0) return nullptr;
        if (needed == 0) break;
        bytes += static_cast<std::size_t>(needed);
        resize(&text, bytes);
    }
    resize(&text, std::strlen(text.get()) + 1);
    return text;
}

}  // namespace orvix::gsl::env
