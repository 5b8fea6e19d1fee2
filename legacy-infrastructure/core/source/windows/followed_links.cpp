#include "windows/followed_links.h"

#include "common/name_text.h"
#include "windows/file_opening.h"
#include "windows/wide_name.h"

#include <string>

namespace orvix::core {

namespace {

bool has_function(const wchar_t* library, const char* name) {
    const HMODULE module = GetModuleHandleW(library);
    return module != nullptr && GetProcAddress(module, name) != nullptr;
}

bool is_entry(HANDLE opened, HANDLE directory, std::string_view entry) {
    std::string name = final_name(directory);
    if (!name.ends_with('\\')) name += '\\';
    name += entry;
    const std::string found = final_name(opened);
    return found.empty() || equal_ignoring_case(found, name);  // names of more than 260 units are not told
}

}  // namespace

bool links_are_followed_always() {
    static const bool wine = has_function(L"ntdll", "wine_get_version");
    return wine;
}

bool was_followed(HANDLE opened, HANDLE directory, std::string_view entry) {
    return links_are_followed_always() && entry != "." && entry != ".." && !is_entry(opened, directory, entry);
}

bool was_followed(HANDLE opened, const wchar_t* name) {
    if (!links_are_followed_always()) return false;
    std::string text = narrow(name);
    while (!text.empty() && is_separator(text.back())) text.pop_back();
    const std::size_t last = text.find_last_of("\\:") + 1;
    const std::string_view entry = std::string_view(text).substr(last);
    if (entry.empty()) return false;
    const std::wstring above = widen(last == 0 ? "." : text.substr(0, last));
    const Handle directory = open_existing(above.c_str(), FILE_READ_ATTRIBUTES);
    return directory.valid() && was_followed(opened, directory.get(), entry);
}

}  // namespace orvix::core
