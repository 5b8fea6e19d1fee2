// Programs that were changed since they were compiled, or made elsewhere. Nothing in them is taken for granted, so that
// a matcher meets the damage where it is.
#pragma once

#include "text/regexp_plan.h"
#include "text/regexp_step.h"

#include <orvix/gsl/regular_expressions.h>

#include <vector>

namespace orvix::gsl::text::regexp {

// The plan for the program of a record as it is now. What the record tells of it beside counts as it stands.
class ChangedProgram {
public:
    explicit ChangedProgram(const __gsl_regexp* record);
    const Plan& plan() const { return plan_; }

private:
    std::vector<Step> steps_;  // by node
    Plan plan_;
};

}  // namespace orvix::gsl::text::regexp
