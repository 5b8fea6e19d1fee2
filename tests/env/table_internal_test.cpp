// Tables at their limits.

#include "env/table.h"
#include "support/limits.h"

#include <orvix/gsl/environment.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <set>
#include <string>

using namespace orvix::gsl::env;

namespace {

bool put_cwd(eeEnv& env, const std::string& name, std::string_view value) {
    return put(env, FoldedName(name), value, ENVLOC_CWD, ENVMOD_CLEAN);
}

EnvEntry* find_cwd(eeEnv& env, const std::string& name) {
    return find(env, FoldedName(name), ENVLOC_CWD, Removed::included);
}

std::string numbered(int i) { return "SETTING_" + std::to_string(i); }

}  // namespace

TEST(FoldedNameText, TurnsEveryByteAsItsOwn) {
    for (int c = 1; c < 256; ++c) {
        // At each place of a word, and in the rest behind the last word.
        std::string name(11, static_cast<char>(c));
        const char expected = static_cast<char>(c >= 'a' && c <= 'z' ? c - 32 : c);
        EXPECT_EQ(FoldedName(name).key(), std::string(11, expected)) << c;
        name.resize(3);
        EXPECT_EQ(FoldedName(name.c_str()).key(), std::string(3, expected)) << c;
    }
}

TEST(FoldedNameText, IsCutToSixtyThreeBytes) {
    for (std::size_t length = 0; length <= 130; ++length) {
        const std::string name(length, 'x');
        const std::string expected(std::min<std::size_t>(length, 63), 'X');
        EXPECT_EQ(FoldedName(name).key(), expected);
        EXPECT_EQ(FoldedName(name.c_str()).key(), expected);
        EXPECT_STREQ(FoldedName(name).key().data(), expected.c_str());
    }
}

TEST(FoldedNameTag, IsTheSameForTheSameNameAndNeverZero) {
    std::set<std::uint16_t> tags;
    for (int i = 0; i < 100'000; ++i) {
        const FoldedName name(numbered(i));
        EXPECT_EQ(name.tag(), FoldedName("setting_" + std::to_string(i)).tag());
        tags.insert(name.tag());
    }
    EXPECT_FALSE(tags.contains(0));
    EXPECT_GT(tags.size(), 45'000u);  // of 65,535: a fair share for 100,000 names
}

TEST(FindFrom, GoesRoundFromTheHint) {
    eeEnv env{};
    for (int i = 0; i < 1000; ++i) put_cwd(env, numbered(i), "");
    for (const std::size_t start : {0u, 1u, 31u, 32u, 127u, 500u, 999u, 1000u, 5000u}) {
        for (const int i : {0, 1, 30, 31, 32, 126, 127, 128, 499, 500, 501, 998, 999}) {
            std::size_t hint = start;
            EXPECT_EQ(find_from(env.cwd, FoldedName(numbered(i)), &hint), &env.cwd.entries[i]);
            EXPECT_EQ(hint, static_cast<std::size_t>(i) + 1);
        }
        std::size_t hint = start;
        EXPECT_EQ(find_from(env.cwd, FoldedName("MISSING"), &hint), nullptr);
        EXPECT_EQ(hint, start);
        EXPECT_EQ(find_from(env.cwd, FoldedName(""), &hint), nullptr);
    }
    clear(env.cwd);
}

TEST(Find, SurvivesEntriesEditedByHand) {
    eeEnv env{};
    for (int i = 0; i < 40; ++i) put_cwd(env, numbered(i), "v");
    env.cwd.entries[3].key[0] = '\0';
    EXPECT_EQ(find_cwd(env, numbered(3)), nullptr);
    EXPECT_NE(find_cwd(env, numbered(4)), nullptr);
    EXPECT_TRUE(put_cwd(env, "NEW", "w"));
    EXPECT_NE(find_cwd(env, "NEW"), nullptr);
    clear(env.cwd);
}

TEST(Clear, LeavesAnEmptyTableWithItsPath) {
    eeEnv env{};
    put_cwd(env, "A", "v");
    env.cwd.path[0] = 'p';
    clear(env.cwd);
    clear(env.cwd);
    EXPECT_EQ(env.cwd.capacity, 0);
    EXPECT_EQ(env.cwd.used, 0);
    EXPECT_EQ(env.cwd.entries, nullptr);
    EXPECT_STREQ(env.cwd.path, "p");
    EXPECT_EQ(find_cwd(env, "A"), nullptr);
    EXPECT_TRUE(used_slots(env.cwd).empty());
}

TEST(TableWithoutMemory, KeepsWhatItHasAndRecovers) {
    if (!orvix::test::memory_can_be_limited) GTEST_SKIP() << "the sanitizer needs address space";
    eeEnv env{};
    put_cwd(env, numbered(0), "v");
    int count = 1;
    {
        const orvix::test::MemoryLimit limit(std::size_t{32} << 20);
        while (put_cwd(env, numbered(count), "v")) ++count;
        EXPECT_EQ(env.cwd.used, count);
        EXPECT_GT(env.cwd.capacity, count);  // raised all the same
        EXPECT_FALSE(put_cwd(env, "ONE_MORE", "v"));
        EXPECT_EQ(find_cwd(env, numbered(count)), nullptr);
        EXPECT_NE(find_cwd(env, numbered(count - 1)), nullptr);
    }
    EXPECT_GT(count, 1000);
    EXPECT_TRUE(put_cwd(env, "ONE_MORE", "v"));
    EXPECT_EQ(find_cwd(env, "ONE_MORE"), &env.cwd.entries[count]);
    clear(env.cwd);
}
