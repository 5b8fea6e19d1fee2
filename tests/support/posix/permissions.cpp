#include "support/permissions.h"

#include <sys/stat.h>

namespace orvix::test {

unsigned kept_mode(unsigned mode) { return mode; }

unsigned kept_directory_mode(unsigned mode) { return mode; }

const bool current_directory_can_be_renamed = true;

CreationMask::CreationMask(unsigned mask) : before_(static_cast<int>(umask(mask))) {}

CreationMask::~CreationMask() { umask(static_cast<mode_t>(before_)); }

}  // namespace orvix::test
