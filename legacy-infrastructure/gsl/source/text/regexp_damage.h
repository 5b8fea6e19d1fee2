// The end of a walk through a program that was changed.
#pragma once

#include "text/regexp_step.h"

#include <orvix/gsl/regular_expressions.h>

namespace orvix::gsl::text::regexp {

[[noreturn]] inline void report_damage(Op op) {
    gsl_regerror(op == Op::corrupted_pointers  ? "corrupted pointers"
                 : op == Op::memory_corruption ? "memory corruption"
                                               : "internal foulup");
}

}  // namespace orvix::gsl::text::regexp
