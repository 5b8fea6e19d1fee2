// Any text over any settings comes out as the model says. Each line "name=value" but the last is a setting: of the
// first environment, of the second, of the master and of the process in turn. The last line is the text.
#include "../tests/env/expansion_model.h"

#include "empty_place.h"

#include <orvix/gsl/environment.h>

#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include <unistd.h>

namespace {

using orvix::fuzz::expect;

std::string upper(std::string name) {
    name = name.substr(0, 63);
    for (char& c : name) c = static_cast<char>(c >= 'a' && c <= 'z' ? c - 32 : c);
    return name;
}

bool can_be_set(const std::string& name) {
    return !name.empty() && name.size() < 9 && std::getenv(name.c_str()) == nullptr &&
           name.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ_0123456789") == std::string::npos;
}

// Both environments and the master with their settings, and a model of them.
class Setting {
public:
    Setting() {
        model_.settings.resize(3);
        for (char** variable = environ; *variable != nullptr; ++variable) {
            const std::string text = *variable;
            const std::string name = text.substr(0, text.find('='));
            if (name == upper(name)) model_.variables[name] = std::getenv(name.c_str());
        }
    }
    ~Setting() {
        for (const std::string& name : variables_) unsetenv(name.c_str());
        for (const auto& [name, value] : model_.settings[2]) gui_env_rm_ee(name.c_str(), ENVLOC_ANY);
        for (eeEnv* env : environments_) gui_env_close(env, false);
    }
    Setting(const Setting&) = delete;
    Setting& operator=(const Setting&) = delete;

    void add(std::size_t place, const std::string& raw_name, const std::string& value) {
        const std::string name = upper(raw_name);
        if (place < 3 && !name.empty()) model_.settings[place][name] = value;
        switch (place) {
            case 0:
            case 1:
                gui_env_put(environments_[place], name.c_str(), value.c_str(), ENVLOC_ANY);
                break;
            case 2:
                gui_env_put_ee(name.c_str(), value.c_str(), ENVLOC_ANY);
                break;
            default:
                if (!can_be_set(name)) return;
                model_.variables[name] = value;
                variables_.push_back(name);
                setenv(name.c_str(), value.c_str(), 1);
        }
    }

    void check(const std::string& text, bool variables_only) {
        model_.variables_only = variables_only;
        const auto [expected, gave_up] = model_.expand(text);
        if (gave_up) return;
        const auto call = variables_only ? gui_env_expand_str_system_only : gui_env_expand_str;
        std::string dest(model_.longest + 1, '#');
        const long long result =
            call(dest.data(), text.c_str(), dest.size(), environments_[0], environments_[1], nullptr);
        expect(result == (expected ? 0 : -1));
        expect(dest.c_str() == expected.value_or(""));
    }

private:
    eeEnv* environments_[2] = {gui_env_open("none", static_cast<EnvlocE>(9)),
                               gui_env_open("none", static_cast<EnvlocE>(9))};
    std::vector<std::string> variables_;  // set by this object
    orvix::test::ExpansionModel model_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const orvix::fuzz::Visit visit;
    std::string input(data, data + size);
    for (char& c : input) {
        if (c == '\0') c = '0';
    }
    std::istringstream stream(input);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    if (lines.empty()) return 0;

    Setting setting;
    for (std::size_t i = 0; i + 1 < lines.size(); ++i) {
        const std::size_t equals = lines[i].find('=');
        if (equals != std::string::npos) {
            setting.add(i % 4, lines[i].substr(0, equals), lines[i].substr(equals + 1));
        }
    }
    setting.check(lines.back(), false);
    setting.check(lines.back(), true);
    return 0;
}
