#include "env/level_files.h"

#include "env/loading.h"
#include "env/process_variable.h"
#include "env/table.h"

#include <orvix/gsl/status.h>

namespace orvix::gsl::env {

namespace {

char* root_directory = nullptr;

struct CustomDirectory {
    char text[1024];  // empty if there is none
    bool was_read;
};
CustomDirectory custom_directory{};

std::string base_directory() {
    if (root_directory != nullptr) return root_directory;
    return std::string(process_variable("HXORVIX_DIR").value_or("\\hxorvix"));
}

// Without one backslash at its end. A home that is nothing but a backslash becomes a blank; files have been saved under
// that name.
std::string home_directory() {
    std::string home(process_variable("HOME").value_or(""));
    if (home == "\\") return " ";
    if (home.ends_with('\\')) home.pop_back();
    return home;
}

std::string custom_config_directory() {
    if (custom_directory.text[0] != '\0') return custom_directory.text;
    return base_directory() + "\\custom\\config";
}

// An included name that needs no directory and no ".cfg". The user's level knows drives, the others know roots.
bool is_complete(const std::string& name, EnvlocE level) {
    if (level != ENVLOC_USER) return name.starts_with('\\');
    return name.size() > 2 && name[1] == ':' && (name[2] == '/' || name[2] == '\\');
}

std::string path_text(const std::string& name, EnvlocE level) {
    switch (level) {
        case ENVLOC_CWD:
            return name + ".cfg";
        case ENVLOC_USER:
            return home_directory() + "\\hxorvix\\config\\" + name + ".cfg";
        case ENVLOC_CUSTOM:
            return custom_config_directory() + "\\" + name + ".cfg";
        default:
            return base_directory() + "\\config\\" + name + ".cfg";
    }
}

}  // namespace

void read_custom_directory() {
    if (custom_directory.was_read) return;
    custom_directory.was_read = true;
    // Cut where it is too long: no file name with so long a directory fits a level.
    process_variable("QDS_CUSTOM_DIR").value_or("").copy(custom_directory.text, sizeof custom_directory.text - 1);
}

std::optional<std::string> level_path(const std::string& name, EnvlocE level, bool verbatim, bool included) {
    std::string path;
    if (verbatim || level == ENVLOC_FILE) {
        path = name;
    } else if (level < ENVLOC_CWD || level > ENVLOC_SYSTEM) {
        return std::nullopt;
    } else {
        path = included && is_complete(name, level) ? name : path_text(name, level);
    }
    if (path.size() >= sizeof EnvTable::path) return std::nullopt;
    return path;
}

void env_load_level(Load& load, const char* name, EnvlocE level, bool verbatim, bool included) {
    const std::optional<std::string> path = level_path(name, level, verbatim, included);
    if (!path) return;
    EnvTable* table = &table_of_new(*load.env, verbatim ? ENVLOC_CWD : level);
    env_read_file(load, level, verbatim, included, path->c_str(), table, false);
    if (level == ENVLOC_SYSTEM) env_scan_addons(load, name, verbatim, included);
}

}  // namespace orvix::gsl::env

using namespace orvix::gsl::env;

const char* guienv_get_root_directory(void) { return root_directory; }

void guienv_set_root_directory(const char* path) {
    char* copy = path != nullptr && path[0] != '\0' ? copy_text(path) : nullptr;
    gmem_ee_free(root_directory);
    root_directory = copy;
}
