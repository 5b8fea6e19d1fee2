#include "text/bytes.h"

#include <orvix/gsl/status.h>
#include <orvix/gsl/string_utilities.h>

#include <array>
#include <cstdlib>
#include <cstring>
#include <memory>

using namespace orvix::gsl::text;

namespace {

// A copy of the second of two texts, safe from what is written to their common destination. Short ones stay off the
// heap.
class Scratch {
public:
    Scratch(const char* text, std::size_t length) : length_(length) {
        char* room = inline_.data();
        if (length >= inline_.size()) {
            heap_.reset(static_cast<char*>(std::malloc(length + 1)));
            room = heap_.get();
        }
        text_ = room;
        if (room != nullptr) move_text(room, text, length);
    }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;

    const char* text() const { return text_; }  // null if memory is exhausted
    std::size_t length() const { return length_; }

private:
    struct Free {
        void operator()(char* block) const { std::free(block); }
    };

    std::array<char, 256> inline_;
    std::unique_ptr<char, Free> heap_;
    const char* text_;
    std::size_t length_;
};

}  // namespace

void gparse_addstr(const char* a, const char* b, char* dst) {
    const Scratch second(b, std::strlen(b));
    if (second.text() == nullptr) {
        *dst = '\0';
        return;
    }
    const std::size_t length = std::strlen(a);
    std::memmove(dst, a, length);
    move_text(dst + length, second.text(), second.length());
}

void gparse_addstrn(char* a, char* b, std::size_t n, char* dst) {
    const std::size_t length = bounded_length(a, n);
    const std::size_t rest = n - length;
    if (rest == 0) {
        gparse_cpystrl(a, dst, n);
        return;
    }
    const Scratch second(b, bounded_length(b, rest));
    if (second.text() == nullptr) aerr_memory_error();
    std::memmove(dst, a, length);
    std::memcpy(dst + length, second.text(), second.length());
    std::memset(dst + length + second.length(), blank, rest - second.length());
    dst[n] = '\0';
}

void gparse_strncat(const char* src, std::size_t n, char* dst) {
    const std::size_t length = bounded_length(dst, n);
    if (length < n) move_text(dst + length, src, bounded_length(src, n - length));
}
