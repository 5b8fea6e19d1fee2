#include <orvix/core/floating_point.h>

#include <cfenv>

namespace orvix::core {

void mask_floating_point_traps() { fedisableexcept(FE_ALL_EXCEPT); }

}  // namespace orvix::core
