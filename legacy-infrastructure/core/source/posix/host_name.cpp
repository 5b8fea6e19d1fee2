#include "posix/host_name.h"

#include "common/name_text.h"
#include "posix/directory_listings.h"
#include "posix/drives.h"

#include <optional>
#include <vector>

#include <sys/stat.h>

namespace orvix::core {

namespace {

// Adds a name to a host directory, or to nothing, with every run of separators as one slash.
void append_parts(std::string* host, std::string_view name) {
    host->reserve(host->size() + name.size() + 1);
    for (const char c : name) {
        if (!is_separator(c)) {
            *host += c;
        } else if (host->empty() || host->back() != '/') {
            *host += '/';
        }
    }
}

bool start_at(const std::optional<Drive>& drive, std::string_view rest, HostName* host) {
    if (!drive) {
        errno = ENOENT;
        return false;
    }
    host->text = drive->root;
    host->text += '/';
    host->root_bytes = host->text.size();
    append_parts(&host->text, rest);
    return true;
}

// Keeps errno as it was found.
class ErrnoSaver {
public:
    ErrnoSaver() : saved_(errno) {}
    ~ErrnoSaver() { errno = saved_; }
    ErrnoSaver(const ErrnoSaver&) = delete;
    ErrnoSaver& operator=(const ErrnoSaver&) = delete;

private:
    int saved_;
};

// Splits off the last component: "a/b/" gives "a/" and "b". The directory is "" for a name of one component.
struct Split {
    std::size_t directory_bytes;
    std::string_view last;
};

Split split_last(std::string_view text, std::size_t root_bytes) {
    std::size_t end = text.size();
    while (end > root_bytes && text[end - 1] == '/')
        --end;
    std::size_t begin = end;
    while (begin > root_bytes && text[begin - 1] != '/')
        --begin;
    return {begin, text.substr(begin, end - begin)};
}

// The directory part of a name as a name of its own.
std::string directory_name(std::string_view text, std::size_t bytes) {
    return bytes == 0 ? "." : std::string(text.substr(0, bytes));
}

bool translate_text(std::string_view name, HostName* host) {
    if (name.empty() || is_network_name(name) || name.find('\0') != std::string_view::npos) {
        errno = ENOENT;
        return false;
    }
    if (is_separator(name[0])) return start_at(current_drive_and_root(), name, host);
    if (!has_drive(name)) {
        append_parts(&host->text, name);
        return true;
    }
    const std::string_view rest = name.substr(2);
    const bool in_current_directory = rest.empty() || !is_separator(rest[0]);
    if (in_current_directory) {
        const std::optional<Drive> current = current_drive_and_root();
        if (current && current->letter == to_upper(name[0])) {
            append_parts(&host->text, rest.empty() ? "." : rest);
            return true;
        }
    }
    return start_at(drive_of(name[0]), rest, host);
}

}  // namespace

bool translate(const Path& name, HostName* host) {
    if (PathAccess::spelling(name) != PathAccess::Spelling::host) return translate_text(PathAccess::text(name), host);
    host->text = PathAccess::text(name);
    return true;
}

bool find_spelling(HostName* host, Missing missing) {
    const ErrnoSaver saver;
    struct stat status;
    if (missing == Missing::maybe && stat(host->text.c_str(), &status) == 0) return false;

    // Walk up to the deepest directory that exists, and note the components on the way.
    std::vector<std::string> components;
    std::size_t bytes = host->text.size();
    std::string directory;
    do {
        const Split split = split_last(std::string_view(host->text).substr(0, bytes), host->root_bytes);
        if (split.last.empty()) return false;  // not even the root of the drive exists
        components.emplace_back(split.last);
        bytes = split.directory_bytes;
        directory = directory_name(host->text, bytes);
    } while (stat(directory.c_str(), &status) != 0);

    // Walk down again, each component in the spelling of its directory.
    bool changed = false;
    std::string text = host->text.substr(0, bytes);
    while (!components.empty()) {
        const std::optional<std::string> stored = listings().find(directory, status, components.back());
        if (!stored) break;
        changed = changed || *stored != components.back();
        text += *stored;
        components.pop_back();
        directory = text;
        if (components.empty() || stat(directory.c_str(), &status) != 0) break;
        text += '/';
    }
    host->directory_listed = components.size() == 1;
    if (!changed) return false;

    const bool trailing_slash = host->text.back() == '/';
    for (auto component = components.rbegin(); component != components.rend(); ++component) {
        if (!text.ends_with('/')) text += '/';
        text += *component;
    }
    if (trailing_slash) text += '/';
    host->text = std::move(text);
    return true;
}

void note_created(const HostName& host) {
    const ErrnoSaver saver;
    const Split split = split_last(host.text, host.root_bytes);
    struct stat status;
    if (stat(directory_name(host.text, split.directory_bytes).c_str(), &status) == 0) {
        listings().add_created(status, std::string(split.last));
    }
}

}  // namespace orvix::core
