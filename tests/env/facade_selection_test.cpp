#include "env/facade_site.h"

#include <gtest/gtest.h>
#include <orvix/gsl/getenv.h>

#include <string>

namespace {

using orvix::test::FacadeSite;
using orvix::test::OpenedSince;
using orvix::test::Text;
using orvix::test::value;
using orvix::test::value_of;

void put(const char* name, const char* text) {
    const std::string env = astr_get_environment();
    ASSERT_TRUE(astr_set_environment_value(env.c_str(), name, text, ASTR_ENVLOC_CWD, false));
}

TEST(AstrGetEnvironment, IsNullAtFirst) { EXPECT_EQ(astr_get_environment(), nullptr); }

TEST(AstrSetEnvironment, SelectsByName) {
    const FacadeSite site;
    site.write("work/demo.cfg", "K=v\n");
    astr_set_environment("demo");
    EXPECT_STREQ(astr_get_environment(), "demo");
    EXPECT_EQ(value("K"), "v");
}

TEST(AstrSetEnvironment, CopiesTheName) {
    const FacadeSite site;
    char name[] = "demo";
    astr_set_environment(name);
    name[0] = 'x';
    EXPECT_STREQ(astr_get_environment(), "demo");
}

TEST(AstrSetEnvironment, SameNameKeepsItsText) {
    const FacadeSite site;
    astr_set_environment("demo");
    const char* const before = astr_get_environment();
    astr_set_environment("demo");
    EXPECT_EQ(astr_get_environment(), before);
    EXPECT_STREQ(before, "demo");
}

TEST(AstrSetEnvironment, SameNameSavesAndReadsTheFilesAfresh) {
    const FacadeSite site;
    site.write("work/demo.cfg", "K=old\n");
    astr_set_environment("demo");
    put("K", "new");
    site.write("home/hxorvix/config/demo.cfg", "FROM_OUTSIDE=1\n");
    EXPECT_EQ(value("FROM_OUTSIDE"), std::nullopt);

    astr_set_environment("demo");
    EXPECT_EQ(site.read("work/demo.cfg"), "K=new\n");
    EXPECT_EQ(value("K"), "new");
    EXPECT_EQ(value("FROM_OUTSIDE"), "1");
}

TEST(AstrSetEnvironment, SameNameLeavesOneEnvironmentOpen) {
    const FacadeSite site;
    const OpenedSince opened;
    astr_set_environment("demo");
    astr_set_environment("demo");
    EXPECT_EQ(opened.count(), 1);
}

TEST(AstrSetEnvironment, OwnNameAsArgumentKeepsIt) {
    const FacadeSite site;
    site.write("work/demo.cfg", "K=v\n");
    astr_set_environment("demo");
    astr_set_environment(astr_get_environment());
    EXPECT_STREQ(astr_get_environment(), "demo");
    EXPECT_EQ(value("K"), "v");
}

TEST(AstrSetEnvironment, EndOfTheOwnNameAsArgumentIsAnotherName) {
    const FacadeSite site;
    site.write("work/mo.cfg", "K=short\n");
    astr_set_environment("demo");
    astr_set_environment(astr_get_environment() + 2);
    EXPECT_STREQ(astr_get_environment(), "mo");
    EXPECT_EQ(value("K"), "short");
}

TEST(AstrSetEnvironment, NameMayComeFromAProcessVariable) {
    const FacadeSite site;
    const std::string name = "an_application_with_a_name_of_some_length";
    const orvix::test::ScopedVariable variable("ORVIX_TEST_APPLICATION", name.c_str());
    site.write("work/" + name + ".cfg", "K=v\n");
    astr_set_environment("demo");
    put("K", "$HOME");  // saving it reads other process variables
    astr_set_environment(gsl_getenv("ORVIX_TEST_APPLICATION"));
    EXPECT_EQ(astr_get_environment(), name);
    EXPECT_EQ(value("K"), "v");
}

TEST(AstrSetEnvironment, NamesThatDifferInCaseAreTwo) {
    const FacadeSite site;
    astr_set_environment("demo");
    astr_set_environment("Demo");
    EXPECT_STREQ(astr_get_environment(), "Demo");
}

TEST(AstrSetEnvironment, AnotherNameSavesTheOneBefore) {
    const FacadeSite site;
    site.write("work/other.cfg", "K=other\n");
    astr_set_environment("demo");
    put("K", "v");
    astr_set_environment("other");
    EXPECT_EQ(site.read("work/demo.cfg"), "K=v\n");
    EXPECT_STREQ(astr_get_environment(), "other");
    EXPECT_EQ(value("K"), "other");
}

TEST(AstrSetEnvironment, NullSavesClosesAndClearsTheName) {
    const FacadeSite site;
    const OpenedSince opened;
    astr_set_environment("demo");
    put("K", "v");
    astr_set_environment(nullptr);
    EXPECT_EQ(astr_get_environment(), nullptr);
    EXPECT_EQ(site.read("work/demo.cfg"), "K=v\n");
    EXPECT_EQ(opened.count(), 0);
    EXPECT_EQ(value("K"), std::nullopt);
}

TEST(AstrSetEnvironment, EmptyNameClearsTheNameToo) {
    const FacadeSite site;
    astr_set_environment("demo");
    astr_set_environment("");
    EXPECT_EQ(astr_get_environment(), nullptr);
}

TEST(AstrSetEnvironment, NullAndEmptyWithoutASelectionDoNothing) {
    const FacadeSite site;
    const OpenedSince opened;
    for (const char* none : {static_cast<const char*>(nullptr), ""}) {
        astr_set_environment(none);
        EXPECT_EQ(astr_get_environment(), nullptr);
        EXPECT_EQ(opened.count(), 0);
    }
}

TEST(AstrSetEnvironment, NameWithoutFilesIsSelectedAndEmpty) {
    const FacadeSite site;
    astr_set_environment("nowhere");
    EXPECT_STREQ(astr_get_environment(), "nowhere");
    EXPECT_EQ(value("K"), std::nullopt);
}

TEST(AstrCloseEnvironment, SavesAndKeepsTheNameWithNothingBehindIt) {
    const FacadeSite site;
    const OpenedSince opened;
    astr_set_environment("demo");
    put("K", "v");
    astr_close_environment();
    EXPECT_STREQ(astr_get_environment(), "demo");
    EXPECT_EQ(site.read("work/demo.cfg"), "K=v\n");
    EXPECT_EQ(opened.count(), 0);
    EXPECT_EQ(value("K"), std::nullopt);
}

TEST(AstrCloseEnvironment, EveryCallThatMeansTheClosedEnvironmentFindsNothing) {
    const FacadeSite site;
    site.write("work/demo.cfg", "K=v\n");
    astr_set_environment("demo");
    astr_close_environment();

    char buffer[8] = "before";
    EXPECT_EQ(orvix::test::taken(astr_environment_value_not_expanded("K")), std::nullopt);
    EXPECT_FALSE(astr_environment_string("K", buffer, sizeof buffer));
    EXPECT_STREQ(buffer, "before");
    EXPECT_EQ(value_of("demo", "K"), std::nullopt);
    EXPECT_EQ(orvix::test::taken(astr_expand_environment_value("demo", "text")), std::nullopt);
    EXPECT_FALSE(astr_environment_var_exists("demo", "K", ASTR_ENVLOC_ANY));
    EXPECT_FALSE(astr_environment_var_exists(nullptr, "K", ASTR_ENVLOC_ANY));
    EXPECT_FALSE(astr_set_environment_value("demo", "K", "w", ASTR_ENVLOC_ANY, true));
    EXPECT_EQ(site.read("work/demo.cfg"), "K=v\n");
}

TEST(AstrCloseEnvironment, SecondCloseAndCloseWithoutASelectionDoNothing) {
    const FacadeSite site;
    astr_close_environment();
    astr_set_environment("demo");
    astr_close_environment();
    astr_close_environment();
    EXPECT_STREQ(astr_get_environment(), "demo");
}

TEST(AstrCloseEnvironment, SelectionOfTheSameNameOpensItAgain) {
    const FacadeSite site;
    site.write("work/demo.cfg", "K=v\n");
    astr_set_environment("demo");
    astr_close_environment();
    astr_set_environment("demo");
    EXPECT_EQ(value("K"), "v");
}

TEST(GuiEnvDeinit, ClosesTheSelectedEnvironmentToo) {
    const FacadeSite site;
    site.write("work/demo.cfg", "K=v\n");
    astr_set_environment("demo");
    gui_env_deinit(false);
    EXPECT_STREQ(astr_get_environment(), "demo");
    EXPECT_EQ(value("K"), std::nullopt);
    EXPECT_EQ(value_of("demo", "K"), std::nullopt);
}

TEST(GuiEnvDeinit, WhatIsOpenedInThePlaceOfTheSelectedEnvironmentIsNotTakenForIt) {
    const FacadeSite site;
    site.write("work/other.cfg", "K=other\n");
    for (int round = 0; round < 20; ++round) {
        astr_set_environment("demo");
        gui_env_deinit(false);
        eeEnv* const other = gui_env_open("other", ENVLOC_CWD);
        EXPECT_EQ(value("K"), std::nullopt);
        astr_close_environment();
        EXPECT_EQ(gui_env_get(other, "K", nullptr, nullptr, 0, ENVLOC_ANY), 0);
    }
}

TEST(GuiEnvDeinit, SelectionAfterItOpensTheEnvironmentAgain) {
    const FacadeSite site;
    site.write("work/demo.cfg", "K=v\n");
    astr_set_environment("demo");
    gui_env_deinit(false);
    astr_set_environment("demo");
    EXPECT_EQ(value("K"), "v");
}

}  // namespace
