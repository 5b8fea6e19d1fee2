#include "core/directory_walks.h"

#include "posix/directory_listings.h"

namespace orvix::test {

std::size_t directory_walks() { return core::listings().walks(); }

}  // namespace orvix::test
