#include "text/bytes.h"
#include "text/number_forms.h"
#include "text/number_reading.h"
#include "text/stripped_text.h"

#include <orvix/gsl/number_text.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <new>
#include <optional>
#include <string>
#include <string_view>

using namespace orvix::gsl::text;

namespace {

constinit KeptText stripped_string_text{};

constexpr std::size_t least_room = 33;  // in what callers get: they may write to it as to a buffer of their own

std::string fitted(double value, std::ptrdiff_t width, std::ptrdiff_t decimals) {
    std::string text(static_cast<std::size_t>(room_for_field(width, decimals)), '\0');
    const char* const end = write_fitted(value, width, decimals, text.data());
    text.resize(end != nullptr ? static_cast<std::size_t>(end - text.data()) : 0);
    return text;
}

// Writes a value afresh that was read from a text with its point at a known place. Where zeros would hide the value, or
// no more digits are asked for than decimals, the text shows it twice with an "e" between: rounded, and in full.
class Renewal {
public:
    Renewal(std::size_t point, int min_decimals, int max_digits)
        : asked_decimals_(std::min(min_decimals, most_asked_for)),
          decimals_(asked_decimals_),
          is_wide_(std::min(max_digits, most_asked_for) <= asked_decimals_),
          width_(static_cast<std::ptrdiff_t>(point) + asked_decimals_ + (is_wide_ ? 5 : 1)) {}

    // Nothing if the value fits in no form.
    std::optional<std::string> write(double value) {
        std::string text(stripped(value, decimals_, width_).view());
        const bool fits = !text.empty();
        if (!fits) {
            widen();
            text = stripped(value, decimals_, width_).view();
        }
        double rounded = 0;
        if (text.empty()) return std::nullopt;
        if (!read_number(text, &rounded)) return text;
        if (is_wide_ && fits) return twice(rounded, false).value_or(text);
        if (is_hidden_by_zeros(rounded)) {
            const std::optional<std::string> both = twice(rounded, true);
            if (!both) return text;
            text = *both;
        }
        if (!is_wide_)
            text.resize(std::min(text.size(), static_cast<std::size_t>(std::max<std::ptrdiff_t>(width_, 0))));
        return text;
    }

private:
    void widen() {
        constexpr int enough_decimals = 9;
        if (decimals_ >= enough_decimals) return;
        width_ += enough_decimals - decimals_;
        decimals_ = enough_decimals;
    }

    bool is_hidden_by_zeros(double value) const {
        const double exponent = split_by_ten(std::abs(value)).exponent;
        return exponent < 0 && -exponent > asked_decimals_;
    }

    // Nothing if one of the two does not fit.
    std::optional<std::string> twice(double value, bool without_behind) const {
        const std::string rounded = fitted(value, width_, decimals_);
        const std::string full = fitted(value, width_, width_ - 3);
        if (rounded.empty() || full.empty()) return std::nullopt;
        std::string_view front = rounded;
        std::string_view back = without_last_zeros(mantissa_of(full));
        if (without_behind) {
            front = mantissa_of(front);
            back = back.substr(0, back.find('.'));
        }
        return std::string(front) + 'e' + std::string(back);
    }

    int asked_decimals_;
    int decimals_;
    bool is_wide_;
    std::ptrdiff_t width_;
};

std::string with_decimals(std::string_view whole, int decimals) {
    std::string text(whole);
    text += '.';
    text.append(static_cast<std::size_t>(std::clamp(decimals, 0, most_asked_for)), '0');
    return text;
}

char* new_result(std::string_view text) {
    const auto result = static_cast<char*>(std::malloc(std::max(text.size() + 1, least_room)));
    if (result != nullptr) move_text(result, text.data(), text.size());
    return result;
}

char* convert(char* out, char* s, int min_decimals, int max_digits) {
    double value = 0;
    if (s == nullptr || !read_number(s, &value)) return discard(out);
    const std::string_view number = s;
    if (number.find_first_of("eE") != std::string_view::npos) return s;
    const std::size_t point = number.find('.');
    if (point == std::string_view::npos) {
        char* const kept = keep(with_decimals(number, min_decimals), stripped_string_text);
        return give(kept, out, kept);
    }
    const std::optional<std::string> text = Renewal(point, min_decimals, max_digits).write(value);
    if (!text) return give(number, out, s);
    return out == nullptr ? new_result(*text) : give(*text, out, nullptr);
}

}  // namespace

char* gparse_cnvt_string_string_stripped(char* out, char* s, int min_decimals, int max_digits) {
    try {
        return convert(out, s, min_decimals, max_digits);
    } catch (const std::bad_alloc&) {
        return discard(out);
    }
}
