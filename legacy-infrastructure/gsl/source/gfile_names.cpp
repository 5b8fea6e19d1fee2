#include "gfile_names.h"

#include <orvix/gsl/directory_scan.h>
#include <orvix/gsl/file_names.h>
#include <orvix/gsl/status.h>

namespace orvix::gsl {

bool is_self_or_parent(const char* entry) { return gsl_strcmp(entry, ".") == 0 || gsl_strcmp(entry, "..") == 0; }

std::string without_separator(std::string_view name) {
    std::string text(name);
    gfile_strip_dir_name(text.data());
    text.resize(std::string_view(text.c_str()).size());
    return text;
}

std::string behind_prefix(const std::string& name) {
    int prefix_bytes = 0;
    gfile_hasdrv(name.c_str(), &prefix_bytes);
    return name.substr(static_cast<std::size_t>(prefix_bytes));
}

std::optional<WildcardName> split_wildcard(const std::string& name) {
    const std::size_t backslash = name.rfind('\\');
    if (backslash == std::string::npos) return std::nullopt;
    return WildcardName{name.substr(0, backslash), behind_prefix(name)};
}

std::size_t bytes_before_entry(std::string_view directory) {
    return directory.size() + (directory.ends_with('\\') || directory.ends_with('/') ? 0 : 1);
}

int type_word(const std::string& name) {
    constexpr unsigned type_mask = 0xf000;
    orvix::core::FileStatus32 status;
    if (gsl_stat(name.c_str(), &status) != 0) return 0;
    return static_cast<int>(static_cast<unsigned>(status.st_mode) & type_mask);
}

Path directory_path(const std::string& name) {
    const bool drive_alone = name.size() == 2 && name[1] == ':';
    return Path(drive_alone ? name + '\\' : name);
}

}  // namespace orvix::gsl
