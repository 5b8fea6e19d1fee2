// Texts and patterns, the same on every host: the test library's own patterns know less on some.
#pragma once

#include <gmock/gmock.h>

#include <regex>
#include <string>

namespace orvix::test {

MATCHER_P(MatchesPattern, pattern, "matches \"" + std::string(pattern) + '"') {
    return std::regex_match(std::string(arg), std::regex(pattern));
}

}  // namespace orvix::test
