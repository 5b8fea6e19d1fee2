#include "report.h"

#include <algorithm>
#include <cstdio>

namespace workbench {

namespace {

// One character of UTF-8 text and the bytes it takes; a byte that begins no character counts as one by itself.
struct Character {
    char32_t code;
    std::size_t bytes;
};

Character first_character(std::string_view text) {
    const auto lead = static_cast<unsigned char>(text.front());
    const std::size_t bytes = lead < 0xC0 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    if (bytes == 1 || bytes > text.size()) return {lead, 1};
    char32_t code = lead & (0xFFu >> (bytes + 1));
    for (std::size_t i = 1; i < bytes; ++i) code = (code << 6) | (static_cast<unsigned char>(text[i]) & 0x3Fu);
    return {code, bytes};
}

// The blocks that terminals draw two columns wide: Hangul Jamo, CJK with its punctuation and kana, Hangul, full-width
// forms.
bool is_wide(char32_t code) {
    constexpr std::pair<char32_t, char32_t> blocks[] = {{0x1100, 0x115F}, {0x2E80, 0xA4CF},  {0xAC00, 0xD7A3},
                                                        {0xF900, 0xFAFF}, {0xFE30, 0xFE6F},  {0xFF00, 0xFF60},
                                                        {0xFFE0, 0xFFE6}, {0x20000, 0x3FFFD}};
    return std::any_of(std::begin(blocks), std::end(blocks),
                       [code](const auto& block) { return code >= block.first && code <= block.second; });
}

}  // namespace

void print(std::string_view text) { std::fwrite(text.data(), 1, text.size(), stdout); }

void print_line(std::string_view text) {
    print(text);
    print("\n");
}

void print_heading(std::string_view title) {
    print("\n");
    print_line(title);
    print_line(std::string(display_width(title), '-'));
}

void print_indented(std::string_view text, std::size_t columns) {
    for (;;) {
        const std::size_t end = text.find('\n');
        const std::string_view line = text.substr(0, end);
        if (!line.empty()) print(std::string(columns, ' '));
        print_line(line);
        if (end == std::string_view::npos) return;
        text.remove_prefix(end + 1);
    }
}

std::size_t display_width(std::string_view text) {
    std::size_t width = 0;
    while (!text.empty()) {
        const Character character = first_character(text);
        width += is_wide(character.code) ? 2u : 1u;
        text.remove_prefix(character.bytes);
    }
    return width;
}

std::string padded(std::string_view text, std::size_t columns) {
    const std::size_t width = display_width(text);
    return std::string(text) + std::string(columns > width ? columns - width : 0, ' ');
}

void Table::print(std::size_t indentation) const {
    std::vector<std::size_t> widths(rows_.front().size());
    for (const auto& row : rows_) {
        for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], display_width(row[i]));
    }
    for (const auto& row : rows_) {
        std::string line(indentation, ' ');
        for (std::size_t i = 0; i < row.size(); ++i) line += padded(row[i], widths[i]) + "  ";
        line.erase(line.find_last_not_of(' ') + 1);
        print_line(line);
    }
}

void ShortNames::add(std::string directory, std::string short_name) {
    names_.emplace_back(std::move(directory), std::move(short_name));
}

std::string ShortNames::shorten(std::string text) const {
    for (const auto& [directory, short_name] : names_) {
        for (std::size_t at = 0; (at = text.find(directory, at)) != std::string::npos; at += short_name.size()) {
            text.replace(at, directory.size(), short_name);
        }
    }
    return text;
}

}  // namespace workbench
