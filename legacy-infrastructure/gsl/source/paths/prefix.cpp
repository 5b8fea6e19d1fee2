#include "paths/last_mark.h"

#include <orvix/gsl/file_names.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <string>
#include <string_view>

namespace {

std::size_t prefix_length(std::string_view name) { return orvix::gsl::paths::length_to_last<':', '\\'>(name); }

}  // namespace

bool gfile_hasdrv(const char* name, int* length) {
    const std::size_t prefix = prefix_length(name);
    *length = static_cast<int>(std::min<std::size_t>(prefix, INT_MAX));
    return prefix != 0;
}

void gfile_fildrv(char* name, bool overwrite, const char* drive) {
    const std::size_t prefix = prefix_length(name);
    if (prefix != 0 && !overwrite) return;

    const std::string tail = name + prefix;
    std::size_t length = std::strlen(drive);
    std::memmove(name, drive, length + 1);
    convertFileName(name);
    if (length != 0 && name[length - 1] != '\\') name[length++] = '\\';
    std::memcpy(name + length, tail.c_str(), tail.size() + 1);
}

void gfile_stripdrv(const char* const name, char* out) {
    const std::string_view whole = name;
    const std::size_t prefix = prefix_length(whole);
    std::memmove(out, name + prefix, whole.size() - prefix + 1);
}
