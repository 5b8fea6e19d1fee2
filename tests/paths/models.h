// Slow, obvious models of the operations on file names. The tests compare the library with them on random names, the
// fuzz target on whatever it finds.
#pragma once

#include <cstddef>
#include <string>

namespace orvix::test::model {

inline std::string turned(std::string name) {
    for (char& c : name) c = c == '/' ? '\\' : c;
    return name;
}

inline std::size_t prefix_length(const std::string& name) {
    std::size_t length = name.size();
    while (length > 0 && name[length - 1] != ':' && name[length - 1] != '\\') --length;
    return length;
}

inline std::string with_prefix(const std::string& name, bool overwrite, const std::string& drive) {
    const std::size_t prefix = prefix_length(name);
    if (prefix > 0 && !overwrite) return name;
    std::string result = turned(drive);
    if (!result.empty() && !result.ends_with('\\')) result += '\\';
    return result + name.substr(prefix);
}

// Counted from 1; 0 if there is none.
inline std::size_t dot_position(const std::string& name) {
    const std::string copy = turned(name);
    const std::size_t dot = copy.rfind('.');
    const std::size_t separator = copy.rfind('\\');
    const bool found = dot != std::string::npos && (separator == std::string::npos || dot > separator);
    return found ? dot + 1 : 0;
}

inline std::string without_extension(const std::string& name) {
    const std::size_t dot = dot_position(name);
    return dot > 0 ? name.substr(0, dot - 1) : name;
}

inline std::string with_extension(const std::string& name, bool overwrite, const std::string& extension) {
    if (dot_position(name) > 0 && !overwrite) return turned(name);
    return turned(without_extension(name) + '.' + extension);
}

// Behind the first dot.
inline std::string behind_first_dot(const std::string& name) {
    const std::size_t dot = name.find('.');
    return dot != std::string::npos ? name.substr(dot + 1) : "";
}

inline std::string basename(const std::string& name) {
    std::size_t start = name.size();
    while (start > 0 && name[start - 1] != '/' && name[start - 1] != '\\') --start;
    return name.substr(start);
}

// As `gfile_strip_dir_name` leaves a name.
inline std::string stripped_directory(std::string name) {
    if (name.size() < 2) return name;
    if (name.ends_with('/')) name.back() = '\\';
    if (!name.ends_with('\\') || (name.size() == 3 && name[1] == ':')) return name;
    name.pop_back();
    return name;
}

inline std::string fixed(const std::string& name) {
    std::string result;
    for (const char c : name) {
        switch (c) {
            case 7:
                result += "\\\\a";
                break;
            case 8:
                result += "\\\\b";
                break;
            case 9:
                result += "\\\\t";
                break;
            case 10:
                result += "\\\\n";
                break;
            case 11:
                result += "\\\\v";
                break;
            case 12:
                result += "\\\\f";
                break;
            case 13:
                result += "\\\\r";
                break;
            default:
                result += c;
        }
    }
    return result;
}

inline std::string quoted(const std::string& argument) {
    std::string result = "\"";
    for (const char c : argument) {
        if (c == '"' || c == '\\') result += '\\';
        result += c;
    }
    return result + '"';
}

// The inverse of `quoted`.
inline std::string unquoted(const std::string& text) {
    std::string result;
    for (std::size_t i = 1; i + 1 < text.size(); ++i) {
        if (text[i] == '\\') ++i;
        result += text[i];
    }
    return result;
}

}  // namespace orvix::test::model
