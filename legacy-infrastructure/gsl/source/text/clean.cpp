#include "text/bytes.h"

#include <orvix/gsl/string_utilities.h>

#include <algorithm>
#include <cstring>

using namespace orvix::gsl::text;

void gparse_strpbl(const char* src, char* dst) {
    if (src == nullptr) return;
    while (*src == blank) ++src;
    std::size_t length = std::strlen(src);
    while (length != 0 && src[length - 1] == blank) --length;
    move_text(dst, src, length);
}

void gparse_strptab(char* s) { std::replace(s, s + std::strlen(s), '\t', blank); }

std::size_t gparse_strlength(const char* s) { return std::strlen(s); }

void gparse_setstrlength(char* s, std::size_t n) { s[n] = '\0'; }

void gparse_lowtoup(char* s) {
    for (; *s != '\0'; ++s) *s = to_upper(*s);
}

void gparse_uptolow(char* s) {
    for (; *s != '\0'; ++s) *s = to_lower(*s);
}
