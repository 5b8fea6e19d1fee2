// How common bytes are in the texts that applications search: prose, netlists, tables.
#pragma once

#include "text/regexp_byte_set.h"

#include <array>
#include <string_view>

namespace orvix::gsl::text::regexp {

// Of a thousand bytes of text, about so many are this one. Estimates, which decide about speed alone.
inline constexpr std::array<unsigned short, 256> frequency = [] {
    std::array<unsigned short, 256> table{};
    table.fill(1);
    const auto set = [&table](std::string_view bytes, unsigned short count) {
        for (const char c : bytes) table[static_cast<unsigned char>(c)] = count;
    };
    set(" ", 150);
    set("e", 80);
    set("taoins", 50);
    set("r", 45);
    set("ldhcu", 25);
    set("mpfgwyb", 15);
    set(".,\n01", 12);
    set("vk23456789", 7);
    set("()_\"-/=:", 5);
    set("ABCDEFGHIJKLMNOPQRSTUVWXYZ\t", 2);
    return table;
}();

constexpr unsigned frequency_of(char c) { return frequency[static_cast<unsigned char>(c)]; }

constexpr unsigned frequency_of(const ByteSet& set) {
    unsigned sum = 0;
    set.for_each([&sum](char c) { sum += frequency_of(c); });
    return sum;
}

}  // namespace orvix::gsl::text::regexp
