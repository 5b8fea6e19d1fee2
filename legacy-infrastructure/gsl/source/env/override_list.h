// The registered overrides.
#pragma once

#include <orvix/gsl/application_environment.h>

namespace orvix::gsl::env {

// The first registered override that bears the name; null if there is none. The name is not empty.
ASTR_ApplicationEnvironmentOverride* registered_override(const char* name);

}  // namespace orvix::gsl::env
