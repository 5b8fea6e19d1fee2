// The same searches by the library and by PCRE2, whose language holds this one but for a few spellings.
#include <gtest/gtest.h>
#include <support/buffer.h>
#include <support/random_text.h>
#include <support/regexp_match_model.h>
#include <support/regexp_pattern_model.h>
#include <support/regexp_random.h>
#include <support/regexp_record.h>

#include <cstddef>
#include <iterator>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>

using namespace orvix::test;
using namespace orvix::test::regexp;

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

class Peer {
public:
    explicit Peer(const std::string& pattern) {
        int error = 0;
        PCRE2_SIZE offset = 0;
        const std::string text = translated(pattern);
        code_.reset(pcre2_compile(reinterpret_cast<PCRE2_SPTR>(text.data()), text.size(), PCRE2_DOTALL, &error, &offset,
                                  nullptr));
        if (code_ == nullptr) throw std::runtime_error("PCRE2 does not know " + text);
        match_.reset(pcre2_match_data_create_from_pattern(code_.get(), nullptr));
    }

    std::optional<Places> search(const std::string& subject) const {
        const int count = pcre2_match(code_.get(), reinterpret_cast<PCRE2_SPTR>(subject.data()), subject.size(), 0, 0,
                                      match_.get(), nullptr);
        if (count == PCRE2_ERROR_NOMATCH) return std::nullopt;
        if (count == PCRE2_ERROR_MATCHLIMIT) throw TooLong();
        if (count < 0) throw std::runtime_error("PCRE2 fails");
        const PCRE2_SIZE* const offsets = pcre2_get_ovector_pointer(match_.get());
        Places places;
        for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
            if (offsets[2 * i] != PCRE2_UNSET) places.at(i) = {offsets[2 * i], offsets[2 * i + 1]};
        }
        return places;
    }

private:
    struct Release {
        void operator()(pcre2_code* code) const { pcre2_code_free(code); }
        void operator()(pcre2_match_data* match) const { pcre2_match_data_free(match); }
    };

    std::unique_ptr<pcre2_code, Release> code_;
    std::unique_ptr<pcre2_match_data, Release> match_;
};

bool is_pattern(const std::string& pattern) {
    try {
        PatternReader(pattern).read();
        return true;
    } catch (const PatternError&) {
        return false;
    }
}

}  // namespace

TEST(Pcre2, FindsTheSameOnRandomPatternsAndSubjects) {
    RandomPattern source(7);
    int matches = 0;
    for (int i = 0; i < 6000; ++i) {
        const std::string pattern = source.pattern();
        SCOPED_TRACE(pattern);
        if (!is_pattern(pattern)) continue;
        const Record record(pattern);
        const Peer peer(pattern);
        for (int j = 0; j < 8; ++j) {
            const std::string subject = source.subject(40);
            SCOPED_TRACE(subject);
            std::optional<Places> expected;
            try {
                expected = peer.search(subject);
            } catch (const TooLong&) {
                continue;
            }
            ASSERT_EQ(record.search(subject), expected);
            matches += expected.has_value() ? 1 : 0;
        }
    }
    EXPECT_GT(matches, 10000);
}

// One match after the other, in memory of exactly the subject's size. Patterns of all the kinds that differ in how the
// places are found where a match may start.
TEST(Pcre2, FindsAllTheSameInLongSubjects) {
    const char* const patterns[] = {
        "Q",         "net",          "(ne)t",        "abcabcabcd", "[0-9]ohm",    "[a-z][a-z]Q", "[a-z]+ing",
        "[a-c]*net", "[0-9]+\\.",    "one|two|six",  "(ab|bc)n",   "Qa|Zb|Xc|Yd", "qa|zb|xc|yd", "on|off|no|yes|maybe",
        "[0-9]+",    "[xyz]",        "[A-Z][a-z]*",  "[^a-z]",     "[aeiou][^a]", "(a|b|[cd]e)", "[ab]?[0-9]",
        "x*Q",       "x*abn",        "a*b*[0-9]Q?",  ".Q",         "a+b",         "(a+b)+n",     "([a-c]+) of",
        "cab|cabin", "abcd|abce|ab", "[a-z]+[0-9]Q", "[ .]*Q$",    "[0-9]ohm|Q",  "(one|two)?Q",
    };
    const char* const words[] = {"a",   "b", "ab", "abc", "cab", "one",   "two ", "net", "1",    "47.11", "5ohm",
                                 "ing", "n", "Q",  "Qa",  "xc",  "maybe", " of ", ".",   "\xe4", "xx",    "bcn"};
    RandomText random(10);
    int matches = 0;
    for (int i = 0; i < 6000; ++i) {
        const char* const pattern = patterns[random.number(std::size(patterns) - 1)];
        SCOPED_TRACE(pattern);
        const Record record(pattern);
        const Peer peer(pattern);
        std::string subject;
        const bool is_dense = random.coin();
        for (std::size_t length = random.number(700); subject.size() < length;) {
            if (!is_dense) subject += std::string(random.number(200), random.coin() ? 'e' : ' ');
            subject += words[random.number(std::size(words) - 1)];
        }
        SCOPED_TRACE(subject);
        Buffer buffer(subject);
        for (std::size_t at = 0; at <= subject.size();) {
            const std::optional<Places> expected = peer.search(subject.substr(at));
            ASSERT_EQ(record.search(buffer.get() + at), expected);
            if (!expected) break;
            at += expected->at(0)->second + (expected->at(0)->second == 0 ? 1 : 0);
            ++matches;
        }
    }
    EXPECT_GT(matches, 50000);
}

TEST(Pcre2, FindsTheSameInLinesOfABoardFile) {
    const char* const patterns[] = {
        "^ *\\((pad|via|segment) ", "\\(at ([-0-9.]+) ([-0-9.]+)( [0-9]+)?\\)",
        "net [0-9]+ \"([^\"]*)\"",  "[A-Z]+[0-9]+",
        "([a-z_]+) ([0-9.]+)\\)*$", "\\(([a-z]+) \\(([a-z]+) .*\\)\\)$",
        "(F|B)\\.(Cu|Mask|Paste)",  "[^ ]+ [^ ]+$",
    };
    const char* const lines[] = {
        "  (net 12 \"/analog/VREF+\")",
        "  (segment (start 113.665 83.82) (end 113.665 86.995) (width 0.25) (layer F.Cu) (net 3))",
        "    (pad 1 smd rect (at -1.5 0 180) (size 1.2 0.9) (layers F.Cu F.Paste F.Mask) (net 5 \"Net-(C7-Pad1)\"))",
        "  (via (at 120.65 92.71) (size 0.8) (drill 0.4) (layers F.Cu B.Cu) (net 1))",
        "    (fp_text reference R101 (at 0 -1.43 90) (layer F.SilkS)",
        "(kicad_pcb (version 20171130) (host pcbnew 5.1.9))",
        "",
    };
    for (const char* pattern : patterns) {
        const Record record(pattern);
        const Peer peer(pattern);
        for (const char* line : lines) {
            SCOPED_TRACE(std::string(pattern) + " in " + line);
            EXPECT_EQ(record.search(std::string(line)), peer.search(line));
        }
    }
}
