#include "posix/drives.h"

#include "common/name_text.h"

#include <orvix/core/files.h>

#include <cstdlib>
#include <memory>

#include <unistd.h>

namespace orvix::core {

namespace {

constexpr std::string_view variable_prefix = "ORVIX_DRIVE_";

// Absolute, with runs of slashes and the last slash gone; none for any other text.
std::optional<std::string> clean_root(const char* text) {
    if (text == nullptr || text[0] != '/') return std::nullopt;
    std::string root;
    for (const char* c = text; *c != '\0'; ++c) {
        if (*c == '/' && (c[1] == '/' || c[1] == '\0')) continue;
        root += *c;
    }
    return root;
}

// Without a call: the whole environment is looked through for each name that is given its drive.
bool begins_with(const char* text, std::string_view prefix) {
    for (const char c : prefix) {
        if (*text++ != c) return false;
    }
    return true;
}

// True if some letter has a variable of its own. Most hosts have none, and then `C:` is all there is.
bool any_drive_variable() {
    for (char** variable = environ; variable != nullptr && *variable != nullptr; ++variable) {
        if (begins_with(*variable, variable_prefix)) return true;
    }
    return false;
}

// Calls `use` with the current directory as the host spells it, and with "" if it cannot be told.
template <class Use>
auto with_host_current_directory(Use use) {
    char buffer[1024];
    if (getcwd(buffer, sizeof buffer) != nullptr) return use(std::string_view(buffer));
    const std::unique_ptr<char, decltype(&std::free)> longer(getcwd(nullptr, 0), &std::free);
    return use(std::string_view(longer != nullptr ? longer.get() : ""));
}

bool holds(std::string_view root, std::string_view host) {
    return host.starts_with(root) && (host.size() == root.size() || host[root.size()] == '/');
}

// A root may be given through a link, but the system tells the current directory without links.
std::optional<std::string> without_links(const std::string& root) {
    const std::unique_ptr<char, decltype(&std::free)> resolved(realpath(root.empty() ? "/" : root.c_str(), nullptr),
                                                               &std::free);
    return clean_root(resolved.get());
}

// A drive, and how much of a host name is its root.
struct Holder {
    char letter;
    std::size_t root_bytes;
};

std::optional<Holder> drive_holding(std::string_view host) {
    if (!any_drive_variable()) return Holder{'C', 0};
    std::optional<Holder> best;
    const auto offer = [&](char letter, std::string_view root) {
        if (!holds(root, host)) return;
        const bool longer = !best || root.size() > best->root_bytes;
        if (longer || (root.size() == best->root_bytes && letter == 'C')) best = Holder{letter, root.size()};
    };
    for (char letter = 'A'; letter <= 'Z'; ++letter) {
        const std::optional<Drive> drive = drive_of(letter);
        if (!drive) continue;
        offer(letter, drive->root);
        if (const auto resolved = without_links(drive->root)) offer(letter, *resolved);
    }
    return best;
}

// Writes the library's form of a host name to where `room` says, which is given its length. False, and `room` not
// called, if no drive holds the name or a backslash stands in it.
template <class Room>
bool put_library_name(std::string_view host, Room room) {
    // A name with a backslash in it would read as another name.
    if (host.empty() || host.find('\\') != std::string_view::npos) return false;
    const std::optional<Holder> drive = drive_holding(host);
    if (!drive) return false;
    host.remove_prefix(drive->root_bytes);
    if (host.empty()) host = "/";
    char* const text = room(2 + host.size());
    text[0] = drive->letter;
    text[1] = ':';
    put_with_backslashes(host, text + 2);
    return true;
}

auto room_in(std::string* text) {
    return [text](std::size_t size) {
        text->resize(size);
        return text->data();
    };
}

}  // namespace

std::optional<Drive> drive_of(char letter) {
    std::string name(variable_prefix);
    name += to_upper(letter);
    const char* text = std::getenv(name.c_str());
    if (text == nullptr && to_upper(letter) == 'C') return Drive{'C', ""};
    std::optional<std::string> root = clean_root(text);
    if (!root) return std::nullopt;
    return Drive{to_upper(letter), std::move(*root)};
}

std::optional<Drive> current_drive_and_root() {
    if (!any_drive_variable()) return Drive{'C', ""};
    return with_host_current_directory([](std::string_view host) {
        const std::optional<Holder> holder = drive_holding(host);
        return holder ? std::optional(Drive{holder->letter, std::string(host.substr(0, holder->root_bytes))})
                      : std::nullopt;
    });
}

std::optional<std::string> library_name(std::string_view host) {
    std::string name;
    return put_library_name(host, room_in(&name)) ? std::optional(std::move(name)) : std::nullopt;
}

}  // namespace orvix::core

namespace orvix {

std::string getcwd_utf8() {
    std::string name;
    core::with_host_current_directory(
        [&](std::string_view host) { return core::put_library_name(host, core::room_in(&name)); });
    return name;
}

std::size_t core::put_current_directory(char* to) {
    std::size_t written = 0;
    with_host_current_directory([&](std::string_view host) {
        return put_library_name(host, [&](std::size_t size) {
            written = size;
            return to;
        });
    });
    return written;
}

}  // namespace orvix
