#include "support/permissions.h"

namespace orvix::test {

namespace {

constexpr unsigned owner_may_write = 0200;

}  // namespace

unsigned kept_mode(unsigned mode) { return (mode & owner_may_write) != 0 ? 0666 : 0444; }

unsigned kept_directory_mode(unsigned mode) { return (mode & owner_may_write) != 0 ? 0777 : 0555; }

const bool current_directory_can_be_renamed = false;

CreationMask::CreationMask(unsigned) : before_(0) {}

CreationMask::~CreationMask() = default;

}  // namespace orvix::test
