#include "support/commands.h"
#include "support/temporary_directory.h"

#include <orvix/gsl/files.h>
#include <orvix/gsl/processes.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

namespace {

using orvix::test::TemporaryDirectory;

TEST(GslPopen, ReadsWhatTheCommandPrints) {
    std::FILE* pipe = gsl_popen("echo one two", "r");
    ASSERT_NE(pipe, nullptr);
    char line[32] = "";
    EXPECT_NE(std::fgets(line, sizeof line, pipe), nullptr);
    EXPECT_STREQ(line, "one two\n");
    EXPECT_EQ(gsl_pclose(pipe), 0);
}

TEST(GslPopen, WritesWhatTheCommandReads) {
    const TemporaryDirectory directory(TemporaryDirectory::Enter::yes);
    std::FILE* pipe = gsl_popen(orvix::test::copy_to_file, "w");
    ASSERT_NE(pipe, nullptr);
    std::fputs("to the command\n", pipe);
    EXPECT_EQ(gsl_pclose(pipe), 0);
    EXPECT_EQ(directory.read("copy.txt").substr(0, 14), "to the command");
}

TEST(GslPopen, TheCommandGoesThroughTheCommandProcessor) {
    std::FILE* pipe = gsl_popen("echo a&& echo b", "r");
    ASSERT_NE(pipe, nullptr);
    char text[32] = "";
    EXPECT_EQ(std::fread(text, 1, sizeof text, pipe), 4U);
    EXPECT_STREQ(text, "a\nb\n");
    EXPECT_EQ(gsl_pclose(pipe), 0);
}

TEST(GslPopen, TakesUtf8) {
    const TemporaryDirectory directory(TemporaryDirectory::Enter::yes);
    std::FILE* pipe = gsl_popen("echo one> \xc3\xa4\xe2\x82\xac", "r");
    ASSERT_NE(pipe, nullptr);
    EXPECT_EQ(gsl_pclose(pipe), 0);
    EXPECT_TRUE(gfile_exists("\xc3\xa4\xe2\x82\xac"));
}

TEST(GslPopen, WithoutACommandOrAModeFails) {
    EXPECT_EQ(gsl_popen(nullptr, "r"), nullptr);
    EXPECT_EQ(gsl_popen("echo", nullptr), nullptr);
    EXPECT_EQ(gsl_popen("echo", ""), nullptr);
    EXPECT_EQ(gsl_popen("echo", "x"), nullptr);
}

TEST(GslPclose, GivesTheStatusOfTheCommand) {
    std::FILE* pipe = gsl_popen("exit 3", "r");
    ASSERT_NE(pipe, nullptr);
    EXPECT_EQ(gsl_pclose(pipe), orvix::test::status_of_exit(3));
}

TEST(GslPclose, WithoutAPipeFails) { EXPECT_EQ(gsl_pclose(nullptr), -1); }

TEST(GslSleep, GivesZero) { EXPECT_EQ(gsl_sleep(0), 0U); }

}  // namespace
