#include "support/host.h"

#include "support/temporary_directory.h"

#include <cstdlib>

namespace orvix::test {

std::optional<std::string> process_variable(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? std::optional<std::string>(value) : std::nullopt;
}

void set_process_variable(const char* name, const std::optional<std::string>& value) {
    if (value) {
        setenv(name, value->c_str(), 1);
    } else {
        unsetenv(name);
    }
}

std::string name_of_host(const std::filesystem::path& path) { return path.string(); }

void remove_tree(const std::filesystem::path& directory) {
    std::error_code ignored;
    std::filesystem::remove_all(directory, ignored);
}

const char* const root_drive = "C:";

const char* const letters_of_names = "aAbB.~ *?\\:$%'\xc3\xa4";

}  // namespace orvix::test
