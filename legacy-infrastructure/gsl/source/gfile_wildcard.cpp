#include "gfile_wildcard.h"

#include <cstddef>

namespace orvix::gsl {

// Only the last "*" is ever tried again: what an earlier one took instead could only bring the walk to the last one at
// a later place of the text, and from there the last one cannot reach anything that it does not reach now.
bool gfile_match_wildcard(std::string_view text, std::string_view pattern) {
    constexpr std::size_t none = std::string_view::npos;
    std::size_t t = 0;
    std::size_t p = 0;
    std::size_t star = none;       // the last "*" met, and
    std::size_t behind_found = 0;  // the place behind the character that it looked for and found last

    while (t < text.size()) {
        const bool at_star = p < pattern.size() && pattern[p] == '*';
        const bool fits = p < pattern.size() && (pattern[p] == '?' || pattern[p] == text[t]);
        if (fits && !at_star) {
            ++t;
            ++p;
            continue;
        }
        if (at_star) {
            if (p + 1 == pattern.size()) return true;
            star = p;
            behind_found = t;
        }
        if (star == none) return false;
        const std::size_t found = text.find(pattern[star + 1], behind_found);
        if (found == none) return false;
        behind_found = found + 1;
        t = found + 1;
        p = star + 2;
    }
    const std::string_view rest = pattern.substr(p);
    return rest.empty() || rest == "*";
}

}  // namespace orvix::gsl
