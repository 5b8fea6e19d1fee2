// Systems that run short of something, for the length of a scope.
#pragma once

#include <cstddef>

namespace orvix::test {

// False where memory cannot be limited: the address sanitizer takes more address space than any limit allows.
extern const bool memory_can_be_limited;

// Allows this process only so many bytes beyond what it has.
class MemoryLimit {
public:
    explicit MemoryLimit(std::size_t more_bytes);
    ~MemoryLimit();
    MemoryLimit(const MemoryLimit&) = delete;
    MemoryLimit& operator=(const MemoryLimit&) = delete;

    // Takes all that is left in blocks of `smallest` bytes and more, and keeps it.
    void use_up(std::size_t smallest);

private:
    std::size_t before_ = 0;
};

// No file that the library writes may grow beyond so many bytes: what is written beyond fails as on a full disk.
class FileSizeLimit {
public:
    explicit FileSizeLimit(std::size_t bytes);
    ~FileSizeLimit();
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

    // The errno of a write beyond the limit.
    static const int error;

private:
    std::size_t before_ = 0;
};

extern const bool open_files_are_limited;

// Allows this process only so many open files and directories, where the system has such a limit.
class OpenFileLimit {
public:
    explicit OpenFileLimit(std::size_t files);
    ~OpenFileLimit();
    OpenFileLimit(const OpenFileLimit&) = delete;
    OpenFileLimit& operator=(const OpenFileLimit&) = delete;

private:
    std::size_t before_ = 0;
};

}  // namespace orvix::test
