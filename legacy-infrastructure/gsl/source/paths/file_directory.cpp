#include "paths/last_mark.h"

#include <orvix/gsl/canonical_names.h>

#include <string>
#include <string_view>

namespace {

// The text before the last separator, which is empty for a file in the root; "." without a separator.
std::string directory_of(std::string_view name) {
    const std::size_t front = orvix::gsl::paths::length_to_last<'/', '\\'>(name);
    return front != 0 ? std::string(name.substr(0, front - 1)) : ".";
}

}  // namespace

char* HX_get_directory_from_file(const char* name, char* out) {
    HX_canonical_path(directory_of(name != nullptr ? name : "").c_str(), out);
    return out;
}

std::string HX_get_directory_from_file_new(const std::string& name) {
    return HX_canonical_path_new(directory_of(name));
}
