#include "support/permissions.h"

#include "support/windows/wine.h"

namespace orvix::test {

namespace {

constexpr unsigned owner_may_write = 0200;

}  // namespace

unsigned kept_mode(unsigned mode) { return (mode & owner_may_write) != 0 ? 0666 : 0444; }

// Wine keeps no mark of a directory.
unsigned kept_directory_mode(unsigned mode) { return (mode & owner_may_write) != 0 || is_wine() ? 0777 : 0555; }

const bool current_directory_can_be_renamed = false;

CreationMask::CreationMask(unsigned) : before_(0) {}

CreationMask::~CreationMask() = default;

}  // namespace orvix::test
