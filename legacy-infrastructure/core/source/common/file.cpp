#include <orvix/core/file.h>

#include <utility>

namespace orvix::core {

File::File(File&& other) noexcept
    : handle_(std::exchange(other.handle_, -1)), bytes_read_(other.bytes_read_), status_(other.status_) {}

File& File::operator=(File&& other) noexcept {
    std::swap(handle_, other.handle_);
    std::swap(bytes_read_, other.bytes_read_);
    std::swap(status_, other.status_);
    return *this;
}

}  // namespace orvix::core
