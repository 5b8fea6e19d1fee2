/// @file
/// Control of floating-point traps.
#pragma once

#include <orvix/core/export.h>

namespace orvix::core {

/// Masks all floating-point exceptions of the calling thread, so that none of them traps; they stay masked.
ORVIX_CORE_API void mask_floating_point_traps();

}  // namespace orvix::core
