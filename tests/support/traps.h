// Floating-point traps of the calling thread.
#pragma once

namespace orvix::test {

// Has divisions by zero trap.
void trap_divisions_by_zero();

// Has everything trap that can.
void trap_everything();

// True if any exception traps.
bool anything_traps();

}  // namespace orvix::test
