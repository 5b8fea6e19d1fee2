#include "math/error_flag.h"

#include <orvix/gsl/real_functions.h>

constinit bool orvix::gsl::math::error_flag = false;

bool gmath_ematherr() { return orvix::gsl::math::error_flag; }

void gmath_clr_ematherr() { orvix::gsl::math::error_flag = false; }
