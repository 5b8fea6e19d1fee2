#include "support/commands.h"

#include <unistd.h>

namespace orvix::test {

const char* const echo_one_and_exit_3 = "echo one; exit 3";

const char* const copy_to_file = "cat > copy.txt";

// It stands in the second byte.
int status_of_exit(int status) { return status << 8; }

int process_number() { return getpid(); }

}  // namespace orvix::test
