// What a `.cfg` file sets, as plainly as it can be written. Include lines are passed over.
#pragma once

#include "fgets_model.h"
#include "saving_model.h"

#include <orvix/gsl/environment.h>

#include <string>
#include <string_view>
#include <vector>

namespace orvix::test {

inline std::vector<SavedEntry> settings_of_file(std::string_view bytes) {
    constexpr std::string_view white = " \t\n\v\f\r";
    std::vector<SavedEntry> entries;
    for (std::string line : lines_by_fgets(bytes, 2048, 2048)) {
        line.resize(line.find_last_not_of(white) + 1);
        const std::size_t equals = line.find('=');
        if (line.size() < 2 || line[0] == '#' || line.starts_with("//") || line[0] == '+') continue;
        if (equals == std::string::npos) continue;
        std::string key = line.substr(0, equals);
        key.resize(key.find_last_not_of(white) + 1);
        for (char& c : key) c = static_cast<char>(c >= 'a' && c <= 'z' ? c - 32 : c);
        key = key.substr(0, 63);
        if (key.empty()) continue;
        std::string value = line.substr(equals + 1);
        value.erase(0, value.find_first_not_of(white));
        bool found = false;
        for (SavedEntry& entry : entries) {
            if (entry.key != key) continue;
            entry.value = value;
            entry.mod = ENVMOD_CHANGED;
            found = true;
        }
        if (!found) entries.push_back({key, value, ENVMOD_CLEAN});
    }
    return entries;
}

}  // namespace orvix::test
