// The reader of process variables for the library's own use.
#pragma once

#include <optional>
#include <string_view>

namespace orvix::gsl::env {

// What gsl_getenv gives, with its length at hand, in a buffer of its own: programs hand what gsl_getenv gave them to
// calls that read variables themselves. Good until the next successful call of this function.
std::optional<std::string_view> process_variable(std::string_view name);

}  // namespace orvix::gsl::env
