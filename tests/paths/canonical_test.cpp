#include "paths/canonical_models.h"
#include "paths/current_directory.h"
#include "support/host.h"

#include <gtest/gtest.h>
#include <orvix/gsl/canonical_names.h>
#include <support/buffer.h>
#include <support/drives.h>
#include <support/random_text.h>
#include <support/temporary_directory.h>
#include "support/links.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <optional>
#include <string>

using namespace orvix::test;

namespace {

// Into a buffer of just the promised size.
std::optional<std::string> canonical(const char* name) {
    const std::string current = library_name(std::filesystem::current_path());
    Buffer out = room_for(current.size() + std::strlen(name) + 2);
    char* const result = HX_canonical_path(name, out);
    if (result == nullptr) return std::nullopt;
    EXPECT_EQ(result, out.get());
    return out.text();
}

std::string after_call(char* (*call)(const char*, char*), const char* name) {
    Buffer out("before");
    EXPECT_EQ(call(name, out), nullptr);
    return out.text();
}

}  // namespace

TEST(HxCanonicalPath, RelativeNameGetsTheCurrentDirectory) {
    const TemporaryDirectory directory(TemporaryDirectory::Enter::yes);
    EXPECT_EQ(canonical("Sub/X.cfg"), here() + "\\sub\\x.cfg");
    EXPECT_EQ(HX_canonical_path_new("Sub/X.cfg"), here() + "\\sub\\x.cfg");
}

TEST(HxCanonicalPath, NameRelativeToADriveIsAbsolute) {
    EXPECT_EQ(canonical("c:X"), "c:x");
    EXPECT_EQ(HX_canonical_path_new("c:X"), "c:x");
}

TEST(HxCanonicalPath, AbsoluteNameIsOnlySpelled) {
    EXPECT_EQ(canonical("C:/A//B/"), "c:\\a\\b");
    EXPECT_EQ(canonical("/A"), "\\a");
    EXPECT_EQ(canonical("\\\\Srv\\X"), "\\\\srv\\x");
    EXPECT_EQ(HX_canonical_path_new("C:/A//B/"), "c:\\a\\b\\");
}

TEST(HxCanonicalPath, AbsoluteNameMayBeCanonicalisedInPlace) {
    Buffer name("C:/A//B/");
    EXPECT_EQ(HX_canonical_path(name, name), name.get());
    EXPECT_EQ(name.text(), "c:\\a\\b");
}

TEST(HxCanonicalPath, RootHasTheEmptyText) {
    EXPECT_EQ(canonical("/"), "");
    EXPECT_EQ(HX_canonical_path_new("/"), "\\");
}

TEST(HxCanonicalPath, LoneDotStaysBehindTheCurrentDirectory) {
    const TemporaryDirectory directory(TemporaryDirectory::Enter::yes);
    EXPECT_EQ(canonical("."), here() + "\\.");
    EXPECT_EQ(HX_canonical_path_new("."), here() + "\\.");
}

TEST(HxCanonicalPath, PrefixesOfADotAreSkippedRepeatedly) {
    const TemporaryDirectory directory(TemporaryDirectory::Enter::yes);
    EXPECT_EQ(canonical("././x"), here() + "\\x");
    EXPECT_EQ(canonical(".\\./x"), here() + "\\x");
    EXPECT_EQ(canonical(".//x"), here() + "\\x");
    EXPECT_EQ(HX_canonical_path_new("./.\\x/"), here() + "\\x\\");
}

TEST(HxCanonicalPath, NameOfNothingButPrefixesGivesNullAndWritesNothing) {
    EXPECT_EQ(after_call(HX_canonical_path, "./"), "before");
    EXPECT_EQ(after_call(HX_canonical_path, "./.\\"), "before");
    EXPECT_EQ(HX_canonical_path_new("./"), "");
    EXPECT_EQ(HX_canonical_path_new(".\\./"), "");
}

TEST(HxCanonicalPath, EmptyNameGivesNullAndWritesNothing) {
    EXPECT_EQ(after_call(HX_canonical_path, ""), "before");
    EXPECT_EQ(HX_canonical_path_new(""), "");
}

TEST(HxCanonicalPath, NullGivesNull) { EXPECT_EQ(after_call(HX_canonical_path, nullptr), "before"); }

TEST(HxCanonicalPath, ParentAndHomeMarkAreOrdinaryText) {
    const TemporaryDirectory directory(TemporaryDirectory::Enter::yes);
    EXPECT_EQ(canonical("../x"), here() + "\\..\\x");
    EXPECT_EQ(canonical("~/x"), here() + "\\~\\x");
}

TEST(HxCanonicalPath, InTheRootOfTheDriveOneSeparatorStands) {
    const TemporaryDirectory directory(TemporaryDirectory::Enter::yes);
    std::filesystem::current_path(directory.path().root_path());
    EXPECT_EQ(canonical("x"), "c:\\x");
}

TEST(HxCanonicalPath, NothingIsLookedUp) {
    const TemporaryDirectory directory(TemporaryDirectory::Enter::yes);
    std::filesystem::create_directory("real");
    make_directory_link("real", "link");
    EXPECT_EQ(canonical("link/x"), here() + "\\link\\x");
}

TEST(HxCanonicalPath, CurrentDirectoryOnAMappedDriveIsSpelledWithItsLetter) {
    const TemporaryDirectory directory(TemporaryDirectory::Enter::yes);
    const MappedDrive drive('D', directory.path());
    std::filesystem::current_path(drives_are_variables ? directory.path() : "D:\\");
    EXPECT_EQ(canonical("X"), "d:\\x");
}

TEST(HxCanonicalPath, CurrentDirectoryOfAnyDepthIsTaken) {
    const TemporaryDirectory directory(TemporaryDirectory::Enter::yes);
    constexpr std::size_t part_size = 100;
    for (int i = 0; i < 20 && here().size() + part_size < orvix::test::longest_current_directory; ++i) {
        const std::string part(part_size, static_cast<char>('a' + i));
        std::filesystem::create_directory(part);
        std::filesystem::current_path(part);
    }
    EXPECT_GT(here().size(), std::min<std::size_t>(orvix::test::longest_current_directory - part_size, 2000));
    EXPECT_EQ(canonical("x"), here() + "\\x");
}

TEST(HxCanonicalPath, AgreesWithTheModelOnRandomNames) {
    const TemporaryDirectory directory(TemporaryDirectory::Enter::yes);
    for (unsigned seed = 0; seed < 2000; ++seed) {
        SCOPED_TRACE(seed);
        const std::string name = RandomText(seed).text("cZ.:/\\", 8);
        const std::string whole = model::completed(name, here());
        EXPECT_EQ(canonical(name.c_str()).value_or("none"), whole.empty() ? "none" : model::fixed_up(whole, true));
        EXPECT_EQ(HX_canonical_path_new(name), model::fixed_up(whole, false));
    }
}
