// What a save makes of a level's file.

#include "support/links.h"
#include "support/temp_site.h"
#include "support/temporary_place.h"

#include <orvix/gsl/environment.h>

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <string>

namespace fs = std::filesystem;

using orvix::test::make_link;
using orvix::test::setting;
using orvix::test::temporary_place;
using orvix::test::TempSite;

namespace {

constexpr const char* file = "work/demo.cfg";

void put(eeEnv* env, const char* name, const char* value) { gui_env_put(env, name, value, ENVLOC_CWD); }

// What becomes of a file after these changes and a save.
std::string saved(std::string_view before, const std::function<void(eeEnv*)>& change) {
    const TempSite site;
    eeEnv* env = site.open("demo", before);
    change(env);
    EXPECT_TRUE(gui_env_close(env, true));
    return site.read(file);
}

std::string with_nul(const char* before, const char* after) { return before + std::string(1, '\0') + after; }

}  // namespace

TEST(SavedFile, KeepsCommentsAndOrderAndGetsNewKeysAtItsEnd) {
    EXPECT_EQ(saved("# head\nfoo = 1\nbar=2\n",
                    [](eeEnv* env) {
                        put(env, "FOO", "3");
                        put(env, "NEW", "x");
                    }),
              "# head\nFOO=3\nBAR=2\nNEW=x\n");
}

TEST(SavedFile, LosesRemovedKeys) {
    EXPECT_EQ(saved("# head\nfoo = 1\nbar=2\n", [](eeEnv* env) { gui_env_rm(env, "bar", ENVLOC_ANY); }),
              "# head\nFOO=1\n");
}

TEST(SavedFile, KeyThatTheTableDoesNotHoldGainsAnEmptyLine) {
    const TempSite site;
    eeEnv* env = site.open("demo", "A=1\n");
    put(env, "A", "2");
    site.write(file, "a=1\nother = 5\n");
    EXPECT_TRUE(gui_env_close(env, true));
    EXPECT_EQ(site.read(file), "A=2\nOTHER=5\n\n");
}

TEST(SavedFile, UnknownKeyWithoutValueOrNewlineGainsNone) {
    const TempSite site;
    eeEnv* env = site.open("demo", "A=1\n");
    put(env, "A", "2");
    site.write(file, "a=1\nempty=  \nlast=5");
    EXPECT_TRUE(gui_env_close(env, true));
    EXPECT_EQ(site.read(file), "A=2\nEMPTY=\nLAST=5\n");
}

TEST(SavedFile, KeyLongerThanTablesHoldIsUnknown) {
    const std::string name(70, 'k');
    const std::string upper(70, 'K');
    EXPECT_EQ(saved(name + "=1\n", [&](eeEnv* env) { put(env, name.c_str(), "2"); }),
              upper + "=1\n\n" + upper.substr(0, 63) + "=2\n");
}

TEST(SavedFile, EmptyKeyIsUnknown) {
    EXPECT_EQ(saved("=x\nA=1\n", [](eeEnv* env) { put(env, "A", "2"); }), "=x\n\nA=2\n");
}

TEST(SavedFile, ShortLinesCommentsAndLinesWithoutEqualsAreCopied) {
    const std::string kept = "\n#\n# a = comment\nx\n// no key here\n+ include\njust words\n \t \n";
    EXPECT_EQ(saved(kept + "A=1\n", [](eeEnv* env) { put(env, "A", "2"); }), kept + "A=2\n");
}

TEST(SavedFile, SlashCommentAndIncludeWithEqualsAreKeys) {
    EXPECT_EQ(saved("// a = b\n+ inc # x = y\nA=1\n", [](eeEnv* env) { put(env, "A", "2"); }),
              "// A=b\n\n+ INC # X=y\n\nA=2\n");
}

TEST(SavedFile, IndentedKeyKeepsItsBlanks) {
    EXPECT_EQ(saved("  key = 1 \nA=1\n", [](eeEnv* env) { put(env, "A", "2"); }), "  KEY=1\nA=2\n");
}

TEST(SavedFile, UntouchedLinesLoseTheBlanksAroundTheirParts) {
    EXPECT_EQ(saved("key \t= \t a value \t \r\nA=1\n", [](eeEnv* env) { put(env, "A", "2"); }), "KEY=a value\nA=2\n");
}

TEST(SavedFile, UntouchedLineKeepsTheFilesOwnValue) {
    // The file was changed by somebody else in the meantime.
    const TempSite site;
    eeEnv* env = site.open("demo", "A=1\nB=1\n");
    put(env, "A", "2");
    site.write(file, "A=1\nB=theirs\n");
    EXPECT_TRUE(gui_env_close(env, true));
    EXPECT_EQ(site.read(file), "A=2\nB=theirs\n");
}

TEST(SavedFile, KeyThatStandsTwiceIsReplacedOnce) {
    // The first line takes the value of the table, which is the later one; the second keeps the file's.
    EXPECT_EQ(saved("A=1\nA=2\n", [](eeEnv* env) { put(env, "B", "x"); }), "A=2\nA=2\nB=x\n");
    EXPECT_EQ(saved("A=1\nA=2\n", [](eeEnv* env) { put(env, "A", "3"); }), "A=3\nA=2\n");
}

TEST(SavedFile, LastLineWithoutNewlineGetsOneIfItIsAKey) {
    EXPECT_EQ(saved("A=1\nB=2", [](eeEnv* env) { put(env, "A", "3"); }), "A=3\nB=2\n");
    EXPECT_EQ(saved("A=1\nwords", [](eeEnv* env) { put(env, "A", "3"); }), "A=3\nwords");
    EXPECT_EQ(saved("A=1\nwords", [](eeEnv* env) { put(env, "B", "3"); }), "A=1\nwordsB=3\n");
}

TEST(SavedFile, LineEndsAtItsNul) {
    EXPECT_EQ(saved(with_nul("A=1", "lost\nB=2\n"), [](eeEnv* env) { put(env, "B", "3"); }), "A=1\nB=3\n");
    EXPECT_EQ(saved(with_nul("words", "lost\nB=2\n"), [](eeEnv* env) { put(env, "B", "3"); }), "wordsB=3\n");
}

TEST(SavedFile, LongLinesStayWhole) {
    const std::string value(30'000, 'v');
    EXPECT_EQ(saved("LONG=" + value + "\nA=1\n", [](eeEnv* env) { put(env, "A", "2"); }), "LONG=" + value + "\nA=2\n");
    EXPECT_EQ(saved("# " + value + "\nA=1\n", [](eeEnv* env) { put(env, "A", "2"); }), "# " + value + "\nA=2\n");
}

TEST(SavedFile, IncludedEntriesAreNotAdded) {
    const TempSite site;
    site.write("work/inc.cfg", "I=1\n");
    eeEnv* env = site.open("demo", "+ inc\nA=1\n");
    put(env, "A", "2");
    put(env, "I", "changed");
    EXPECT_TRUE(gui_env_close(env, true));
    EXPECT_EQ(site.read(file), "+ inc\nA=2\n");
    EXPECT_EQ(site.read("work/inc.cfg"), "I=1\n");
}

TEST(SavedFile, LineOfAnIncludedEntryIsKept) {
    const TempSite site;
    site.write("work/inc.cfg", "I=inner\n");
    eeEnv* env = site.open("demo", "+ inc\ni = outer\nA=1\n");
    put(env, "A", "2");
    EXPECT_TRUE(gui_env_close(env, true));
    EXPECT_EQ(site.read(file), "+ inc\nI=outer\nA=2\n");
}

TEST(SavedFile, RemovedIncludedEntryTakesItsLineAlong) {
    const TempSite site;
    site.write("work/inc.cfg", "I=inner\n");
    eeEnv* env = site.open("demo", "+ inc\ni = outer\n");
    gui_env_rm(env, "I", ENVLOC_ANY);
    EXPECT_TRUE(gui_env_close(env, true));
    EXPECT_EQ(site.read(file), "+ inc\n");
}

TEST(SavedFile, EntryWithoutValueIsEmpty) {
    EXPECT_EQ(saved("A=1\n", [](eeEnv* env) { put(env, "A", nullptr); }), "A=\n");
}

TEST(SavedFile, RemovedAndPutAgainStandsInItsPlace) {
    EXPECT_EQ(saved("A=1\nB=2\n",
                    [](eeEnv* env) {
                        gui_env_rm(env, "A", ENVLOC_ANY);
                        put(env, "A", "3");
                    }),
              "A=3\nB=2\n");
}

TEST(SavedFile, ReadsBackAsItWasSet) {
    const TempSite site;
    eeEnv* env = site.open("demo", "a = 1\n");
    put(env, "NEW", "value with = and # and %REF");
    gui_env_close(env, true);
    env = gui_env_open("demo", ENVLOC_CWD);
    EXPECT_EQ(setting(env, "A"), "1");
    EXPECT_EQ(setting(env, "NEW"), "value with = and # and %REF");
}

TEST(SavedFile, LevelsGoToTheirOwnFiles) {
    const TempSite site;
    site.write("install/config/demo.cfg", "S=1\n");
    site.write("install/custom/config/demo.cfg", "C=1\n");
    eeEnv* env = gui_env_open("demo", ENVLOC_ANY);
    gui_env_put(env, "S", "2", ENVLOC_SYSTEM);
    gui_env_put(env, "C", "2", ENVLOC_CUSTOM);
    gui_env_put(env, "U", "2", ENVLOC_USER);
    gui_env_put(env, "W", "2", ENVLOC_CWD);
    EXPECT_TRUE(gui_env_close(env, true));
    EXPECT_EQ(site.read("install/config/demo.cfg"), "S=2\n");
    EXPECT_EQ(site.read("install/custom/config/demo.cfg"), "C=2\n");
    EXPECT_EQ(site.read("home/hxorvix/config/demo.cfg"), "U=2\n");
    EXPECT_EQ(site.read("work/demo.cfg"), "W=2\n");
}

TEST(SavedFile, LastAddOnFileIsTheOneRewritten) {
    const TempSite site;
    site.write("install/config/demo.cfg", "S=1\n");
    site.write("install/config/addons_cfgs/demo/one.cfg", "O=1\n");
    eeEnv* env = gui_env_open("demo", ENVLOC_SYSTEM);
    gui_env_put(env, "S", "2", ENVLOC_SYSTEM);
    EXPECT_TRUE(gui_env_close(env, true));
    EXPECT_EQ(site.read("install/config/demo.cfg"), "S=1\n");
    EXPECT_EQ(site.read("install/config/addons_cfgs/demo/one.cfg"), "O=1\nS=2\n");
}

TEST(SavedFile, ThatIsALinkStaysOne) {
    const TempSite site;
    site.write("elsewhere/real.cfg", "A=1\n");
    make_link(site.path("elsewhere/real.cfg"), site.path(file));
    eeEnv* env = gui_env_open("demo", ENVLOC_CWD);
    put(env, "A", "2");
    EXPECT_TRUE(gui_env_close(env, true));
    EXPECT_EQ(site.read("elsewhere/real.cfg"), "A=2\n");
    site.write("elsewhere/real.cfg", "A=3\n");
    EXPECT_EQ(site.read(file), "A=3\n");
}

TEST(SavedFile, LeavesNoTemporaryFileBehind) {
    const TempSite site;
    const orvix::test::ScopedVariable temporary(temporary_place, site.path("tmp"));
    fs::create_directory(site.path("tmp"));
    eeEnv* env = site.open("demo", "A=1\n");
    put(env, "A", "2");
    EXPECT_TRUE(gui_env_close(env, true));
    EXPECT_TRUE(fs::is_empty(site.path("tmp")));
}

TEST(UnchangedFile, IsNotWritten) {
    const TempSite site;
    site.write("work/inc.cfg", "I=1\n");
    eeEnv* env = site.open("demo", "a = 1\n+ inc\n");
    put(env, "I", "2");
    const auto long_ago = fs::file_time_type::clock::now() - std::chrono::hours(100);
    fs::last_write_time(site.path(file), long_ago);
    const auto kept = fs::last_write_time(site.path(file));  // which may be rounded
    EXPECT_TRUE(gui_env_close(env, true));
    EXPECT_EQ(site.read(file), "a = 1\n+ inc\n");
    EXPECT_EQ(fs::last_write_time(site.path(file)), kept);
}

TEST(UnchangedFile, IsNotWrittenWithoutSaving) {
    const TempSite site;
    eeEnv* env = site.open("demo", "A=1\n");
    put(env, "A", "2");
    EXPECT_TRUE(gui_env_close(env, false));
    EXPECT_EQ(site.read(file), "A=1\n");
}

TEST(MissingFile, IsMadeWithALineForEachEntryInSlotOrder) {
    const TempSite site;
    eeEnv* env = gui_env_open("demo", ENVLOC_ANY);
    put(env, "Z", "1");
    put(env, "a b", "2");
    put(env, "M", nullptr);
    put(env, "M", "");
    EXPECT_TRUE(gui_env_close(env, true));
    EXPECT_EQ(site.read(file), "Z=1\nA B=2\nM=\n");
}

TEST(MissingFile, IsMadeWithoutIncludedEntries) {
    const TempSite site;
    eeEnv* env = gui_env_open("demo", ENVLOC_ANY);
    put(env, "A", "1");
    gui_env_put_modnew(env, "I", "2", ENVLOC_CWD, ENVMOD_INCLUDED);
    EXPECT_TRUE(gui_env_close(env, true));
    EXPECT_EQ(site.read(file), "A=1\n");
}

TEST(MissingFile, BringsRemovedKeysBack) {
    const TempSite site;
    eeEnv* env = site.open("demo", "A=1\nB=2\n");
    gui_env_rm(env, "B", ENVLOC_ANY);
    fs::remove(site.path(file));
    EXPECT_TRUE(gui_env_close(env, true));
    EXPECT_EQ(site.read(file), "A=1\nB=2\n");
}

TEST(MissingFile, CleanEntriesAloneDoNotMakeIt) {
    const TempSite site;
    eeEnv* env = site.open("demo", "A=1\n");
    fs::remove(site.path(file));
    EXPECT_TRUE(gui_env_close(env, true));
    EXPECT_FALSE(fs::exists(site.path(file)));
}

TEST(UserDirectories, AreMadeForTheUsersFile) {
    const TempSite site;
    eeEnv* env = gui_env_open("demo", ENVLOC_ANY);
    gui_env_put(env, "U", "1", ENVLOC_USER);
    EXPECT_TRUE(gui_env_close(env, true));
    EXPECT_EQ(site.read("home/hxorvix/config/demo.cfg"), "U=1\n");
}

TEST(UserDirectories, AreMadeWhenOnlyTheLowerOneIsMissing) {
    const TempSite site;
    fs::create_directory(site.path("home/hxorvix"));
    eeEnv* env = gui_env_open("demo", ENVLOC_ANY);
    gui_env_put(env, "U", "1", ENVLOC_USER);
    EXPECT_TRUE(gui_env_close(env, true));
    EXPECT_EQ(site.read("home/hxorvix/config/demo.cfg"), "U=1\n");
}

TEST(UserDirectories, AreNotMadeWithoutSavingOrWithoutEntries) {
    const TempSite site;
    eeEnv* env = gui_env_open("demo", ENVLOC_ANY);
    gui_env_put(env, "U", "1", ENVLOC_USER);
    gui_env_close(env, false);
    gui_env_close(gui_env_open("demo", ENVLOC_ANY), true);
    EXPECT_FALSE(fs::exists(site.path("home/hxorvix")));
}

TEST(UserDirectories, HomeItselfIsNotMade) {
    const TempSite site;
    const orvix::test::ScopedVariable home("HOME", site.name("nowhere").c_str());
    eeEnv* env = gui_env_open("demo", ENVLOC_ANY);
    gui_env_put(env, "U", "1", ENVLOC_USER);
    EXPECT_FALSE(gui_env_close(env, true));
    EXPECT_FALSE(fs::exists(site.path("nowhere")));
}
