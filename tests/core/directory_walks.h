// How often directories are read to find a name under other letter case.
#pragma once

#include <cstddef>

namespace orvix::test {

std::size_t directory_walks();

}  // namespace orvix::test
