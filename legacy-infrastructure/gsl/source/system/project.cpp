#include <orvix/gsl/projects.h>

#include "gfile_default_path.h"
#include "system/directory_text.h"
#include "system/project_directories.h"
#include "system/project_file.h"

#include <orvix/gsl/file_trees.h>
#include <orvix/gsl/files.h>
#include <orvix/gsl/string_utilities.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

using namespace orvix::gsl::system;

namespace {

constexpr const char* version_key = "PROJECT_VERSION";
constexpr const char* version = "1000";

constexpr std::size_t longest_directory = 1023;
constexpr std::size_t longest_deleted = 255;

constinit char* marker = nullptr;  // owned; null before gprj_init and after gprj_init(nullptr)

bool has_right_version(const std::string& directory) {
    if (marker == nullptr) return false;
    std::string value;
    return gprj_read_value(directory, std::string(marker) + ".cfg", version_key, &value) && value == version;
}

}  // namespace

void gprj_init(const char* name) {
    char* const copy = astr_new_string(name);
    astr_free_string(marker);
    marker = copy;
}

bool gprj_is_project(const char* directory, char* list) {
    if (directory == nullptr) return false;
    std::string name = without_separator(std::string(directory).substr(0, longest_directory));
    if (!orvix::gsl::gfile_setdefpath(&name) || name.size() > longest_directory) return false;
    name = without_separator(name);
    std::vector<std::string> required;
    if (!gprj_list_directories(name, list, Directories::required, &required)) return false;
    required.push_back(name);
    const auto exists = [](const std::string& file) { return gfile_exists(file.c_str()); };
    return std::all_of(required.begin(), required.end(), exists) && has_right_version(name);
}

bool gprj_delete(const char* directory) {
    if (directory == nullptr || std::strlen(directory) > longest_deleted) return false;
    return gfile_rm(without_separator(directory).c_str(), true);
}
