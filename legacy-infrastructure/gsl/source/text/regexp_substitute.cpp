#include "text/bytes.h"
#include "text/regexp_program.h"

#include <orvix/gsl/regular_expressions.h>

#include <cstddef>
#include <cstring>

namespace {

// Appends what a group matched.
char* append_group(const __gsl_regexp* re, unsigned group, char* dest) {
    const char* const start = re->startp[group];
    const char* const end = re->endp[group];
    if (start == nullptr || end == nullptr || end <= start) return dest;
    if (end[-1] == '\0') gsl_regerror("damaged match string");
    const auto length = static_cast<std::size_t>(end - start);
    std::memcpy(dest, start, length);
    return dest + length;
}

}  // namespace

void gsl_regsub(__gsl_regexp* re, const char* source, char* dest) {
    if (re == nullptr || source == nullptr || dest == nullptr) gsl_regerror("NULL parm to regsub");
    if (re->program[0] != orvix::gsl::text::regexp::check_byte) gsl_regerror("damaged regexp fed to regsub");
    while (*source != '\0') {
        const char c = *source++;
        if (c == '&') {
            dest = append_group(re, 0, dest);
        } else if (c == '\\' && orvix::gsl::text::is_digit(*source)) {
            dest = append_group(re, static_cast<unsigned>(*source++ - '0'), dest);
        } else if (c == '\\' && (*source == '\\' || *source == '&')) {
            *dest++ = *source++;
        } else {
            *dest++ = c;
        }
    }
    *dest = '\0';
}
