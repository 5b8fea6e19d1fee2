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

}  // namespace orvix::core
