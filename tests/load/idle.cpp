// Does nothing with the library but link to it: the address taken keeps the link.

#include <orvix/gsl/status.h>

int main() {
    int (*volatile kept)(const char*, const char*) = &gsl_strcmp;
    return kept == nullptr ? 1 : 0;
}
