// Descriptors and open files of this process.
#pragma once

#include <cstddef>
#include <string>

namespace orvix::test {

// True if child processes get the descriptor.
bool is_inherited(int descriptor);

// So many bytes from the start of an open file, or as many as there are.
std::string bytes_at_start(int descriptor, std::size_t bytes);

bool write_bytes(int descriptor, const std::string& bytes);

void close_descriptor(int descriptor);

// How many files and directories this process has open; other things that the system counts with them included.
std::ptrdiff_t open_files();

// How many of them child processes get.
std::ptrdiff_t inherited_files();

// Name of a file that can be opened and never written, for the disk it lies on is full; in the library's form.
extern const char* const full_device;

// Name of a file that is shorter than the system says it is, which is 4096 bytes.
extern const char* const short_file;

}  // namespace orvix::test
