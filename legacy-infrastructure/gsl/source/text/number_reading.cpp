#include "text/number_reading.h"

#include <orvix/core/numbers.h>

#include <charconv>
#include <cstdlib>
#include <memory>
#include <system_error>

namespace orvix::gsl::text {

namespace {

// True if a number in decimal digits may stand at the front. Hexadecimal ones are left to the C library, and so are
// blanks in front and named values.
bool may_begin_decimal(std::string_view text) {
    if (!text.empty() && is_sign(text[0])) text.remove_prefix(1);
    if (text.empty() || !(is_digit(text[0]) || text[0] == '.')) return false;
    return text.size() < 2 || text[0] != '0' || (text[1] != 'x' && text[1] != 'X');
}

Conversion convert_with_library(std::string_view text) {
    char room[64];
    std::unique_ptr<char, decltype(&std::free)> more(nullptr, &std::free);
    char* copy = room;
    if (text.size() >= sizeof room) {
        more.reset(new_text(text.size()));
        copy = more.get();
    }
    move_text(copy, text.data(), text.size());
    const char* end = nullptr;
    const double value = core::strtod_c(copy, &end);
    return {value, static_cast<std::size_t>(end - copy)};
}

}  // namespace

Conversion convert_front(std::string_view text) {
    if (may_begin_decimal(text)) {
        const std::size_t plus = text[0] == '+' ? 1 : 0;  // which from_chars does not take
        double value = 0;
        const auto [end, error] = std::from_chars(text.data() + plus, text.data() + text.size(), value);
        if (error == std::errc()) return {value, static_cast<std::size_t>(end - text.data())};
    }
    return convert_with_library(text);
}

}  // namespace orvix::gsl::text
