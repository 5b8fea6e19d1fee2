#include <orvix/gsl/application_environment.h>

#include "env/browser_command.h"
#include "env/heap_text.h"

#include <orvix/core/registry.h>
#include <orvix/core/stored_names.h>
#include <orvix/gsl/files.h>
#include <orvix/gsl/string_utilities.h>

#include <algorithm>
#include <string>

using namespace orvix::gsl::env;

namespace {

// What opens links, and what opens pages.
constexpr const char* commands[] = {
    R"(SOFTWARE\Classes\http\shell\open\command)",
    R"(SOFTWARE\Classes\htmlfile\shell\open\command)",
};

// Empty if the key or its program does not exist.
std::string registered_program(const char* key) {
    std::string command;
    if (!orvix::core::machine_registry_text(key, "", &command)) return "";
    // The quotes around a program have become blanks, and a name that begins with one is another name.
    const std::string program = program_of_command(command);
    return orvix::core::short_name(program.substr(std::min(program.find_first_not_of(' '), program.size())));
}

}  // namespace

char* gui_env_getwebbrowser(void) {
    HeapText chosen(astr_get_environment_value("de_sim", "WEB_BROWSER", ASTR_ENVLOC_ANY));
    if (gfile_exists(chosen.get())) return chosen.release();
    for (const char* key : commands) {
        const std::string program = registered_program(key);
        if (!program.empty()) return astr_new_string(program.c_str());
    }
    return astr_new_string("");
}
