#include <orvix/gsl/file_names.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace {

constexpr char first_control = 7;
constexpr std::string_view escape_letters = "abtnvfr";  // of the bytes 7 to 13, in order

bool is_escaped(char c) { return c >= first_control && c < first_control + static_cast<char>(escape_letters.size()); }

char letter_of(char control) { return escape_letters[static_cast<std::size_t>(control - first_control)]; }

}  // namespace

void gfile_fix_path(char** name) {
    if (*name == nullptr) return;
    const std::size_t length = std::strlen(*name);
    if (length == 0) return;
    const auto escapes = static_cast<std::size_t>(std::count_if(*name, *name + length, is_escaped));
    auto* text = static_cast<char*>(std::realloc(*name, length + 2 * escapes + 1));
    if (text == nullptr) return;
    *name = text;

    // From the end, so that the text can move inside its own block. What stands before the first control character is
    // in place already.
    const char* from = text + length;
    char* to = text + length + 2 * escapes;
    *to = '\0';
    while (to != from) {
        const char c = *--from;
        if (is_escaped(c)) {
            *--to = letter_of(c);
            *--to = '\\';
            *--to = '\\';
        } else {
            *--to = c;
        }
    }
}
