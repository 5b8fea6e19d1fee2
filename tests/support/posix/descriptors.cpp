#include "support/descriptors.h"

#include <algorithm>
#include <filesystem>
#include <iterator>

#include <fcntl.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace orvix::test {

bool is_inherited(int descriptor) { return (fcntl(descriptor, F_GETFD) & FD_CLOEXEC) == 0; }

std::string bytes_at_start(int descriptor, std::size_t bytes) {
    std::string text(bytes, '?');
    const ssize_t read = pread(descriptor, text.data(), bytes, 0);
    text.resize(read > 0 ? static_cast<std::size_t>(read) : 0);
    return text;
}

bool write_bytes(int descriptor, const std::string& bytes) {
    return write(descriptor, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
}

void close_descriptor(int descriptor) { close(descriptor); }

std::ptrdiff_t open_files() { return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator()); }

std::ptrdiff_t inherited_files() {
    return std::count_if(
        fs::directory_iterator("/proc/self/fd"), fs::directory_iterator(),
        [](const fs::directory_entry& entry) { return is_inherited(std::stoi(entry.path().filename())); });
}

const char* const full_device = "C:\\dev\\full";

const char* const short_file = "C:\\sys\\kernel\\mm\\transparent_hugepage\\enabled";

}  // namespace orvix::test
