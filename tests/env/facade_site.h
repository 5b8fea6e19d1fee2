// What the tests of the application environment share: a site, strings taken over from the
// library, and an override that remembers what it was asked.
#pragma once

#include "support/temp_site.h"

#include <orvix/gsl/application_environment.h>
#include <orvix/gsl/environment.h>
#include <orvix/gsl/string_utilities.h>

#include <filesystem>
#include <list>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvix::test {

// A site for the application environment. Nothing is selected at its end, and nothing saved.
class FacadeSite : public TempSite {
public:
    FacadeSite() = default;
    ~FacadeSite() {
        gui_env_deinit(false);
        astr_set_environment(nullptr);
    }
    FacadeSite(const FacadeSite&) = delete;
    FacadeSite& operator=(const FacadeSite&) = delete;

    bool exists(std::string_view relative) const { return std::filesystem::exists(path(relative)); }
};

using Text = std::optional<std::string>;

// Takes a string of the library over; none for null.
inline Text taken(char* text) {
    Text copy;
    if (text != nullptr) copy = text;
    astr_free_string(text);
    return copy;
}

inline Text value(const char* name) { return taken(astr_environment_value(name)); }

inline Text value_of(const char* env, const char* name, AstrEnvlocE loc = ASTR_ENVLOC_ANY) {
    return taken(astr_get_environment_value(env, name, loc));
}

// Counts the environments that were opened since, and are still open.
class OpenedSince {
public:
    OpenedSince() : last_(gui_env_open("watch", ENVLOC_CWD)) {}
    ~OpenedSince() { gui_env_close(last_, false); }
    OpenedSince(const OpenedSince&) = delete;
    OpenedSince& operator=(const OpenedSince&) = delete;

    int count() const {
        int opened = 0;
        for (const eeEnv* env = last_->next; env != nullptr; env = env->next) ++opened;
        return opened;
    }

private:
    eeEnv* last_;
};

// Answers from a map of its own, and notes what it is asked.
class MapOverride : public ASTR_ApplicationEnvironmentOverride {
public:
    // Whether its strings become the caller's, or stay its own for calls that do not free them.
    enum class Strings { given, kept };

    explicit MapOverride(const char* name, Strings strings = Strings::given)
        : ASTR_ApplicationEnvironmentOverride(name), strings_(strings) {}

    char* get_value(const char* name, AstrEnvlocE loc) override {
        asked.push_back("get " + std::string(name) + " " + std::to_string(loc));
        return answer(name);
    }
    char* get_value_not_expanded(const char* name) override {
        asked.push_back("get_not_expanded " + std::string(name));
        return answer(name);
    }
    void set_value(const char* name, const char* value, AstrEnvlocE loc) override {
        asked.push_back("set " + std::string(name) + " " + std::to_string(loc));
        values[name] = value;
    }
    char* expand_value(const char* text) override {
        asked.push_back("expand " + std::string(text));
        return answer(text);
    }

    std::map<std::string, std::string> values;
    std::vector<std::string> asked;

private:
    char* answer(const char* name) {
        const auto found = values.find(name);
        if (found == values.end()) return nullptr;
        if (strings_ == Strings::given) return astr_new_string(found->second.c_str());
        return kept_.emplace_back(found->second).data();
    }

    Strings strings_;
    std::list<std::string> kept_;
};

}  // namespace orvix::test
