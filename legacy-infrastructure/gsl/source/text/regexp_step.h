// What the matchers walk instead of the nodes of a program.
#pragma once

#include "text/regexp_byte_set.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace orvix::gsl::text::regexp {

enum class Op : unsigned char {
    corrupted_pointers,  // the ways in which a program is found damaged
    memory_corruption,
    internal_foulup,
    match,   // success
    start,   // the start of the subject
    end,     // the end of the subject
    byte,    // the byte `detail`
    text,    // the bytes of `text`
    set,     // a byte of `first`
    pass,    // nothing
    choice,  // `operand`, otherwise `next`
    run,     // bytes of the operand's `first`: as many as possible, fewer if the rest asks for it, at least `detail`
};

// Before a step does what it is for, it notes the position at its `place`, if it has one: places 1 to 9 are the starts
// of groups, 11 to 19 their ends.
constexpr std::size_t place_count = 20;
constexpr unsigned end_places = 10;

struct Step {
    Op op = Op::corrupted_pointers;
    bool is_loop : 1 = false;       // a choice, or a pass, that may lead back to where the walk came from
    bool is_sure : 1 = false;       // from here on, nothing can fail
    bool is_anchored : 1 = false;   // from here on, success is possible at the start of the subject only
    bool is_exclusive : 1 = false;  // a run: what is behind it cannot begin with one of its bytes
    bool takes_all : 1 = false;     // a run: of any bytes
    unsigned char detail = 0;
    unsigned char place = 0;
    std::uint16_t length = 0;  // of the text
    std::uint16_t state = 0;   // number of its first state; see Lockstep. An offset in the program, where it has room.
    const Step* next = nullptr;
    const Step* operand = nullptr;
    const char* start_of_text = nullptr;
    ByteSet first;  // what a success from here on may begin with, or more than that; for a step that takes a byte,
                    // those that it takes

    std::string_view text() const { return {start_of_text, length}; }  // of a byte, too
    bool takes_byte() const { return op == Op::byte || op == Op::text || op == Op::set; }
};

// A program of steps.
struct Steps {
    const Step* entry = nullptr;
    const unsigned char* program = nullptr;
    std::size_t program_bytes = 0;
    unsigned groups = 0;  // the highest number of a group
};

}  // namespace orvix::gsl::text::regexp
