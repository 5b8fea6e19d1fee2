#include "pair_text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

namespace gslstore {

namespace {

constexpr std::string_view hexadecimal = "0123456789abcdef";

// Letters behind the backslash, and the bytes that they stand for.
constexpr std::array<std::pair<char, char>, 4> short_escapes{{{'\\', '\\'}, {'t', '\t'}, {'n', '\n'}, {'r', '\r'}}};

void append_escape(std::string* to, char byte) {
    to->push_back('\\');
    for (const auto& [letter, meant] : short_escapes) {
        if (byte != meant) continue;
        to->push_back(letter);
        return;
    }
    const auto value = static_cast<unsigned char>(byte);
    to->push_back('x');
    to->push_back(hexadecimal[value >> 4]);
    to->push_back(hexadecimal[value & 15]);
}

bool is_plain_ascii(char byte) { return byte >= ' ' && byte <= '~' && byte != '\\'; }

struct Character {
    std::size_t bytes;  // 0 if none of several bytes begins here
    std::uint32_t code;
};

// The character of several bytes in well-formed UTF-8 with which a text begins.
Character wide_character(std::string_view text) {
    const auto byte = [&](std::size_t i) -> std::uint32_t { return static_cast<unsigned char>(text[i]); };
    const std::size_t bytes = byte(0) >= 0xf0 ? 4 : byte(0) >= 0xe0 ? 3 : 2;
    if (byte(0) < 0xc2 || byte(0) > 0xf4 || text.size() < bytes) return {0, 0};
    std::uint32_t code = byte(0) & (0xffU >> (bytes + 1));
    for (std::size_t i = 1; i < bytes; ++i) {
        if ((byte(i) & 0xc0U) != 0x80U) return {0, 0};
        code = code << 6 | (byte(i) & 0x3fU);
    }
    constexpr std::array<std::uint32_t, 5> least{0, 0, 0x80, 0x800, 0x10000};
    const bool is_surrogate = code >= 0xd800 && code <= 0xdfff;
    if (code < least[bytes] || code > 0x10ffff || is_surrogate) return {0, 0};
    return {bytes, code};
}

bool is_shown(std::uint32_t code) {
    constexpr std::uint32_t last_control = 0x9f;
    constexpr std::uint32_t byte_order_mark = 0xfeff;  // readers of text drop it at the start of a file
    return code > last_control && code != byte_order_mark;
}

std::optional<char> value_of_digits(std::string_view digits) {
    if (digits.size() < 2) return std::nullopt;
    unsigned value = 0;
    for (const char digit : digits.substr(0, 2)) {
        const char lower = digit >= 'A' && digit <= 'F' ? static_cast<char>(digit - 'A' + 'a') : digit;
        const std::size_t at = hexadecimal.find(lower);
        if (at == std::string_view::npos) return std::nullopt;
        value = value * 16 + static_cast<unsigned>(at);
    }
    return static_cast<char>(value);
}

// Takes the escape whose backslash stands at `*at`; false if it is none.
bool take_escape(std::string_view text, std::size_t* at, std::string* bytes) {
    const std::string_view rest = text.substr(*at + 1);
    if (rest.empty()) return false;
    if (rest.front() == 'x') {
        const std::optional<char> value = value_of_digits(rest.substr(1));
        if (!value) return false;
        bytes->push_back(*value);
        *at += 4;
        return true;
    }
    for (const auto& [letter, meant] : short_escapes) {
        if (rest.front() != letter) continue;
        bytes->push_back(meant);
        *at += 2;
        return true;
    }
    return false;
}

}  // namespace

void append_escaped(std::string* to, std::string_view bytes) {
    for (std::size_t at = 0; at < bytes.size();) {
        if (is_plain_ascii(bytes[at])) {
            to->push_back(bytes[at++]);
            continue;
        }
        const Character character = wide_character(bytes.substr(at));
        if (character.bytes != 0 && is_shown(character.code)) {
            *to += bytes.substr(at, character.bytes);
            at += character.bytes;
        } else {
            append_escape(to, bytes[at++]);
        }
    }
}

std::string line_of_pair(std::string_view key, std::string_view value) {
    std::string line;
    append_escaped(&line, key);
    line.push_back('\t');
    append_escaped(&line, value);
    line.push_back('\n');
    return line;
}

std::optional<TextFault> read_escaped(std::string_view text, std::string* bytes) {
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t backslash = std::min(text.find('\\', at), text.size());
        *bytes += text.substr(at, backslash - at);
        at = backslash;
        if (at != text.size() && !take_escape(text, &at, bytes)) {
            return TextFault{at + 1, "a backslash begins no escape: \\\\, \\t, \\n, \\r, \\xHH"};
        }
    }
    return std::nullopt;
}

std::optional<TextFault> read_pair(std::string_view line, std::string* key, std::string* value) {
    key->clear();
    value->clear();
    const std::size_t tab = line.find('\t');
    if (tab == std::string_view::npos) return TextFault{line.size() + 1, "no tab stands behind a key"};
    if (auto fault = read_escaped(line.substr(0, tab), key)) return fault;
    const std::size_t second = line.find('\t', tab + 1);
    if (second != std::string_view::npos) return TextFault{second + 1, "a second tab; within a value it is \\t"};
    auto fault = read_escaped(line.substr(tab + 1), value);
    if (fault) fault->column += tab + 1;
    return fault;
}

}  // namespace gslstore
