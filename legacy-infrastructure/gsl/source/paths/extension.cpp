#include "paths/last_mark.h"

#include <orvix/gsl/file_names.h>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace {

// The position of the dot that begins the extension, counted from 1; 0 without one. A ":" does not end the search: the
// dot of "c:.x" begins an extension.
std::size_t extension_position(std::string_view name) {
    const std::size_t mark = orvix::gsl::paths::length_to_last<'.', '/', '\\'>(name);
    return mark != 0 && name[mark - 1] == '.' ? mark : 0;
}

}  // namespace

bool gfile_hasext(const char* name, int* position) {
    const std::size_t dot = extension_position(name);
    *position = static_cast<int>(std::min<std::size_t>(dot, INT_MAX));
    return dot != 0;
}

void gfile_filext(char* name, bool overwrite, const char* extension) {
    const std::string_view whole = name;
    const std::size_t dot = extension_position(whole);
    if (dot == 0 || overwrite) {
        const std::size_t length = std::strlen(extension);
        char* end = name + (dot != 0 ? dot - 1 : whole.size());
        std::memmove(end + 1, extension, length + 1);
        *end = '.';
    }
    convertFileName(name);
}

void gfile_stripext(const char* name, char* out) {
    const std::string_view whole = name;
    const std::size_t dot = extension_position(whole);
    const std::size_t length = dot != 0 ? dot - 1 : whole.size();
    std::memmove(out, name, length);
    out[length] = '\0';
}

char* gfile_getext(const char* name) {
    const std::size_t length = std::strlen(name);
    if (length == 0) return nullptr;

    // The text behind a dot and its zero byte never take more than the name without its zero byte.
    auto* extension = static_cast<char*>(std::calloc(length, 1));
    if (extension == nullptr) return nullptr;
    if (const char* dot = std::strchr(name, '.')) std::memcpy(extension, dot + 1, std::strlen(dot + 1));
    return extension;
}
