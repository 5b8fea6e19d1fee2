#include <orvix/core/processes.h>

#include "windows/wide_name.h"

#include <cerrno>

#include <process.h>
#include <stdio.h>

namespace orvix::core {

std::FILE* open_pipe(const char* command, const char* mode) {
    if (command == nullptr || mode == nullptr || (mode[0] != 'r' && mode[0] != 'w')) {
        errno = EINVAL;
        return nullptr;
    }
    // Line ends of programs here are two bytes; the stream makes them one.
    // NOLINTNEXTLINE(cert-env33-c): a command line for the system's processor is what callers ask for
    return _wpopen(widen(command).c_str(), mode[0] == 'r' ? L"rt" : L"wt");
}

int close_pipe(std::FILE* pipe) {
    if (pipe == nullptr) {
        errno = EINVAL;
        return -1;
    }
    return _pclose(pipe);
}

int process_number() { return _getpid(); }

}  // namespace orvix::core
