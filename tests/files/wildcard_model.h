// The plain form of the wildcards: for each "*" every place is tried by recursion.
#pragma once

#include <string_view>

namespace orvix::test {

inline bool matches(std::string_view text, std::string_view pattern) {
    if (text.empty()) return pattern.empty() || pattern == "*";
    while (!text.empty()) {
        if (pattern.empty()) return false;
        if (pattern == "*") return true;
        if (pattern[0] == '*') {
            if (pattern[1] == text[0] && matches(text.substr(1), pattern.substr(2))) return true;
        } else if (pattern[0] == '?' || pattern[0] == text[0]) {
            pattern.remove_prefix(1);
        } else {
            return false;
        }
        text.remove_prefix(1);
    }
    return pattern.empty() || pattern == "*";
}

}  // namespace orvix::test
