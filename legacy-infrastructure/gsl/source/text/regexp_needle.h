// A text to look for in subjects.
#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>

namespace orvix::gsl::text::regexp {

// Whether a text stands at a position of a subject. Reads no further than the first difference, which the subject's end
// always is.
inline bool stands_at(const char* at, std::string_view text) {
    for (const char c : text) {
        if (*at++ != c) return false;
    }
    return true;
}

class Needle {
public:
    Needle() = default;

    // The text is not empty, and must live as long as the needle.
    explicit Needle(std::string_view text);

    bool is_empty() const { return text_.empty(); }
    std::string_view text() const { return text_; }

    // Its first place from a position on; null if there is none.
    const char* find(const char* at) const {
        return text_.size() == 1 ? std::strchr(at, text_[0]) : is_rare_ ? find_rarest(at) : find_pair(at);
    }

private:
    const char* find_rarest(const char* at) const;
    const char* find_pair(const char* at) const;

    std::string_view text_;
    std::size_t rarest_ = 0;  // positions of the two bytes that are the rarest in usual texts
    std::size_t second_ = 0;
    bool is_rare_ = false;  // the first of them
};

}  // namespace orvix::gsl::text::regexp
