// Plain models of the canonical spelling. The tests compare the library with them on random names, the fuzz target on
// whatever it finds.
#pragma once

#include <cstddef>
#include <string>

namespace orvix::test::model {

inline bool is_separator(char c) { return c == '/' || c == '\\'; }

inline std::string lowered(std::string text) {
    const std::string capitals = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
    for (char& c : text) {
        if (capitals.find(c) != std::string::npos) c = static_cast<char>(c + 32);
    }
    return text;
}

// Takes the name apart from the front: a run of separators with what belongs to it, then bytes up to the next.
inline std::string fixed_up(std::string name, bool cut_trailing) {
    std::string result;
    if (name.starts_with("\\\\")) {
        result = "\\";
        name.erase(0, 1);
    }
    while (!name.empty()) {
        if (!is_separator(name[0])) {
            result += name[0];
            name.erase(0, 1);
            continue;
        }
        result += '\\';
        if (name.size() >= 3 && name[1] == '.' && is_separator(name[2])) name.erase(0, 2);
        while (!name.empty() && is_separator(name[0])) name.erase(0, 1);
    }
    while (cut_trailing && result.ends_with('\\')) result.pop_back();
    return lowered(result);
}

inline bool is_absolute(const std::string& name) {
    if (name.empty()) return false;
    const std::string letters = "abcdefghijklmnopqrstuvwxyz";
    return is_separator(name[0]) || (letters.find(lowered(name)[0]) != std::string::npos && name.substr(1, 1) == ":");
}

// The text before its spelling is fixed; empty if nothing is left of the name.
inline std::string completed(std::string name, const std::string& current_directory) {
    if (is_absolute(name)) return name;
    while (name.starts_with("./") || name.starts_with(".\\")) name.erase(0, 2);
    return name.empty() ? "" : current_directory + '/' + name;
}

// What a canonical text keeps when its last part is cut off.
inline std::string without_last_part(const std::string& text) {
    const std::size_t least = text.starts_with("\\\\") ? 3 : 1;
    for (std::size_t end = text.size(); end > least; --end) {
        if (text[end - 1] == '\\') return text.substr(0, end - 1);
    }
    return text;
}

// Whether two names are the same, perhaps after the last part of the first was cut off.
inline bool same(const std::string& a, const std::string& b, bool cut, const std::string& current_directory) {
    const std::string first = completed(a, current_directory);
    const std::string second = completed(b, current_directory);
    if (first.empty() || second.empty()) return false;
    const std::string text = fixed_up(first, true);
    return (cut ? without_last_part(text) : text) == fixed_up(second, true);
}

// What is compared of a name where the current directory plays no part.
inline std::string compared(std::string name) {
    for (char& c : name) c = c == '/' ? '\\' : c;
    const bool drive_root = name.size() == 3 && name[1] == ':';
    if (name.size() >= 2 && name.ends_with('\\') && !drive_root) name.pop_back();
    return lowered(name);
}

}  // namespace orvix::test::model
