#include <gtest/gtest.h>
#include <orvix/gsl/string_utilities.h>
#include <support/temporary_directory.h>

#include <filesystem>

using namespace orvix::test;

TEST(AstrFileExists, FindsFilesAndDirectories) {
    TemporaryDirectory site;
    const std::string file = site.write("a.txt", "x");
    EXPECT_TRUE(astr_file_exists(file.c_str()));
    EXPECT_TRUE(astr_file_exists(site.name().c_str()));
}

TEST(AstrFileExists, DoesNotFindWhatIsMissing) {
    TemporaryDirectory site;
    EXPECT_FALSE(astr_file_exists(site.name("missing").c_str()));
    EXPECT_FALSE(astr_file_exists(""));
    EXPECT_FALSE(astr_file_exists(nullptr));
}

TEST(AstrClearFile, EmptiesAFile) {
    TemporaryDirectory site;
    const std::string file = site.write("a.txt", "x");
    astr_clear_file(file.c_str());
    EXPECT_EQ(site.read("a.txt"), "");
}

TEST(AstrClearFile, CreatesAMissingFile) {
    TemporaryDirectory site;
    astr_clear_file(site.name("new.txt").c_str());
    EXPECT_EQ(site.read("new.txt"), "");
}

TEST(AstrClearFile, FailureIsSilent) {
    TemporaryDirectory site;
    astr_clear_file(site.name("missing\\a.txt").c_str());
    astr_clear_file(nullptr);
    EXPECT_TRUE(std::filesystem::is_empty(site.path()));
}
