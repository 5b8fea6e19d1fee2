// The library's own wildcards.
#pragma once

#include <string_view>

namespace orvix::gsl {

// True if the pattern stands for the whole text: "?" for any one character, "*" for any number of them, anything else
// for itself. The character behind a "*" stands for itself too, so "*?x" is not the same as "?*x", and "**" wants a
// star. Takes at most as many steps as the product of both lengths.
bool gfile_match_wildcard(std::string_view text, std::string_view pattern);

}  // namespace orvix::gsl
