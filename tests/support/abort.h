// Processes that ended by abort().
#pragma once

namespace orvix::test {

// True if that is what the system tells by a status: a predicate for EXPECT_EXIT.
bool ended_by_abort(int status);

}  // namespace orvix::test
