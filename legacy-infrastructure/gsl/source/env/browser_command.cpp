#include "env/browser_command.h"

#include <algorithm>

namespace orvix::gsl::env {

namespace {

constexpr std::size_t extension_bytes = 4;

bool ends_program(std::string_view rest) {
    if (!rest.starts_with(".exe") && !rest.starts_with(".EXE")) return false;
    rest.remove_prefix(extension_bytes);
    return rest.empty() || rest[0] == ' ' || rest[0] == '"';
}

}  // namespace

std::string program_of_command(std::string_view command) {
    for (std::size_t dot = command.find('.'); dot != std::string_view::npos; dot = command.find('.', dot + 1)) {
        if (!ends_program(command.substr(dot))) continue;
        std::string program(command.substr(0, dot + extension_bytes));
        std::replace(program.begin(), program.end(), '"', ' ');
        return program;
    }
    return std::string(command);
}

}  // namespace orvix::gsl::env
