#include "text/bytes.h"
#include "text/name_classes.h"

#include <orvix/gsl/name_rules.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <string_view>

using namespace orvix::gsl;
using namespace orvix::gsl::text;

namespace {

constexpr unsigned any_identifier = identifier_name | indexed_identifier_name;
constexpr unsigned strict = any_identifier | workspace_name;

constexpr std::string_view design_bytes = "|(){};?.";
constexpr std::string_view node_bytes = ".:";

char message[256];  // the longest text, with all that is put into it, has less than half of that

bool has_barred_digit(const char* name, unsigned flags) { return (flags & any_identifier) != 0 && is_digit(*name); }

constexpr NameClassSet all_but_dot(NameClass::illegal, NameClass::arithmetic, NameClass::mark, NameClass::index,
                                   NameClass::exclamation);

// The classes whose bytes these flags do not make legal.
NameClassSet suspects(unsigned flags, bool with_dot) {
    return NameClassSet(NameClass::illegal, NameClass::index)
        .with(NameClassSet(NameClass::arithmetic, NameClass::mark), (flags & strict) != 0)
        .with(NameClassSet(NameClass::dot), with_dot)
        .with(NameClassSet(NameClass::exclamation), (flags & ~unsigned{node_name}) != 0);
}

// Of a byte that is no zero byte.
bool is_exempt(char byte, unsigned flags) {
    return ((flags & design_name) != 0 && design_bytes.find(byte) != std::string_view::npos) ||
           ((flags & node_name) != 0 && node_bytes.find(byte) != std::string_view::npos);
}

bool begins_index_list(char byte, unsigned flags) { return byte == '(' && (flags & indexed_identifier_name) != 0; }

// Reads the index list that begins at `open`. Gives the byte that is out of place in it or that follows it; null if the
// name ends before one is met.
const char* misplaced_in_index_list(const char* open) {
    for (const char* p = open + 1; *p != '\0'; ++p) {
        if (is_digit(*p)) continue;
        if (*p != ',' && *p != ')') return p;
        if (!is_digit(p[-1])) return p - 1;
        if (*p == ')') return p[1] == '\0' ? nullptr : p + 1;
    }
    return nullptr;
}

// The first byte that makes a name illegal; null if it is legal.
const char* offender(const char* name, unsigned flags, bool allow_dot) {
    if (has_barred_digit(name, flags)) return name;
    const NameClassSet suspect = suspects(flags, !allow_dot);
    for (const char* p = name; *p != '\0'; ++p) {
        if (!suspect.holds(*p) || is_exempt(*p, flags)) continue;
        return begins_index_list(*p, flags) ? misplaced_in_index_list(p) : p;
    }
    return nullptr;
}

void write_message(char byte, unsigned flags) {
    const char* const marks = mark_bytes.data();
    const char* const arithmetic = arithmetic_bytes.data();
    if ((flags & any_identifier) != 0) {
        std::snprintf(message, sizeof message,
                      "`%c' illegal: valid characters are alphanumeric or _ with non-numeric first character", byte);
    } else if ((flags & workspace_name) != 0) {
        std::snprintf(message, sizeof message,
                      "`%c' illegal: valid characters in workspace names are alphanumeric or _", byte);
    } else if ((flags & design_name) != 0) {
        std::snprintf(message, sizeof message,
                      "`%c' illegal: valid characters in design names are alphanumeric or _%s%s%s", byte, marks,
                      arithmetic, design_bytes.data());
    } else {
        const bool node = (flags & node_name) != 0;
        std::snprintf(message, sizeof message,
                      "`%c' illegal: valid characters in %s names are alphanumeric or _%s%s%s%s", byte,
                      node ? "node" : "component", marks, arithmetic, node ? "!" : "", node_bytes.data());
    }
}

}  // namespace

char* astr_qds_valid_name(const char* name, unsigned int flags, bool allow_dot) {
    const char* const byte = name != nullptr ? offender(name, flags, allow_dot) : nullptr;
    if (byte == nullptr) return nullptr;
    write_message(*byte, flags);
    return message;
}

bool astr_qds_get_valid_name(char* name, unsigned int flags, bool replace_dot, char replacement, char* out) {
    if (name == nullptr) return false;
    if (out == nullptr) return true;
    move_text(out, name, std::strlen(name));
    if (has_barred_digit(out, flags)) return true;
    const NameClassSet suspect = suspects(flags, replace_dot);
    for (char* p = out; *p != '\0'; ++p) {
        if (!suspect.holds(*p)) continue;
        if (begins_index_list(*p, flags)) {
            const char* const misplaced = misplaced_in_index_list(p);
            if (misplaced == nullptr) break;
            p += misplaced - p;
        } else {
            *p = replacement;
        }
    }
    return true;
}

const char* astr_qds_spl_name(const char* name, bool allow_dot) {
    if (name == nullptr) return nullptr;
    if (is_digit(*name)) return name;
    const NameClassSet special = all_but_dot.with(NameClassSet(NameClass::dot), !allow_dot);
    for (const char* p = name; *p != '\0'; ++p) {
        if (special.holds(*p)) return p;
    }
    return nullptr;
}

char* astr_translate_qds_dataset_name(const char* const name) {
    if (name == nullptr) return nullptr;
    const std::size_t prefix = is_digit(*name) ? 1 : 0;
    const std::size_t length = std::strlen(name);
    char* const result = new_text(prefix + length);
    result[0] = '_';
    std::replace_copy_if(
        name, name + length + 1, result + prefix, [](char byte) { return all_but_dot.holds(byte); }, '_');
    return result;
}
