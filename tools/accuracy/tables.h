// The tables, written to standard output as Markdown.
#pragma once

#include <string>
#include <vector>

namespace orvix::accuracy {

// "median / worst" of errors in units in the last place, as a cell of a table. An error as large as the result, for a
// precision of that many bits, is "lost".
std::string cell(std::vector<double> errors, int bits);

void print_row(const std::vector<std::string>& cells);
void print_head(const std::vector<std::string>& cells);

void print_real_tables();
void print_complex_tables();

}  // namespace orvix::accuracy
