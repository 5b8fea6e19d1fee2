// Reading of parsed lines, whatever record holds them: it has a `line`, and `nclumps` entries in `clumps`.
#pragma once

#include "text/bytes.h"

#include <cstddef>
#include <cstdint>

namespace orvix::gsl::text {

// Copies the bytes of a line from one position to another, both included, as far as the line goes: positions of another
// line never lead out of this one. The empty text if they are no stretch.
inline void copy_stretch(const char* line, std::int32_t first, std::int32_t last, char* dst) {
    const bool is_stretch = first >= 0 && first <= last;
    const std::size_t start = is_stretch ? static_cast<std::size_t>(first) : 0;
    const std::size_t end = is_stretch ? bounded_length(line, static_cast<std::size_t>(last) + 1) : 0;
    if (start < end) {
        move_text(dst, line + start, end - start);
    } else {
        *dst = '\0';
    }
}

template <class Record>
bool copy_clump(const Record& record, std::size_t index, char* dst) {
    if (index >= record.nclumps) return false;
    const auto& clump = record.clumps[index];
    move_text(dst, record.line + clump.start, static_cast<std::size_t>(clump.end - clump.start) + 1);
    return true;
}

// From the start of one clump to the end of another, of which only the first `entries` can be looked at.
template <class Record>
void copy_between(const Record& record, std::size_t first, std::size_t last, std::size_t entries, char* dst) {
    if (first < entries && last < entries) {
        copy_stretch(record.line, record.clumps[first].start, record.clumps[last].end, dst);
    } else {
        *dst = '\0';
    }
}

template <class Record>
bool get_whole(const Record& record, std::size_t index, int* out) {
    const bool found = index < record.nclumps && record.clumps[index].is_int;
    *out = found ? record.clumps[index].int_value : 0;
    return found;
}

template <class Record, class Real>
bool get_real(const Record& record, std::size_t index, Real* out) {
    const bool found = index < record.nclumps && record.clumps[index].is_real;
    *out = found ? static_cast<Real>(record.clumps[index].real_value) : 0;
    return found;
}

}  // namespace orvix::gsl::text
