#include "paths/long_name_walk.h"

#include "paths/canonical_models.h"

#include <gtest/gtest.h>
#include <support/temporary_directory.h>
#include "support/links.h"

#include <filesystem>
#include <string>

using namespace orvix::test;
using orvix::gsl::paths::long_name_walk;

TEST(LongNameWalk, PartsAreSpelledAsTheyAreStored) {
    const TemporaryDirectory directory;
    std::filesystem::create_directories(directory.path() / "Mixed/Case");
    EXPECT_EQ(long_name_walk(directory.name("mIXED/cASE")), directory.name("Mixed/Case"));
}

TEST(LongNameWalk, PartsThatAreMissingStayAsTyped) {
    const TemporaryDirectory directory;
    std::filesystem::create_directory(directory.path() / "Mixed");
    EXPECT_EQ(long_name_walk(directory.name("mixed/None/Below")), directory.name("Mixed/None/Below"));
}

TEST(LongNameWalk, LinksAreNotFollowed) {
    const TemporaryDirectory directory;
    std::filesystem::create_directory(directory.path() / "a");
    make_directory_link("a", directory.path() / "Link");
    EXPECT_EQ(long_name_walk(directory.name("link")), directory.name("Link"));
}

TEST(LongNameWalk, NameWithoutDriveGetsTheCurrentOne) {
    const TemporaryDirectory directory(TemporaryDirectory::Enter::yes);
    EXPECT_EQ(long_name_walk(directory.name().substr(2)), directory.name());
}

TEST(LongNameWalk, RootsStay) {
    EXPECT_EQ(long_name_walk("c:\\"), "c:\\");
    EXPECT_EQ(long_name_walk("c:"), "c:");
}

TEST(LongNameWalk, ServerIsNotLookedUp) { EXPECT_EQ(long_name_walk("\\\\Srv\\Share\\x"), "\\\\Srv\\Share\\x"); }

TEST(LongNameWalk, SeparatorsInsideBecomeBackslashesOneByOne) {
    EXPECT_EQ(long_name_walk("\\\\Srv/a//b/"), "\\\\Srv\\a\\\\b\\");
}

TEST(LongNameWalk, EmptyNameGivesNothing) { EXPECT_EQ(long_name_walk(""), ""); }

TEST(LongNameWalkDeathTest, NameWithoutRootAborts) {
    EXPECT_DEATH(long_name_walk("a\\b"), "");
    EXPECT_DEATH(long_name_walk("c:x"), "");
    EXPECT_DEATH(long_name_walk("c:/x"), "");
}
