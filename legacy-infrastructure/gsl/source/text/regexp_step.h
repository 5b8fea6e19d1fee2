// What the matchers walk instead of the nodes of a program.
#pragma once

#include "text/regexp_byte_set.h"

#include <cstddef>
#include <cstdint>

namespace orvix::gsl::text::regexp {

enum class Op : unsigned char {
    corrupted_pointers,  // the ways in which a program is found damaged
    memory_corruption,
    internal_foulup,
    match,   // success
    start,   // the start of the subject
    end,     // the end of the subject
    byte,    // that byte
    text,    // the bytes of the program from `text` on
    set,     // one of the bytes that the step may begin with
    mark,    // notes the position
    jump,    // nothing
    choice,  // `operand`, otherwise `next`
    run,     // bytes that `operand` may begin with: as many as possible, fewer if the rest asks for it
};

using StepIndex = std::uint16_t;

struct Step {
    Op op = Op::corrupted_pointers;
    bool is_loop = false;       // a choice or jump that may lead back to where the walk came from
    bool is_sure = false;       // from here on, nothing can fail
    bool is_anchored = false;   // from here on, success is possible at the start of the subject only
    bool is_exclusive = false;  // a run: what is behind it cannot begin with one of its bytes
    unsigned char detail = 0;   // the byte; the place of a mark; the least number of bytes in a run
    StepIndex next = 0;
    StepIndex operand = 0;
    std::uint16_t text = 0;    // offset in the program
    std::uint16_t length = 0;  // of the text
    std::uint16_t node = 0;    // offset of the node in the program
};

// Marks note where groups start at places 1 to 9, and where they end at 11 to 19.
constexpr std::size_t place_count = 20;
constexpr unsigned end_places = 10;

// Steps refer to each other by index; index 0 is the step that no link leads to. `first` tells for each of them what a
// success from there on may begin with, or more than that. For steps that take bytes it is what the first byte must be.
struct Steps {
    const Step* steps;
    const ByteSet* first;
    const unsigned char* program;
    std::size_t program_bytes;
    StepIndex entry;
    unsigned groups;  // the highest number of a group
};

}  // namespace orvix::gsl::text::regexp
