#include "support/traps.h"

#include <cfenv>

namespace orvix::test {

void trap_divisions_by_zero() { feenableexcept(FE_DIVBYZERO); }

void trap_everything() { feenableexcept(FE_ALL_EXCEPT); }

bool anything_traps() { return fegetexcept() != 0; }

}  // namespace orvix::test
