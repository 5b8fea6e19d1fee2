// What the program does.
#pragma once

#include "failure.h"
#include "options.h"

namespace gslstore {

// Each gives the status that the program ends with, and throws Failure if it cannot go on.
Status print_statistics(const Options& options);
Status print_faults(const Options& options);
Status dump_pairs(const Options& options);
Status load_pairs(const Options& options);
Status get_value(const Options& options);
Status put_pair(const Options& options);
Status remove_pair(const Options& options);

}  // namespace gslstore
