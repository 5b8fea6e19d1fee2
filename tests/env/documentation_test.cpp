// The examples of docs/configuration-files.md.

#include "support/temp_site.h"

#include <orvix/gsl/environment.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

using orvix::test::setting;
using orvix::test::TempSite;

namespace {

// The texts between the fences of the page.
std::vector<std::string> examples() {
    const std::filesystem::path page = std::filesystem::path(ORVIX_TEST_DATA) / "../../docs/configuration-files.md";
    const std::string text = orvix::test::read_file(page.lexically_normal());
    const std::string fence = "```\n";
    std::vector<std::string> blocks;
    for (std::size_t at = text.find(fence); at != std::string::npos; at = text.find(fence, at)) {
        at += fence.size();
        const std::size_t end = text.find(fence, at);
        blocks.push_back(text.substr(at, end - at));
        at = end + fence.size();
    }
    return blocks;
}

}  // namespace

TEST(ConfigurationPage, FirstExampleSetsWhatTheTableSays) {
    const TempSite site;
    eeEnv* env = site.open("demo", examples().at(0));
    EXPECT_EQ(env->cwd.used, 4);
    EXPECT_EQ(setting(env, "TOOL_ROOT"), "C:\\tools");
    EXPECT_EQ(setting(env, "LIB_PATH"), "%TOOL_ROOT\\lib:C:\\share\\lib");
    EXPECT_EQ(setting(env, "PROMPT"), "\"ready # go\"");
    EXPECT_EQ(setting(env, "EMPTY"), "");
    char path[100];
    EXPECT_EQ(gui_env_get_and_expand(env, "LIB_PATH", path, nullptr, sizeof path, ENVLOC_ANY), 0);
    EXPECT_STREQ(path, "C:\\tools\\lib:C:\\share\\lib");
}

TEST(ConfigurationPage, SaveMakesTheThirdExampleOfTheSecond) {
    const TempSite site;
    eeEnv* env = site.open("demo", examples().at(1));
    gui_env_put(env, "FOO", "3", ENVLOC_CWD);
    gui_env_rm(env, "BAR", ENVLOC_CWD);
    gui_env_put(env, "NEW", "x", ENVLOC_CWD);
    EXPECT_TRUE(gui_env_close(env, true));
    EXPECT_EQ(site.read("work/demo.cfg"), examples().at(2));
}
