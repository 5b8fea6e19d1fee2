#include "posix/descriptor.h"
#include "posix/drives.h"
#include "posix/file_opening.h"
#include "posix/host_name.h"

#include <orvix/core/temporary_file.h>
#include <orvix/core/temporary_names.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include <fcntl.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orvix {

namespace {

constexpr int attempts = 100;  // each with 60 fresh random bits
constexpr mode_t owner_alone = 0600;

bool is_usable_directory(const std::string& host) {
    struct stat status;
    return stat(host.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && access(host.c_str(), W_OK | X_OK) == 0;
}

constexpr const char* last_resort = "/tmp";

// The host directory for temporary files that the user names, without a trailing slash; empty if there is none.
std::string named_directory() {
    const char* variable = std::getenv("TMPDIR");
    std::string directory = variable != nullptr && variable[0] == '/' ? variable : "";
    while (directory.ends_with('/')) directory.pop_back();
    return directory;
}

std::string temporary_directory() {
    std::string directory = named_directory();
    return !directory.empty() && is_usable_directory(directory) ? directory : last_resort;
}

// Twelve characters that nobody can guess; none if the system has no random bytes to give.
std::string random_letters() {
    constexpr std::string_view alphabet = "abcdefghijklmnopqrstuvwxyz234567";
    std::array<unsigned char, 12> bytes{};
    if (getentropy(bytes.data(), bytes.size()) != 0) return "";
    std::string letters;
    for (const unsigned char byte : bytes) letters += alphabet[byte % alphabet.size()];
    return letters;
}

// Where a temporary file may lie: the first directory that lets it be made.
struct Places {
    std::vector<std::string> host_directories;
    std::string prefix;
};

// A prefix may carry a directory in the library's form.
Places places_of(const std::string& prefix) {
    const std::size_t separator = prefix.find_last_of("\\/");
    if (separator == std::string::npos) return {{named_directory(), last_resort}, prefix};
    std::string directory = Path(prefix.substr(0, separator + 1)).host();
    while (directory.size() > 1 && directory.ends_with('/')) directory.pop_back();
    return {{std::move(directory)}, prefix.substr(separator + 1)};
}

// Makes a file of its own in a directory. The host's name of it; empty if none can be made there.
std::string make_file_in(const std::string& directory, const std::string& prefix, const std::string& ending,
                         core::Descriptor* file) {
    for (int attempt = 0; attempt < attempts; ++attempt) {
        const std::string letters = random_letters();
        if (letters.empty()) return "";
        std::string host = directory + '/' + prefix + '_' + letters + ending;
        *file = core::Descriptor(core::uninterrupted(
            [&] { return ::open(host.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, owner_alone); }));
        if (file->valid()) return host;
        if (errno != EEXIST) return "";
    }
    return "";
}

Path path_of(const std::string& host) {
    if (!host.starts_with('/')) return core::PathAccess::make(host, core::PathAccess::Spelling::host);
    const std::optional<std::string> name = core::library_name(host);
    // Where no drive holds the directory the file is still ours under the host's name.
    return name ? Path::exact(*name) : core::PathAccess::make(host, core::PathAccess::Spelling::host);
}

}  // namespace

TemporaryFile::TemporaryFile(const std::string& prefix, const std::string& extension) {
    const Places places = places_of(prefix);
    const std::string ending = extension.empty() || extension.starts_with('.') ? extension : "." + extension;
    core::Descriptor file;
    for (const std::string& directory : places.host_directories) {
        if (directory.empty()) continue;
        const std::string host = make_file_in(directory, places.prefix, ending, &file);
        if (host.empty()) continue;
        path_ = path_of(host);
        file_ = core::FileOpening::of_new(file.release());
        return;
    }
}

namespace core {

std::string temporary_name(const char* directory, const char* prefix) {
    std::string host = directory != nullptr ? Path(directory).host() : "";
    while (host.size() > 1 && host.ends_with('/')) host.pop_back();
    if (host.empty() || !is_usable_directory(host)) host = temporary_directory();
    for (int attempt = 0; attempt < attempts; ++attempt) {
        const std::string letters = random_letters();
        if (letters.empty()) return "";
        const std::string name = host + '/' + (prefix != nullptr ? prefix : "") + letters;
        struct stat status;
        if (lstat(name.c_str(), &status) == 0) continue;
        return name.starts_with('/') ? library_name(name).value_or("") : Path(name).native();
    }
    return "";
}

}  // namespace core

}  // namespace orvix
