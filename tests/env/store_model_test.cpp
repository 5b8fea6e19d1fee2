// Long random runs of put, get and remove over all levels, against plain maps.

#include "support/random_text.h"
#include "support/temp_site.h"

#include <orvix/gsl/environment.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <optional>
#include <string>
#include <vector>

using orvix::test::RandomText;
using orvix::test::setting;
using orvix::test::TempSite;

namespace {

struct ModelEntry {
    std::string key;
    std::string value;
    EnvModE mod;
};

// Four lists of entries, searched one after the other.
class StoreModel {
public:
    std::optional<std::string> get(const std::string& name, EnvlocE loc) {
        const ModelEntry* entry = find(name, loc, false);
        return entry != nullptr ? std::optional(entry->value) : std::nullopt;
    }

    bool put(const std::string& name, const std::string& value, EnvlocE loc, EnvModE mod) {
        if (name.empty()) return false;
        if (ModelEntry* entry = find(name, loc, true)) {
            if (entry->mod != ENVMOD_INCLUDED) entry->mod = ENVMOD_CHANGED;
            entry->value = value;
        } else {
            levels[loc >= 1 && loc <= 4 ? static_cast<std::size_t>(loc) : 1].push_back({folded(name), value, mod});
        }
        return true;
    }

    bool remove(const std::string& name, EnvlocE loc) {
        ModelEntry* entry = find(name, loc, false);
        if (entry != nullptr) entry->mod = ENVMOD_REMOVED;
        return entry != nullptr;
    }

    std::array<std::vector<ModelEntry>, 5> levels;  // by number; 0 stays empty

private:
    static std::string folded(const std::string& name) {
        std::string key = name.substr(0, 63);
        for (char& c : key) c = static_cast<char>(c >= 'a' && c <= 'z' ? std::toupper(c) : c);
        return key;
    }

    ModelEntry* find(const std::string& name, EnvlocE loc, bool removed_too) {
        for (std::size_t level = 1; level <= 4; ++level) {
            if (loc >= 1 && loc <= 4 && level != static_cast<std::size_t>(loc)) continue;
            for (ModelEntry& entry : levels[level]) {
                if (entry.key == folded(name) && (removed_too || entry.mod != ENVMOD_REMOVED)) return &entry;
            }
        }
        return nullptr;
    }
};

void expect_same(const EnvTable& table, const std::vector<ModelEntry>& entries) {
    ASSERT_EQ(static_cast<std::size_t>(table.used), entries.size());
    ASSERT_EQ(table.capacity, (table.used + 31) / 32 * 32);
    for (std::size_t i = 0; i < entries.size(); ++i) {
        ASSERT_EQ(table.entries[i].key, entries[i].key);
        ASSERT_EQ(table.entries[i].value, entries[i].value);
        ASSERT_EQ(table.entries[i].mod, entries[i].mod);
    }
}

// Names of a small set, so that they meet again; some agree in their first 63 bytes alone.
std::string random_name(RandomText& random, std::size_t names) {
    std::string name = "Name_" + std::to_string(random.number(names));
    if (random.number(9) == 0) name = std::string(70, 'x').replace(60, 4, std::to_string(1000 + random.number(8)));
    for (char& c : name) {
        if (c >= 'a' && c <= 'z' && random.coin()) c = static_cast<char>(c - 'a' + 'A');
    }
    return random.number(50) == 0 ? "" : name;
}

void run(unsigned seed, std::size_t names, int steps) {
    SCOPED_TRACE(seed);
    const TempSite site;
    eeEnv* env = gui_env_open("model", ENVLOC_ANY);
    StoreModel model;
    RandomText random(seed);
    for (int step = 0; step < steps; ++step) {
        const std::string name = random_name(random, names);
        const auto loc = static_cast<EnvlocE>(random.number(6));
        switch (random.number(3)) {
            case 0: {
                const std::string value = random.text("ab=", 30);
                const auto mod = static_cast<EnvModE>(random.number(3));
                ASSERT_EQ(gui_env_put_modnew(env, name.c_str(), value.c_str(), loc, mod),
                          model.put(name, value, loc, mod));
                break;
            }
            case 1:
                ASSERT_EQ(gui_env_rm(env, name.c_str(), loc), model.remove(name, loc));
                break;
            default:
                ASSERT_EQ(setting(env, name.c_str(), loc), model.get(name, loc)) << name;
        }
    }
    expect_same(env->cwd, model.levels[1]);
    expect_same(env->user, model.levels[2]);
    expect_same(env->custom, model.levels[3]);
    expect_same(env->system, model.levels[4]);
}

}  // namespace

TEST(StoreModelTest, FewNames) {
    for (unsigned seed = 1; seed <= 20; ++seed) run(seed, 20, 2000);
}

TEST(StoreModelTest, ManyNames) {
    for (unsigned seed = 1; seed <= 3; ++seed) run(seed, 1500, 20'000);
}
