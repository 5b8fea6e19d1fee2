// From a pattern to a compiled record.
#pragma once

#include <orvix/gsl/regular_expressions.h>

namespace orvix::gsl::text::regexp {

// Either is null. The record is a block of `malloc`.
struct Compilation {
    __gsl_regexp* record;
    const char* error;
};

Compilation compile(const char* pattern);

}  // namespace orvix::gsl::text::regexp
