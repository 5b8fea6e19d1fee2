// Lists that want more memory than there is. POSIX, because the test must take memory away from its process; without
// the address sanitizer, because that reserves more than any limit allows.

#if !defined(_WIN32) && !defined(__SANITIZE_ADDRESS__)
#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ORVIX_TEST_MEMORY_CANNOT_BE_LIMITED
#endif
#endif
#else
#define ORVIX_TEST_MEMORY_CANNOT_BE_LIMITED
#endif

#ifndef ORVIX_TEST_MEMORY_CANNOT_BE_LIMITED

#include "messages/list.h"

#include <gtest/gtest.h>

#include <sys/resource.h>

#include <cstdlib>
#include <fstream>

namespace {

using orvix::test::List;
using orvix::test::numbers;

void allow_more_bytes(std::size_t bytes) {
    std::size_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    const rlimit limit{pages * 4096 + bytes, RLIM_INFINITY};
    if (setrlimit(RLIMIT_AS, &limit) != 0) std::_Exit(2);
}

void expect(bool condition, int status) {
    if (!condition) std::_Exit(status);
}

TEST(ExhaustedMemoryDeathTest, StoreFarBeyondMemoryFailsAndLeavesTheList) {
    EXPECT_EXIT(
        {
            List list(numbers(3));
            allow_more_bytes(std::size_t{1} << 30);
            expect(!list.put(4'294'967'294U, "x"), 3);
            expect(!list.set_length(4'294'967'295U), 4);
            expect(!list.move(0, 2'147'483'647), 5);
            expect(list.texts() == numbers(3), 6);
            std::_Exit(0);
        },
        testing::ExitedWithCode(0), "");
}

TEST(ExhaustedMemoryDeathTest, GrowthEndsAsFarAsMemoryWent) {
    EXPECT_EXIT(
        {
            List list(numbers(3));
            allow_more_bytes(std::size_t{4} << 20);
            expect(!list.set_length(1'000'000), 3);
            const int length = list.length();
            expect(length > 3 && length < 1'000'000, 4);
            expect(list.text(2) == "2" && list.text(static_cast<unsigned>(length) - 1).empty(), 5);
            expect(list.set_length(2) && list.texts() == numbers(2), 6);
            std::_Exit(0);
        },
        testing::ExitedWithCode(0), "");
}

TEST(ExhaustedMemoryDeathTest, StoreWithoutMemoryEmptiesTheRecord) {
    EXPECT_EXIT(
        {
            List list(numbers(3));
            std::string large(std::size_t{8} << 20, 'x');
            allow_more_bytes(std::size_t{1} << 20);
            expect(!glist_putrec(list.handle(), 1, large.data(), large.size()), 3);
            expect(list.text(0) == "0" && list.text(1).empty() && list.text(2) == "2", 4);
            std::_Exit(0);
        },
        testing::ExitedWithCode(0), "");
}

}  // namespace

#endif
