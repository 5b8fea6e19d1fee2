#include "text/bytes.h"

#include <orvix/gsl/file_names.h>
#include <orvix/gsl/status.h>
#include <orvix/gsl/string_utilities.h>

#include <cstdint>
#include <cstring>
#include <string_view>

using namespace orvix::gsl::text;

namespace {

constexpr std::size_t longest_name = INT32_MAX;  // zero byte included

}  // namespace

char* astr_add_extent(const char* path, const char* ext) {
    if (path == nullptr || ext == nullptr || *ext == '\0') return nullptr;
    const std::string_view name = path;
    const std::string_view extension = ext;
    if (name.size() >= longest_name || extension.size() >= longest_name - name.size()) aerr_memory_error();

    char* result = new_text(name.size() + extension.size());
    std::memcpy(result, path, name.size() + 1);
    // A name that is nothing but the extension does not have it yet.
    const bool there = name.size() > extension.size() && name.ends_with(extension);
    if (!there) std::memcpy(result + name.size(), ext, extension.size() + 1);
    return convertFileName(result);
}

bool astr_remove_extent(char* path) {
    if (char* dot = std::strchr(astr_get_leaf_name(path), '.')) *dot = '\0';
    return true;
}

bool astr_replace_extent(char* path, int maxlen, const char* ext) {
    if (path == nullptr) return false;
    gfile_stripext(convertFileName(path), path);
    char* end = path + std::strlen(path);

    const std::size_t length = ext != nullptr ? std::strlen(ext) : 0;
    const std::size_t needed = static_cast<std::size_t>(end - path) + length + 1;
    if (maxlen < 0 || needed > static_cast<std::size_t>(maxlen)) return false;
    if (ext == nullptr) return true;
    if (*ext != '.') *end++ = '.';
    std::memmove(end, ext, length + 1);
    return true;
}
