#include "text/regexp_needle.h"

#include <gtest/gtest.h>
#include <support/buffer.h>
#include <support/random_text.h>

#include <cstddef>
#include <string>

using namespace orvix::test;
using orvix::gsl::text::regexp::Needle;

namespace {

// The place of the needle at or behind a position; npos if there is none. The hay lies in memory of exactly its size.
std::size_t find(const std::string& hay, const std::string& needle, std::size_t from = 0) {
    Buffer buffer(hay);
    const char* const hit = Needle(needle).find(buffer.get() + from);
    return hit != nullptr ? static_cast<std::size_t>(hit - buffer.get()) : std::string::npos;
}

}  // namespace

TEST(RegexpNeedle, FindsAnyNeedleAnywhereInHaysOfAnyLength) {
    for (const std::string needle : {"z", "ez", "the", "e e", "q0q", "eee", "abcdefghijklmnopqrstuvwxyz"}) {
        for (std::size_t length = needle.size(); length < 300; ++length) {
            SCOPED_TRACE(needle + " in " + std::to_string(length));
            const std::size_t last = length - needle.size();
            for (const std::size_t at : {std::size_t{0}, last / 2, last}) {
                std::string hay(length, ' ');
                hay.replace(at, needle.size(), needle);
                ASSERT_EQ(find(hay, needle), at);
                ASSERT_EQ(find(hay, needle, at + 1), std::string::npos);
            }
        }
    }
}

TEST(RegexpNeedle, PassesOverPlacesOfItsRarestBytes) {
    for (std::size_t length = 0; length < 3000; length += 7) {
        SCOPED_TRACE(length);
        const std::string hay = std::string(length, 'q') + "iqeiq";
        ASSERT_EQ(find(hay, "qeiq"), length + 1);
        ASSERT_EQ(find(hay, "qeiqi"), std::string::npos);
    }
}

TEST(RegexpNeedle, FindsWhatStandsInRandomHays) {
    RandomText random(9);
    for (int i = 0; i < 20000; ++i) {
        const std::string alphabet = random.coin() ? "ab" : "etz";
        const std::string hay = random.text(alphabet, 400);
        std::string needle = random.text(alphabet, 6) + 'a';
        if (!hay.empty() && random.coin()) needle = hay.substr(random.number(hay.size() - 1), 1 + random.number(20));
        SCOPED_TRACE(needle + " in " + hay);
        ASSERT_EQ(find(hay, needle), hay.find(needle));
    }
}
