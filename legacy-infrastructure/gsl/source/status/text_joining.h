// How texts of errors are joined.
#pragma once

#include <string>
#include <string_view>

namespace orvix::gsl {

// Appends `more`, with a newline before it unless `text` is empty or ends in one, or `more` begins with one. An empty
// `more` still gets its newline.
inline void append_on_new_line(std::string& text, std::string_view more) {
    if (!text.empty() && text.back() != '\n' && !more.starts_with('\n')) text += '\n';
    text += more;
}

inline std::string on_separate_lines(std::string_view first, std::string_view second) {
    std::string text(first);
    append_on_new_line(text, second);
    return text;
}

// Null counts as the empty text.
inline const char* text_or_empty(const char* text) { return text != nullptr ? text : ""; }

}  // namespace orvix::gsl
