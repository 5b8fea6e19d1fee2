// Elements of path lists.
#pragma once

#include <cstddef>

namespace orvix::gsl::env {

// Length of the first element of a path list: up to the first `;` or `:` that is not the colon of a drive prefix.
std::size_t element_length(const char* list);

}  // namespace orvix::gsl::env
