// Drive letters for the length of a scope.
#pragma once

#include "support/temporary_directory.h"

#include <filesystem>
#include <optional>
#include <string>

namespace orvix::test {

// True where a drive is what a process variable says, and the current drive is looked up; false where drives are the
// system's own.
extern const bool drives_are_variables;

// Lets a letter stand for a directory. Where drives are the system's own, other tests wait for the letter meanwhile.
class MappedDrive {
public:
    MappedDrive(char letter, const std::filesystem::path& directory);
    ~MappedDrive();
    MappedDrive(const MappedDrive&) = delete;
    MappedDrive& operator=(const MappedDrive&) = delete;

private:
    struct OfTheSystem;

    std::optional<ScopedVariable> variable_;
    OfTheSystem* drive_ = nullptr;
};

}  // namespace orvix::test
