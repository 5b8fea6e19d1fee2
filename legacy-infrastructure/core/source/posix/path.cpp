#include <orvix/core/path.h>

#include "common/name_text.h"
#include "common/utf8.h"
#include "posix/drives.h"
#include "posix/host_name.h"

#include <orvix/core/file_status.h>
#include <orvix/core/files.h>
#include <orvix/core/stored_names.h>

#include <sys/stat.h>
#include <unistd.h>

namespace orvix {

namespace {

constexpr mode_t everybody = 0777;  // before the process's mask

}  // namespace

Path Path::from_fs_path(const std::filesystem::path& path) {
    const std::string host = path.string();
    if (!path.is_absolute()) return Path(core::with_backslashes(host));
    const std::optional<std::string> name = core::library_name(host);
    return name ? Path(*name) : Path(host, Spelling::host);
}

std::wstring Path::wstring() const {
    std::wstring wide;
    for (std::string_view rest = text_; !rest.empty();) wide += static_cast<wchar_t>(core::take_character(&rest));
    return wide;
}

std::string Path::host() const {
    core::HostName host;
    if (!core::translate(*this, &host)) return "";
    if (spelling_ == Spelling::typed) core::find_spelling(&host, core::Missing::maybe);
    return std::string(host.text.view());
}

bool Path::create_directory() const {
    const auto make = [](const char* host) { return mkdir(host, everybody); };
    return core::call_to_create(*this, make) == 0;
}

bool Path::delete_file_or_directory() const {
    const auto remove = [](const char* host) {
        if (unlink(host) == 0) return 0;
        // A directory is refused with EISDIR here and with EPERM elsewhere; rmdir tells the two apart.
        const int reason = errno;
        if (reason != EISDIR && reason != EPERM) return -1;
        if (rmdir(host) == 0) return 0;
        if (errno == ENOTDIR) errno = reason;
        return -1;
    };
    return core::call_on_existing(*this, remove) == 0;
}

Path Path::complete_path() const {
    if (spelling_ == Spelling::host) return *this;
    const std::string text = native();
    const auto result = [this](std::string complete) { return Path(std::move(complete), spelling_); };
    if (core::is_network_name(text)) return result(text);
    if (!text.empty() && core::is_separator(text[0])) {
        const char drive = core::current_drive();
        return result(drive != 0 ? std::string{drive, ':'} + text : text);
    }
    std::string_view rest = text;
    if (core::has_drive(text)) {
        if (text.size() > 2 && core::is_separator(text[2])) return result(text);
        rest.remove_prefix(2);
        if (core::current_drive() != core::to_upper(text[0])) {
            return result(text.substr(0, 2) + '\\' + std::string(rest));
        }
    }
    std::string complete = getcwd_utf8();
    if (rest.empty() || complete.empty()) return result(complete.empty() ? text : complete);
    if (complete.back() != '\\') complete += '\\';
    return result(complete + std::string(rest));
}

}  // namespace orvix
