// The plan of a record: its program decoded into steps, and what helps to find where a match may start. The first
// search fills it in.
#pragma once

#include "text/regexp_blocks.h"
#include "text/regexp_finder.h"
#include "text/regexp_needle.h"
#include "text/regexp_record_block.h"
#include "text/regexp_step.h"

#include <orvix/gsl/regular_expressions.h>

#include <cstddef>
#include <cstdint>

namespace orvix::gsl::text::regexp {

struct Plan {
    bool is_filled = false;
    bool is_anchored = false;  // a match can start at the start of the subject only
    Steps steps;
    Finder finder;
    Needle required;  // a text that is part of every match and worth looking for first; may be empty
};

inline unsigned char* RecordBlock::copy() const { return at<unsigned char>(plan_offset_ + sizeof(Plan)); }
inline std::uint16_t* RecordBlock::numbers() const {
    return at<std::uint16_t>(plan_offset_ + sizeof(Plan) + padded_bytes_);
}
inline Step* RecordBlock::steps() const { return at<Step>(plan_offset_ + sizeof(Plan) + 3 * padded_bytes_); }
inline std::size_t RecordBlock::bytes(std::size_t steps) const {
    return plan_offset_ + sizeof(Plan) + 3 * padded_bytes_ + steps * sizeof(Step);
}

// The size of a record with a program of that size and so many nodes, and its plan.
inline std::size_t bytes_with_plan(std::size_t program_bytes, std::size_t nodes) {
    return RecordBlock(nullptr, program_bytes).bytes(nodes + 1);
}

// Makes an empty plan. The record is of the size above, and its program complete.
void add_plan(__gsl_regexp* record, std::size_t program_bytes);

void fill_plan(const __gsl_regexp* record, const RecordBlock& block, std::size_t program_bytes);

// Each search holds the program against the copy that was made when it was compiled.
inline bool is_unchanged(const __gsl_regexp* record, const RecordBlock& block) {
    const unsigned char* const program = record->program;
    const unsigned char* const copy = block.copy();
    Block differences{};
    for (std::size_t i = 0; i < block.padded_bytes(); i += block_bytes)
        differences |= load(program + i) ^ load(copy + i);
    return is_zero(differences);
}

// The record's plan, filled in. Null if the program was changed, or if the record is not the compiler's.
inline const Plan* plan_of(__gsl_regexp* record) {
    const Reserved reserved = Reserved::read(record);
    if (!reserved.is_of_compiler(record)) return nullptr;
    const RecordBlock block(record, reserved.program_bytes());
    if (!is_unchanged(record, block)) return nullptr;
    if (!block.plan()->is_filled) fill_plan(record, block, reserved.program_bytes());
    return block.plan();
}

}  // namespace orvix::gsl::text::regexp
