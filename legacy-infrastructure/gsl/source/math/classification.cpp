#include <orvix/gsl/real_functions.h>

#include <orvix/core/floating_point.h>

#include <cmath>

double gmath_quiet_nan() {
    orvix::core::mask_floating_point_traps();
    const volatile double zero = 0;  // volatile: computed while the traps are masked, not when the library is built
    return std::fmod(zero, zero) / zero;
}

double orvix::gsl::finite(double x) { return std::isfinite(x) ? 1 : 0; }

int orvix::gsl::isnan(double x) { return std::isnan(x) ? 1 : 0; }
