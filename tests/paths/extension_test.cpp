#include "paths/models.h"

#include <gtest/gtest.h>
#include <orvix/gsl/file_names.h>
#include <support/buffer.h>
#include <support/random_text.h>

#include <cstdlib>
#include <string>

using namespace orvix::test;

namespace {

int dot_position(const std::string& name) {
    int position = 99;
    const bool found = gfile_hasext(name.c_str(), &position);
    EXPECT_EQ(found, position >= 1);
    return position;
}

std::string with_extension(const std::string& name, bool overwrite, const std::string& extension) {
    Buffer buffer(name, name.size() + extension.size() + 2);
    gfile_filext(buffer, overwrite, extension.c_str());
    return buffer.text();
}

std::string without_extension(const std::string& name) {
    Buffer out = room_for(name.size() + 1);
    gfile_stripext(name.c_str(), out);
    return out.text();
}

std::string behind_first_dot(const std::string& name) {
    char* extension = gfile_getext(name.c_str());
    std::string copy = extension != nullptr ? extension : "(null)";
    std::free(extension);
    return copy;
}

}  // namespace

TEST(GfileHasext, GivesThePositionOfTheLastDot) {
    EXPECT_EQ(dot_position("a.txt"), 2);
    EXPECT_EQ(dot_position("a.b.c"), 4);
}

TEST(GfileHasext, LeadingDotCounts) { EXPECT_EQ(dot_position(".profile"), 1); }

TEST(GfileHasext, ExtensionMayBeEmpty) { EXPECT_EQ(dot_position("a."), 2); }

TEST(GfileHasext, DotOfADirectoryDoesNotCount) {
    EXPECT_EQ(dot_position("x.d\\a"), 0);
    EXPECT_EQ(dot_position("x.d/a"), 0);
}

TEST(GfileHasext, NameWithoutDotHasNone) {
    EXPECT_EQ(dot_position("a"), 0);
    EXPECT_EQ(dot_position(""), 0);
}

TEST(GfileHasext, ColonDoesNotEndTheSearch) { EXPECT_EQ(dot_position("a.b:c"), 2); }

TEST(GfileFilext, ExtensionThatIsThereStaysUnlessOverwritten) {
    EXPECT_EQ(with_extension("a.txt", false, "dat"), "a.txt");
    EXPECT_EQ(with_extension("a.txt", true, "dat"), "a.dat");
}

TEST(GfileFilext, NameWithoutExtensionGetsIt) {
    EXPECT_EQ(with_extension("a", false, "dat"), "a.dat");
    EXPECT_EQ(with_extension("a", true, "dat"), "a.dat");
}

TEST(GfileFilext, SlashesAreTurnedInEveryCase) {
    EXPECT_EQ(with_extension("x.d/a", false, "c"), "x.d\\a.c");
    EXPECT_EQ(with_extension("x/a.b", false, "c"), "x\\a.b");
    EXPECT_EQ(with_extension("a", false, "c/d"), "a.c\\d");
}

TEST(GfileFilext, EmptyExtensionLeavesTheDot) { EXPECT_EQ(with_extension("a.txt", true, ""), "a."); }

TEST(GfileStripext, CutsAtTheLastDot) { EXPECT_EQ(without_extension("a.b.c"), "a.b"); }

TEST(GfileStripext, SeparatorsStayAsTheyWere) {
    EXPECT_EQ(without_extension("x.d/a"), "x.d/a");
    EXPECT_EQ(without_extension("x/a.b"), "x/a");
}

TEST(GfileStripext, LeadingDotLeavesNothing) { EXPECT_EQ(without_extension(".profile"), ""); }

TEST(GfileStripext, OutputMayBeTheName) {
    Buffer name("a.b");
    gfile_stripext(name, name);
    EXPECT_EQ(name.text(), "a");
}

TEST(GfileGetext, GivesWhatStandsBehindTheFirstDot) {
    EXPECT_EQ(behind_first_dot("a.b.c"), "b.c");
    EXPECT_EQ(behind_first_dot("a.tar.gz"), "tar.gz");
}

TEST(GfileGetext, DirectoriesAreNotConsidered) {
    EXPECT_EQ(behind_first_dot("dir.d\\file"), "d\\file");
    EXPECT_EQ(behind_first_dot("dir.d/file"), "d/file");
}

TEST(GfileGetext, IsEmptyWithoutDotOrWithNothingBehindIt) {
    EXPECT_EQ(behind_first_dot("abc"), "");
    EXPECT_EQ(behind_first_dot("abc."), "");
    EXPECT_EQ(behind_first_dot("."), "");
}

TEST(GfileGetext, EmptyNameGivesNull) { EXPECT_EQ(gfile_getext(""), nullptr); }

TEST(Extensions, AgreeWithTheModelOnRandomNames) {
    for (unsigned seed = 0; seed < 3000; ++seed) {
        SCOPED_TRACE(seed);
        RandomText random(seed);
        const std::string name = 'a' + random.text("ab..:/\\", 8);
        const std::string extension = random.text("x./", 3);
        const bool overwrite = random.coin();
        EXPECT_EQ(dot_position(name), static_cast<int>(model::dot_position(name)));
        EXPECT_EQ(with_extension(name, overwrite, extension), model::with_extension(name, overwrite, extension));
        EXPECT_EQ(without_extension(name), model::without_extension(name));
        EXPECT_EQ(behind_first_dot(name), model::behind_first_dot(name));
    }
}
