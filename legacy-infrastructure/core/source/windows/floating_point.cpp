#include <orvix/core/floating_point.h>

#include <float.h>

namespace orvix::core {

// Of the two calls for this only the older one masks the trap of x86 for subnormal operands too.
void mask_floating_point_traps() { _control87(_MCW_EM, _MCW_EM); }

}  // namespace orvix::core
