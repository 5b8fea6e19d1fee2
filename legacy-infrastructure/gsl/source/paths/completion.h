// The way from a name as it was typed to an absolute one, before its spelling is fixed.
#pragma once

#include "paths/fixup.h"

#include <orvix/core/files.h>
#include <orvix/gsl/file_names.h>

#include <optional>
#include <string>
#include <string_view>

namespace orvix::gsl::paths {

// A relative name without the "./" and ".\" at its front. A lone "." stays.
constexpr std::string_view without_dot_prefixes(std::string_view name) {
    while (name.size() >= 2 && name[0] == '.' && is_separator(name[1])) name.remove_prefix(2);
    return name;
}

inline std::string joined(std::string_view directory, std::string_view part) {
    std::string name;
    name.reserve(directory.size() + 1 + part.size());
    name += directory;
    name += '/';
    name += part;
    return name;
}

// An absolute name as it is; else the current directory, "/" and what is left without dot prefixes, or nothing if that
// is empty.
inline std::optional<std::string> completed(const std::string& name) {
    if (HX_path_is_absolute(name.c_str())) return name;
    const std::string_view rest = without_dot_prefixes(name);
    if (rest.empty()) return std::nullopt;
    return joined(getcwd_utf8(), rest);
}

}  // namespace orvix::gsl::paths
