// Runs a program as the system's command processor does.
#pragma once

#include <string>
#include <vector>

namespace orvix::test {

// The program reads the file "input" and writes the files "output" and "error", all in the current directory.
// @param words  the program and its arguments, in UTF-8
// @return the status that it ends with
int run_program(const std::vector<std::string>& words);

}  // namespace orvix::test
