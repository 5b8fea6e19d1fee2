// Works out what may come next at each step.
#pragma once

#include "text/regexp_step.h"

#include <cstddef>

namespace orvix::gsl::text::regexp {

// Fills in what steps know of the rest, and what those may begin with that take no byte. The steps are those of a
// program as the compiler makes it, in its order.
void look_ahead(Step* steps, std::size_t count, bool has_loops);

}  // namespace orvix::gsl::text::regexp
