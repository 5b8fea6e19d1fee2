// Checks that need a user without special rights.
#pragma once

#include <functional>

#include <sys/wait.h>
#include <unistd.h>

namespace orvix::test {

// Runs a check in a child process that has given up the rights of root, if this one has them. A check that crashes
// does not hold.
inline bool holds_for_ordinary_user(const std::function<bool()>& check) {
    constexpr unsigned nobody = 65534;
    const pid_t child = fork();
    if (child == 0) {
        const bool dropped = geteuid() != 0 || (setgid(nobody) == 0 && setuid(nobody) == 0);
        _exit(dropped && check() ? 0 : 1);
    }
    int status = -1;
    return waitpid(child, &status, 0) == child && status == 0;
}

}  // namespace orvix::test
