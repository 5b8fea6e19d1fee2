// Random patterns and subjects over few letters, so that matches, repeats and ambiguities are common.
#pragma once

#include "support/random_text.h"

#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>

namespace orvix::test::regexp {

class RandomPattern {
public:
    explicit RandomPattern(unsigned seed) : random_(seed) {}

    RandomText& random() { return random_; }

    // Of the language but for what only the parser can tell: too many groups, and repeats of what may be empty.
    std::string pattern(std::size_t depth = 3) {
        std::string text = row(depth);
        while (random_.number(3) == 0) text += '|' + row(depth);
        return text;
    }

    // Any bytes that mean something, mostly wrong as a pattern.
    std::string jumble() { return random_.text("ab^$.[]()|?+*\\-", 12); }

    std::string subject(std::size_t most = 14) { return random_.text("aaabbbc-]", most); }

private:
    std::string row(std::size_t depth) {
        std::string text;
        for (std::size_t i = random_.number(3); i > 0; --i) text += piece(depth);
        return text;
    }

    std::string piece(std::size_t depth) {
        const std::string repeats = "*+?";
        std::string text = atom(depth);
        if (random_.number(2) == 0) text += repeats[random_.number(2)];
        return text;
    }

    std::string atom(std::size_t depth) {
        switch (random_.number(depth > 0 ? 11 : 7)) {
            case 0:
                return ".";
            case 1:
                return set();
            case 2:
                return random_.number(3) == 0 ? "^" : "b";
            case 3:
                return random_.number(3) == 0 ? "$" : "a";
            case 4:
                return random_.coin() ? "\\a" : "\\b";
            case 5:
            case 6:
            case 7:
                return "a" + random_.text("abc", 2);
            default:
                return '(' + pattern(depth - 1) + ')';
        }
    }

    std::string set() {
        const std::string_view sets[] = {"[ab]", "[^a]", "[a-c]", "[]a]", "[^]b]", "[-a]", "[a-]", "[c]", "[^-c]"};
        return std::string(sets[random_.number(std::size(sets) - 1)]);
    }

    RandomText random_;
};

}  // namespace orvix::test::regexp
