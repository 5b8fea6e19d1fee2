#include "windows/wide_name.h"

#include "common/name_text.h"
#include "common/utf8.h"
#include "windows/last_error.h"

#include <algorithm>
#include <cerrno>
#include <cwchar>

namespace orvix::core {

namespace {

// A directory's name must leave room for a short file name, or it cannot be made; longer names take the prefix.
constexpr std::size_t longest_plain_name = MAX_PATH - 12 - 1;

constexpr std::wstring_view long_prefix = LR"(\\?\)";
constexpr std::wstring_view long_network_prefix = LR"(\\?\UNC\)";

// Two separators, "?" or ".", and a separator: the system takes what follows as it stands.
bool is_raw(std::wstring_view name) {
    return name.size() >= 4 && name.starts_with(LR"(\\)") && (name[2] == L'?' || name[2] == L'.') && name[3] == L'\\';
}

bool is_full(std::wstring_view name) {
    return name.starts_with(LR"(\\)") || (name.size() >= 3 && name[1] == L':' && name[2] == L'\\');
}

bool may_be_too_long(std::wstring_view name) {
    if (name.size() > longest_plain_name) return true;
    return !is_full(name) && name.size() + GetCurrentDirectoryW(0, nullptr) > longest_plain_name;
}

// The full name in place of a long one, with the prefix in front that stands for names of any length.
bool lengthen(WideName* wide) {
    WideName full;
    const DWORD needed = GetFullPathNameW(wide->c_str(), 0, nullptr, nullptr);
    const DWORD size = GetFullPathNameW(wide->c_str(), needed, full.grow_to(needed), nullptr);
    if (size == 0 || size >= needed) {  // another thread may have changed the current directory
        fail_with_last_error();
        return false;
    }
    full.cut(size);
    if (size <= longest_plain_name || is_raw(full.view())) return true;
    wide->cut(0);
    const bool network = full.view().starts_with(LR"(\\)");
    wide->append(network ? long_network_prefix : long_prefix);
    wide->append(full.view().substr(network ? 2 : 0));
    return true;
}

}  // namespace

wchar_t* WideName::grow_to(std::size_t size) {
    if (size < capacity_) return text_;
    const std::size_t capacity = std::max(size + 1, 2 * capacity_);
    auto larger = std::make_unique<wchar_t[]>(capacity);
    std::wmemcpy(larger.get(), text_, size_);
    heap_ = std::move(larger);
    text_ = heap_.get();
    capacity_ = capacity;
    return text_;
}

void WideName::append(std::wstring_view text) {
    std::wmemcpy(grow_to(size_ + text.size()) + size_, text.data(), text.size());
    cut(size_ + text.size());
}

void append_wide(WideName* wide, std::string_view utf8) {
    std::size_t size = wide->size();
    wchar_t* const text = wide->grow_to(size + utf8.size());  // no character takes more units than bytes
    while (!utf8.empty()) {
        const char32_t character = take_character(&utf8);
        if (character < 0x10000) {
            text[size++] = static_cast<wchar_t>(character);
        } else {
            text[size++] = static_cast<wchar_t>(0xd800 + ((character - 0x10000) >> 10));
            text[size++] = static_cast<wchar_t>(0xdc00 + ((character - 0x10000) & 0x3ff));
        }
    }
    wide->cut(size);
}

bool translate(const Name& name, WideName* wide) {
    if (name.text.empty() || name.text.find('\0') != std::string_view::npos) {
        errno = ENOENT;
        return false;
    }
    append_wide(wide, name.text);
    wchar_t* const text = wide->grow_to(wide->size());
    std::replace(text, text + wide->size(), L'/', L'\\');
    return is_raw(wide->view()) || !may_be_too_long(wide->view()) || lengthen(wide);
}

std::string narrow(std::wstring_view wide) { return utf8_of(wide); }

std::wstring widen(std::string_view utf8) {
    WideName wide;
    append_wide(&wide, utf8);
    return std::wstring(wide.view());
}

std::string library_name(std::wstring_view wide) {
    if (wide.starts_with(long_network_prefix)) return R"(\\)" + narrow(wide.substr(long_network_prefix.size()));
    if (wide.starts_with(long_prefix)) wide.remove_prefix(long_prefix.size());
    return narrow(wide);
}

std::string final_name(HANDLE file) {
    std::wstring name;
    DWORD size = GetFinalPathNameByHandleW(file, nullptr, 0, FILE_NAME_NORMALIZED);
    // The file may be renamed between two calls.
    while (size > name.size()) {
        name.resize(size);
        size = GetFinalPathNameByHandleW(file, name.data(), size, FILE_NAME_NORMALIZED);
    }
    return library_name(std::wstring_view(name).substr(0, size));
}

}  // namespace orvix::core
