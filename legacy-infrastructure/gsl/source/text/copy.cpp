#include "text/bytes.h"

#include <orvix/gsl/string_utilities.h>

#include <cstring>

using namespace orvix::gsl::text;

namespace {

// Cuts or fills up to exactly `width` bytes.
void copy_to_column(const char* src, std::size_t width, char* dst) {
    const std::size_t length = bounded_length(src, width);
    std::memmove(dst, src, length);
    std::memset(dst + length, blank, width - length);
    dst[width] = '\0';
}

}  // namespace

void gparse_cpystr(const char* src, char* dst) { std::memmove(dst, src, std::strlen(src) + 1); }

void gparse_cpystrl(const char* src, char* dst, std::size_t n) { move_text(dst, src, bounded_length(src, n)); }

void gparse_strncpy(const char* src, std::size_t n, char* dst) {
    if (n != 0) gparse_cpystrl(src, dst, n);
}

void gparse_cpystrn(char* src, std::size_t n, char* dst) { copy_to_column(src, n, dst); }

void gparse_szstrlj(char* src, std::size_t n, char* dst) {
    while (*src == blank) ++src;
    copy_to_column(src, n, dst);
}

void gparse_szstrrj(char* src, std::size_t n, char* dst) {
    const std::size_t length = bounded_length(src, n);
    const std::size_t padding = n - length;
    move_text(dst + padding, src, length);
    std::memset(dst, blank, padding);
}

void gparse_strtostr(const char* src, std::size_t first, std::size_t last, char* dst) {
    if (first > last) {
        *dst = '\0';
    } else {
        move_text(dst, src + first, last - first + 1);
    }
}
