// Settings of the system behind the process variables. Where there is no registry nothing is ever found.

#include "support/registry.h"
#include "support/temporary_directory.h"

#include <orvix/core/registry.h>
#include <orvix/core/stored_names.h>
#include <orvix/core/variables.h>

#include <gtest/gtest.h>

#include <string>

using orvix::test::has_registry;
using orvix::test::RegistryValue;
using orvix::test::ScopedVariable;
using Branch = RegistryValue::Branch;
using Kind = RegistryValue::Kind;

namespace {

constexpr const char* user_variables = "Environment";
constexpr const char* machine_variables = "SYSTEM\\CurrentControlSet\\Control\\Session Manager\\Environment";
constexpr const char* own_key = "SOFTWARE\\OrvixTest";

std::string machine_text(const std::string& name) {
    std::string value = "untouched";
    const bool found = orvix::core::machine_registry_text(own_key, name, &value);
    EXPECT_TRUE(found || value == "untouched");
    return value;
}

std::string if_there_is_one(const std::string& value) { return has_registry ? value : "untouched"; }

class RegistryVariable : public testing::Test {
protected:
    const ScopedVariable missing{"ORVIX_TEST_STORED", nullptr};
};

}  // namespace

TEST(MachineRegistry, ValueIsFoundByItsName) {
    const RegistryValue value(Branch::machine, own_key, "Site", "C:\\srv");
    EXPECT_EQ(machine_text("Site"), if_there_is_one("C:\\srv"));
    EXPECT_EQ(machine_text("Other"), "untouched");
}

TEST(MachineRegistry, DefaultValueHasNoName) {
    const RegistryValue value(Branch::machine, own_key, "", "the default");
    EXPECT_EQ(machine_text(""), if_there_is_one("the default"));
}

TEST(MachineRegistry, MissingKeyLeavesTheTextAlone) {
    std::string value = "untouched";
    EXPECT_FALSE(orvix::core::machine_registry_text("SOFTWARE\\OrvixNoSuchKey", "", &value));
    EXPECT_FALSE(orvix::core::registry_variable("ORVIX_TEST_MISSING", &value));
    EXPECT_FALSE(orvix::core::registry_variable("", &value));
    EXPECT_EQ(value, "untouched");
}

TEST(MachineRegistry, TextIsUtf8OfAnyLength) {
    std::string text = "\xc3\xa4\xe2\x82\xac\xf0\x9f\x8e\xb5";
    while (text.size() < 10'000) text += text;
    const RegistryValue value(Branch::machine, own_key, "\xc3\xb6", text);
    EXPECT_EQ(machine_text("\xc3\xb6"), if_there_is_one(text));
}

TEST(MachineRegistry, EmptyTextIsFound) {
    const RegistryValue value(Branch::machine, own_key, "Empty", "");
    EXPECT_EQ(machine_text("Empty"), if_there_is_one(""));
}

TEST_F(RegistryVariable, StandsBehindTheProcessVariable) {
    const RegistryValue stored(Branch::user, user_variables, "ORVIX_TEST_STORED", "stored");
    EXPECT_EQ(orvix::getenv_check_registry_stdstring("ORVIX_TEST_STORED"), has_registry ? "stored" : "");
    const ScopedVariable set("ORVIX_TEST_STORED", "set");
    EXPECT_EQ(orvix::getenv_check_registry_stdstring("ORVIX_TEST_STORED"), "set");
}

TEST_F(RegistryVariable, ProcessVariableThatIsSetToNothingHidesIt) {
    const RegistryValue stored(Branch::user, user_variables, "ORVIX_TEST_STORED", "stored");
    const ScopedVariable set("ORVIX_TEST_STORED", "");
    std::string value = "before";
    EXPECT_TRUE(orvix::getenv_check_registry_stdstring_allow_empty("ORVIX_TEST_STORED", &value));
    EXPECT_EQ(value, "");
}

TEST_F(RegistryVariable, OfTheUserComesBeforeThatOfTheMachine) {
    const RegistryValue machine(Branch::machine, machine_variables, "ORVIX_TEST_STORED", "machine");
    std::string value = "untouched";
    EXPECT_EQ(orvix::core::registry_variable("ORVIX_TEST_STORED", &value), has_registry);
    EXPECT_EQ(value, if_there_is_one("machine"));
    const RegistryValue user(Branch::user, user_variables, "ORVIX_TEST_STORED", "user");
    EXPECT_EQ(orvix::core::registry_variable("ORVIX_TEST_STORED", &value), has_registry);
    EXPECT_EQ(value, if_there_is_one("user"));
}

TEST_F(RegistryVariable, VariablesInItsTextAreReplaced) {
    const ScopedVariable place("ORVIX_TEST_PLACE", "D:\\site");
    const RegistryValue stored(Branch::user, user_variables, "ORVIX_TEST_STORED", "%ORVIX_TEST_PLACE%\\bin",
                               Kind::with_variables);
    EXPECT_EQ(orvix::getenv_check_registry_stdstring("ORVIX_TEST_STORED"), has_registry ? "D:\\site\\bin" : "");
}
