// What an open file has to give.
#pragma once

#include <orvix/core/file.h>

#include <cstddef>
#include <string>

namespace orvix::test {

// The next bytes of a file, so many at most.
inline std::string read_all(core::File& file, std::size_t bytes) {
    std::string text(bytes, '?');
    text.resize(file.read(text.data(), bytes));
    return text;
}

}  // namespace orvix::test
