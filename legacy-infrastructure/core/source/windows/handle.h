// Owned handles of the system.
#pragma once

#include <utility>

#include <windows.h>

namespace orvix::core {

// Closing leaves the calling thread's last error alone.
class Handle {
public:
    Handle() = default;
    explicit Handle(HANDLE handle) : handle_(handle) {}
    Handle(Handle&& other) noexcept : handle_(other.release()) {}
    Handle& operator=(Handle&& other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }
    ~Handle() {
        if (!valid()) return;
        const DWORD saved = GetLastError();
        CloseHandle(handle_);
        SetLastError(saved);
    }

    bool valid() const { return handle_ != INVALID_HANDLE_VALUE; }
    HANDLE get() const { return handle_; }
    HANDLE release() { return std::exchange(handle_, INVALID_HANDLE_VALUE); }

private:
    HANDLE handle_ = INVALID_HANDLE_VALUE;
};

}  // namespace orvix::core
