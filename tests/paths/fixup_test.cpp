#include "paths/canonical_models.h"

#include <gtest/gtest.h>
#include <orvix/gsl/canonical_names.h>
#include <support/buffer.h>
#include <support/random_text.h>

#include <string>

using namespace orvix::test;

namespace {

std::string fixed(const std::string& name) {
    Buffer buffer(name);
    HX_fixup_path(buffer);
    return buffer.text();
}

}  // namespace

TEST(HxFixupPath, NetworkNameKeepsItsTwoBackslashes) {
    EXPECT_EQ(fixed("\\\\srv//x/./y/"), "\\\\srv\\x\\y");
    EXPECT_EQ(HX_fixup_path_new("\\\\srv//x/./y/"), "\\\\srv\\x\\y\\");
}

TEST(HxFixupPath, FurtherBackslashesInFrontOfAServerGo) { EXPECT_EQ(fixed("\\\\\\\\srv"), "\\\\srv"); }

TEST(HxFixupPath, TwoSlashesInFrontAreNoNetworkName) {
    EXPECT_EQ(fixed("//srv/x"), "\\srv\\x");
    EXPECT_EQ(fixed("\\/srv/x"), "\\srv\\x");
    EXPECT_EQ(fixed("/\\srv/x"), "\\srv\\x");
}

TEST(HxFixupPath, CapitalsAreLowered) { EXPECT_EQ(fixed("C:\\Temp\\File.TXT"), "c:\\temp\\file.txt"); }

TEST(HxFixupPath, OnlyTheLettersAToZAreLowered) {
    EXPECT_EQ(fixed("@AZ["), "@az[");
    EXPECT_EQ(fixed("\xc3\x84\xc4\xff"), "\xc3\x84\xc4\xff");
}

TEST(HxFixupPath, RootBecomesTheEmptyString) {
    EXPECT_EQ(fixed("/"), "");
    EXPECT_EQ(fixed("\\"), "");
    EXPECT_EQ(fixed("\\\\"), "");
    EXPECT_EQ(fixed("///"), "");
}

TEST(HxFixupPath, RootOfADriveLosesItsSeparator) { EXPECT_EQ(fixed("c:\\"), "c:"); }

TEST(HxFixupPath, EmptyStringStaysEmpty) {
    EXPECT_EQ(fixed(""), "");
    EXPECT_EQ(HX_fixup_path_new(""), "");
}

TEST(HxFixupPath, NullIsHarmless) { HX_fixup_path(nullptr); }

TEST(HxFixupPath, ParentIsNotResolved) { EXPECT_EQ(fixed("a/.."), "a\\.."); }

TEST(HxFixupPath, RunsOfSeparatorsBecomeOneBackslash) { EXPECT_EQ(fixed("a//b\\\\/c///"), "a\\b\\c"); }

TEST(HxFixupPath, DotPieceGoesWithTheSeparatorsBehindIt) {
    EXPECT_EQ(fixed("a/./b"), "a\\b");
    EXPECT_EQ(fixed("a/.//b"), "a\\b");
    EXPECT_EQ(fixed("\\.\\a"), "\\a");
}

TEST(HxFixupPath, OnlyTheFirstDotOfAChainGoes) { EXPECT_EQ(fixed("a/./.\\b"), "a\\.\\b"); }

TEST(HxFixupPath, DotPieceBehindARunOfSeparatorsStays) { EXPECT_EQ(fixed("a//./b"), "a\\.\\b"); }

TEST(HxFixupPath, DotAtEitherEndStays) {
    EXPECT_EQ(fixed("a/."), "a\\.");
    EXPECT_EQ(fixed("./a"), ".\\a");
    EXPECT_EQ(fixed("."), ".");
}

TEST(HxFixupPath, TrailingDotPieceLeavesNothing) { EXPECT_EQ(fixed("a/./"), "a"); }

TEST(HxFixupPath, NamesThatBeginWithADotStay) { EXPECT_EQ(fixed("a/.b/..c/...d"), "a\\.b\\..c\\...d"); }

TEST(HxFixupPath, HomeMarkIsAnOrdinaryCharacter) { EXPECT_EQ(fixed("~/x"), "~\\x"); }

TEST(HxFixupPathNew, KeepsOneTrailingBackslash) {
    EXPECT_EQ(HX_fixup_path_new("a/b/"), "a\\b\\");
    EXPECT_EQ(HX_fixup_path_new("a/b///"), "a\\b\\");
    EXPECT_EQ(HX_fixup_path_new("/"), "\\");
    EXPECT_EQ(HX_fixup_path_new("c:/"), "c:\\");
}

TEST(HxFixupPathNew, TwoBackslashesStay) { EXPECT_EQ(HX_fixup_path_new("\\\\"), "\\\\"); }

TEST(HxFixupPathNew, DotAtTheEndStays) { EXPECT_EQ(HX_fixup_path_new("A/."), "a\\."); }

TEST(HxFixupPath, AgreesWithTheModelOnRandomNames) {
    for (unsigned seed = 0; seed < 5000; ++seed) {
        SCOPED_TRACE(seed);
        RandomText random(seed);
        const std::string name = random.text("aZ./\\", random.coin() ? 8 : 60);
        EXPECT_EQ(fixed(name), model::fixed_up(name, true));
        EXPECT_EQ(HX_fixup_path_new(name), model::fixed_up(name, false));
    }
}

TEST(HxFixupPath, NamesOfAnyLengthAreHandled) {
    std::string name;
    for (int i = 0; i < 5000; ++i) name += "Part/";
    EXPECT_EQ(fixed(name), model::fixed_up(name, true));
}
