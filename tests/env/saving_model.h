// What a save writes, as plainly as it can be written.
#pragma once

#include "fgets_model.h"

#include <orvix/gsl/environment.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvix::test {

struct SavedEntry {
    std::string key;
    std::string value;
    EnvModE mod;
};

inline std::vector<SavedEntry> entries_of(const EnvTable& table) {
    std::vector<SavedEntry> entries;
    for (std::int32_t i = 0; i < table.used; ++i) {
        const EnvEntry& entry = table.entries[i];
        entries.push_back({entry.key, entry.value != nullptr ? entry.value : "", entry.mod});
    }
    return entries;
}

// The file after a save of these entries; none for a file that is missing and stays so.
inline std::optional<std::string> saved_file(const std::optional<std::string>& before,
                                             std::vector<SavedEntry> entries) {
    constexpr std::string_view white = " \t\n\v\f\r";
    bool changed = false;
    for (const SavedEntry& entry : entries) {
        changed = changed || entry.mod == ENVMOD_CHANGED || entry.mod == ENVMOD_REMOVED;
    }
    if (!changed) return before;

    std::string after;
    const auto write = [&after](const std::string& key, const std::string& value) {
        after += key + "=" + value + "\n";
    };
    if (!before) {
        for (const SavedEntry& entry : entries) {
            if (entry.mod != ENVMOD_INCLUDED) write(entry.key, entry.value);
        }
        return after;
    }
    for (const std::string& line : lines_by_fgets(*before, 2048, 2048)) {
        const std::size_t equals = line.find('=');
        if (line.size() < 2 || line[0] == '#' || equals == std::string::npos) {
            after += line;
            continue;
        }
        std::string key = line.substr(0, equals);
        key.resize(key.find_last_not_of(white) + 1);
        for (char& c : key) c = static_cast<char>(c >= 'a' && c <= 'z' ? c - 32 : c);
        std::string value = line.substr(equals + 1);
        value.erase(0, value.find_first_not_of(white));
        SavedEntry* match = nullptr;
        for (SavedEntry& entry : entries) {
            if (match == nullptr && !key.empty() && entry.key == key) match = &entry;
        }
        if (match == nullptr) {
            write(key, value);
        } else if (match->mod == ENVMOD_CHANGED) {
            match->mod = ENVMOD_CLEAN;
            write(key, match->value);
        } else if (match->mod != ENVMOD_REMOVED) {
            value.resize(value.find_last_not_of(white) + 1);
            write(key, value);
        }
    }
    for (const SavedEntry& entry : entries) {
        if (entry.mod == ENVMOD_CHANGED) write(entry.key, entry.value);
    }
    return after;
}

}  // namespace orvix::test
