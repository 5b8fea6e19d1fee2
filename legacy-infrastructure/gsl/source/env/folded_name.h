// Names of settings as tables hold them.
#pragma once

#include <orvix/gsl/environment.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace orvix::gsl::env {

constexpr std::size_t longest_name = sizeof(EnvEntry::key) - 1;

// The name of a setting as tables hold it: cut to 63 bytes, `a` to `z` turned to upper case.
class FoldedName {
public:
    explicit FoldedName(const char* name);  // null counts as empty
    explicit FoldedName(std::string_view name);

    bool empty() const { return length_ == 0; }

    // The name; a zero byte stands behind it.
    std::string_view key() const { return {key_.data(), length_}; }

    // Sixteen bits made of the whole name, never 0, which is the tag of a free slot.
    std::uint16_t tag() const { return tag_; }

private:
    void fold(const char* name, std::size_t length);

    std::array<char, longest_name + 1> key_;
    std::size_t length_;
    std::uint16_t tag_;
};

}  // namespace orvix::gsl::env
