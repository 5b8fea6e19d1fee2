#include "paths/models.h"

#include <gtest/gtest.h>
#include <orvix/gsl/file_names.h>
#include <support/buffer.h>
#include <support/random_text.h>

#include <string>

using namespace orvix::test;

namespace {

int prefix_length(const std::string& name) {
    int length = 99;
    const bool found = gfile_hasdrv(name.c_str(), &length);
    EXPECT_EQ(found, length >= 1);
    return length;
}

std::string with_prefix(const std::string& name, bool overwrite, const std::string& drive) {
    Buffer buffer(name, name.size() + drive.size() + 2);
    gfile_fildrv(buffer, overwrite, drive.c_str());
    return buffer.text();
}

}  // namespace

TEST(GfileHasdrv, SlashIsNoMark) {
    EXPECT_EQ(prefix_length("a/b"), 0);
    EXPECT_EQ(prefix_length("dir/file"), 0);
}

TEST(GfileHasdrv, PrefixEndsAtTheLastBackslash) {
    EXPECT_EQ(prefix_length("a\\b"), 2);
    EXPECT_EQ(prefix_length("dir\\file"), 4);
    EXPECT_EQ(prefix_length("a\\b\\"), 4);
}

TEST(GfileHasdrv, PrefixEndsAtTheLastColon) {
    EXPECT_EQ(prefix_length("c:"), 2);
    EXPECT_EQ(prefix_length("c:file"), 2);
    EXPECT_EQ(prefix_length("a\\b:c"), 4);
}

TEST(GfileHasdrv, EmptyNameHasNone) { EXPECT_EQ(prefix_length(""), 0); }

TEST(GfileFildrv, PrefixThatIsThereStaysUnlessOverwritten) {
    EXPECT_EQ(with_prefix("c:\\x\\file", false, "d:/y"), "c:\\x\\file");
    EXPECT_EQ(with_prefix("c:\\x\\file", true, "d:/y"), "d:\\y\\file");
}

TEST(GfileFildrv, TailKeepsItsSlash) { EXPECT_EQ(with_prefix("a/file", false, "d:"), "d:\\a/file"); }

TEST(GfileFildrv, NoSecondSeparatorIsAdded) {
    EXPECT_EQ(with_prefix("file", false, "d:\\y\\"), "d:\\y\\file");
    EXPECT_EQ(with_prefix("file", false, "d:/y/"), "d:\\y\\file");
}

TEST(GfileFildrv, EmptyDriveStripsThePrefix) {
    EXPECT_EQ(with_prefix("c:\\x\\file", true, ""), "file");
    EXPECT_EQ(with_prefix("file", false, ""), "file");
}

TEST(GfileFildrv, NameOfAnyLengthIsHandled) {
    const std::string tail(5000, 't');
    EXPECT_EQ(with_prefix("c:" + tail, true, "d:"), "d:\\" + tail);
}

TEST(GfileStripdrv, GivesWhatStandsBehindThePrefix) {
    Buffer out = room_for(5);
    gfile_stripdrv("c:\\x\\file", out);
    EXPECT_EQ(out.text(), "file");
}

TEST(GfileStripdrv, NameWithoutPrefixComesBackWhole) {
    Buffer out = room_for(7);
    gfile_stripdrv("a/file", out);
    EXPECT_EQ(out.text(), "a/file");
}

TEST(GfileStripdrv, OutputMayBeTheName) {
    Buffer name("c:\\x\\file");
    gfile_stripdrv(name, name);
    EXPECT_EQ(name.text(), "file");
}

TEST(Prefixes, AgreeWithTheModelOnRandomNames) {
    for (unsigned seed = 0; seed < 3000; ++seed) {
        SCOPED_TRACE(seed);
        RandomText random(seed);
        const std::string name = random.text("ab.:/\\", 8);
        const std::string drive = random.text("d:/\\", 4);
        const bool overwrite = random.coin();
        EXPECT_EQ(prefix_length(name), static_cast<int>(model::prefix_length(name)));
        EXPECT_EQ(with_prefix(name, overwrite, drive), model::with_prefix(name, overwrite, drive));
        Buffer out = room_for(name.size() + 1);
        gfile_stripdrv(name.c_str(), out);
        EXPECT_EQ(out.text(), name.substr(model::prefix_length(name)));
    }
}
