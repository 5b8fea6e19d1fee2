// Any bytes as a `.cfg` file, changed and saved: the file becomes what the model says. The lines up to an empty one are
// the changes, "name=value" to set and "name" to remove; what follows is the file.
#include "../tests/env/saving_model.h"

#include "empty_place.h"

#include <orvix/gsl/environment.h>

#include <cstdint>
#include <sstream>
#include <string>

namespace {

using orvix::fuzz::expect;

constexpr const char* file = "file";

void change(eeEnv* env, const std::string& line) {
    const std::size_t equals = line.find('=');
    const std::string name = line.substr(0, equals);
    if (equals == std::string::npos) {
        gui_env_rm(env, name.c_str(), ENVLOC_CWD);
    } else {
        gui_env_put(env, name.c_str(), line.substr(equals + 1).c_str(), ENVLOC_CWD);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const orvix::fuzz::Visit visit;
    std::istringstream input(orvix::fuzz::without_ways_out({data, data + size}));
    std::string changes;
    for (std::string line; std::getline(input, line) && !line.empty();) changes += line + "\n";
    const std::string bytes = input.eof() ? "" : input.str().substr(static_cast<std::size_t>(input.tellg()));

    orvix::fuzz::write_file(file, bytes);
    eeEnv* env = gui_env_open(file, ENVLOC_FILE);
    std::istringstream lines(changes);
    for (std::string line; std::getline(lines, line);) change(env, line);
    const auto expected = orvix::test::saved_file(bytes, orvix::test::entries_of(env->cwd));
    expect(gui_env_close(env, true));
    expect(expected && orvix::fuzz::read_file(file) == *expected);
    return 0;
}
