// Settings in memory: looking up, storing, removing.

#include "support/temp_site.h"

#include <orvix/gsl/environment.h>

#include <gtest/gtest.h>

#include <array>
#include <string>

using orvix::test::entry_of;
using orvix::test::setting;
using orvix::test::TempSite;

namespace {

constexpr auto unknown_level = static_cast<EnvlocE>(77);

// An environment without files.
class Store : public testing::Test {
protected:
    TempSite site;
    eeEnv* env = gui_env_open("demo", ENVLOC_ANY);
};

using GuiEnvGet = Store;
using GuiEnvPut = Store;
using GuiEnvRm = Store;
using GuiEnvExists = Store;

std::string numbered(int i) { return "KEY_" + std::to_string(i); }

}  // namespace

TEST_F(GuiEnvGet, ValueOfThreeIntoSizeThreeReturnsFourAndWritesNothing) {
    gui_env_put(env, "NAME", "abc", ENVLOC_ANY);
    int marker = 0;
    env->cwd.entries[0].aux = &marker;
    char buffer[8] = "before";
    void* aux = nullptr;
    EXPECT_EQ(gui_env_get(env, "NAME", buffer, &aux, 3, ENVLOC_ANY), 4);
    EXPECT_STREQ(buffer, "before");
    EXPECT_EQ(aux, nullptr);
}

TEST_F(GuiEnvGet, ValueOfThreeFitsInFour) {
    gui_env_put(env, "NAME", "abc", ENVLOC_ANY);
    char buffer[4] = "...";
    EXPECT_EQ(gui_env_get(env, "NAME", buffer, nullptr, 4, ENVLOC_ANY), 0);
    EXPECT_STREQ(buffer, "abc");
}

TEST_F(GuiEnvGet, SizeZeroTakesNotEvenTheEmptyValue) {
    gui_env_put(env, "NAME", "", ENVLOC_ANY);
    char buffer = '.';
    EXPECT_EQ(gui_env_get(env, "NAME", &buffer, nullptr, 0, ENVLOC_ANY), 1);
    EXPECT_EQ(buffer, '.');
}

TEST_F(GuiEnvGet, WithoutBufferReturnsZeroWhateverTheSizeAndReportsAux) {
    gui_env_put(env, "NAME", "a value of some length", ENVLOC_ANY);
    int marker = 0;
    env->cwd.entries[0].aux = &marker;
    for (const std::size_t size : {0u, 1u, 1000u}) {
        void* aux = nullptr;
        EXPECT_EQ(gui_env_get(env, "NAME", nullptr, &aux, size, ENVLOC_ANY), 0);
        EXPECT_EQ(aux, &marker);
    }
}

TEST_F(GuiEnvGet, NothingIsFoundInNoEnvironmentOrUnderNoName) {
    char buffer[8] = "before";
    EXPECT_EQ(gui_env_get(nullptr, "NAME", buffer, nullptr, sizeof buffer, ENVLOC_ANY), -1);
    EXPECT_EQ(gui_env_get(env, nullptr, buffer, nullptr, sizeof buffer, ENVLOC_ANY), -1);
    EXPECT_EQ(gui_env_get(env, "", buffer, nullptr, sizeof buffer, ENVLOC_ANY), -1);
    EXPECT_EQ(gui_env_get(env, "NAME", buffer, nullptr, sizeof buffer, ENVLOC_ANY), -1);
    EXPECT_STREQ(buffer, "before");
}

TEST_F(GuiEnvGet, LetterCaseOfNamesPlaysNoPart) {
    gui_env_put(env, "Tool_Root[0]`~", "x", ENVLOC_ANY);
    EXPECT_STREQ(env->cwd.entries[0].key, "TOOL_ROOT[0]`~");
    EXPECT_EQ(setting(env, "tOOL_rOOT[0]`~"), "x");
}

TEST_F(GuiEnvGet, OnlyAsciiLettersFold) {
    gui_env_put(env, "stra\xc3\x9f\xe2{z", "x", ENVLOC_ANY);
    EXPECT_STREQ(env->cwd.entries[0].key, "STRA\xc3\x9f\xe2{Z");
    EXPECT_EQ(setting(env, "stra\xc3\x9f\xc2{z"), std::nullopt);
}

TEST_F(GuiEnvGet, NameOfSeventyBytesAndItsFirstSixtyThreeAreOneName) {
    const std::string longer(70, 'n');
    const std::string cut(63, 'N');
    gui_env_put(env, longer.c_str(), "x", ENVLOC_ANY);
    EXPECT_EQ(env->cwd.entries[0].key, cut);
    EXPECT_EQ(setting(env, cut.c_str()), "x");
    EXPECT_EQ(setting(env, (cut + "other").c_str()), "x");
    EXPECT_EQ(setting(env, cut.substr(1).c_str()), std::nullopt);
}

TEST_F(GuiEnvGet, NearerLevelsHideFartherOnes) {
    gui_env_put(env, "K", "system", ENVLOC_SYSTEM);
    EXPECT_EQ(setting(env, "K"), "system");
    gui_env_put(env, "K", "custom", ENVLOC_CUSTOM);
    EXPECT_EQ(setting(env, "K"), "custom");
    gui_env_put(env, "K", "user", ENVLOC_USER);
    EXPECT_EQ(setting(env, "K"), "user");
    gui_env_put(env, "K", "cwd", ENVLOC_CWD);
    EXPECT_EQ(setting(env, "K"), "cwd");
}

TEST_F(GuiEnvGet, LevelsCanBeAskedOneByOne) {
    gui_env_put(env, "K", "system", ENVLOC_SYSTEM);
    gui_env_put(env, "K", "user", ENVLOC_USER);
    EXPECT_EQ(setting(env, "K", ENVLOC_CWD), std::nullopt);
    EXPECT_EQ(setting(env, "K", ENVLOC_USER), "user");
    EXPECT_EQ(setting(env, "K", ENVLOC_CUSTOM), std::nullopt);
    EXPECT_EQ(setting(env, "K", ENVLOC_SYSTEM), "system");
}

TEST_F(GuiEnvGet, FileAndUnknownLevelsSearchAll) {
    gui_env_put(env, "K", "system", ENVLOC_SYSTEM);
    for (const EnvlocE level : {ENVLOC_ANY, ENVLOC_FILE, unknown_level, static_cast<EnvlocE>(-1)}) {
        EXPECT_EQ(setting(env, "K", level), "system") << level;
    }
}

TEST_F(GuiEnvPut, UserSettingIsFoundUnlessTheWorkingDirectoryHoldsTheKey) {
    gui_env_put(env, "path", "x", ENVLOC_USER);
    EXPECT_EQ(setting(env, "PATH"), "x");
    gui_env_put(env, "path", "y", ENVLOC_CWD);
    EXPECT_EQ(setting(env, "PATH"), "y");
}

TEST_F(GuiEnvPut, AnyLevelChangesTheEntryWhereItStands) {
    gui_env_put(env, "K", "old", ENVLOC_SYSTEM);
    EXPECT_TRUE(gui_env_put(env, "K", "new", ENVLOC_ANY));
    EXPECT_EQ(setting(env, "K", ENVLOC_SYSTEM), "new");
    EXPECT_EQ(env->cwd.used, 0);
}

TEST_F(GuiEnvPut, NewKeysGoToTheTableOfTheirLevel) {
    gui_env_put(env, "ANY", "", ENVLOC_ANY);
    gui_env_put(env, "CWD", "", ENVLOC_CWD);
    gui_env_put(env, "USER", "", ENVLOC_USER);
    gui_env_put(env, "CUSTOM", "", ENVLOC_CUSTOM);
    gui_env_put(env, "SYSTEM", "", ENVLOC_SYSTEM);
    gui_env_put(env, "FILE", "", ENVLOC_FILE);
    gui_env_put(env, "UNKNOWN", "", unknown_level);
    for (const char* key : {"ANY", "CWD", "FILE", "UNKNOWN"}) EXPECT_NE(entry_of(env->cwd, key), nullptr) << key;
    EXPECT_NE(entry_of(env->user, "USER"), nullptr);
    EXPECT_NE(entry_of(env->custom, "CUSTOM"), nullptr);
    EXPECT_NE(entry_of(env->system, "SYSTEM"), nullptr);
}

TEST_F(GuiEnvPut, RefusesNoEnvironmentAndNoName) {
    EXPECT_FALSE(gui_env_put(nullptr, "K", "v", ENVLOC_ANY));
    EXPECT_FALSE(gui_env_put(env, nullptr, "v", ENVLOC_ANY));
    EXPECT_FALSE(gui_env_put(env, "", "v", ENVLOC_ANY));
    EXPECT_EQ(env->cwd.used, 0);
}

TEST_F(GuiEnvPut, NullValueOfAMissingKeyFails) {
    EXPECT_FALSE(gui_env_put(env, "K", nullptr, ENVLOC_ANY));
    EXPECT_EQ(env->cwd.used, 0);
}

TEST_F(GuiEnvPut, NullValueOfAnExistingKeyLeavesTheEntryWithoutValue) {
    gui_env_put_modnew(env, "K", "v", ENVLOC_ANY, ENVMOD_CLEAN);
    EXPECT_TRUE(gui_env_put(env, "K", nullptr, ENVLOC_ANY));
    EXPECT_EQ(env->cwd.entries[0].value, nullptr);
    EXPECT_EQ(env->cwd.entries[0].mod, ENVMOD_CHANGED);
    EXPECT_EQ(gui_env_get(env, "K", nullptr, nullptr, 0, ENVLOC_ANY), 0);
    EXPECT_EQ(setting(env, "K"), "");
}

TEST_F(GuiEnvPut, NullValueRevivesARemovedKey) {
    gui_env_put(env, "K", "v", ENVLOC_ANY);
    gui_env_rm(env, "K", ENVLOC_ANY);
    EXPECT_TRUE(gui_env_put(env, "K", nullptr, ENVLOC_ANY));
    EXPECT_EQ(env->cwd.entries[0].mod, ENVMOD_CHANGED);
    EXPECT_EQ(setting(env, "K"), "");
}

TEST_F(GuiEnvPut, KeyWithoutValueTakesANewOne) {
    gui_env_put(env, "K", "v", ENVLOC_ANY);
    gui_env_put(env, "K", nullptr, ENVLOC_ANY);
    EXPECT_TRUE(gui_env_put(env, "K", "w", ENVLOC_ANY));
    EXPECT_EQ(setting(env, "K"), "w");
}

TEST_F(GuiEnvPut, EmptyValueIsStoredAndReadAsEmpty) {
    EXPECT_TRUE(gui_env_put(env, "K", "", ENVLOC_ANY));
    ASSERT_NE(env->cwd.entries[0].value, nullptr);
    EXPECT_STREQ(env->cwd.entries[0].value, "");
    EXPECT_EQ(setting(env, "K"), "");
}

TEST_F(GuiEnvPut, ThirtyThirdKeyGrowsTheTableAndKeepsTheOthersInOrder) {
    for (int i = 0; i < 32; ++i) gui_env_put(env, numbered(i).c_str(), std::to_string(i).c_str(), ENVLOC_ANY);
    EXPECT_EQ(env->cwd.capacity, 32);
    gui_env_put(env, numbered(32).c_str(), "32", ENVLOC_ANY);
    EXPECT_EQ(env->cwd.capacity, 64);
    EXPECT_EQ(env->cwd.used, 33);
    for (int i = 0; i < 33; ++i) {
        EXPECT_EQ(env->cwd.entries[i].key, numbered(i));
        EXPECT_EQ(env->cwd.entries[i].value, std::to_string(i));
    }
    for (int i = 33; i < 64; ++i) EXPECT_STREQ(env->cwd.entries[i].key, "");
}

TEST_F(GuiEnvPut, CapacityIsAlwaysTheNextMultipleOfThirtyTwo) {
    for (int i = 0; i < 2000; ++i) {
        ASSERT_EQ(env->cwd.capacity, (i + 31) / 32 * 32);
        gui_env_put(env, numbered(i).c_str(), "", ENVLOC_ANY);
        ASSERT_EQ(env->cwd.used, i + 1);
    }
}

TEST_F(GuiEnvPut, ModeGivenCountsForNewEntriesAlone) {
    gui_env_put_modnew(env, "K", "v", ENVLOC_ANY, ENVMOD_CLEAN);
    EXPECT_EQ(env->cwd.entries[0].mod, ENVMOD_CLEAN);
    gui_env_put_modnew(env, "K", "w", ENVLOC_ANY, ENVMOD_CLEAN);
    EXPECT_EQ(env->cwd.entries[0].mod, ENVMOD_CHANGED);
}

TEST_F(GuiEnvPut, IncludedEntryStaysIncludedWhenOverwritten) {
    gui_env_put_modnew(env, "K", "v", ENVLOC_ANY, ENVMOD_INCLUDED);
    gui_env_put(env, "K", "w", ENVLOC_ANY);
    EXPECT_EQ(env->cwd.entries[0].mod, ENVMOD_INCLUDED);
    EXPECT_EQ(setting(env, "K"), "w");
    gui_env_put(env, "K", nullptr, ENVLOC_ANY);
    EXPECT_EQ(env->cwd.entries[0].mod, ENVMOD_INCLUDED);
}

TEST_F(GuiEnvPut, RevivesARemovedEntryInItsSlotWithoutItsUserPointer) {
    int marker = 0;
    gui_env_put(env, "A", "", ENVLOC_ANY);
    gui_env_put_modnew(env, "K", "v", ENVLOC_ANY, ENVMOD_INCLUDED);
    env->cwd.entries[1].aux = &marker;
    gui_env_rm(env, "K", ENVLOC_ANY);
    EXPECT_TRUE(gui_env_put(env, "K", "w", ENVLOC_ANY));
    EXPECT_STREQ(env->cwd.entries[1].key, "K");
    EXPECT_EQ(env->cwd.entries[1].mod, ENVMOD_CHANGED);
    EXPECT_EQ(env->cwd.entries[1].aux, nullptr);
    EXPECT_EQ(env->cwd.used, 2);
}

TEST_F(GuiEnvPut, KeepsTheUserPointerOfALivingEntry) {
    int marker = 0;
    gui_env_put(env, "K", "v", ENVLOC_ANY);
    env->cwd.entries[0].aux = &marker;
    gui_env_put(env, "K", "w", ENVLOC_ANY);
    EXPECT_EQ(env->cwd.entries[0].aux, &marker);
}

TEST_F(GuiEnvPut, RevivesTheNearestRemovedEntryBeforeALivingOneFartherOff) {
    gui_env_put(env, "K", "near", ENVLOC_CWD);
    gui_env_put(env, "K", "far", ENVLOC_SYSTEM);
    gui_env_rm(env, "K", ENVLOC_CWD);
    EXPECT_TRUE(gui_env_put(env, "K", "new", ENVLOC_ANY));
    EXPECT_EQ(setting(env, "K", ENVLOC_CWD), "new");
    EXPECT_EQ(setting(env, "K", ENVLOC_SYSTEM), "far");
}

TEST_F(GuiEnvPut, ValueMayBeAPieceOfTheValueItReplaces) {
    gui_env_put(env, "K", "a long value that will be cut short", ENVLOC_ANY);
    EXPECT_TRUE(gui_env_put(env, "K", env->cwd.entries[0].value + 7, ENVLOC_ANY));
    EXPECT_EQ(setting(env, "K"), "value that will be cut short");
}

TEST_F(GuiEnvPut, LongValuesComeBackWhole) {
    const std::string value(100'000, 'v');
    gui_env_put(env, "K", value.c_str(), ENVLOC_ANY);
    EXPECT_EQ(setting(env, "K"), value);
}

TEST_F(GuiEnvRm, RemovedSettingIsHiddenFromEveryRead) {
    gui_env_put(env, "K", "v", ENVLOC_ANY);
    char name[] = "k";
    EXPECT_TRUE(gui_env_rm(env, name, ENVLOC_ANY));
    EXPECT_FALSE(gui_env_exists(env, name, ENVLOC_ANY));
    EXPECT_EQ(gui_env_get(env, name, nullptr, nullptr, 0, ENVLOC_ANY), -1);
    EXPECT_FALSE(gui_env_rm(env, name, ENVLOC_ANY));
}

TEST_F(GuiEnvRm, KeepsSlotAndValue) {
    gui_env_put(env, "K", "v", ENVLOC_ANY);
    gui_env_rm(env, "K", ENVLOC_ANY);
    EXPECT_EQ(env->cwd.used, 1);
    EXPECT_EQ(env->cwd.entries[0].mod, ENVMOD_REMOVED);
    EXPECT_STREQ(env->cwd.entries[0].value, "v");
}

TEST_F(GuiEnvRm, RemovesTheNearestLevelAndShowsTheNext) {
    gui_env_put(env, "K", "far", ENVLOC_CUSTOM);
    gui_env_put(env, "K", "near", ENVLOC_USER);
    EXPECT_TRUE(gui_env_rm(env, "K", ENVLOC_ANY));
    EXPECT_EQ(setting(env, "K"), "far");
}

TEST_F(GuiEnvRm, RemovesFromTheLevelAskedFor) {
    gui_env_put(env, "K", "far", ENVLOC_CUSTOM);
    gui_env_put(env, "K", "near", ENVLOC_USER);
    EXPECT_TRUE(gui_env_rm(env, "K", ENVLOC_CUSTOM));
    EXPECT_EQ(setting(env, "K"), "near");
    EXPECT_FALSE(gui_env_rm(env, "K", ENVLOC_CUSTOM));
}

TEST_F(GuiEnvRm, NothingToRemove) {
    EXPECT_FALSE(gui_env_rm(nullptr, "K", ENVLOC_ANY));
    EXPECT_FALSE(gui_env_rm(env, nullptr, ENVLOC_ANY));
    EXPECT_FALSE(gui_env_rm(env, "", ENVLOC_ANY));
    EXPECT_FALSE(gui_env_rm(env, "K", ENVLOC_ANY));
}

TEST_F(GuiEnvExists, TellsWhetherASettingIsThere) {
    char name[] = "name";
    char nothing[] = "";
    EXPECT_FALSE(gui_env_exists(env, name, ENVLOC_ANY));
    gui_env_put(env, name, "", ENVLOC_USER);
    EXPECT_TRUE(gui_env_exists(env, name, ENVLOC_ANY));
    EXPECT_FALSE(gui_env_exists(env, name, ENVLOC_CWD));
    EXPECT_FALSE(gui_env_exists(env, nothing, ENVLOC_ANY));
    EXPECT_FALSE(gui_env_exists(env, nullptr, ENVLOC_ANY));
    EXPECT_FALSE(gui_env_exists(nullptr, name, ENVLOC_ANY));
}

TEST_F(GuiEnvExists, LongValueExistsToo) {
    char name[] = "K";
    gui_env_put(env, name, std::string(100, 'v').c_str(), ENVLOC_ANY);
    EXPECT_TRUE(gui_env_exists(env, name, ENVLOC_ANY));
}

TEST(MasterCalls, BringTheMasterUp) {
    const TempSite site;
    site.write("work/hxorvix.cfg", "K=from file\n");
    char buffer[20];
    EXPECT_EQ(gui_env_get_ee("k", buffer, nullptr, sizeof buffer, ENVLOC_ANY), 0);
    EXPECT_STREQ(buffer, "from file");
}

TEST(MasterCalls, PutAndRemoveWorkOnTheMaster) {
    const TempSite site;
    char buffer[20];
    EXPECT_TRUE(gui_env_put_ee("K", "v", ENVLOC_USER));
    EXPECT_EQ(gui_env_get_ee("K", buffer, nullptr, sizeof buffer, ENVLOC_USER), 0);
    EXPECT_STREQ(buffer, "v");
    EXPECT_TRUE(gui_env_rm_ee("K", ENVLOC_ANY));
    EXPECT_EQ(gui_env_get_ee("K", buffer, nullptr, sizeof buffer, ENVLOC_ANY), -1);
}

TEST(MasterCalls, RemoveBringsTheMasterUp) {
    const TempSite site;
    site.write("work/hxorvix.cfg", "K=from file\n");
    EXPECT_TRUE(gui_env_rm_ee("K", ENVLOC_ANY));
}

TEST(MasterCalls, OtherEnvironmentsAreNotTheMaster) {
    const TempSite site;
    eeEnv* env = gui_env_open("demo", ENVLOC_ANY);
    gui_env_put(env, "K", "v", ENVLOC_ANY);
    EXPECT_EQ(gui_env_get_ee("K", nullptr, nullptr, 0, ENVLOC_ANY), -1);
}

TEST(ResourceLimits, ArePlaceholders) {
    EXPECT_EQ(gui_env_getrlimit(3), 1);
    EXPECT_TRUE(gui_env_setrlimit(3, 4));
    EXPECT_TRUE(gui_env_setrlimit_max(3));
}
