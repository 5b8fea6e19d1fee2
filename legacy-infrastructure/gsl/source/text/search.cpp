#include "text/bytes.h"
#include "text/two_way.h"

#include <orvix/gsl/string_utilities.h>

#include <algorithm>
#include <cstring>
#include <string_view>

using namespace orvix::gsl::text;

namespace {

// Texts that fit a buffer are folded and given to the C library, which searches faster than any portable loop.
constexpr std::size_t buffer_bytes = 2048;
constexpr std::size_t first_window_bytes = 128;

void fold(const char* text, std::size_t length, char* folded) {
    std::transform(text, text + length, folded, to_lower);
    folded[length] = '\0';
}

// Walks over the hay a window at a time. The first window is small and each holds twice as much as the one before, so
// that an early hit costs little. Neighbours overlap by what a needle can reach across the seam; with a needle of half
// a buffer at most, no byte is folded more than a few times.
const char* find_in_windows(const char* hay, const char* needle, std::size_t needle_length) {
    char folded_needle[buffer_bytes];
    char window[buffer_bytes];
    fold(needle, needle_length, folded_needle);
    for (std::size_t wanted = first_window_bytes;; wanted *= 2) {
        wanted = std::min(std::max(wanted, 2 * needle_length), buffer_bytes - 1);
        const std::size_t length = bounded_length(hay, wanted);
        if (length < needle_length) return nullptr;
        fold(hay, length, window);
        if (const char* hit = std::strstr(window, folded_needle)) return hay + (hit - window);
        if (length < wanted) return nullptr;
        hay += length - (needle_length - 1);
    }
}

const char* find_beyond_buffers(const char* hay, const char* needle, std::size_t needle_length) {
    // The end of the hay is looked for no further than the search has come, which matters to callers that look for one
    // occurrence after the other.
    std::size_t known = 0;
    const auto holds = [&](std::size_t n) {
        if (n > known) known += bounded_length(hay + known, std::max(n - known, buffer_bytes));
        return n <= known;
    };
    const auto hay_byte = [hay](std::size_t i) { return to_lower(hay[i]); };
    const auto needle_byte = [needle](std::size_t i) { return to_lower(needle[i]); };
    const auto hit = find_two_way(holds, hay_byte, needle_length, needle_byte);
    return hit ? hay + *hit : nullptr;
}

// The last occurrence is the first one of both texts read from their ends.
std::size_t find_last_two_way(std::string_view hay, std::string_view needle) {
    const auto holds = [=](std::size_t n) { return n <= hay.size(); };
    const auto hay_byte = [=](std::size_t i) { return hay[hay.size() - 1 - i]; };
    const auto needle_byte = [=](std::size_t i) { return needle[needle.size() - 1 - i]; };
    const auto hit = find_two_way(holds, hay_byte, needle.size(), needle_byte);
    return hit ? hay.size() - *hit - needle.size() : std::string_view::npos;
}

// Looks at each start, which is fastest on usual texts. Texts that begin and end like the needle in many places would
// make that quadratic: once the comparisons have come to a few times the hay, the rest is left to the two-way search.
std::size_t find_last(std::string_view hay, std::string_view needle) {
    std::size_t patience = 4 * hay.size();
    for (std::size_t at = hay.size() - needle.size() + 1; at-- > 0;) {
        if (hay[at] != needle.front() || hay[at + needle.size() - 1] != needle.back()) continue;
        if (std::memcmp(hay.data() + at, needle.data(), needle.size()) == 0) return at;
        if (patience < needle.size()) return find_last_two_way(hay.substr(0, at + needle.size() - 1), needle);
        patience -= needle.size();
    }
    return std::string_view::npos;
}

}  // namespace

const char* gsl_strcasestr(const char* hay, const char* needle) {
    if (hay == nullptr || *hay == '\0') return nullptr;
    if (needle == nullptr || *needle == '\0') return hay;
    const std::size_t length = std::strlen(needle);
    const bool fits =
        length <= buffer_bytes / 2 || (length < buffer_bytes && bounded_length(hay, buffer_bytes) < buffer_bytes);
    return fits ? find_in_windows(hay, needle, length) : find_beyond_buffers(hay, needle, length);
}

char* strrstr(const char* hay, const char* needle) {
    if (*needle == '\0') return const_cast<char*>(needle);
    const std::string_view text = hay;
    const std::string_view wanted = needle;
    if (wanted.size() > text.size()) return nullptr;
    const std::size_t at = find_last(text, wanted);
    return at != std::string_view::npos ? const_cast<char*>(hay) + at : nullptr;
}
