#include <orvix/core/streams.h>

#include <stdio.h>

namespace orvix::core {

int descriptor_of(std::FILE* stream) { return fileno(stream); }

}  // namespace orvix::core
