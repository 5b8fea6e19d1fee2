// Any bytes as a `.cfg` file. Without include lines they set what the model says; with them, which a first byte `+`
// chooses, the table stays sound.
#include "../tests/env/config_model.h"

#include "empty_place.h"

#include <orvix/gsl/environment.h>

#include <cstdint>
#include <cstring>
#include <set>
#include <string>

namespace {

using orvix::fuzz::expect;

// The dot keeps it out of the reach of include lines: a file that includes itself is slow.
constexpr const char* file = "main.file";
constexpr const char* included_file = "a";

void check_soundness(const EnvTable& table) {
    expect(table.capacity % 32 == 0 && table.used >= 0 && table.used <= table.capacity);
    std::set<std::string> keys;
    for (std::int32_t i = 0; i < table.capacity; ++i) {
        const EnvEntry& entry = table.entries[i];
        expect((entry.key[0] != '\0') == (i < table.used));
        if (i >= table.used) continue;
        expect(std::memchr(entry.key, '\0', sizeof entry.key) != nullptr && entry.value != nullptr);
        expect(keys.insert(entry.key).second);
    }
}

void check_settings(eeEnv* env, const std::string& bytes) {
    const auto expected = orvix::test::settings_of_file(bytes);
    const auto entries = orvix::test::entries_of(env->cwd);
    expect(entries.size() == expected.size());
    for (std::size_t i = 0; i < entries.size(); ++i) {
        expect(entries[i].key == expected[i].key && entries[i].value == expected[i].value);
        expect(entries[i].mod == expected[i].mod);
        expect(gui_env_get(env, entries[i].key.c_str(), nullptr, nullptr, 0, ENVLOC_ANY) == 0);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const orvix::fuzz::Visit visit;
    const bool includes = data[0] == '+';
    std::string bytes(data + 1, data + size);
    if (includes) bytes = orvix::fuzz::without_ways_out(bytes);
    for (char& c : bytes) {
        if (c == '+' && !includes) c = '-';
    }
    orvix::fuzz::write_file(file, bytes);
    orvix::fuzz::write_file(included_file, "A=included\nB=%A\n");
    eeEnv* env = gui_env_open(file, ENVLOC_FILE);
    expect(env != nullptr);
    check_soundness(env->cwd);
    if (!includes) check_settings(env, bytes);
    expect(gui_env_close(env, false));
    return 0;
}
