#include "support/abort.h"

#include <csignal>

#include <sys/wait.h>

namespace orvix::test {

bool ended_by_abort(int status) { return WIFSIGNALED(status) && WTERMSIG(status) == SIGABRT; }

}  // namespace orvix::test
