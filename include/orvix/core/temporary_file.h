/// @file
/// A file of its own for the length of a scope.
#pragma once

#include <orvix/core/export.h>
#include <orvix/core/path.h>

#include <cstdio>
#include <string>

namespace orvix {

/// Makes an empty file under a name that nobody else has or can guess, readable and writable by its owner alone, and
/// removes what is left of it at the end of the scope.
class ORVIX_CORE_API TemporaryFile {
public:
    /// @param prefix     how the name begins. With a directory in front the file is made there, otherwise in the
    ///                   system's directory for temporary files.
    /// @param extension  how the name ends, with or without its dot; may be empty
    TemporaryFile(const std::string& prefix, const std::string& extension);
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    /// The file's name; empty if it could not be made.
    const Path& path() const { return path_; }

    /// A stream on the file, open since it was made, for writing and reading from the start. It belongs to this object,
    /// which closes it.
    /// @return the same stream each time; null if the file could not be made, or without memory
    std::FILE* stream();

private:
    Path path_;
    int descriptor_ = -1;  // until a stream has taken it over
    std::FILE* stream_ = nullptr;
};

}  // namespace orvix
