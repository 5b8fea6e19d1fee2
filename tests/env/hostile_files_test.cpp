// Files that no editor would write: loading takes what it can and never fails.

#include "support/random_text.h"
#include "support/temp_site.h"

#include <orvix/gsl/environment.h>

#include <gtest/gtest.h>

#include <string>

using orvix::test::RandomText;
using orvix::test::setting;
using orvix::test::TempSite;

TEST(HostileFile, DirectoryInPlaceOfALevelsFile) {
    const TempSite site;
    site.write("work/demo.cfg/file", "A=1\n");
    eeEnv* env = gui_env_open("demo", ENVLOC_CWD);
    ASSERT_NE(env, nullptr);
    EXPECT_EQ(env->cwd.used, 0);
    EXPECT_STREQ(env->cwd.path, "demo.cfg");
}

TEST(HostileFile, EmptyFile) {
    const TempSite site;
    EXPECT_EQ(site.open("demo", "")->cwd.used, 0);
}

TEST(HostileFile, NothingButNulBytes) {
    const TempSite site;
    EXPECT_EQ(site.open("demo", std::string(1'000'000, '\0'))->cwd.used, 0);
}

TEST(HostileFile, NothingButNewlines) {
    const TempSite site;
    EXPECT_EQ(site.open("demo", std::string(1'000'000, '\n'))->cwd.used, 0);
}

TEST(HostileFile, OneLineOfThirtyMegabytes) {
    const TempSite site;
    const std::string value(30'000'000, 'v');
    eeEnv* env = site.open("demo", "A=" + value + "\nB=1\n");
    EXPECT_TRUE(setting(env, "A") == value);
    EXPECT_EQ(setting(env, "B"), "1");
}

TEST(HostileFile, MillionLines) {
    const TempSite site;
    std::string lines;
    for (int i = 0; i < 1'000'000; ++i) lines += "KEY_" + std::to_string(i % 5) + "=" + std::to_string(i) + "\n";
    eeEnv* env = site.open("demo", lines);
    EXPECT_EQ(env->cwd.used, 5);
    EXPECT_EQ(setting(env, "KEY_4"), "999999");
}

TEST(HostileFile, RandomBytes) {
    for (unsigned seed = 1; seed <= 20; ++seed) {
        SCOPED_TRACE(seed);
        const TempSite site;
        RandomText random(seed);
        std::string bytes(100'000, '\0');
        for (char& c : bytes) c = static_cast<char>(random.number(255));
        eeEnv* env = site.open("demo", bytes);
        gui_env_put(env, "STILL_ALIVE", "yes", ENVLOC_ANY);
        EXPECT_EQ(setting(env, "STILL_ALIVE"), "yes");
    }
}

TEST(HostileFile, ValueCutInTheMiddleIsTakenAsItIs) {
    const TempSite site;
    EXPECT_EQ(setting(site.open("demo", "A=1\nB=half a val"), "B"), "half a val");
}
