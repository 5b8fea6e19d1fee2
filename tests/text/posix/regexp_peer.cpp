#include "text/regexp_peer.h"

#include <stdexcept>
#include <string_view>

#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>

namespace orvix::test::regexp {

namespace {

// The pattern as PCRE2 spells it: its escapes mean more, its sets know escapes, its "$" allows for a line feed, and
// its anchors cannot be repeated.
std::string translated(const std::string& pattern) {
    std::string text;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const char c = pattern[i];
        if (c == '\\') {
            const char literal = pattern[++i];
            text += std::string_view("^$.[()|?+*\\{").find(literal) != std::string_view::npos ? "\\" : "";
            text += literal;
        } else if (c == '$') {
            text += "(?:\\z)";
        } else if (c == '^') {
            text += "(?:^)";
        } else if (c == '[') {
            text += c;
            if (pattern[i + 1] == '^') text += pattern[++i];
            do text += pattern[++i] == '\\' ? "\\\\" : std::string(1, pattern[i]);
            while (pattern[i + 1] != ']');
            text += pattern[++i];
        } else {
            text += c == '{' ? "\\{" : std::string(1, c);
        }
    }
    return text;
}

struct Release {
    void operator()(pcre2_code* code) const { pcre2_code_free(code); }
    void operator()(pcre2_match_data* match) const { pcre2_match_data_free(match); }
};

}  // namespace

struct Peer::State {
    std::unique_ptr<pcre2_code, Release> code;
    std::unique_ptr<pcre2_match_data, Release> match;
};

Peer::Peer(const std::string& pattern) : state_(new State) {
    int error = 0;
    PCRE2_SIZE offset = 0;
    const std::string text = translated(pattern);
    state_->code.reset(
        pcre2_compile(reinterpret_cast<PCRE2_SPTR>(text.data()), text.size(), PCRE2_DOTALL, &error, &offset, nullptr));
    if (state_->code == nullptr) throw std::runtime_error("PCRE2 does not know " + text);
    state_->match.reset(pcre2_match_data_create_from_pattern(state_->code.get(), nullptr));
}

Peer::~Peer() = default;

std::optional<Places> Peer::search(const std::string& subject) const {
    const int count = pcre2_match(state_->code.get(), reinterpret_cast<PCRE2_SPTR>(subject.data()), subject.size(), 0,
                                  0, state_->match.get(), nullptr);
    if (count == PCRE2_ERROR_NOMATCH) return std::nullopt;
    if (count == PCRE2_ERROR_MATCHLIMIT) throw TooLong();
    if (count < 0) throw std::runtime_error("PCRE2 fails");
    const PCRE2_SIZE* const offsets = pcre2_get_ovector_pointer(state_->match.get());
    Places places;
    for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
        if (offsets[2 * i] != PCRE2_UNSET) places.at(i) = {offsets[2 * i], offsets[2 * i + 1]};
    }
    return places;
}

}  // namespace orvix::test::regexp
