#include "paths/models.h"

#include <gtest/gtest.h>
#include <orvix/gsl/file_names.h>
#include <support/random_text.h>

#include <cstdlib>
#include <cstring>
#include <string>

using namespace orvix::test;

namespace {

std::string fixed(const std::string& name) {
    char* block = static_cast<char*>(std::malloc(name.size() + 1));
    std::memcpy(block, name.c_str(), name.size() + 1);
    gfile_fix_path(&block);
    std::string copy = block;
    std::free(block);
    return copy;
}

}  // namespace

TEST(GfileFixPath, ControlCharacterGrowsTheNameByTwo) { EXPECT_EQ(fixed("\n"), "\\\\n"); }

TEST(GfileFixPath, EachControlCharacterBecomesTwoBackslashesAndItsLetter) {
    EXPECT_EQ(fixed("c:\ax\bx\tx\nx\vx\fx\rx"), "c:\\\\ax\\\\bx\\\\tx\\\\nx\\\\vx\\\\fx\\\\rx");
}

TEST(GfileFixPath, NeighboursOfTheTableStay) { EXPECT_EQ(fixed("\x06\x0e"), "\x06\x0e"); }

TEST(GfileFixPath, NameWithoutControlCharactersStays) { EXPECT_EQ(fixed("c:\\abtnvfr\xff"), "c:\\abtnvfr\xff"); }

TEST(GfileFixPath, EmptyNameKeepsItsBlock) {
    char* block = static_cast<char*>(std::calloc(1, 1));
    char* const before = block;
    gfile_fix_path(&block);
    EXPECT_EQ(block, before);
    EXPECT_STREQ(block, "");
    std::free(block);
}

TEST(GfileFixPath, NameOfAnyLengthIsHandled) {
    EXPECT_EQ(fixed(std::string(5000, '\n')), model::fixed(std::string(5000, '\n')));
}

TEST(GfileFixPath, AgreesWithTheModelOnRandomNames) {
    for (unsigned seed = 0; seed < 1000; ++seed) {
        SCOPED_TRACE(seed);
        const std::string name = RandomText(seed).text("a\\\a\b\t\n\v\f\r\x0e", 20);
        EXPECT_EQ(fixed(name), model::fixed(name));
    }
}
