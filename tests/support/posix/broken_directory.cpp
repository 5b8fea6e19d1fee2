#include "support/broken_directory.h"

#include <cerrno>
#include <filesystem>
#include <system_error>

#include <sys/wait.h>
#include <unistd.h>

namespace orvix::test {

// A directory that is gone has no list, though it is still open.
BrokenDirectory::BrokenDirectory(const std::filesystem::path& directory) { std::filesystem::remove(directory); }

BrokenDirectory::~BrokenDirectory() = default;

// The network of a process that has ended, as the system shows it until somebody asks for the process's status.
UnlistableDirectory::UnlistableDirectory() : process_(fork()) {
    if (process_ == 0) _exit(0);
    siginfo_t ended;
    waitid(P_PID, static_cast<id_t>(process_), &ended, WEXITED | WNOWAIT);
}

UnlistableDirectory::~UnlistableDirectory() { waitpid(process_, nullptr, 0); }

bool UnlistableDirectory::exists() const {
    std::error_code error;
    const std::filesystem::directory_iterator scan("/proc/" + std::to_string(process_) + "/net", error);
    return error == std::errc::invalid_argument;
}

std::string UnlistableDirectory::wildcard() const { return "C:\\proc\\" + std::to_string(process_) + "\\net\\*"; }

UnscannableDirectory::UnscannableDirectory() = default;

UnscannableDirectory::~UnscannableDirectory() = default;

// On some systems a star at the end would be a pattern.
std::string UnscannableDirectory::text() const { return "star*"; }

LostDirectory::LostDirectory(const std::filesystem::path& current) { std::filesystem::remove(current); }

LostDirectory::~LostDirectory() = default;

UnreadableStatus::UnreadableStatus() = default;

UnreadableStatus::~UnreadableStatus() = default;

std::string UnreadableStatus::name() const { return std::string(5000, 'x'); }

int UnreadableStatus::error() const { return ENAMETOOLONG; }

}  // namespace orvix::test
