/// @file
/// A scope that gives the current directory back.
#pragma once

#include <orvix/core/export.h>
#include <orvix/core/path.h>

#include <memory>

namespace orvix {

/// Remembers the current directory and goes back to it at the end of its scope, also when an exception leaves it. The
/// current directory belongs to the whole process: no other thread may depend on it meanwhile.
class ORVIX_CORE_API DirectorySaver {
public:
    DirectorySaver();
    ~DirectorySaver();
    DirectorySaver(const DirectorySaver&) = delete;
    DirectorySaver& operator=(const DirectorySaver&) = delete;

    /// Enters a directory.
    /// @return true on success; on failure the current directory is what it was, and `errno` tells why
    bool change_dir(const Path& directory);

private:
    struct Remembered;
    std::unique_ptr<Remembered> remembered_;
};

}  // namespace orvix
