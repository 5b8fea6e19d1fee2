#include <orvix/core/stored_names.h>

#include "common/name_text.h"
#include "windows/last_error.h"
#include "windows/wide_name.h"

#include <cerrno>

#include <direct.h>

namespace orvix::core {

namespace {

// A search would take these for a pattern, but for those of the prefix of long names.
bool has_wildcard(std::wstring_view name) {
    constexpr std::size_t prefix_size = 4;
    const bool prefixed = name.starts_with(LR"(\\?\)");
    return name.find_first_of(L"*?", prefixed ? prefix_size : 0) != std::wstring_view::npos;
}

using SpellName = DWORD (*)(const wchar_t* name, wchar_t* buffer, DWORD units);

// Asks the system for another form of a name. Empty if the name does not exist.
std::string other_form(const Path& name, SpellName spell) {
    WideName wide;
    if (!translate(name, &wide)) return "";
    std::wstring form;
    DWORD size = spell(wide.c_str(), nullptr, 0);
    // Another process may rename it between two calls.
    while (size > form.size()) {
        form.resize(size);
        size = spell(wide.c_str(), form.data(), size);
    }
    if (size == 0) fail_with_last_error();
    return library_name(std::wstring_view(form).substr(0, size));
}

}  // namespace

char current_drive() {
    const int number = _getdrive();
    return number != 0 ? static_cast<char>('A' + number - 1) : '\0';
}

bool stored_last_part(const Path& name, std::string* last_part) {
    std::string_view text = PathAccess::text(name);
    while (!text.empty() && is_separator(text.back())) text.remove_suffix(1);
    WideName wide;
    if (!translate(text, &wide)) return false;
    if (has_wildcard(wide.view())) {
        errno = ENOENT;
        return false;
    }
    WIN32_FIND_DATAW found;
    const HANDLE search = FindFirstFileW(wide.c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) {
        fail_with_last_error();
        return false;
    }
    FindClose(search);
    *last_part = narrow(found.cFileName);
    return true;
}

std::string long_name(const Path& name) { return other_form(name, GetLongPathNameW); }

std::string short_name(const Path& name) { return other_form(name, GetShortPathNameW); }

}  // namespace orvix::core
