#include <orvix/core/program.h>

#include <gtest/gtest.h>

namespace {

TEST(ProgramArguments, AreThoseOfMain) {
    char program[] = "program";
    char argument[] =
        "gr\xc3\xb6\xc3\x9f"
        "e";
    char empty[] = "";
    char* argv[] = {program, argument, empty, nullptr};
    EXPECT_EQ(orvix::core::program_arguments(3, argv), (std::vector<std::string>{"program",
                                                                                 "gr\xc3\xb6\xc3\x9f"
                                                                                 "e",
                                                                                 ""}));
}

}  // namespace
