// The reader of process variables behind gsl_getenv.
#pragma once

#include <optional>
#include <string_view>

namespace orvix::gsl::env {

// What gsl_getenv gives, with its length at hand. The text ends in a zero byte, and is good until the next successful
// call of this function or of gsl_getenv.
std::optional<std::string_view> process_variable(std::string_view name);

}  // namespace orvix::gsl::env
