#include "text/bytes.h"

#include <orvix/gsl/file_names.h>
#include <orvix/gsl/status.h>
#include <orvix/gsl/string_utilities.h>

#include <algorithm>
#include <cstring>
#include <string_view>

using namespace orvix::gsl::text;

namespace {

// Callers of this order see bytes from 0x80 on as negative numbers, which have no case.
int signed_upper(char c) {
    const int byte = static_cast<unsigned char>(c);
    const int value = byte < 0x80 ? byte : byte - 0x100;
    return value >= 'a' && value <= 'z' ? value - ('a' - 'A') : value;
}

std::string_view without_outer_blanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(blank);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blank) - first + 1);
}

}  // namespace

bool gparse_eqlstr(const char* a, const char* b) { return gsl_strcmp(a, b) == 0; }

int gparse_intcmp(int a, int b) { return (a > b) - (a < b); }

int gparse_stricmp(const char* a, const char* b) {
    while (*a != '\0' && *b != '\0' && (*a == *b || signed_upper(*a) == signed_upper(*b))) {
        ++a;
        ++b;
    }
    return signed_upper(*a) - signed_upper(*b);
}

// Texts order as file names do.
int orvix::gsl::strcasecmp(const char* a, const char* b) { return gfile_file_name_strcmp(a, b); }

int orvix::gsl::strncasecmp(const char* a, const char* b, int n) {
    constexpr int first_byte_alone = -1;
    // A null pointer is told apart before the count is looked at; callers may see it.
    if (a == nullptr || b == nullptr) return gfile_file_name_strncmp(a, b, first_byte_alone);
    return n > 0 ? gfile_file_name_strncmp(a, b, n) : 0;
}

bool gparse_simstr(const char* a, const char* b) {
    const std::string_view first = without_outer_blanks(a);
    const std::string_view second = without_outer_blanks(b);
    return std::equal(first.begin(), first.end(), second.begin(), second.end(),
                      [](char x, char y) { return to_lower(x) == to_lower(y); });
}

bool gparse_simstr2(const char* a, const char* b) { return gfile_file_name_strcmp(a, b) == 0; }

bool gparse_all_digits(const char* s, std::size_t first, std::size_t last) {
    // By index: `last` may lie beyond anything that a pointer can point to.
    while (first < last && is_digit(s[first])) ++first;
    return first >= last;
}

bool astr_strings_equal(const char* a, const char* b) {
    return a != nullptr && b != nullptr && gfile_file_name_strcmp(a, b) == 0;
}

bool astr_str_matches_at_tail(const char* s, const char* tail) {
    return s != nullptr && tail != nullptr && std::string_view(s).ends_with(tail);
}
