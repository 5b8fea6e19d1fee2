#include "paths/completion.h"
#include "paths/fixup.h"
#include "paths/last_mark.h"

#include <orvix/gsl/canonical_names.h>
#include <orvix/gsl/file_names.h>

#include <algorithm>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

using namespace orvix::gsl::paths;

namespace {

// What `HX_canonical_path` makes of a name of any length; nothing where it refuses.
std::optional<std::string> canonical(const char* name) {
    if (name == nullptr) return std::nullopt;
    std::optional<std::string> text = completed(name);
    if (text) fix_up(&*text, Trailing::cut);
    return text;
}

// A separator at the very front is no end of a directory, nor is one of the two in front of a server.
std::string_view without_last_part(std::string_view name) {
    const std::size_t front = length_to_last<'/', '\\'>(name);
    if (front <= 1) return name;
    const std::size_t separator = front - 1;
    if (name.starts_with("\\\\") && separator <= 2) return name;
    return name.substr(0, separator);
}

std::string without_trailing_separator(const char* name) {
    std::string text = name;
    convertFileName(text.data());
    gfile_strip_dir_name(text.data());
    text.resize(std::strlen(text.c_str()));
    return text;
}

}  // namespace

bool HX_paths_are_same(const char* a, const char* b, bool cut_last_part_of_a) {
    const std::optional<std::string> first = canonical(a);
    const std::optional<std::string> second = canonical(b);
    if (!first || !second) return false;
    return (cut_last_part_of_a ? without_last_part(*first) : *first) == *second;
}

bool gdir_compare_paths(const char* a, const char* b) {
    if (a == nullptr || b == nullptr) return false;
    const std::string first = without_trailing_separator(a);
    const std::string second = without_trailing_separator(b);
    return std::equal(first.begin(), first.end(), second.begin(), second.end(),
                      [](char x, char y) { return to_lower(x) == to_lower(y); });
}
