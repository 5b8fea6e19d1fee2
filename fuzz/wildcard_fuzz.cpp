// Wildcards agree with a plain recursive model. The input is a text, a zero byte and a pattern.

#include "../tests/files/wildcard_model.h"
#include "gfile_wildcard.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // The model tries all ways: short inputs only, and few stars among them.
    constexpr std::size_t longest_text = 40;
    constexpr std::size_t longest_pattern = 24;
    constexpr std::ptrdiff_t most_stars = 5;
    const std::string input(data, data + size);
    const std::size_t middle = std::min(input.find('\0'), input.size());
    const std::string text = input.substr(0, std::min(middle, longest_text));
    const std::string pattern = middle < input.size() ? input.substr(middle + 1, longest_pattern) : "";
    if (std::count(pattern.begin(), pattern.end(), '*') > most_stars) return 0;
    if (orvix::gsl::gfile_match_wildcard(text, pattern) != orvix::test::matches(text, pattern)) std::abort();
    return 0;
}
