// A growing text that lives on the stack as long as it is of a usual name's length.
#pragma once

#include <cstddef>
#include <cstring>
#include <memory>
#include <string_view>

namespace orvix::core {

// Invariant: `text_` points at `inline_` or at `heap_`, holds `size_` bytes and a zero byte behind them.
class NameBuffer {
public:
    NameBuffer() { inline_[0] = '\0'; }
    NameBuffer(const NameBuffer&) = delete;
    NameBuffer& operator=(const NameBuffer&) = delete;

    const char* c_str() const { return text_; }
    std::string_view view() const { return {text_, size_}; }
    std::size_t size() const { return size_; }
    bool ends_with(char c) const { return size_ > 0 && text_[size_ - 1] == c; }

    void assign(std::string_view text) {
        std::memcpy(grow_to(text.size()), text.data(), text.size());
        cut(text.size());
    }

    // Makes room for `size` bytes, keeps what is there, and gives the start of the text. cut() sets the length.
    char* grow_to(std::size_t size) {
        if (size < capacity_) return text_;
        auto larger = std::make_unique<char[]>(size + 1);
        std::memcpy(larger.get(), text_, size_);
        heap_ = std::move(larger);
        text_ = heap_.get();
        capacity_ = size + 1;
        return text_;
    }

    void cut(std::size_t size) {
        size_ = size;
        text_[size] = '\0';
    }

private:
    char inline_[296];
    std::unique_ptr<char[]> heap_;
    char* text_ = inline_;
    std::size_t size_ = 0;
    std::size_t capacity_ = sizeof inline_;
};

}  // namespace orvix::core
