#include "support/temporary_directory.h"
#include "support/temporary_place.h"

#include <orvix/gsl/temporary_names.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <string>

namespace fs = std::filesystem;

namespace {

using orvix::test::library_name;
using orvix::test::ScopedVariable;
using orvix::test::temporary_place;
using orvix::test::TemporaryDirectory;
using testing::AnyOf;
using testing::StartsWith;

TEST(GslTempnam, GivesANameInTheDirectoryWithThePrefix) {
    const TemporaryDirectory directory;
    EXPECT_THAT(gsl_tempnam(directory.name().c_str(), "net"), StartsWith(directory.name() + "\\net"));
}

TEST(GslTempnam, MakesNoFile) {
    const TemporaryDirectory directory;
    EXPECT_NE(gsl_tempnam(directory.name().c_str(), "net"), "");
    EXPECT_TRUE(fs::is_empty(directory.path()));
}

TEST(GslTempnam, GivesAnotherNameEachTime) {
    const TemporaryDirectory directory;
    const std::string first = gsl_tempnam(directory.name().c_str(), "net");
    EXPECT_NE(gsl_tempnam(directory.name().c_str(), "net"), first);
}

TEST(GslTempnam, WithoutADirectoryTakesTheSystems) {
    const TemporaryDirectory directory;
    const ScopedVariable variable(temporary_place, directory.path());
    EXPECT_THAT(gsl_tempnam(nullptr, "net"), StartsWith(directory.name() + "\\net"));
}

TEST(GslTempnam, WithAMissingDirectoryTakesTheSystems) {
    const TemporaryDirectory directory;
    const ScopedVariable variable(temporary_place, directory.path());
    EXPECT_THAT(gsl_tempnam(directory.name("missing").c_str(), "net"), StartsWith(directory.name() + "\\net"));
}

TEST(GslTempnam, WithoutAPrefixTheNameIsStillNotEmpty) {
    const TemporaryDirectory directory;
    const std::string name = gsl_tempnam(directory.name().c_str(), nullptr);
    EXPECT_THAT(name, StartsWith(directory.name() + "\\"));
    EXPECT_GT(name.size(), directory.name().size() + 1);
}

TEST(GslTempnam, FailsWhereNoNameIsToBeHad) {
    const orvix::test::NoTemporaryName none;
    EXPECT_EQ(gsl_tempnam(nullptr, "net"), "");
}

// A home directory of its own, and a default prefix of three characters: the first one in a process fixes the length.
class GslTmpnam : public testing::Test {
protected:
    GslTmpnam() { set_prefix("abc"); }

    static void set_prefix(std::string prefix) { tmpnam_set_default_prefix(prefix.data()); }

    std::string in_home(const std::string& last_part) const { return home.name() + "\\" + last_part; }

    TemporaryDirectory home;
    ScopedVariable variable{"HOME", home.path()};
};

TEST_F(GslTmpnam, GivesANameInTheHomeDirectoryWithTheDefaultPrefix) {
    EXPECT_THAT(gsl_tmpnam(nullptr), StartsWith(in_home("abc")));
}

TEST_F(GslTmpnam, ALaterPrefixOfTheSameLengthIsTaken) {
    set_prefix("xyz");
    EXPECT_THAT(gsl_tmpnam(nullptr), StartsWith(in_home("xyz")));
}

TEST_F(GslTmpnam, ALaterPrefixOfAnotherLengthIsIgnored) {
    set_prefix("wxyz");
    EXPECT_THAT(gsl_tmpnam(nullptr), StartsWith(in_home("abc")));
    set_prefix("");
    EXPECT_THAT(gsl_tmpnam(nullptr), StartsWith(in_home("abc")));
}

TEST_F(GslTmpnam, ANullPrefixChangesNothing) {
    tmpnam_set_default_prefix(nullptr);
    EXPECT_THAT(gsl_tmpnam(nullptr), StartsWith(in_home("abc")));
}

TEST_F(GslTmpnam, ThePrefixIsCopied) {
    char prefix[] = "def";
    tmpnam_set_default_prefix(prefix);
    prefix[0] = '#';
    EXPECT_THAT(gsl_tmpnam(nullptr), StartsWith(in_home("def")));
}

TEST_F(GslTmpnam, TheBufferReceivesTheNameAndTheNumberOfThisSecond) {
    const auto number_of = [](std::time_t second) {
        std::srand(static_cast<unsigned int>(second));
        return std::to_string(std::rand());
    };
    char buffer[1024];
    const std::time_t before = std::time(nullptr);
    const std::string name = gsl_tmpnam(buffer);
    const std::time_t after = std::time(nullptr);
    EXPECT_THAT(buffer, AnyOf(name + number_of(before), name + number_of(after)));
}

TEST_F(GslTmpnam, WithoutABufferTheNameHasNoNumber) {
    const std::string same_kind = gsl_tempnam(home.name().c_str(), "abc");
    EXPECT_EQ(std::string(gsl_tmpnam(nullptr)).size(), same_kind.size());
}

TEST_F(GslTmpnam, WithoutABufferTheRandomSequenceOfTheProgramGoesOn) {
    std::srand(5);
    const int first = std::rand();
    const int second = std::rand();
    std::srand(5);
    EXPECT_EQ(std::rand(), first);
    gsl_tmpnam(nullptr);
    EXPECT_EQ(std::rand(), second);
}

TEST_F(GslTmpnam, TheTextOfTheLibraryIsThatOfTheLastCall) {
    const std::string first = gsl_tmpnam(nullptr);
    const std::string second = gsl_tmpnam(nullptr);
    EXPECT_NE(first, second);
}

TEST_F(GslTmpnam, WithoutAHomeDirectoryTakesTheSystems) {
    const TemporaryDirectory system;
    const ScopedVariable temporary(temporary_place, system.path());
    for (const char* value : {static_cast<const char*>(nullptr), "", "/no/such/directory"}) {
        SCOPED_TRACE(value != nullptr ? value : "not set");
        const ScopedVariable no_home("HOME", value);
        EXPECT_THAT(gsl_tmpnam(nullptr), StartsWith(system.name("abc")));
    }
}

TEST_F(GslTmpnam, AFailureGivesNullAndAnEmptyBuffer) {
    const orvix::test::NoTemporaryName none;
    char buffer[1024] = "before";
    EXPECT_EQ(gsl_tmpnam(buffer), nullptr);
    EXPECT_STREQ(buffer, "");
}

// Each test is a process of its own under ctest, so no prefix has been set here.
TEST(GslTmpnamWithoutAPrefix, BeginsTheLastPartAsItLikes) {
    const TemporaryDirectory home;
    const ScopedVariable variable("HOME", home.path());
    const std::string name = gsl_tmpnam(nullptr);
    EXPECT_THAT(name, StartsWith(home.name() + "\\"));
    EXPECT_GT(name.size(), home.name().size() + 1);
}

}  // namespace
