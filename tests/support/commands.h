// Commands of the system's processor.
#pragma once

namespace orvix::test {

// Prints "one" and ends with status 3.
extern const char* const echo_one_and_exit_3;

// Copies its input to the file copy.txt.
extern const char* const copy_to_file;

// What the system tells of a command that ended with a status.
int status_of_exit(int status);

int process_number();

}  // namespace orvix::test
