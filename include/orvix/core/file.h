/// @file
/// Files that are read and written without a buffer in between.
#pragma once

#include <orvix/core/export.h>
#include <orvix/core/file_status.h>
#include <orvix/core/path.h>

#include <cstddef>
#include <cstdint>

namespace orvix::core {

struct FileOpening;

/// An open file. Child processes do not inherit it, and a call that a signal interrupts is taken up again. Failing
/// calls leave the reason in `errno`. Belongs to one thread at a time.
class ORVIX_CORE_API File {
public:
    /// No file.
    File() = default;
    /// Closes the file, if one is open, and leaves `errno` alone.
    ~File();
    /// Takes another's file over, and leaves that one without.
    File(File&& other) noexcept;
    /// Takes another's file over in exchange for its own.
    File& operator=(File&& other) noexcept;
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    /// Opens a file to be read. Never waits for another process: a pipe that nobody writes to is opened all the same.
    /// @return a file that is not open if the system refuses; `errno` is `EISDIR` for a directory
    static File open_to_read(const Path& name);

    /// Opens a file to be written from its start, and makes it if it is missing, with the system's default mode. What
    /// an existing file holds stays until it is written over, or cut off with `shorten`.
    /// @return a file that is not open if the system refuses
    static File open_to_write(const Path& name);

    /// True if a file is open.
    bool is_open() const { return handle_ != -1; }

    /// What the system told of the file when it was opened. All zero for a file that is known to have been made then.
    const FileStatus& status() const { return status_; }

    /// True if both are one and the same file, under whatever names. A file that was just made is the same as no other.
    bool is_same_file(const File& other) const;

    /// Reads bytes from where the last call ended.
    /// @return how many there were: fewer than asked for at the end of the file, with `errno` untouched, and on failure
    std::size_t read(char* buffer, std::size_t bytes);

    /// Writes bytes from where the last call ended.
    /// @return how many were written: fewer than asked for on failure alone
    std::size_t write(const char* buffer, std::size_t bytes);

    /// Goes back to the start of the file, for reading and writing alike.
    /// @return true on success
    bool rewind();

    /// Cuts off what the file held beyond `bytes` when it was opened. A device or a pipe has nothing to cut off.
    /// @return true if nothing of it is left
    bool shorten(std::uint64_t bytes);

    /// Gives the file the access and the modification time of a status record, as exact as the record has them.
    /// @return true on success
    bool set_times(const FileStatus& status);

    /// Closes the file.
    /// @return false if the system reports a failure: what was written may be lost
    bool close();

private:
    friend struct FileOpening;

    std::intptr_t handle_ = -1;
    std::uint64_t bytes_read_ = 0;
    FileStatus status_{};
};

}  // namespace orvix::core
