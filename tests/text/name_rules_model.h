// Slow, obvious rules for names, on strings.
#pragma once

#include <cstddef>
#include <string>

namespace orvix::test::model {

constexpr unsigned identifier_flag = 0x01;
constexpr unsigned node_flag = 0x02;
constexpr unsigned design_flag = 0x40;
constexpr unsigned indexed_flag = 0x80;
constexpr unsigned workspace_flag = 0x100;

constexpr std::size_t nowhere = std::string::npos;

inline bool in(char byte, const std::string& bytes) { return bytes.find(byte) != nowhere; }

inline bool is_decimal(char byte) { return in(byte, "0123456789"); }

// The bytes that are illegal by themselves, without what node and design names spare.
inline std::string barred_bytes(unsigned flags, bool dot) {
    std::string bytes = "~*()[]{}/\\<>?,:\" \t|';";
    if ((flags & (identifier_flag | indexed_flag | workspace_flag)) != 0) bytes += "+-=^$%`@#&";
    if (dot) bytes += '.';
    if ((flags | node_flag) != node_flag) bytes += '!';
    return bytes;
}

// Where the byte stands that breaks the index list that begins at `open`, or that follows it.
inline std::size_t broken_list(const std::string& name, std::size_t open) {
    std::size_t end = open + 1;  // behind the longest run of numbers that each end in a comma or the run
    while (end < name.size() && (is_decimal(name[end]) || (name[end] == ',' && is_decimal(name[end - 1])))) ++end;
    if (end == name.size()) return nowhere;
    const bool number_before = is_decimal(name[end - 1]);
    if (name[end] == ')' && number_before) return end + 1 == name.size() ? nowhere : end + 1;
    return in(name[end], ",)") ? end - 1 : end;
}

inline std::size_t illegal_byte(const std::string& name, unsigned flags, bool allow_dot) {
    if ((flags & (identifier_flag | indexed_flag)) != 0 && !name.empty() && is_decimal(name[0])) return 0;
    for (std::size_t i = 0; i < name.size(); ++i) {
        if ((flags & design_flag) != 0 && in(name[i], "|(){};?.")) continue;
        if ((flags & node_flag) != 0 && in(name[i], ".:")) continue;
        if (!in(name[i], barred_bytes(flags, !allow_dot))) continue;
        return name[i] == '(' && (flags & indexed_flag) != 0 ? broken_list(name, i) : i;
    }
    return nowhere;
}

// The message about a name, or "" if it is legal.
inline std::string refusal(const std::string& name, unsigned flags, bool allow_dot) {
    const std::size_t at = illegal_byte(name, flags, allow_dot);
    if (at == nowhere) return "";
    const std::string begin = std::string("`") + name[at] + "' illegal: valid characters ";
    const std::string alphanumeric = "are alphanumeric or _";
    if ((flags & (identifier_flag | indexed_flag)) != 0)
        return begin + alphanumeric + " with non-numeric first character";
    if ((flags & workspace_flag) != 0) return begin + "in workspace names " + alphanumeric;
    if ((flags & design_flag) != 0) return begin + "in design names " + alphanumeric + "`@#&+-=^$%|(){};?.";
    if ((flags & node_flag) != 0) return begin + "in node names " + alphanumeric + "`@#&+-=^$%!.:";
    return begin + "in component names " + alphanumeric + "`@#&+-=^$%.:";
}

inline std::string repaired(std::string name, unsigned flags, bool replace_dot, char replacement) {
    if ((flags & (identifier_flag | indexed_flag)) != 0 && !name.empty() && is_decimal(name[0])) return name;
    for (std::size_t i = 0; i < name.size(); ++i) {
        if (name[i] == '(' && (flags & indexed_flag) != 0) {
            i = broken_list(name, i);
            if (i == nowhere) break;
        } else if (in(name[i], barred_bytes(flags, replace_dot))) {
            name[i] = replacement;
        }
    }
    return name;
}

inline std::size_t special_byte(const std::string& name, bool allow_dot) {
    if (!name.empty() && is_decimal(name[0])) return 0;
    return name.find_first_of(barred_bytes(identifier_flag, !allow_dot));
}

inline std::string dataset_name(std::string name) {
    if (!name.empty() && is_decimal(name[0])) name = "_" + name;
    for (char& byte : name) {
        if (in(byte, barred_bytes(identifier_flag, false))) byte = '_';
    }
    return name;
}

}  // namespace orvix::test::model
