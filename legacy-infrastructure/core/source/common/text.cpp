#include "common/utf8.h"

#include <orvix/core/text.h>

namespace orvix {

namespace core {

namespace {

constexpr bool is_continuation(char byte) { return (static_cast<unsigned char>(byte) & 0xc0) == 0x80; }

// Length told by a first byte; 0 for one that begins no character.
constexpr std::size_t length_of(unsigned char first) {
    if (first < 0x80) return 1;
    if (first >= 0xc2 && first <= 0xdf) return 2;
    if (first >= 0xe0 && first <= 0xef) return 3;
    if (first >= 0xf0 && first <= 0xf4) return 4;
    return 0;
}

constexpr char32_t smallest_of_length[] = {0, 0, 0x80, 0x800, 0x10000};

}  // namespace

char32_t take_character(std::string_view* text) {
    const auto first = static_cast<unsigned char>(text->front());
    const std::size_t length = length_of(first);
    if (length == 1) {
        text->remove_prefix(1);
        return first;
    }
    bool sound = length != 0 && text->size() >= length;
    char32_t character = length == 2 ? first & 0x1fU : length == 3 ? first & 0x0fU : first & 0x07U;
    for (std::size_t i = 1; sound && i < length; ++i) {
        sound = is_continuation((*text)[i]);
        character = (character << 6) | (static_cast<unsigned char>((*text)[i]) & 0x3fU);
    }
    sound = sound && character >= smallest_of_length[length] && character <= 0x10ffff;
    text->remove_prefix(sound ? length : 1);
    return sound ? character : replacement_character;
}

void append_utf8(std::string* text, char32_t character) {
    const auto tail = [&](int shift) { *text += static_cast<char>(0x80 | ((character >> shift) & 0x3f)); };
    if (character < 0x80) {
        *text += static_cast<char>(character);
    } else if (character < 0x800) {
        *text += static_cast<char>(0xc0 | (character >> 6));
        tail(0);
    } else if (character < 0x10000) {
        *text += static_cast<char>(0xe0 | (character >> 12));
        tail(6);
        tail(0);
    } else {
        *text += static_cast<char>(0xf0 | (character >> 18));
        tail(12);
        tail(6);
        tail(0);
    }
}

}  // namespace core

std::u16string toUtf16(std::string_view utf8) {
    std::u16string text;
    text.reserve(utf8.size());
    while (!utf8.empty()) {
        const char32_t character = core::take_character(&utf8);
        if (character < 0x10000) {
            text += static_cast<char16_t>(character);
        } else {
            text += static_cast<char16_t>(0xd800 + ((character - 0x10000) >> 10));
            text += static_cast<char16_t>(0xdc00 + ((character - 0x10000) & 0x3ff));
        }
    }
    return text;
}

std::string toStdString(std::u16string_view utf16) { return core::utf8_of(utf16); }

}  // namespace orvix
