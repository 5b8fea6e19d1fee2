#include <orvix/core/files.h>
#include <orvix/core/open_flags.h>
#include <orvix/core/path.h>
#include <orvix/core/processes.h>
#include <orvix/gsl/temporary_names.h>

#include <cerrno>
#include <cstring>

namespace orvix::gsl {

namespace {

constexpr int owner_may_read_and_write = 0600;

// Replaces the run of "X" at the end by the digits of a number, the last digit last, and fills up with zeros.
// Gives where the run begins.
char* replace_placeholders(char* name, int number) {
    char* run = name + std::strlen(name);
    for (; run > name && run[-1] == 'X'; number /= 10) *--run = static_cast<char>('0' + number % 10);
    return run;
}

// Tests what comes before the last "/" in front of the run; a name without one, or with one at its very start, passes.
// A name that fails is left cut, which tells the caller which directory it was.
bool is_in_a_directory(const char* name, char* run) {
    char* separator = run;
    while (separator > name && *--separator != '/') {
    }
    if (separator == name) return true;
    *separator = '\0';
    if (!Path(name).is_directory()) return false;
    *separator = '/';
    return true;
}

// The next name to try; false if there is none.
bool step(char* run) {
    for (; *run != '\0'; ++run) {
        if (*run != 'z') {
            const bool is_digit = *run >= '0' && *run <= '9';
            *run = is_digit ? 'a' : static_cast<char>(*run + 1);
            return true;
        }
        *run = 'a';
    }
    return false;
}

}  // namespace

int mkstemp(char* name_template) {
    if (name_template == nullptr) {
        errno = EINVAL;
        return -1;
    }
    char* const run = replace_placeholders(name_template, core::process_number());
    if (!is_in_a_directory(name_template, run)) {
        errno = ENOTDIR;
        return -1;
    }
    do {
        const int descriptor = open_utf8(name_template, core::create_exclusive_flags(), owner_may_read_and_write);
        if (descriptor != -1 || errno != EEXIST) return descriptor;
    } while (step(run));
    return -1;
}

}  // namespace orvix::gsl
