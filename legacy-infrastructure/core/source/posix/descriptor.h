// An owned file descriptor.
#pragma once

#include <cerrno>
#include <utility>

#include <unistd.h>

namespace orvix::core {

class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    ~Descriptor() {
        if (number_ == -1) return;
        const int saved = errno;
        ::close(number_);
        errno = saved;
    }

    bool valid() const { return number_ != -1; }
    int number() const { return number_; }
    int release() { return std::exchange(number_, -1); }

private:
    int number_ = -1;
};

}  // namespace orvix::core
