// The same searches by the library and by a peer.
#include "text/regexp_peer.h"

#include <gtest/gtest.h>
#include <support/buffer.h>
#include <support/random_text.h>
#include <support/regexp_match_model.h>
#include <support/regexp_pattern_model.h>
#include <support/regexp_random.h>
#include <support/regexp_record.h>

#include <cstddef>
#include <iterator>
#include <optional>
#include <string>

using namespace orvix::test;
using namespace orvix::test::regexp;

namespace {

bool is_pattern(const std::string& pattern) {
    try {
        PatternReader(pattern).read();
        return true;
    } catch (const PatternError&) {
        return false;
    }
}

}  // namespace

TEST(RegexpPeer, FindsTheSameOnRandomPatternsAndSubjects) {
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
TEST(RegexpPeer, FindsAllTheSameInLongSubjects) {
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
            std::optional<Places> expected;
            try {
                expected = peer.search(subject.substr(at));
            } catch (const TooLong&) {
                break;
            }
            ASSERT_EQ(record.search(buffer.get() + at), expected);
            if (!expected) break;
            at += expected->at(0)->second + (expected->at(0)->second == 0 ? 1 : 0);
            ++matches;
        }
    }
    EXPECT_GT(matches, 50000);
}

TEST(RegexpPeer, FindsTheSameInLinesOfABoardFile) {
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
