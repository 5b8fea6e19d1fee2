#include "env/facade_site.h"
#include "support/registry.h"

#include <orvix/core/stored_names.h>

#include <gtest/gtest.h>

#include <string>

namespace {

using orvix::test::FacadeSite;
using orvix::test::MapOverride;
using orvix::test::RegistryValue;
using orvix::test::taken;

// What the registry says to open links and pages with.
struct RegisteredCommands {
    RegisteredCommands(const std::string& for_links, const std::string& for_pages)
        : links(RegistryValue::Branch::machine, R"(SOFTWARE\Classes\http\shell\open\command)", "", for_links),
          pages(RegistryValue::Branch::machine, R"(SOFTWARE\Classes\htmlfile\shell\open\command)", "", for_pages) {}

    RegistryValue links;
    RegistryValue pages;
};

// Where there is no registry no program is ever found in it.
std::string short_name_of(const std::string& program) {
    return orvix::test::has_registry ? orvix::core::short_name(program) : "";
}

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

TEST(GuiEnvGetwebbrowser, IsThatOfTheRegistryIfTheSettingNamesNothing) {
    const FacadeSite site;
    const RegisteredCommands commands("", "");
    EXPECT_EQ(taken(gui_env_getwebbrowser()), "");
    site.write("work/de_sim.cfg", "WEB_BROWSER=" + site.name("missing") + "\n");
    EXPECT_EQ(taken(gui_env_getwebbrowser()), "");
    const std::string program = site.write("bin/Web Browser.exe", "");
    const RegisteredCommands registered('"' + program + "\" -osint -url \"%1\"", "");
    EXPECT_EQ(taken(gui_env_getwebbrowser()), short_name_of(program));
}

TEST(GuiEnvGetwebbrowser, IsEmptyIfTheSelectedEnvironmentOfThatNameIsClosed) {
    const FacadeSite site;
    const RegisteredCommands commands("", "");
    site.write("work/de_sim.cfg", "WEB_BROWSER=" + site.name("work") + "\n");
    astr_set_environment("de_sim");
    astr_close_environment();
    EXPECT_EQ(taken(gui_env_getwebbrowser()), "");
}

TEST(GuiEnvGetwebbrowser, IsWhatOpensPagesIfNothingOpensLinks) {
    const FacadeSite site;
    const std::string program = site.write("bin/pages.EXE", "");
    const RegisteredCommands without_program(site.name("bin/gone.exe"), program + " %1");
    EXPECT_EQ(taken(gui_env_getwebbrowser()), short_name_of(program));
}

TEST(GuiEnvGetwebbrowser, IsTheSettingBeforeTheRegistry) {
    const FacadeSite site;
    const RegisteredCommands commands(site.write("bin/links.exe", ""), "");
    const std::string program = site.write("bin/chosen.exe", "");
    site.write("work/de_sim.cfg", "WEB_BROWSER=" + program + "\n");
    EXPECT_EQ(taken(gui_env_getwebbrowser()), program);
}

TEST(GuiEnvGetwebbrowser, AnOverrideMayName) {
    const FacadeSite site;
    MapOverride override("de_sim");
    override.values["WEB_BROWSER"] = site.name("work");
    ASTR_ApplicationEnvironmentOverride::register_override(&override);
    EXPECT_EQ(taken(gui_env_getwebbrowser()), site.name("work"));
}

}  // namespace
