// The current directory.

#include "support/buffer.h"
#include "support/drives.h"
#include "support/temporary_directory.h"

#include <orvix/gsl/files.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace fs = std::filesystem;
using orvix::test::Buffer;
using orvix::test::library_name;
using orvix::test::room_for;
using orvix::test::TemporaryDirectory;

namespace {

class DefaultPath : public testing::Test {
protected:
    TemporaryDirectory site{TemporaryDirectory::Enter::yes};
    std::string here = site.name();
};

// What gfile_setdefpath makes of a name.
struct Outcome {
    bool succeeded;
    std::string name;

    bool operator==(const Outcome&) const = default;
};

Outcome set(const std::string& name) {
    Buffer buffer(name, 1000);
    const bool succeeded = gfile_setdefpath(buffer);
    return {succeeded, buffer.text()};
}

void PrintTo(const Outcome& outcome, std::ostream* out) {
    *out << (outcome.succeeded ? "true, " : "false, ") << outcome.name;
}

}  // namespace

TEST_F(DefaultPath, IsGivenWithABackslashAtItsEnd) {
    Buffer buffer = room_for(1000);
    EXPECT_TRUE(gfile_getdefpath(buffer, 999));
    EXPECT_EQ(buffer.text(), here + "\\");
}

TEST_F(DefaultPath, OfTheRootHasOneBackslash) {
    fs::current_path(site.path().root_path());
    Buffer buffer = room_for(10);
    EXPECT_TRUE(gfile_getdefpath(buffer, 9));
    EXPECT_EQ(buffer.text(), here.substr(0, 3));
}

TEST_F(DefaultPath, NeedsRoomForTheNameAndItsZeroByteAndOneByteMoreThanItsSize) {
    const int size = static_cast<int>(here.size()) + 1;
    Buffer buffer = room_for(here.size() + 2);
    EXPECT_TRUE(gfile_getdefpath(buffer, size));
    EXPECT_EQ(buffer.text(), here + "\\");
}

TEST_F(DefaultPath, ThatDoesNotFitLeavesTheBufferAlone) {
    for (const int size : {static_cast<int>(here.size()), 1, 0, -1, -2147483647 - 1}) {
        SCOPED_TRACE(size);
        Buffer buffer("before");
        EXPECT_FALSE(gfile_getdefpath(buffer, size));
        EXPECT_EQ(buffer.text(), "before");
    }
}

TEST_F(DefaultPath, NeedsABuffer) { EXPECT_FALSE(gfile_getdefpath(nullptr, 1000)); }

TEST_F(DefaultPath, RelativeNameBecomesAbsoluteAndTheCurrentDirectoryStays) {
    fs::create_directories("a/b");
    EXPECT_EQ(set("a\\b"), (Outcome{true, here + "\\a\\b\\"}));
    EXPECT_EQ(set("a/b"), (Outcome{true, here + "\\a\\b\\"}));
    EXPECT_EQ(set("a/b/"), (Outcome{true, here + "\\a\\b\\"}));
    EXPECT_EQ(set("."), (Outcome{true, here + "\\"}));
    EXPECT_EQ(fs::current_path(), site.path());
}

TEST_F(DefaultPath, AbsoluteNameComesBackWithOneBackslash) {
    EXPECT_EQ(set(here), (Outcome{true, here + "\\"}));
    EXPECT_EQ(set(here + "\\"), (Outcome{true, here + "\\"}));
}

TEST_F(DefaultPath, DriveMeansItsRoot) {
    for (const char* name : {"c:", "c:\\", "C:/", "C:"}) EXPECT_EQ(set(name), (Outcome{true, "C:\\"})) << name;
}

TEST_F(DefaultPath, NameOnADriveIsTakenFromItsRoot) {
    fs::create_directory("tmp_dir");
    const std::string drive = here.substr(0, 2);
    const std::string top = site.path().relative_path().begin()->string();
    EXPECT_EQ(set(drive + top), (Outcome{true, drive + "\\" + top + "\\"}));
    EXPECT_EQ(set(drive + "tmp_dir"), (Outcome{false, drive + "tmp_dir"}));
}

TEST_F(DefaultPath, NameOnADriveOfItsOwnIsTakenFromThatDrive) {
    fs::create_directory("boards");
    const orvix::test::MappedDrive drive('D', site.path());
    EXPECT_EQ(set("d:boards"), (Outcome{true, "D:\\boards\\"}));
}

TEST_F(DefaultPath, FailureLeavesTheNameConvertedAndCut) {
    site.write("file", "");
    EXPECT_EQ(set("no/such/"), (Outcome{false, "no\\such"}));
    EXPECT_EQ(set("file/"), (Outcome{false, "file"}));
    EXPECT_EQ(set("\\"), (Outcome{false, ""}));
    EXPECT_EQ(fs::current_path(), site.path());
}

TEST_F(DefaultPath, EmptyNameAndNullFail) {
    EXPECT_EQ(set(""), (Outcome{false, ""}));
    EXPECT_FALSE(gfile_setdefpath(nullptr));
}
