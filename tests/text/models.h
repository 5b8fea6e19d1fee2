// Slow, obvious models of the operations on strings. The tests compare the library with them on random texts, the
// fuzz targets on whatever they find.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

namespace orvix::test::model {

inline unsigned char lower(char c) { return static_cast<unsigned char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c); }

inline std::string lower(std::string text) {
    for (char& c : text) c = static_cast<char>(lower(c));
    return text;
}

inline bool digit(char c) { return std::string("0123456789").find(c) != std::string::npos; }

inline int sign(int number) { return number > 0 ? 1 : number < 0 ? -1 : 0; }

// A column of exactly `width` bytes.
inline std::string column(const std::string& text, std::size_t width) {
    return (text + std::string(width, ' ')).substr(0, width);
}

inline std::string left_justified(std::string text, std::size_t width) {
    while (text.starts_with(' ')) text.erase(0, 1);
    return column(text, width);
}

inline std::string right_justified(std::string text, std::size_t width) {
    while (text.size() < width) text.insert(0, " ");
    return text.substr(0, width);
}

inline std::string stripped(std::string text) {
    while (text.starts_with(' ')) text.erase(0, 1);
    while (text.ends_with(' ')) text.pop_back();
    return text;
}

// The difference of the first two bytes that differ in lower case; the end of a text counts as a zero byte.
inline int caseless_difference(const std::string& a, const std::string& b) {
    for (std::size_t i = 0; i < a.size() || i < b.size(); ++i) {
        const int first = i < a.size() ? lower(a[i]) : 0;
        const int second = i < b.size() ? lower(b[i]) : 0;
        if (first != second) return first - second;
    }
    return 0;
}

inline std::size_t find_caseless(const std::string& hay, const std::string& needle) {
    return lower(hay).find(lower(needle));
}

// What stands from `at` on up to the first byte that is no digit.
inline std::string digits_at(const std::string& text, std::size_t at) {
    std::string result;
    for (; at < text.size() && digit(text[at]); ++at) result += text[at];
    return result;
}

// At every step afresh: numbers decide if the texts behind them are equal, else single bytes do.
inline int natural_order(const std::string& a, const std::string& b) {
    const auto compare = [](auto x, auto y) { return x > y ? 1 : x < y ? -1 : 0; };
    const int by_length = compare(a.size(), b.size());
    for (std::size_t i = 0; i < a.size() && i < b.size(); ++i) {
        if (digit(a[i]) && digit(b[i])) {
            std::string first = digits_at(a, i);
            std::string second = digits_at(b, i);
            if (a.substr(i + first.size()) == b.substr(i + second.size())) {
                const std::size_t width = std::max(first.size(), second.size());
                first.insert(0, width - first.size(), '0');
                second.insert(0, width - second.size(), '0');
                return first != second ? compare(first, second) : by_length;
            }
        }
        const auto weight = [](char c) { return lower(c) + (digit(c) ? 500 : 0); };
        if (weight(a[i]) != weight(b[i])) return compare(weight(a[i]), weight(b[i]));
    }
    return by_length;
}

struct Line {
    std::string line;
    std::size_t rest;  // position behind what was taken; npos if it was the last line
};

inline Line first_line(const std::string& text, std::size_t most) {
    Line result{"", std::string::npos};
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (result.line.size() > most) return {result.line.substr(0, most), i};
        if (text[i] == '\n') return {result.line, i + 1};
        result.line += text[i];
    }
    if (result.line.size() > most) return {result.line.substr(0, most), text.size()};
    return result;
}

}  // namespace orvix::test::model
