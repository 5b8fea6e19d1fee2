/// @file
/// A file of its own for the length of a scope.
#pragma once

#include <orvix/core/export.h>
#include <orvix/core/file.h>
#include <orvix/core/path.h>

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

    /// The file, open for reading and writing since it was made; not open if it could not be made.
    core::File& file() { return file_; }

private:
    Path path_;
    core::File file_;
};

}  // namespace orvix
