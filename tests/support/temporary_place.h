// Where temporary files lie.
#pragma once

#include "support/temporary_directory.h"

#include <filesystem>

namespace orvix::test {

// The process variable that tells the system's directory for temporary files.
extern const char* const temporary_place;

// A directory in memory, or that for temporary files where there is none: disks take their time with many small files.
std::filesystem::path fast_place();

// For the length of its scope the directory for temporary files is one that is missing, however it is told.
class NoTemporaryPlace {
public:
    NoTemporaryPlace();

private:
    ScopedVariable first_;
    ScopedVariable second_;
    ScopedVariable third_;
};

// Where temporary files lie then.
std::filesystem::path last_temporary_place();

// For the length of its scope no name for a temporary file can be made up.
class NoTemporaryName {
public:
    NoTemporaryName();
    ~NoTemporaryName();
    NoTemporaryName(const NoTemporaryName&) = delete;
    NoTemporaryName& operator=(const NoTemporaryName&) = delete;

private:
    struct State;
    State* state_;
};

}  // namespace orvix::test
