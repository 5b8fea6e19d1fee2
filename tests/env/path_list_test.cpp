// Elements of path lists.

#include "support/temp_site.h"

#include <orvix/gsl/environment.h>

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

using orvix::test::TempSite;

namespace {

using Elements = std::vector<std::string>;

// All elements of a list by gui_env_get_tok.
Elements tokens_of(std::string list) {
    Elements elements;
    for (const char* element = gui_env_get_tok(list.data()); element != nullptr; element = gui_env_get_tok(nullptr)) {
        elements.emplace_back(element);
    }
    return elements;
}

// The same by gui_env_extract_path, without expansion.
Elements extracted_from(std::string list) {
    Elements elements;
    char dest[1000];
    char* source = list.data();
    while (gui_env_extract_path(dest, source, false, sizeof dest, nullptr) == 0) {
        elements.emplace_back(dest);
        source = nullptr;
    }
    return elements;
}

long long extract(std::string* dest, const char* list, bool expand, std::size_t size, eeEnv* env) {
    std::string source = list != nullptr ? list : "";
    dest->assign(100, '#');
    const long long result =
        gui_env_extract_path(dest->data(), list != nullptr ? source.data() : nullptr, expand, size, env, nullptr);
    if (result == 0) dest->resize(dest->find('\0'));
    return result;
}

}  // namespace

TEST(PathListElements, AreSeparatedBySemicolonsAndColons) {
    EXPECT_EQ(tokens_of("a:b"), (Elements{"a", "b"}));
    EXPECT_EQ(tokens_of("a;b:c;d"), (Elements{"a", "b", "c", "d"}));
    EXPECT_EQ(tokens_of("one"), (Elements{"one"}));
}

TEST(PathListElements, KeepTheDrivePrefixAtTheirHead) {
    EXPECT_EQ(tokens_of("C:\\a;D:/b:c"), (Elements{"C:\\a", "D:/b", "c"}));
    EXPECT_EQ(tokens_of("C:\\a:D:\\b"), (Elements{"C:\\a", "D:\\b"}));
    EXPECT_EQ(tokens_of("x;z:/y"), (Elements{"x", "z:/y"}));
}

TEST(PathListElements, LetterAndColonWithoutSlashAreTwoElements) {
    EXPECT_EQ(tokens_of("C:a"), (Elements{"C", "a"}));
    EXPECT_EQ(tokens_of("C:"), (Elements{"C", ""}));
    EXPECT_EQ(tokens_of("C:;D"), (Elements{"C", "", "D"}));
}

TEST(PathListElements, OnlyOneAsciiLetterIsADrive) {
    EXPECT_EQ(tokens_of("1:\\a"), (Elements{"1", "\\a"}));
    EXPECT_EQ(tokens_of("CD:\\a"), (Elements{"CD", "\\a"}));
    EXPECT_EQ(tokens_of(":\\a"), (Elements{"", "\\a"}));
    EXPECT_EQ(tokens_of("\xe4:\\a"), (Elements{"\xe4", "\\a"}));
}

TEST(PathListElements, MayBeEmpty) {
    EXPECT_EQ(tokens_of("a;"), (Elements{"a", ""}));
    EXPECT_EQ(tokens_of(";a"), (Elements{"", "a"}));
    EXPECT_EQ(tokens_of("a;;b"), (Elements{"a", "", "b"}));
    EXPECT_EQ(tokens_of(""), (Elements{""}));
}

TEST(PathListElements, AreTheSameForBothWalks) {
    for (const char* list : {"a:b", "C:\\a;D:/b:c", "a;", "", ";;", "C:;:/x;1:\\y"}) {
        SCOPED_TRACE(list);
        EXPECT_EQ(extracted_from(list), tokens_of(list));
    }
}

TEST(GuiEnvGetTok, LeavesTheListAsItIs) {
    std::string list = "a;b";
    gui_env_get_tok(list.data());
    EXPECT_EQ(list, "a;b");
}

TEST(GuiEnvGetTok, EndStaysTheEnd) {
    std::string list = "a";
    EXPECT_STREQ(gui_env_get_tok(list.data()), "a");
    EXPECT_EQ(gui_env_get_tok(nullptr), nullptr);
    EXPECT_EQ(gui_env_get_tok(nullptr), nullptr);
}

TEST(GuiEnvGetTok, NewListBeginsANewWalk) {
    std::string first = "a;b";
    std::string second = "c;d";
    gui_env_get_tok(first.data());
    EXPECT_STREQ(gui_env_get_tok(second.data()), "c");
    EXPECT_STREQ(gui_env_get_tok(nullptr), "d");
    EXPECT_EQ(gui_env_get_tok(nullptr), nullptr);
}

TEST(GuiEnvGetTok, LongElementsComeWhole) {
    const std::string longer(10'000, 'x');
    EXPECT_EQ(tokens_of("a;" + longer + ";b"), (Elements{"a", longer, "b"}));
}

TEST(GuiEnvExtractPath, ElementThatDoesNotFitIsDeliveredAgain) {
    std::string dest;
    EXPECT_EQ(extract(&dest, "a;bbbb", false, 3, nullptr), 0);
    EXPECT_EQ(dest, "a");
    EXPECT_EQ(extract(&dest, nullptr, false, 3, nullptr), 5);
    EXPECT_EQ(dest, std::string(100, '#'));
    EXPECT_EQ(extract(&dest, nullptr, false, 5, nullptr), 0);
    EXPECT_EQ(dest, "bbbb");
    EXPECT_EQ(extract(&dest, nullptr, false, 5, nullptr), -2);
    EXPECT_EQ(extract(&dest, nullptr, false, 5, nullptr), -2);
}

TEST(GuiEnvExtractPath, FirstElementMayNotFitEither) {
    std::string dest;
    EXPECT_EQ(extract(&dest, "aaaa;b", false, 4, nullptr), 5);
    EXPECT_EQ(extract(&dest, nullptr, false, 5, nullptr), 0);
    EXPECT_EQ(dest, "aaaa");
    EXPECT_EQ(extract(&dest, nullptr, false, 5, nullptr), 0);
    EXPECT_EQ(dest, "b");
}

TEST(GuiEnvExtractPath, ElementsAreExpanded) {
    const TempSite site;
    eeEnv* env = gui_env_open("demo", ENVLOC_ANY);
    gui_env_put(env, "ROOT", "root", ENVLOC_ANY);
    std::string dest;
    EXPECT_EQ(extract(&dest, "%ROOT/a;%UNDEFINED;b", true, 100, env), 0);
    EXPECT_EQ(dest, "root/a");
    EXPECT_EQ(extract(&dest, nullptr, true, 100, env), -1);
    EXPECT_EQ(dest, std::string(100, '#'));
    EXPECT_EQ(extract(&dest, nullptr, true, 100, env), 0);
    EXPECT_EQ(dest, "b");
    EXPECT_EQ(extract(&dest, nullptr, true, 100, env), -2);
}

TEST(GuiEnvExtractPath, ExpandedElementThatDoesNotFitIsDeliveredAgain) {
    const TempSite site;
    eeEnv* env = gui_env_open("demo", ENVLOC_ANY);
    gui_env_put(env, "ROOT", "root", ENVLOC_ANY);
    std::string dest;
    EXPECT_EQ(extract(&dest, "%ROOT;b", true, 4, env), 5);
    EXPECT_EQ(dest, std::string(100, '#'));
    EXPECT_EQ(extract(&dest, nullptr, true, 5, env), 0);
    EXPECT_EQ(dest, "root");
    EXPECT_EQ(extract(&dest, nullptr, true, 5, env), 0);
    EXPECT_EQ(dest, "b");
}

TEST(GuiEnvExtractPath, FurtherEnvironmentsAreAsked) {
    const TempSite site;
    eeEnv* first = gui_env_open("first", ENVLOC_ANY);
    eeEnv* second = gui_env_open("second", ENVLOC_ANY);
    gui_env_put(second, "ROOT", "root", ENVLOC_ANY);
    char list[] = "%ROOT";
    char dest[20];
    EXPECT_EQ(gui_env_extract_path(dest, list, true, sizeof dest, first, second, nullptr), 0);
    EXPECT_STREQ(dest, "root");
}

TEST(GuiEnvExtractPath, SeparatorsInsideValuesDoNotCount) {
    const TempSite site;
    eeEnv* env = gui_env_open("demo", ENVLOC_ANY);
    gui_env_put(env, "BOTH", "a;b", ENVLOC_ANY);
    std::string dest;
    EXPECT_EQ(extract(&dest, "%BOTH;c", true, 100, env), 0);
    EXPECT_EQ(dest, "a;b");
}

TEST(GuiEnvExtractPath, LeavesTheListAsItIs) {
    std::string list = "a;b";
    char dest[10];
    gui_env_extract_path(dest, list.data(), false, sizeof dest, nullptr);
    EXPECT_EQ(list, "a;b");
    list.assign("gone");
    EXPECT_EQ(gui_env_extract_path(dest, nullptr, false, sizeof dest, nullptr), 0);
    EXPECT_STREQ(dest, "b");
}

TEST(GuiEnvExtractPath, NullDestinationFailsAndChangesNothing) {
    char list[] = "a;b";
    char other[] = "c;d";
    char dest[10];
    gui_env_extract_path(dest, list, false, sizeof dest, nullptr);
    EXPECT_EQ(gui_env_extract_path(nullptr, other, false, 10, nullptr), -1);
    EXPECT_EQ(gui_env_extract_path(dest, nullptr, false, sizeof dest, nullptr), 0);
    EXPECT_STREQ(dest, "b");
}

TEST(GuiEnvExtractPath, LongerAndShorterListsFollowOneAnother) {
    const std::string longer(10'000, 'x');
    EXPECT_EQ(extracted_from("a;b"), (Elements{"a", "b"}));
    std::string dest(20'000, '\0');
    std::string list = longer + ";y";
    EXPECT_EQ(gui_env_extract_path(dest.data(), list.data(), false, dest.size(), nullptr), 0);
    EXPECT_EQ(dest.c_str(), longer);
    EXPECT_EQ(extracted_from("c"), (Elements{"c"}));
}

TEST(GuiEnvExtractPath, BeforeAnyListThereIsNoElement) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            char dest[10];
            std::exit(gui_env_extract_path(dest, nullptr, false, sizeof dest, nullptr) == -2 ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}
