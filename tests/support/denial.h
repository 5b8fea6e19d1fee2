// Files and directories that the library may not do everything with.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace orvix::test {

// Each takes a right away for the length of its scope. Where permissions are bits, they are taken, and a user with
// special rights does not feel it: see holds_for_ordinary_user. Elsewhere somebody else holds the file so that the
// right is not to be had.
class Denial {
public:
    ~Denial();
    Denial(Denial&& other) noexcept;
    Denial& operator=(Denial&&) = delete;

    // Nobody may read the file, or look into the directory.
    static Denial of_reading(const std::filesystem::path& name);

    // Nobody may remove entries of the directory, and it is told not to be writable.
    static Denial of_changing(const std::filesystem::path& directory);

private:
    Denial(std::filesystem::path name, unsigned mode_meanwhile);

    std::filesystem::path name_;
    std::filesystem::perms before_{};
    std::vector<void*> held_;
};

// Makes a name whose permissions nobody may change. Where they are marks of a file, the system refuses to change those
// of any file from then on.
void make_name_without_permissions(const std::filesystem::path& name);

// A file that not even a user with special rights may write, in the library's form: one of the system's own or, where
// it has none, `scratch`, which is made for it.
std::string file_that_nobody_writes(const std::filesystem::path& scratch);

// Runs a check as a user without special rights, in a process of its own where that takes one. A check that crashes
// does not hold.
bool holds_for_ordinary_user(const std::function<bool()>& check);

}  // namespace orvix::test
