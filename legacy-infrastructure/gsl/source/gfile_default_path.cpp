#include "gfile_default_path.h"

#include <orvix/core/directory_saver.h>
#include <orvix/core/files.h>
#include <orvix/core/path.h>
#include <orvix/gsl/file_names.h>
#include <orvix/gsl/files.h>

#include <cstring>
#include <string>

namespace {

constexpr bool is_letter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

// The current directory with a backslash at its end; empty if it cannot be told.
std::string current_directory() {
    std::string directory = orvix::getcwd_utf8();
    if (!directory.empty() && directory.back() != '\\') directory += '\\';
    return directory;
}

// Names on a drive are meant from its root.
std::string from_root_of_drive(std::string name) {
    const bool on_drive = name.size() >= 2 && is_letter(name[0]) && name[1] == ':';
    if (on_drive && (name.size() == 2 || name[2] != '\\')) name.insert(2, 1, '\\');
    return name;
}

}  // namespace

bool gfile_getdefpath(char* buffer, int size) {
    if (buffer == nullptr) return false;
    const std::string directory = orvix::getcwd_utf8();
    // The backslash is not counted; callers have a byte to spare.
    if (static_cast<std::int64_t>(directory.size()) > static_cast<std::int64_t>(size) - 1) return false;
    std::memcpy(buffer, directory.c_str(), directory.size() + 1);
    if (!directory.empty() && directory.back() != '\\') std::memcpy(buffer + directory.size(), "\\", 2);
    return true;
}

bool orvix::gsl::gfile_setdefpath(std::string* directory) {
    if (directory->empty()) return false;
    convertFileName(directory->data());
    if (directory->back() == '\\') directory->pop_back();

    DirectorySaver saver;
    if (!saver.change_dir(from_root_of_drive(*directory))) return false;
    const std::string entered = current_directory();
    if (entered.empty()) return false;
    *directory = entered;
    return true;
}

bool gfile_setdefpath(char* directory) {
    if (directory == nullptr) return false;
    std::string name = directory;
    const bool entered = orvix::gsl::gfile_setdefpath(&name);
    std::memcpy(directory, name.c_str(), name.size() + 1);  // a failure leaves its mark too
    return entered;
}
