#include "support/descriptors.h"
#include "support/drives.h"
#include "support/links.h"
#include "support/permissions.h"
#include "support/temporary_directory.h"

#include <orvix/core/files.h>
#include <orvix/core/processes.h>
#include <orvix/gsl/status.h>
#include <orvix/gsl/temporary_names.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <string>
#include <utility>

namespace fs = std::filesystem;

namespace {

using orvix::test::close_descriptor;
using orvix::test::kept_mode;
using orvix::test::make_link;
using orvix::test::mode_of;
using orvix::test::TemporaryDirectory;

// The last digits of the process number, filled up with zeros.
std::string process_digits(std::size_t count) {
    const std::string digits = std::string(count, '0') + std::to_string(orvix::core::process_number());
    return digits.substr(digits.size() - count);
}

struct Made {
    int error;         // errno; 0 for success
    std::string name;  // what became of the template

    bool operator==(const Made&) const = default;
};

void PrintTo(const Made& made, std::ostream* out) { *out << "errno " << made.error << ", " << made.name; }

Made make(std::string name) {
    errno = 0;
    const int descriptor = orvix::gsl::mkstemp(name.data());
    const int error = errno;
    if (descriptor != -1) close_descriptor(descriptor);
    return {descriptor == -1 ? error : 0, name.c_str()};
}

class Mkstemp : public testing::Test {
protected:
    bool exists(const std::string& name) const { return fs::exists(directory.path() / name); }

    TemporaryDirectory directory{TemporaryDirectory::Enter::yes};
};

TEST_F(Mkstemp, TheRunBecomesTheLastDigitsOfTheProcessNumber) {
    EXPECT_EQ(make("netXX"), (Made{0, "net" + process_digits(2)}));
    EXPECT_TRUE(exists("net" + process_digits(2)));
}

TEST_F(Mkstemp, DigitsThatTheNumberDoesNotHaveAreZero) {
    EXPECT_EQ(make("XXXXXXXXXXXX"), (Made{0, process_digits(12)}));
}

TEST_F(Mkstemp, OnlyTheRunAtTheEndIsReplaced) {
    EXPECT_EQ(make("XXaXbXXX"), (Made{0, "XXaXb" + process_digits(3)}));
    EXPECT_EQ(make("XXXa"), (Made{0, "XXXa"}));
}

TEST_F(Mkstemp, AnOccupiedNameStepsToTheNext) {
    const std::string digits = process_digits(6);
    directory.write("net" + digits, "");
    EXPECT_EQ(make("netXXXXXX"), (Made{0, "neta" + digits.substr(1)}));
    EXPECT_EQ(make("netXXXXXX"), (Made{0, "netb" + digits.substr(1)}));
}

TEST_F(Mkstemp, AfterZTheFirstCharacterIsAAgainAndTheSecondOneSteps) {
    const std::string digits = process_digits(3);
    directory.write(digits, "");
    for (char first = 'a'; first <= 'z'; ++first) directory.write(first + digits.substr(1), "");
    EXPECT_EQ(make("XXX"), (Made{0, "aa" + digits.substr(2)}));
    EXPECT_EQ(make("XXX"), (Made{0, "ba" + digits.substr(2)}));
}

TEST_F(Mkstemp, WhenTheNamesAreUsedUpTheResultIsMinusOne) {
    EXPECT_EQ(make("netX"), (Made{0, "net" + process_digits(1)}));
    for (char first = 'a'; first <= 'z'; ++first) EXPECT_EQ(make("netX"), (Made{0, std::string("net") + first}));
    EXPECT_EQ(make("netX").error, EEXIST);
}

TEST_F(Mkstemp, ATemplateWithoutARunIsTheOnlyName) {
    EXPECT_EQ(make("plain"), (Made{0, "plain"}));
    EXPECT_EQ(make("plain"), (Made{EEXIST, "plain"}));
}

TEST_F(Mkstemp, AMissingDirectoryIsNoDirectory) {
    EXPECT_EQ(make("a/XXXXXX").error, ENOTDIR);
    EXPECT_EQ(ENOTDIR, 20);
}

TEST_F(Mkstemp, AFileIsNoDirectory) {
    directory.write("a", "");
    EXPECT_EQ(make("a/XXXXXX").error, ENOTDIR);
}

TEST_F(Mkstemp, ATemplateWithoutADirectoryIsLeftCut) { EXPECT_EQ(make("a/b/XXXXXX").name, "a/b"); }

TEST_F(Mkstemp, ADirectoryThatIsThereIsPutBackTogether) {
    fs::create_directory("a");
    EXPECT_EQ(make("a/XX"), (Made{0, "a/" + process_digits(2)}));
    EXPECT_TRUE(exists("a/" + process_digits(2)));
}

TEST_F(Mkstemp, BackslashesSkipTheTestOfTheDirectory) {
    EXPECT_EQ(make("a\\XX"), (Made{ENOENT, "a\\" + process_digits(2)}));
    fs::create_directory("a");
    EXPECT_EQ(make("a\\XX"), (Made{0, "a\\" + process_digits(2)}));
    EXPECT_TRUE(exists("a/" + process_digits(2)));
}

TEST_F(Mkstemp, ASlashAtTheVeryStartSkipsTheTestOfTheDirectory) {
    const orvix::test::MappedDrive drive('D', directory.path());
    ASSERT_EQ(orvix::chdir_utf8("D:\\"), 0);
    EXPECT_EQ(make("/XX"), (Made{0, "/" + process_digits(2)}));
    EXPECT_TRUE(exists(process_digits(2)));
}

TEST_F(Mkstemp, TheFileIsEmptyAndItsOwnersAlone) {
    const Made made = make("netXXXXXX");
    EXPECT_EQ(fs::file_size(made.name), 0U);
    EXPECT_EQ(mode_of(made.name), kept_mode(0600));
}

TEST_F(Mkstemp, TheDescriptorReadsAndWritesAndIsNotInherited) {
    char name[] = "netXXXXXX";
    const int descriptor = orvix::gsl::mkstemp(name);
    ASSERT_NE(descriptor, -1);
    EXPECT_TRUE(orvix::test::write_bytes(descriptor, "a\n"));
    EXPECT_EQ(orvix::test::bytes_at_start(descriptor, 9), "a\n");
    EXPECT_FALSE(orvix::test::is_inherited(descriptor));
    close_descriptor(descriptor);
}

TEST_F(Mkstemp, ALinkThatLeadsNowhereCountsAsTaken) {
    const std::string digits = process_digits(2);
    make_link("nowhere", digits);
    EXPECT_EQ(make("XX"), (Made{0, "a" + digits.substr(1)}));
    EXPECT_FALSE(exists("nowhere"));
}

TEST_F(Mkstemp, FailuresLeaveTheStatusWordAlone) {
    GuiErrno = GUI_ERR_FILE_READ;
    EXPECT_EQ(make("a/XX").error, ENOTDIR);
    EXPECT_EQ(GuiErrno, GUI_ERR_FILE_READ);
}

TEST_F(Mkstemp, AnEmptyTemplateNamesNothing) { EXPECT_EQ(make("").error, ENOENT); }

TEST_F(Mkstemp, ANullTemplateFails) {
    errno = 0;
    EXPECT_EQ(orvix::gsl::mkstemp(nullptr), -1);
    EXPECT_EQ(errno, EINVAL);
}

}  // namespace
