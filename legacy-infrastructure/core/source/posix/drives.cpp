#include "posix/drives.h"

#include "common/name_text.h"

#include <cstdlib>
#include <cstring>
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

// True if some letter has a variable of its own. Most hosts have none, and then `C:` is all there is.
bool any_drive_variable() {
    for (char** variable = environ; variable != nullptr && *variable != nullptr; ++variable) {
        if (std::strncmp(*variable, variable_prefix.data(), variable_prefix.size()) == 0) return true;
    }
    return false;
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

// The drive that holds an absolute host name. Its root is given in the spelling in which it does.
std::optional<Drive> drive_holding(std::string_view host) {
    if (!any_drive_variable()) return Drive{'C', ""};
    std::optional<Drive> best;
    const auto offer = [&](char letter, const std::string& root) {
        if (!holds(root, host)) return;
        const bool longer = !best || root.size() > best->root.size();
        if (longer || (root.size() == best->root.size() && letter == 'C')) best = Drive{letter, root};
    };
    for (char letter = 'A'; letter <= 'Z'; ++letter) {
        const std::optional<Drive> drive = drive_of(letter);
        if (!drive) continue;
        offer(letter, drive->root);
        if (const auto resolved = without_links(drive->root)) offer(letter, *resolved);
    }
    return best;
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
    return drive_holding(host_current_directory());
}

std::optional<std::string> library_name(std::string_view host) {
    // A name with a backslash in it would read as another name.
    if (host.empty() || host.find('\\') != std::string_view::npos) return std::nullopt;
    const std::optional<Drive> drive = drive_holding(host);
    if (!drive) return std::nullopt;
    const std::string_view rest = host.substr(drive->root.size());
    std::string name{drive->letter, ':'};
    name += rest.empty() ? "\\" : with_backslashes(rest);
    return name;
}

std::string host_current_directory() {
    char buffer[1024];
    if (getcwd(buffer, sizeof buffer) != nullptr) return buffer;
    const std::unique_ptr<char, decltype(&std::free)> longer(getcwd(nullptr, 0), &std::free);
    return longer != nullptr ? longer.get() : "";
}

}  // namespace orvix::core
