#include "env/facade_site.h"

#include <gtest/gtest.h>

namespace {

using orvix::test::FacadeSite;
using orvix::test::MapOverride;
using orvix::test::taken;

TEST(GuiEnvGetwebbrowser, IsTheSettingIfItNamesAFile) {
    const FacadeSite site;
    const std::string program = site.write("bin/browser", "");
    site.write("install/config/de_sim.cfg", "WEB_BROWSER=" + program + "\n");
    EXPECT_EQ(taken(gui_env_getwebbrowser()), program);
}

TEST(GuiEnvGetwebbrowser, ReplacesReferencesInTheSetting) {
    const FacadeSite site;
    const std::string program = site.write("install/bin/browser", "");
    site.write("work/de_sim.cfg", "WEB_BROWSER=$HXORVIX_DIR\\bin\\browser\n");
    EXPECT_EQ(taken(gui_env_getwebbrowser()), program);
}

TEST(GuiEnvGetwebbrowser, MayBeADirectory) {
    const FacadeSite site;
    const std::string directory = site.name("work");
    site.write("work/de_sim.cfg", "WEB_BROWSER=" + directory + "\n");
    EXPECT_EQ(taken(gui_env_getwebbrowser()), directory);
}

#ifndef _WIN32  // where there is no registry to ask

TEST(GuiEnvGetwebbrowser, IsEmptyIfTheSettingNamesNothing) {
    const FacadeSite site;
    site.write("work/de_sim.cfg", "WEB_BROWSER=" + site.name("missing") + "\n");
    EXPECT_EQ(taken(gui_env_getwebbrowser()), "");
}

TEST(GuiEnvGetwebbrowser, IsEmptyWithoutTheSetting) {
    const FacadeSite site;
    EXPECT_EQ(taken(gui_env_getwebbrowser()), "");
}

TEST(GuiEnvGetwebbrowser, IsEmptyIfTheSelectedEnvironmentOfThatNameIsClosed) {
    const FacadeSite site;
    site.write("work/de_sim.cfg", "WEB_BROWSER=" + site.name("work") + "\n");
    astr_set_environment("de_sim");
    astr_close_environment();
    EXPECT_EQ(taken(gui_env_getwebbrowser()), "");
}

#endif

TEST(GuiEnvGetwebbrowser, AnOverrideMayName) {
    const FacadeSite site;
    MapOverride override("de_sim");
    override.values["WEB_BROWSER"] = site.name("work");
    ASTR_ApplicationEnvironmentOverride::register_override(&override);
    EXPECT_EQ(taken(gui_env_getwebbrowser()), site.name("work"));
}

}  // namespace
