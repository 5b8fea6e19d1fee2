#include "support/commands.h"

#include <windows.h>

namespace orvix::test {

const char* const echo_one_and_exit_3 = "echo one& exit 3";

const char* const copy_to_file = "find /v \"no such word\" > copy.txt";

int status_of_exit(int status) { return status; }

int process_number() { return static_cast<int>(GetCurrentProcessId()); }

}  // namespace orvix::test
