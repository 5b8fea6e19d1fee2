/// @file
/// Walks over the entries of one directory.
#pragma once

#include <orvix/core/export.h>
#include <orvix/core/path.h>

#include <memory>
#include <string_view>

namespace orvix::core {

/// One walk over a directory, in the system's order, "." and ".." included. Holds one descriptor, which child processes
/// do not inherit. Entries made or removed meanwhile may or may not show up. Belongs to one thread at a time.
class ORVIX_CORE_API DirectoryScan {
public:
    DirectoryScan();
    ~DirectoryScan();
    DirectoryScan(const DirectoryScan&) = delete;
    DirectoryScan& operator=(const DirectoryScan&) = delete;

    /// Starts the walk.
    /// @return false with `errno` set if the name is no directory or cannot be read
    bool open(const Path& directory);

    /// Steps to the next entry.
    /// @param name  receives the entry's UTF-8 name, good until the next call on this object
    /// @return false at the end, and on failure alike
    bool next(std::string_view* name);

    /// Ends the walk.
    /// @return false if the system reports a failure; true also if nothing is open
    bool close();

private:
    struct Walk;
    std::unique_ptr<Walk> walk_;
};

}  // namespace orvix::core
