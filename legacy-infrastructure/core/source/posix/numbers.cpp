#include <orvix/core/numbers.h>

#include <cstdlib>

#include <locale.h>

namespace orvix::core {

double strtod_c(const char* text, const char** end) {
    static const locale_t c_locale = newlocale(LC_ALL_MASK, "C", nullptr);
    char* stop = nullptr;
    const double value = strtod_l(text, &stop, c_locale);
    *end = stop;
    return value;
}

}  // namespace orvix::core
