#include "support/denial.h"

#include <utility>

#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace orvix::test {

Denial::Denial(fs::path name, unsigned mode_meanwhile)
    : name_(std::move(name)), before_(fs::status(name_).permissions()) {
    fs::permissions(name_, fs::perms(mode_meanwhile));
}

Denial::Denial(Denial&& other) noexcept : name_(std::move(other.name_)), before_(other.before_) { other.name_.clear(); }

Denial::~Denial() {
    std::error_code ignored;
    if (!name_.empty()) fs::permissions(name_, before_, ignored);
}

Denial Denial::of_reading(const fs::path& name) { return {name, 0}; }

Denial Denial::of_changing(const fs::path& directory) { return {directory, 0555}; }

void make_name_without_permissions(const fs::path& name) { fs::create_symlink("nowhere", name); }

std::string file_that_nobody_writes(const fs::path&) { return "C:\\proc\\version"; }

bool holds_for_ordinary_user(const std::function<bool()>& check) {
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
