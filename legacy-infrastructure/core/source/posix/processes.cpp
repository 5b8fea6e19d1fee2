#include <orvix/core/processes.h>

#include <cerrno>
#include <string>

#include <unistd.h>

namespace orvix::core {

std::FILE* open_pipe(const char* command, const char* mode) {
    if (command == nullptr || mode == nullptr || (mode[0] != 'r' && mode[0] != 'w')) {
        errno = EINVAL;
        return nullptr;
    }
    // "e": children started later do not inherit this pipe, or it would never come to its end.
    // NOLINTNEXTLINE(cert-env33-c): a command line for the system's processor is what callers ask for
    return popen(command, mode[0] == 'r' ? "re" : "we");
}

int close_pipe(std::FILE* pipe) {
    if (pipe == nullptr) {
        errno = EINVAL;
        return -1;
    }
    return pclose(pipe);
}

int process_number() { return static_cast<int>(getpid()); }

}  // namespace orvix::core
