#include "env/facade_site.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>

namespace {

using orvix::test::FacadeSite;
using orvix::test::MapOverride;
using orvix::test::OpenedSince;
using orvix::test::taken;
using orvix::test::Text;
using orvix::test::value;
using orvix::test::value_of;
using testing::ElementsAre;
using testing::IsEmpty;

using Override = ASTR_ApplicationEnvironmentOverride;
constexpr auto kept = MapOverride::Strings::kept;

// An override of the files of "demo", registered, that holds K=override.
struct Registered : MapOverride {
    explicit Registered(const char* name = "demo", Strings strings = Strings::given) : MapOverride(name, strings) {
        values["K"] = "override";
        register_override(this);
    }
};

// A site where the files of "demo" hold K=file.
class Site : public FacadeSite {
public:
    Site() { write("work/demo.cfg", "K=file\n"); }
};

TEST(ApplicationEnvironmentOverride, IsAbstractAndPolymorphic) {
    EXPECT_TRUE(std::is_abstract_v<Override>);
    EXPECT_TRUE(std::has_virtual_destructor_v<Override>);
}

TEST(ApplicationEnvironmentOverride, CopiesItsName) {
    char name[] = "demo";
    const MapOverride override(name);
    name[0] = 'x';
    EXPECT_STREQ(override.get_env_name(), "demo");
}

TEST(ApplicationEnvironmentOverride, NullNameStaysNull) {
    const MapOverride override(nullptr);
    EXPECT_EQ(override.get_env_name(), nullptr);
}

TEST(ApplicationEnvironmentOverride, CopyAndAssignmentShareTheText) {
    auto original = std::make_unique<MapOverride>("demo");
    const MapOverride copy(*original);
    MapOverride assigned("other");
    assigned = *original;
    EXPECT_EQ(copy.get_env_name(), original->get_env_name());
    EXPECT_EQ(assigned.get_env_name(), original->get_env_name());
    original.reset();
    EXPECT_STREQ(copy.get_env_name(), "demo");
    EXPECT_STREQ(assigned.get_env_name(), "demo");
}

TEST(ApplicationEnvironmentOverride, AnswersNothingBeforeItIsRegistered) {
    const Site site;
    MapOverride override("demo");
    EXPECT_EQ(value_of("demo", "K"), "file");
    EXPECT_THAT(override.asked, IsEmpty());
}

TEST(ApplicationEnvironmentOverride, CopyOfARegisteredOneIsNotRegistered) {
    const Site site;
    auto original = std::make_unique<Registered>();
    const MapOverride copy(*original);
    original.reset();
    EXPECT_EQ(value_of("demo", "K"), "file");
}

TEST(ApplicationEnvironmentOverride, WithoutANameAnswersForNone) {
    const Site site;
    const Registered nameless(nullptr);
    EXPECT_EQ(value_of("demo", "K"), "file");
    EXPECT_EQ(value_of("", "K"), std::nullopt);
    EXPECT_FALSE(astr_environment_var_exists("", "K", ASTR_ENVLOC_ANY));
}

TEST(ApplicationEnvironmentOverride, NullIsNotRegistered) {
    const Site site;
    Override::register_override(nullptr);
    EXPECT_EQ(value_of("demo", "K"), "file");
}

TEST(ApplicationEnvironmentOverride, TheFirstRegisteredWins) {
    const Site site;
    Registered first;
    Registered second;
    first.values["K"] = "first";
    second.values["K"] = "second";
    EXPECT_EQ(value_of("demo", "K"), "first");
}

TEST(ApplicationEnvironmentOverride, ThoseBehindADestroyedOneMoveUp) {
    const Site site;
    auto first = std::make_unique<Registered>();
    auto second = std::make_unique<Registered>();
    second->values["K"] = "second";
    Registered third;
    third.values["K"] = "third";
    first.reset();
    EXPECT_EQ(value_of("demo", "K"), "second");
    second.reset();
    EXPECT_EQ(value_of("demo", "K"), "third");
}

TEST(ApplicationEnvironmentOverride, RegisteredTwiceIsGoneWhenItDies) {
    const Site site;
    {
        Registered override;
        Override::register_override(&override);
        EXPECT_EQ(value_of("demo", "K"), "override");
    }
    EXPECT_EQ(value_of("demo", "K"), "file");
}

TEST(OverrideOfTheSelection, OpensNoFiles) {
    const Site site;
    const Registered override;
    const OpenedSince opened;
    astr_set_environment("demo");
    EXPECT_STREQ(astr_get_environment(), "demo");
    EXPECT_EQ(opened.count(), 0);
}

TEST(OverrideOfTheSelection, AnswersValueCallsAtAllLevels) {
    const Site site;
    Registered override;
    astr_set_environment("demo");
    EXPECT_EQ(value("K"), "override");
    EXPECT_EQ(value("MISSING"), std::nullopt);
    EXPECT_EQ(taken(astr_environment_value_not_expanded("K")), "override");
    EXPECT_THAT(override.asked, ElementsAre("get K 4", "get MISSING 4", "get_not_expanded K"));
}

TEST(OverrideOfTheSelection, RegisteredAfterTheSelectionAnswersByNameOnly) {
    const Site site;
    astr_set_environment("demo");
    const Registered override;
    EXPECT_EQ(value("K"), "file");
    EXPECT_EQ(value_of("demo", "K"), "override");
}

TEST(OverrideOfTheSelection, IsFoundWhenTheSameNameIsSelectedAgain) {
    const Site site;
    astr_set_environment("demo");
    ASSERT_TRUE(astr_set_environment_value("demo", "K", "changed", ASTR_ENVLOC_CWD, false));
    const Registered override;
    astr_set_environment("demo");
    EXPECT_EQ(site.read("work/demo.cfg"), "K=changed\n");
    EXPECT_EQ(value("K"), "override");
}

TEST(OverrideOfTheSelection, IsLetGoWhenAnotherNameIsSelected) {
    const Site site;
    const Registered override("application");
    astr_set_environment("application");
    EXPECT_EQ(value("K"), "override");
    astr_set_environment("demo");
    EXPECT_EQ(value("K"), "file");
}

TEST(OverrideOfTheSelection, IsLetGoByAClose) {
    const Site site;
    Registered override;
    astr_set_environment("demo");
    astr_close_environment();
    EXPECT_EQ(value("K"), std::nullopt);
    EXPECT_THAT(override.asked, IsEmpty());
    EXPECT_EQ(value_of("demo", "K"), "override");
}

TEST(OverrideOfTheSelection, DestroyedLeavesNothingBehindTheNameUntilTheNextSelection) {
    const Site site;
    {
        const Registered override;
        astr_set_environment("demo");
    }
    EXPECT_STREQ(astr_get_environment(), "demo");
    EXPECT_EQ(value("K"), std::nullopt);
    EXPECT_EQ(taken(astr_environment_value_not_expanded("K")), std::nullopt);
    EXPECT_FALSE(astr_environment_var_exists(nullptr, "K", ASTR_ENVLOC_ANY));
    astr_set_environment("demo");
    EXPECT_EQ(value("K"), "file");
}

TEST(OverrideOfTheSelection, DestructionOfAnotherOneLeavesItInPlace) {
    const Site site;
    const Registered override;
    astr_set_environment("demo");
    { const Registered other("demo"); }
    EXPECT_EQ(value("K"), "override");
}

TEST(AstrEnvironmentStringOfAnOverride, CopiesWhatFits) {
    const Site site;
    const Registered override("demo", kept);
    astr_set_environment("demo");
    char buffer[9] = "before";
    EXPECT_TRUE(astr_environment_string("K", buffer, 9));
    EXPECT_STREQ(buffer, "override");
}

TEST(AstrEnvironmentStringOfAnOverride, ValueAsLongAsTheSizeOrLongerIsNotCopied) {
    const Site site;
    const Registered override("demo", kept);
    astr_set_environment("demo");
    for (const int size : {8, 7, 0, -1}) {
        SCOPED_TRACE(size);
        char buffer[9] = "before";
        EXPECT_FALSE(astr_environment_string("K", buffer, size));
        EXPECT_STREQ(buffer, "before");
    }
}

TEST(AstrEnvironmentStringOfAnOverride, WithoutABufferTellsWhetherThereIsAValue) {
    const Site site;
    const Registered override("demo", kept);
    astr_set_environment("demo");
    EXPECT_TRUE(astr_environment_string("K", nullptr, 0));
    EXPECT_FALSE(astr_environment_string("MISSING", nullptr, 0));
}

TEST(AstrEnvironmentStringOfAnOverride, AsksForAllLevels) {
    const Site site;
    Registered override("demo", kept);
    astr_set_environment("demo");
    char buffer[20];
    EXPECT_TRUE(astr_environment_string("K", buffer, 20));
    EXPECT_THAT(override.asked, ElementsAre("get K 4"));
}

TEST(AstrGetEnvironmentValueOfAnOverride, PassesNameAndLevelOn) {
    const Site site;
    Registered override;
    EXPECT_EQ(value_of("demo", "K", ASTR_ENVLOC_USER), "override");
    EXPECT_EQ(value_of("demo", "K", static_cast<AstrEnvlocE>(77)), "override");
    EXPECT_THAT(override.asked, ElementsAre("get K 1", "get K 77"));
}

TEST(AstrGetEnvironmentValueOfAnOverride, NullAnswerIsTheEmptyString) {
    const Site site;
    const Registered override;
    EXPECT_EQ(value_of("demo", "MISSING"), "");
}

TEST(AstrGetEnvironmentValueOfAnOverride, GoesBeforeTheSelectedEnvironment) {
    const Site site;
    astr_set_environment("demo");
    const Registered override;
    EXPECT_EQ(value_of("demo", "K"), "override");
}

TEST(AstrGetEnvironmentValueOfAnOverride, NameMustBeEqualInEveryLetter) {
    const Site site;
    const Registered override("Demo");
    EXPECT_EQ(value_of("demo", "K"), "file");
}

TEST(AstrSetEnvironmentValueOfAnOverride, IsAlwaysTrueAndTouchesNoFile) {
    const Site site;
    Registered override;
    for (const bool save : {false, true}) {
        EXPECT_TRUE(astr_set_environment_value("demo", "K", "set", ASTR_ENVLOC_USER, save));
        EXPECT_TRUE(astr_set_environment_value("demo", "", "", ASTR_ENVLOC_ANY, save));
    }
    EXPECT_EQ(override.values["K"], "set");
    EXPECT_THAT(override.asked, ElementsAre("set K 1", "set  4", "set K 1", "set  4"));
    EXPECT_EQ(site.read("work/demo.cfg"), "K=file\n");
}

TEST(AstrEnvironmentVarExistsOfAnOverride, IsTrueForEveryAnswerButNull) {
    const Site site;
    Registered override("demo", kept);
    override.values["EMPTY"] = "";
    EXPECT_TRUE(astr_environment_var_exists("demo", "K", ASTR_ENVLOC_SYSTEM));
    EXPECT_TRUE(astr_environment_var_exists("demo", "EMPTY", ASTR_ENVLOC_ANY));
    EXPECT_FALSE(astr_environment_var_exists("demo", "MISSING", ASTR_ENVLOC_ANY));
    EXPECT_THAT(override.asked, ElementsAre("get K 2", "get EMPTY 4", "get MISSING 4"));
}

TEST(AstrEnvironmentVarExistsOfAnOverride, NullMeansTheSelectedOverrideAndEmptyDoesNot) {
    const Site site;
    const Registered override("demo", kept);
    EXPECT_FALSE(astr_environment_var_exists(nullptr, "K", ASTR_ENVLOC_ANY));
    astr_set_environment("demo");
    EXPECT_TRUE(astr_environment_var_exists(nullptr, "K", ASTR_ENVLOC_CWD));
    EXPECT_FALSE(astr_environment_var_exists("", "K", ASTR_ENVLOC_CWD));
}

TEST(AstrExpandEnvironmentValueOfAnOverride, GivesItsAnswerAsItIs) {
    const Site site;
    Registered override;
    override.values["%K"] = "out";
    EXPECT_EQ(taken(astr_expand_environment_value("demo", "%K")), "out");
    EXPECT_EQ(taken(astr_expand_environment_value("demo", "else")), std::nullopt);
    EXPECT_THAT(override.asked, ElementsAre("expand %K", "expand else"));
}

// Outlives everything that `main` does, as overrides of applications may.
Registered& static_override() {
    static Registered override("static");
    return override;
}

TEST(ApplicationEnvironmentOverride, StaticObjectMayDieAfterMain) {
    const Site site;
    static_override();
    astr_set_environment("static");
    EXPECT_EQ(value("K"), "override");
}

}  // namespace
