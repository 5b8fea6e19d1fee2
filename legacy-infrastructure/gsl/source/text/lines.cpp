#include "text/bytes.h"

#include <orvix/gsl/string_utilities.h>

#include <algorithm>
#include <cstring>

using namespace orvix::gsl::text;

namespace {

// The end of the text is looked for no further than this ahead of the end of the line: looking at once as far as a line
// may reach would make it quadratic to take short lines from a long text.
constexpr std::size_t piece_bytes = 128;

}  // namespace

char* astr_extract_line_from_multilines(char* text, char* out, int maxlen) {
    const auto limit = static_cast<std::size_t>(std::max(maxlen, 0));
    std::size_t taken = 0;
    while (taken <= limit) {
        const std::size_t room = std::min(piece_bytes, limit + 1 - taken);
        const std::size_t piece = bounded_length(text + taken, room);
        auto* feed = static_cast<char*>(std::memchr(text + taken, '\n', piece));
        const std::size_t line_part = feed != nullptr ? static_cast<std::size_t>(feed - (text + taken)) : piece;
        std::memcpy(out + taken, text + taken, line_part);
        taken += line_part;
        if (feed != nullptr || piece < room) {
            out[taken] = '\0';
            return feed != nullptr ? feed + 1 : nullptr;
        }
    }
    // One byte more than fits was taken, and gives its place to the zero byte.
    out[limit] = '\0';
    return text + taken;
}
