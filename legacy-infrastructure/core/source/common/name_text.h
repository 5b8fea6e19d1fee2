// The text side of names, the same on every system: separators, drives, letter case. Looks nothing up.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace orvix::core {

constexpr bool is_separator(char c) { return c == '\\' || c == '/'; }

constexpr bool is_letter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

constexpr char to_lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; }

constexpr char to_upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c; }

constexpr bool has_drive(std::string_view name) { return name.size() >= 2 && is_letter(name[0]) && name[1] == ':'; }

constexpr bool is_network_name(std::string_view name) {
    return name.size() >= 2 && is_separator(name[0]) && is_separator(name[1]);
}

// Begins with a separator, or carries a drive: joined to a directory it would not lie below it.
constexpr bool is_rooted(std::string_view name) { return has_drive(name) || (!name.empty() && is_separator(name[0])); }

// Stores each byte, changed or not: that compilers turn into vector code.
inline void put_with_backslashes(std::string_view name, char* to) {
    for (std::size_t i = 0; i < name.size(); ++i) to[i] = name[i] == '/' ? '\\' : name[i];
}

inline std::string with_backslashes(std::string_view name) {
    std::string text(name.size(), '\0');
    put_with_backslashes(name, text.data());
    return text;
}

inline bool equal_ignoring_case(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return to_lower(x) == to_lower(y); });
}

}  // namespace orvix::core
