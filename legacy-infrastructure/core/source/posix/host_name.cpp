#include "posix/host_name.h"

#include "common/name_text.h"
#include "posix/directory_listings.h"
#include "posix/drives.h"

#include <algorithm>
#include <optional>
#include <vector>

#include <sys/stat.h>

namespace orvix::core {

namespace {

// Adds a name to a host directory, or to nothing, with every run of separators as one slash. False if the name holds a
// zero byte, which no host takes.
bool append_parts(NameBuffer* host, std::string_view name) {
    if (host->ends_with('/')) {
        while (!name.empty() && is_separator(name[0])) name.remove_prefix(1);
    }
    const std::size_t before = host->size();
    char* const text = host->grow_to(before + name.size()) + before;
    // Two plain loops that compilers turn into vector code; runs of separators are rare.
    unsigned zeros = 0;
    for (std::size_t i = 0; i < name.size(); ++i) {
        text[i] = name[i] == '\\' ? '/' : name[i];
        zeros |= static_cast<unsigned>(name[i] == '\0');
    }
    unsigned runs = 0;
    for (std::size_t i = 1; i < name.size(); ++i) {
        runs |= static_cast<unsigned>((text[i] == '/') & (text[i - 1] == '/'));
    }
    char* end = text + name.size();
    if (runs != 0) end = std::unique(text, end, [](char a, char b) { return a == '/' && b == '/'; });
    host->cut(before + static_cast<std::size_t>(end - text));
    return zeros == 0;
}

bool start_at(const std::optional<Drive>& drive, std::string_view rest, HostName* host) {
    if (!drive) return false;
    host->text.assign(drive->root);
    append_parts(&host->text, "/");
    host->root_bytes = host->text.size();
    return append_parts(&host->text, rest);
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
    while (end > root_bytes && text[end - 1] == '/') --end;
    std::size_t begin = end;
    while (begin > root_bytes && text[begin - 1] != '/') --begin;
    return {begin, text.substr(begin, end - begin)};
}

// The directory part of a name as a name of its own.
std::string directory_name(std::string_view text, std::size_t bytes) {
    return bytes == 0 ? "." : std::string(text.substr(0, bytes));
}

bool translate_text(std::string_view name, HostName* host) {
    if (name.empty() || is_network_name(name)) return false;
    if (is_separator(name[0])) return start_at(current_drive_and_root(), name, host);
    if (!has_drive(name)) {
        return append_parts(&host->text, name);
    }
    const std::string_view rest = name.substr(2);
    const bool in_current_directory = rest.empty() || !is_separator(rest[0]);
    if (in_current_directory) {
        const std::optional<Drive> current = current_drive_and_root();
        if (current && current->letter == to_upper(name[0])) {
            return append_parts(&host->text, rest.empty() ? "." : rest);
        }
    }
    return start_at(drive_of(name[0]), rest, host);
}

}  // namespace

bool translate(const Name& name, HostName* host) {
    if (name.spelling == PathAccess::Spelling::host) {
        host->text.assign(name.text);
        return true;
    }
    if (translate_text(name.text, host)) return true;
    errno = ENOENT;
    return false;
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
        const Split split = split_last(host->text.view().substr(0, bytes), host->root_bytes);
        if (split.last.empty()) return false;  // not even the root of the drive exists
        components.emplace_back(split.last);
        bytes = split.directory_bytes;
        directory = directory_name(host->text.view(), bytes);
    } while (stat(directory.c_str(), &status) != 0);

    // Walk down again, each component in the spelling of its directory.
    bool changed = false;
    std::string text(host->text.view().substr(0, bytes));
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

    const bool trailing_slash = host->text.ends_with('/');
    for (auto component = components.rbegin(); component != components.rend(); ++component) {
        if (!text.ends_with('/')) text += '/';
        text += *component;
    }
    if (trailing_slash) text += '/';
    host->text.assign(text);
    return true;
}

void note_created(const HostName& host) {
    const ErrnoSaver saver;
    const Split split = split_last(host.text.view(), host.root_bytes);
    struct stat status;
    if (stat(directory_name(host.text.view(), split.directory_bytes).c_str(), &status) == 0) {
        listings().add_created(status, std::string(split.last));
    }
}

}  // namespace orvix::core
