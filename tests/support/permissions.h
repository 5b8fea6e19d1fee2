// Permission bits as far as the host has them.
#pragma once

#include <filesystem>

namespace orvix::test {

// The permission bits of what a name leads to.
inline unsigned mode_of(const std::filesystem::path& name) {
    return static_cast<unsigned>(std::filesystem::status(name).permissions());
}

inline void set_mode(const std::filesystem::path& name, unsigned mode) {
    std::filesystem::permissions(name, std::filesystem::perms(mode));
}

// What the host keeps of the permission bits of a file: all of them, or whether it may be written.
unsigned kept_mode(unsigned mode);

// The same for a directory.
unsigned kept_directory_mode(unsigned mode);

// False where the system keeps the current directory and all above it from being renamed.
extern const bool current_directory_can_be_renamed;

// Takes these bits from files and directories that are made in the scope, where new files have permission bits at all.
class CreationMask {
public:
    explicit CreationMask(unsigned mask);
    ~CreationMask();
    CreationMask(const CreationMask&) = delete;
    CreationMask& operator=(const CreationMask&) = delete;

private:
    int before_;
};

}  // namespace orvix::test
