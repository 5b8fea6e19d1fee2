// UTF-8, one character at a time.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace orvix::core {

constexpr char32_t replacement_character = 0xfffd;

// Takes one character off the front of a text that is not empty. A byte that begins no well-formed character gives
// U+FFFD and is taken alone. Three bytes that spell a lone surrogate are taken as that surrogate.
char32_t take_character(std::string_view* text);

void append_utf8(std::string* text, char32_t character);

// UTF-16 in whatever type the system has for it. A lone surrogate becomes the three bytes that spell it.
template <class Unit>
std::string utf8_of(std::basic_string_view<Unit> utf16) {
    static_assert(sizeof(Unit) == sizeof(char16_t));
    std::string text;
    text.reserve(utf16.size());
    for (std::size_t i = 0; i < utf16.size(); ++i) {
        char32_t character = utf16[i];
        const bool pair = character >= 0xd800 && character < 0xdc00 && i + 1 < utf16.size() && utf16[i + 1] >= 0xdc00 &&
                          utf16[i + 1] < 0xe000;
        if (pair) character = 0x10000 + ((character - 0xd800) << 10) + (utf16[++i] - 0xdc00U);
        append_utf8(&text, character);
    }
    return text;
}

}  // namespace orvix::core
