#include "env/facade_site.h"

#include "support/random_text.h"

#include <gtest/gtest.h>

namespace {

using orvix::test::RandomText;
using orvix::test::taken;

TEST(AstrAddVarFn, WrapsAName) { EXPECT_EQ(taken(astr_add_var_fn("x")), "var(\"x\")"); }

TEST(AstrAddVarFn, WrapsTheEmptyNameAndQuotes) {
    EXPECT_EQ(taken(astr_add_var_fn("")), "var(\"\")");
    EXPECT_EQ(taken(astr_add_var_fn("a\"b")), "var(\"a\"b\")");
}

TEST(AstrAddVarFn, NullGivesNull) { EXPECT_EQ(astr_add_var_fn(nullptr), nullptr); }

TEST(AstrDeleteVarFn, UnwrapsAName) {
    EXPECT_EQ(taken(astr_delete_var_fn("var(\"x\")")), "x");
    EXPECT_EQ(taken(astr_delete_var_fn("var(\"\")")), "");
    EXPECT_EQ(taken(astr_delete_var_fn("var(\"var(\"x\")\")")), "var(\"x\")");
}

TEST(AstrDeleteVarFn, AnythingElseGivesNull) {
    for (const char* text : {"", "x", "var(x)", "var(\"x\"", "var(\"x)", "ar(\"x\")", " var(\"x\")", "var(\"x\") ",
                             "VAR(\"x\")", "var(\"", "\")"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(astr_delete_var_fn(text), nullptr);
    }
    EXPECT_EQ(astr_delete_var_fn(nullptr), nullptr);
}

TEST(AstrDeleteVarFn, OneQuoteDoesNotBothOpenAndClose) { EXPECT_EQ(astr_delete_var_fn("var(\")"), nullptr); }

TEST(AstrDeleteVarFn, UndoesTheWrappingOfAnyName) {
    RandomText random(1);
    for (int round = 0; round < 1000; ++round) {
        const std::string name = random.text("var(\") x", 12);
        SCOPED_TRACE(name);
        const orvix::test::Text wrapped = taken(astr_add_var_fn(name.c_str()));
        EXPECT_EQ(taken(astr_delete_var_fn(wrapped->c_str())), name);
    }
}

}  // namespace
