#include "paths/fixup.h"

#include <orvix/gsl/canonical_names.h>

#include <cstring>

namespace orvix::gsl::paths {

namespace {

constexpr char canonical_byte(char c) { return c == '/' ? '\\' : to_lower(c); }

// Turns and lowers every byte. True if some separator had another one or a dot behind it. Most names need no more than
// this one loop, which compilers turn into vector code because it has no branches.
bool spell_bytes(char* text, std::size_t size) {
    if (size == 0) return false;
    unsigned char found = 0;
    for (std::size_t i = 0; i + 1 < size; ++i) {
        const char c = text[i];
        const char next = text[i + 1];
        const int separator = static_cast<int>(c == '/') | static_cast<int>(c == '\\');
        const int piece =
            static_cast<int>(next == '/') | static_cast<int>(next == '\\') | static_cast<int>(next == '.');
        found |= static_cast<unsigned char>(separator & piece);
        text[i] = canonical_byte(c);
    }
    text[size - 1] = canonical_byte(text[size - 1]);
    return found != 0;
}

// Writes one backslash for each run of them. A run of one with "." and a backslash behind it takes these along, with
// all backslashes that follow, but no second dot: "\.\.\" becomes "\.\".
std::size_t drop_pieces(char* text, std::size_t size) {
    std::size_t to = 0;
    for (std::size_t from = 0; from < size;) {
        const char c = text[from++];
        text[to++] = c;
        if (c != '\\') continue;
        if (from + 1 < size && text[from] == '.' && text[from + 1] == '\\') ++from;
        while (from < size && text[from] == '\\') ++from;
    }
    return to;
}

}  // namespace

std::size_t fix_up(char* text, std::size_t size, Trailing trailing) {
    // The first of two backslashes marks a network name and stays; two slashes are no such mark.
    const std::size_t network = size >= 2 && text[0] == '\\' && text[1] == '\\' ? 1 : 0;
    if (spell_bytes(text + network, size - network)) size = network + drop_pieces(text + network, size - network);
    while (trailing == Trailing::cut && size != 0 && text[size - 1] == '\\') --size;
    return size;
}

void fix_up(std::string* text, Trailing trailing) {
    const std::size_t size = fix_up(text->data(), text->size(), trailing);
    text->resize(size);
}

}  // namespace orvix::gsl::paths

using namespace orvix::gsl::paths;

void HX_fixup_path(char* name) {
    if (name == nullptr) return;
    name[fix_up(name, std::strlen(name), Trailing::cut)] = '\0';
}

std::string HX_fixup_path_new(const std::string& name) {
    std::string result = name;
    fix_up(&result, Trailing::kept);
    return result;
}
