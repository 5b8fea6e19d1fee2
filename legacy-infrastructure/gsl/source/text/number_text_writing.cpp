#include "text/digits.h"
#include "text/number_forms.h"
#include "text/real_digits.h"

#include <orvix/gsl/number_text.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

using namespace orvix::gsl::text;

namespace {

// Ends a text that was written, and leaves the empty one where none was.
bool end_text(char* text, char* end) {
    *(end != nullptr ? end : text) = '\0';
    return end != nullptr;
}

}  // namespace

bool gparse_dbltoas(double v, int width, int prec, char* dst) {
    return end_text(dst, write_fitted(v, width, prec, dst));
}

bool gparse_dblxxas(double v, int width, int prec, char* dst) {
    return end_text(dst, write_strict(v, width, prec, dst));
}

bool gparse_dblmxas(double v, int width, char* dst) {
    return end_text(dst, write_fitted(v, width, decimals_to_fill(v, width), dst));
}

bool gparse_lngtoas(std::int32_t v, int width, char* dst) {
    const auto bits = static_cast<std::uint32_t>(v);
    const std::uint32_t magnitude = v < 0 ? 0 - bits : bits;  // which the most negative value has too
    const int digits = digit_count(magnitude);
    if (digits + (v < 0 ? 1 : 0) > width) {
        *dst = '\0';
        return false;
    }
    if (v < 0) *dst++ = '-';
    *write_digits(magnitude, digits, dst) = '\0';
    return true;
}

bool gparse_inttoas(int v, int width, char* dst) { return gparse_lngtoas(v, width, dst); }

bool astr_double_to_str(double v, char* dst) {
    if (dst == nullptr) return false;
    if (std::signbit(v)) *dst++ = '-';
    if (std::isfinite(v)) {
        *write_fixed(std::abs(v), 4, std::numeric_limits<std::ptrdiff_t>::max(), dst) = '\0';
    } else {
        std::strcpy(dst, std::isnan(v) ? "nan" : "inf");
    }
    return true;
}

bool astr_long_to_str(std::int32_t v, char* dst) {
    if (dst == nullptr) return false;
    return gparse_lngtoas(v, std::numeric_limits<int>::max(), dst);
}
