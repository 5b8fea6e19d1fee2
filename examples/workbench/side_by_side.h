// Two versions of a settings file beside each other.
#pragma once

#include <string>
#include <vector>

namespace workbench {

using Lines = std::vector<std::string>;

// Prints both in two columns, lines that belong together in one row: equal ones, and settings of one name. Between the
// columns stands `|` for a changed line, `<` for one that is gone and `>` for a new one.
void print_side_by_side(const Lines& before, const Lines& after);

}  // namespace workbench
