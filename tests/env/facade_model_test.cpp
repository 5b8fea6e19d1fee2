// Long random use of two environments and an override that comes and goes, beside a plain model of what they hold.

#include "env/facade_site.h"

#include "support/random_text.h"

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <memory>
#include <string>

namespace {

using orvix::test::FacadeSite;
using orvix::test::MapOverride;
using orvix::test::RandomText;
using orvix::test::taken;
using orvix::test::Text;
using orvix::test::value;
using orvix::test::value_of;

using Settings = std::map<std::string, std::string>;

// The levels cwd, user and system, nearest first. (The site's level has no number here.)
using Levels = std::array<Settings, 3>;

Text found(const Levels& levels, AstrEnvlocE loc, const std::string& key) {
    for (std::size_t level = 0; level < levels.size(); ++level) {
        const bool searched = loc == ASTR_ENVLOC_ANY || static_cast<std::size_t>(loc) == level;
        if (searched && levels[level].count(key) != 0) return levels[level].at(key);
    }
    return std::nullopt;
}

void store(Levels* levels, AstrEnvlocE loc, const std::string& key, const std::string& value) {
    if (loc != ASTR_ENVLOC_ANY) {
        (*levels)[static_cast<std::size_t>(loc)][key] = value;
        return;
    }
    for (Settings& settings : *levels) {
        if (settings.count(key) == 0) continue;
        settings[key] = value;
        return;
    }
    (*levels)[0][key] = value;
}

// No reference stands in the values, so expansion takes nothing away but makes an empty value nothing.
Text expanded(const Text& value) { return value == "" ? std::nullopt : value; }

struct Model {
    std::map<std::string, Levels> files;
    Text selected;
    enum { nothing, opened, overridden } behind = nothing;
    Levels in_memory;  // of the selected environment, when opened

    void close() {
        if (behind == opened) files[*selected] = in_memory;
        behind = nothing;
    }

    void select(const std::string& name, bool has_override) {
        close();
        selected = name;
        behind = has_override ? overridden : opened;
        in_memory = files[name];
    }

    bool put(const std::string& env, const std::string& key, const std::string& value, AstrEnvlocE loc, bool save) {
        if (selected != env) {
            Levels levels = files[env];
            store(&levels, loc, key, value);
            if (save) files[env] = levels;
            return true;
        }
        if (behind != opened) return false;
        store(&in_memory, loc, key, value);
        if (save) files[env] = in_memory;
        return true;
    }

    // Null if nothing stands behind the name.
    const Levels* levels_of(const std::string& env) {
        if (selected != env) return &files[env];
        return behind == opened ? &in_memory : nullptr;
    }
};

class Play {
public:
    explicit Play(unsigned seed) : random_(seed) {
        // Saving makes the directories of the user's level only.
        site_.write("install/config/unused", "");
    }

    void step() {
        env_ = random_.coin() ? "a" : "b";
        key_ = random_.coin() ? "X" : "Y";
        loc_ = std::array{ASTR_ENVLOC_CWD, ASTR_ENVLOC_USER, ASTR_ENVLOC_SYSTEM, ASTR_ENVLOC_ANY}[random_.number(3)];
        switch (random_.number(9)) {
            case 0:
                return select();
            case 1:
                return close();
            case 2:
                return toggle_override();
            case 3:
            case 4:
                return put();
            default:
                return read();
        }
    }

private:
    bool overridden() const { return env_ == "a" && override_ != nullptr; }

    void select() {
        if (random_.number(5) == 0) {
            astr_set_environment(nullptr);
            model_.close();
            model_.selected.reset();
            return;
        }
        astr_set_environment(env_.c_str());
        model_.select(env_, overridden());
    }

    void close() {
        astr_close_environment();
        model_.close();
    }

    void toggle_override() {
        if (override_ != nullptr) {
            override_.reset();
            if (model_.behind == Model::overridden) model_.behind = Model::nothing;
        } else {
            override_ = std::make_unique<MapOverride>("a");
            ASTR_ApplicationEnvironmentOverride::register_override(override_.get());
        }
    }

    void put() {
        const std::string text = random_.text("xyz", 3);
        const bool save = random_.coin();
        const bool stored = astr_set_environment_value(env_.c_str(), key_.c_str(), text.c_str(), loc_, save);
        if (overridden()) {
            EXPECT_TRUE(stored);
            EXPECT_EQ(override_->values[key_], text);
        } else {
            EXPECT_EQ(stored, model_.put(env_, key_, text, loc_, save));
        }
    }

    void read() {
        read_selected();
        if (overridden()) {
            const bool known = override_->values.count(key_) != 0;
            EXPECT_EQ(value_of("a", key_.c_str(), loc_), known ? override_->values[key_] : "");
            return;
        }
        const Levels* levels = model_.levels_of(env_);
        const Text expected = levels != nullptr ? found(*levels, loc_, key_) : std::nullopt;
        EXPECT_EQ(value_of(env_.c_str(), key_.c_str(), loc_),
                  levels != nullptr ? Text(expected.value_or("")) : std::nullopt);
        EXPECT_EQ(astr_environment_var_exists(env_.c_str(), key_.c_str(), loc_), expected.has_value());
    }

    void read_selected() {
        const char* const name = astr_get_environment();
        EXPECT_EQ(name != nullptr ? Text(name) : std::nullopt, model_.selected);
        Text expected;
        if (model_.behind == Model::opened) {
            expected = found(model_.in_memory, ASTR_ENVLOC_ANY, key_);
            EXPECT_EQ(astr_environment_var_exists(nullptr, key_.c_str(), loc_),
                      found(model_.in_memory, loc_, key_).has_value());
        } else if (model_.behind == Model::overridden && override_->values.count(key_) != 0) {
            // Its strings are not expanded again: an empty one stays.
            EXPECT_EQ(value(key_.c_str()), override_->values[key_]);
            return;
        }
        EXPECT_EQ(value(key_.c_str()), expanded(expected));
        EXPECT_EQ(taken(astr_environment_value_not_expanded(key_.c_str())), expected);
    }

    FacadeSite site_;
    RandomText random_;
    Model model_;
    std::unique_ptr<MapOverride> override_;
    std::string env_;
    std::string key_;
    AstrEnvlocE loc_ = ASTR_ENVLOC_ANY;
};

TEST(ApplicationEnvironment, AgreesWithAPlainModel) {
    for (unsigned seed = 1; seed <= 20; ++seed) {
        SCOPED_TRACE(seed);
        Play play(seed);
        for (int step = 0; step < 200 && !testing::Test::HasFailure(); ++step) {
            SCOPED_TRACE(step);
            play.step();
        }
    }
}

}  // namespace
