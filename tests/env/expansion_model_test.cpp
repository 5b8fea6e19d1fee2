// Random texts and settings, against a plain model.

#include "env/expansion_model.h"

#include "support/random_text.h"
#include "support/temp_site.h"

#include <orvix/gsl/environment.h>

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>
#include <vector>

using orvix::test::ExpansionModel;
using orvix::test::RandomText;
using orvix::test::ScopedVariable;
using orvix::test::TempSite;

namespace {

const std::array<std::string, 6> names{"A", "A1", "A_A", "A A", "A1A", "1"};

// A text of references to names from one on, of braces, colons and letters that meet names.
std::string random_text(RandomText& random, std::size_t most_pieces, std::size_t first_name = 0) {
    std::string text;
    for (std::size_t piece = random.number(most_pieces); piece > 0; --piece) {
        const std::size_t name = first_name + random.number(names.size());
        const std::size_t kind = random.number(5);
        if (kind < 2 && name < names.size()) {
            const std::string sign = random.coin() ? "%" : "$";
            text += kind == 0 ? sign + names[name] : "{" + sign + names[name] + "}";
        } else if (kind == 2) {
            text += "%UNDEFINED";
        } else {
            text += random.text("aA1_:;/ {}$%", 4);
        }
    }
    return text;
}

// The value of a name. Most refer to later names alone, so that most texts come to an end.
std::string random_value(RandomText& random, std::size_t name) {
    return random_text(random, 3, random.number(20) == 0 ? 0 : name + 1);
}

void run(unsigned seed) {
    SCOPED_TRACE(seed);
    const TempSite site;
    RandomText random(seed);
    const std::array<eeEnv*, 2> environments{gui_env_open("first", ENVLOC_ANY), gui_env_open("second", ENVLOC_ANY)};
    ExpansionModel model;
    model.settings.resize(3);
    std::vector<std::unique_ptr<ScopedVariable>> variables;
    variables.push_back(std::make_unique<ScopedVariable>("_", nullptr));  // which shells set
    for (std::size_t n = 0; n < names.size(); ++n) {
        const std::string& name = names[n];
        for (std::size_t i = 0; i < 3; ++i) {
            if (random.number(2) == 0) continue;
            const std::string value = model.settings[i][name] = random_value(random, n);
            if (i < 2) gui_env_put(environments[i], name.c_str(), value.c_str(), ENVLOC_ANY);
            if (i == 2) gui_env_put_ee(name.c_str(), value.c_str(), ENVLOC_ANY);
        }
        const bool set = random.coin();
        const std::string value = random_value(random, n);
        if (set) model.variables[name] = value;
        variables.push_back(std::make_unique<ScopedVariable>(name.c_str(), set ? value.c_str() : nullptr));
    }
    for (int i = 0; i < 20; ++i) {
        const std::string text = random_text(random, 5);
        SCOPED_TRACE(text);
        model.variables_only = random.number(4) == 0;
        const auto [expected, gave_up] = model.expand(text);
        if (gave_up) continue;
        std::string dest(model.longest + 1, '#');
        const auto call = model.variables_only ? gui_env_expand_str_system_only : gui_env_expand_str;
        const long long result =
            call(dest.data(), text.c_str(), dest.size(), environments[0], environments[1], nullptr);
        ASSERT_EQ(result, expected ? 0 : -1);
        ASSERT_EQ(dest.c_str(), expected.value_or(""));
        if (!expected) continue;
        // Not enough room by one byte.
        ASSERT_EQ(call(dest.data(), text.c_str(), expected->size(), environments[0], environments[1], nullptr),
                  static_cast<long long>(expected->size()) + 1);
    }
}

}  // namespace

TEST(ExpansionModelTest, RandomTexts) {
    for (unsigned seed = 1; seed <= 1000; ++seed) run(seed);
}
