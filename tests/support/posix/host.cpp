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

std::filesystem::path of_any_length(const std::filesystem::path& host, bool) { return host; }

bool set_length(const std::filesystem::path& host, std::uintmax_t bytes) {
    std::error_code error;
    std::filesystem::resize_file(host, bytes, error);
    return !error;
}

const char* const root_drive = "C:";

const bool variables_fold_letter_case = false;

const bool entered_links_are_resolved = true;

bool removed_names_go_at_once() { return true; }

const std::size_t longest_current_directory = 1'000'000;

bool may_stand_in_names(char character) { return character != '/' && character != '\0'; }

const char* const locale_with_comma = "de_DE.UTF-8";

const char* const letters_of_names = "aAbB.~ *?\\:$%'\xc3\xa4";

bool host_takes_name(const std::string& name) { return !name.empty() && name != "." && name != ".."; }

}  // namespace orvix::test
