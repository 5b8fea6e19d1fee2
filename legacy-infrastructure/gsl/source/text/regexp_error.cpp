#include <orvix/gsl/regular_expressions.h>

#include <cstdio>
#include <cstdlib>

void gsl_regerror(const char* message) {
    std::fprintf(stderr, "\nFATAL ERROR: regexp(3): %s", message != nullptr ? message : "");
    std::fflush(stderr);
    std::abort();
}
