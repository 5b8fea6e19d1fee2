#include "support/links.h"

#include "support/windows/wine.h"

#include <stdexcept>

#include <windows.h>

namespace fs = std::filesystem;

namespace orvix::test {

namespace {

constexpr DWORD without_special_rights = 2;

bool is_link(const fs::path& name) {
    const DWORD attributes = GetFileAttributesW(name.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}

void make(const fs::path& target, const fs::path& link, DWORD kind) {
    fs::path native = target;
    const bool made = CreateSymbolicLinkW(link.c_str(), native.make_preferred().c_str(), kind | without_special_rights);
    // Wine says yes and makes none.
    if (!made || !is_link(link)) run_on_host(L"ln", {L"-s", host_name(target), host_name(fs::absolute(link))});
}

}  // namespace

void make_link(const fs::path& target, const fs::path& link) { make(target, link, 0); }

void make_directory_link(const fs::path& target, const fs::path& link) {
    make(target, link, SYMBOLIC_LINK_FLAG_DIRECTORY);
}

bool links_are_seen() { return !is_wine(); }

}  // namespace orvix::test
