#include "support/traps.h"

#include <float.h>

namespace orvix::test {

void trap_divisions_by_zero() { _controlfp(0, _EM_ZERODIVIDE); }

void trap_everything() { _controlfp(0, _MCW_EM); }

bool anything_traps() { return (_controlfp(0, 0) & _MCW_EM) != _MCW_EM; }

}  // namespace orvix::test
