// The one search that splits names.
#pragma once

#include <cstddef>
#include <string_view>

namespace orvix::gsl::paths {

// The length of a name up to and including the last byte that is one of the marks; 0 if it holds none of them.
template <char... marks>
constexpr std::size_t length_to_last(std::string_view name) {
    std::size_t length = name.size();
    while (length != 0 && ((name[length - 1] != marks) && ...)) --length;
    return length;
}

}  // namespace orvix::gsl::paths
