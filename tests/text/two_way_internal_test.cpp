#include "text/two_way.h"

#include <gtest/gtest.h>
#include <support/random_text.h>

#include <string>

using namespace orvix::test;

namespace {

std::size_t find(const std::string& hay, const std::string& needle) {
    const auto hit = orvix::gsl::text::find_two_way([&](std::size_t n) { return n <= hay.size(); },
                                                    [&](std::size_t i) { return hay.at(i); }, needle.size(),
                                                    [&](std::size_t i) { return needle.at(i); });
    return hit.value_or(std::string::npos);
}

// The texts over two letters in order of length; the number without its highest bit.
std::string nth_text(unsigned n) {
    std::string text;
    for (; n > 1; n /= 2) text += "ab"[n % 2];
    return text;
}

}  // namespace

TEST(FindTwoWay, AgreesWithTheStandardLibraryOnAllShortTexts) {
    for (unsigned h = 1; h < 1U << 13; ++h) {
        const std::string hay = nth_text(h);
        for (unsigned n = 2; n < 1U << 8; ++n) {
            const std::string needle = nth_text(n);
            ASSERT_EQ(find(hay, needle), hay.find(needle)) << hay << ' ' << needle;
        }
    }
}

TEST(FindTwoWay, AgreesWithTheStandardLibraryOnRandomPeriodicTexts) {
    for (unsigned seed = 0; seed < 20000; ++seed) {
        SCOPED_TRACE(seed);
        RandomText random(seed);
        const std::string period = 'a' + random.text("abc", 7);
        std::string hay;
        while (hay.size() < 120) hay += random.number(7) == 0 ? random.text("abc", 3) : period;
        std::string needle = hay.substr(random.number(60), 1 + random.number(40));
        if (random.coin()) needle[random.number(needle.size() - 1)] = 'c';
        ASSERT_EQ(find(hay, needle), hay.find(needle)) << hay << ' ' << needle;
    }
}
