// Pipes among the files.

#include "support/temporary_directory.h"

#include <orvix/core/directory.h>
#include <orvix/core/file_status.h>
#include <orvix/gsl/file_trees.h>
#include <orvix/gsl/files.h>

#include <gtest/gtest.h>

#include <filesystem>

#include <sys/stat.h>

namespace fs = std::filesystem;
using orvix::test::TemporaryDirectory;

namespace {

class PipeAmongFiles : public testing::Test {
protected:
    PipeAmongFiles() {
        fs::create_directory("dir");
        EXPECT_EQ(mkfifo("dir/pipe", 0600), 0);
    }

    TemporaryDirectory site{TemporaryDirectory::Enter::yes};
};

}  // namespace

TEST_F(PipeAmongFiles, IsCopiedAsAnEmptyFileWithoutWaitingForAWriter) {
    EXPECT_TRUE(gfile_copy("dir\\pipe", "to"));
    EXPECT_EQ(site.read("to"), "");
    EXPECT_TRUE(gfile_cp("dir", "copy", true));
    EXPECT_EQ(site.read("copy/pipe"), "");
}

TEST_F(PipeAmongFiles, HasATypeOfItsOwn) {
    EXPECT_EQ(gfile_type("dir\\pipe"), 4096);
    EXPECT_EQ(orvix::core::kind_of_name("dir\\pipe"), orvix::core::FileKind::other);
    orvix::core::Directory directory;
    ASSERT_TRUE(directory.open("dir", orvix::core::Directory::Use::scan, orvix::core::Directory::Links::refused));
    orvix::core::Directory::Entry entry;
    while (directory.next(&entry) && entry.name[0] == '.') {
    }
    EXPECT_EQ(entry.kind, orvix::core::FileKind::other);
}

TEST_F(PipeAmongFiles, IsRemovedAsAnyFile) {
    EXPECT_TRUE(gfile_rm("dir\\pipe", false));
    EXPECT_TRUE(fs::is_empty("dir"));
}
