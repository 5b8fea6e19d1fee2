// Works out what may come next at each step.
#pragma once

#include "text/regexp_step.h"

#include <cstddef>

namespace orvix::gsl::text::regexp {

// Fills in `first` of the steps that take no byte, and what steps know of the rest. The steps are those of a program as
// the compiler makes it, in its order; those that take a byte have their `first` already.
void look_ahead(Step* steps, ByteSet* first, std::size_t count, bool has_loops);

}  // namespace orvix::gsl::text::regexp
