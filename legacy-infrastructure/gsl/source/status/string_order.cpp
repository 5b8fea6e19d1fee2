#include <orvix/gsl/status.h>

#include <cstring>

int gsl_strcmp(const char* a, const char* b) {
    const int order = std::strcmp(a != nullptr ? a : "", b != nullptr ? b : "");
    return (order > 0) - (order < 0);
}
