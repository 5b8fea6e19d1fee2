#include "paths/long_name_walk.h"

#include "paths/fixup.h"

#include <orvix/core/path.h>
#include <orvix/core/stored_names.h>

#include <algorithm>
#include <cstdlib>

namespace orvix::gsl::paths {

namespace {

// How far the first separator is.
std::size_t part_size(std::string_view name) { return std::min(name.find_first_of("/\\"), name.size()); }

// Cuts so many bytes off the front of a name, and gives them.
std::string_view take(std::string_view* name, std::size_t size) {
    const std::string_view front = name->substr(0, size);
    name->remove_prefix(size);
    return front;
}

// Takes the root off the front of a name: two backslashes and the server, or a drive and a backslash.
std::string take_root(std::string_view* name) {
    if (name->starts_with("\\\\")) return std::string(take(name, 2 + part_size(name->substr(2))));
    const bool has_drive = name->size() >= 2 && (*name)[1] == ':';
    std::string root = has_drive ? std::string(take(name, 2)) : std::string{core::current_drive(), ':'};
    if (has_drive && name->empty()) return root;
    if (!name->starts_with('\\')) std::abort();
    root += take(name, 1);
    return root;
}

}  // namespace

std::string long_name_walk(std::string_view name) {
    if (name.empty()) return "";
    std::string result = take_root(&name);
    while (!name.empty()) {
        if (is_separator(name[0])) {
            take(&name, 1);
            result += '\\';
            continue;
        }
        const std::size_t directory_bytes = result.size();
        result += take(&name, part_size(name));
        std::string stored;
        if (core::stored_last_part(Path(result), &stored)) result.replace(directory_bytes, std::string::npos, stored);
    }
    return result;
}

}  // namespace orvix::gsl::paths
