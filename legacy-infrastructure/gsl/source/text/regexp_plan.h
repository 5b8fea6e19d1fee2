// The plan of a record: its program decoded into steps, and what helps to find where a match may start.
//
// It stands behind the program, in the same block:
//
//   record | program | Plan | copy of the program | numbers of the steps by node | steps
//
// The first search fills it in. Each search holds the program against the copy: a program that was changed since it was
// compiled is decoded afresh each time, with nothing taken for granted, so that a matcher meets the damage where it is.
#pragma once

#include "text/regexp_finder.h"
#include "text/regexp_step.h"

#include <orvix/gsl/regular_expressions.h>

#include <cstddef>
#include <vector>

namespace orvix::gsl::text::regexp {

struct Plan {
    bool is_filled = false;
    Steps steps;
    Finder finder;
    Needle required;  // a text that is part of every match and worth looking for first; may be empty
};

// The size of a record with a program of that size and so many nodes, and its plan.
std::size_t bytes_with_plan(std::size_t program_bytes, std::size_t nodes);

// Makes an empty plan. The record is of the size above, and its program complete.
void add_plan(__gsl_regexp* record, std::size_t program_bytes);

// The record's plan, filled in. Null if the program was changed, or if the record is not the compiler's.
const Plan* plan_of(__gsl_regexp* record);

// The plan for a program that may be anything.
class ChangedProgram {
public:
    explicit ChangedProgram(const __gsl_regexp* record);
    const Plan& plan() const { return plan_; }

private:
    std::vector<Step> steps_;  // by node
    Plan plan_;
};

}  // namespace orvix::gsl::text::regexp
