#include <orvix/core/files.h>
#include <orvix/gsl/file_names.h>

#include <cstring>
#include <string>

namespace {

// Turns a "/" at the very end into "\"; the inner ones stay.
void convert_last(char* name, std::size_t length) {
    if (name[length - 1] == '/') name[length - 1] = '\\';
}

bool ends_in_backslash(const char* name, std::size_t length) { return name[length - 1] == '\\'; }

}  // namespace

bool gfile_prepare_dir_name(char* name) {
    const std::size_t length = name != nullptr ? std::strlen(name) : 0;
    if (length == 0) return true;
    convert_last(name, length);
    if (!ends_in_backslash(name, length)) std::memcpy(name + length, "\\", 2);
    return true;
}

bool gfile_strip_dir_name(char* name) {
    const std::size_t length = name != nullptr ? std::strlen(name) : 0;
    if (length < 2) return true;
    convert_last(name, length);
    const bool drive_root = length == 3 && name[1] == ':' && name[2] == '\\';
    if (!drive_root && ends_in_backslash(name, length)) name[length - 1] = '\0';
    return true;
}

std::string gfile_strip_dir_name_kstring(const std::string& name) {
    std::string result = name;
    if (result.size() < 2) return result;
    // Unlike in the form above, the third character may be anything: "c:x" is kept as a drive root is.
    if (result.size() == 3 && result[1] == ':') return result;
    if (result.back() == '\\' || result.back() == '/') result.pop_back();
    return result;
}

std::string gfile_strip_dir_name_and_convert_kstring(const std::string& name) {
    return gfile_strip_dir_name_kstring(orvix::fixFilenameSlashes(name));
}
