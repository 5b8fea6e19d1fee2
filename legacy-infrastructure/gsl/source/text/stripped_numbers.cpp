#include "text/bytes.h"
#include "text/number_reading.h"
#include "text/stripped_text.h"

#include <orvix/gsl/number_text.h>

#include <cmath>
#include <string_view>

using namespace orvix::gsl::text;

namespace {

constinit KeptText stripped_double_text{};
constinit KeptText stripped_zeros_text{};

}  // namespace

void gparse_cnvt_double_e_format(double v, double* mantissa, double* exponent) {
    const TenSplit split = split_by_ten(std::abs(v));
    const double magnitude = std::pow(10.0, split.mantissa_log);
    *mantissa = v < 0 ? -magnitude : magnitude;
    *exponent = split.exponent;
}

char* gparse_cnvt_double_string_stripped(char* out, double v, int min_decimals, int max_digits) {
    const StrippedText text = stripped(v, min_decimals, max_digits);
    if (text.size == 0) return discard(out);
    return give(text.view(), out, keep(text.view(), stripped_double_text));
}

char* gparse_cnvt_string_stripped_zeros(char* out, char* s) {
    char* const kept = keep(without_last_zeros(mantissa_of(s)), stripped_zeros_text);
    return give(kept, out, kept);
}

// The name promises more than callers get.
char* gparse_cnvt_from_e_to_string(char* out, char* s, int /*n*/) {
    if (!is_digit(*s) && !is_sign(*s)) return discard(out);
    const std::string_view text = s;
    return text.find_first_of("eE") == std::string_view::npos ? give(text, out, s) : s;
}
