// Small rules that all operations on byte strings share.
#pragma once

#include <orvix/gsl/status.h>

#include <cstddef>
#include <cstdlib>
#include <cstring>

namespace orvix::gsl::text {

constexpr char blank = ' ';  // and nothing else: a tab is none

constexpr bool is_digit(char c) { return c >= '0' && c <= '9'; }

constexpr char to_lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; }

constexpr char to_upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c; }

// The length of `s`, looked for in its first `limit` bytes only; `limit` if it does not end there.
inline std::size_t bounded_length(const char* s, std::size_t limit) {
    const void* end = std::memchr(s, '\0', limit);
    return end != nullptr ? static_cast<std::size_t>(static_cast<const char*>(end) - s) : limit;
}

// Moves `length` bytes, which may overlap their destination, and puts a zero byte behind them.
inline void move_text(char* to, const char* from, std::size_t length) {
    std::memmove(to, from, length);
    to[length] = '\0';
}

// Room on the heap for a text of `length` bytes and its zero byte. Does not return if memory is exhausted.
inline char* new_text(std::size_t length) {
    void* block = std::malloc(length + 1);
    if (block == nullptr) aerr_memory_error();
    return static_cast<char*>(block);
}

}  // namespace orvix::gsl::text
