// How the report looks on a terminal: headings, aligned columns, names of files in a short form.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace workbench {

void print(std::string_view text);
void print_line(std::string_view text);

// A blank line, the title, and a rule under it.
void print_heading(std::string_view title);

// Every line of `text` at the same indentation; empty lines stay empty.
void print_indented(std::string_view text, std::size_t columns);

// Columns that UTF-8 text takes on a terminal: wide East Asian characters take two.
std::size_t display_width(std::string_view text);

// The text, and blanks up to `columns`.
std::string padded(std::string_view text, std::size_t columns);

// Rows under a line of titles. Columns are as wide as their widest cell; the last one is not padded.
class Table {
public:
    explicit Table(std::vector<std::string> titles) : rows_{std::move(titles)} {}

    void add(std::vector<std::string> cells) { rows_.push_back(std::move(cells)); }
    void print(std::size_t indentation) const;

private:
    std::vector<std::vector<std::string>> rows_;  // the titles first; all of one length
};

// Writes long directory names as short ones: `<home>` for the home directory and all that begins with it.
class ShortNames {
public:
    void add(std::string directory, std::string short_name);
    std::string shorten(std::string text) const;
    const std::vector<std::pair<std::string, std::string>>& all() const { return names_; }

private:
    std::vector<std::pair<std::string, std::string>> names_;
};

}  // namespace workbench
