#include "text/bytes.h"

#include <orvix/gsl/file_names.h>
#include <orvix/gsl/string_utilities.h>

#include <cstring>

using namespace orvix::gsl::text;

char* astr_get_leaf_name(char* path) { return HX_get_basename_from_file(path); }

const char* astr_get_leaf_name(const char* path) { return astr_get_leaf_name(const_cast<char*>(path)); }

char* astr_get_path_name(char* path) {
    if (path == nullptr) return nullptr;
    const char* last = std::strrchr(convertFileName(path), '\\');
    // A root alone is no directory to name.
    if (last == nullptr || last == path) return astr_new_string(".\\");

    const auto length = static_cast<std::size_t>(last - path);
    char* directory = new_text(length);
    move_text(directory, path, length);
    return directory;
}
