// A directory that can be opened and not be listed.
#pragma once

#include <filesystem>
#include <string>
#include <system_error>

#include <sys/wait.h>
#include <unistd.h>

namespace orvix::test {

// The network of a process that has ended, as the system shows it until somebody asks for the process's status.
class UnlistableDirectory {
public:
    UnlistableDirectory() : child_(fork()) {
        if (child_ == 0) _exit(0);
        siginfo_t ended;
        waitid(P_PID, static_cast<id_t>(child_), &ended, WEXITED | WNOWAIT);
    }
    ~UnlistableDirectory() { waitpid(child_, nullptr, 0); }
    UnlistableDirectory(const UnlistableDirectory&) = delete;
    UnlistableDirectory& operator=(const UnlistableDirectory&) = delete;

    // False where the system has no such directory.
    bool exists() const {
        std::error_code error;
        const std::filesystem::directory_iterator scan(host(), error);
        return error == std::errc::invalid_argument;
    }

    std::string host() const { return "/proc/" + std::to_string(child_) + "/net"; }

    // The name of all its entries, in the library's form.
    std::string wildcard() const { return "C:\\proc\\" + std::to_string(child_) + "\\net\\*"; }

private:
    pid_t child_;
};

}  // namespace orvix::test
