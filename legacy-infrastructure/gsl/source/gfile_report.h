// How the operations on single files report a failure.
#pragma once

#include <orvix/gsl/status.h>

namespace orvix::gsl {

// Leaves the code in GuiErrno and errno beside it, and tells who debugs where it happened. Always gives false.
bool report_failure(GuiError error, int line);

}  // namespace orvix::gsl
