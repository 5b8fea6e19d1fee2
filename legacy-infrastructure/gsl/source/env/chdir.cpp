#include "env/chain.h"
#include "env/loading.h"
#include "env/saving.h"
#include "env/table.h"

#include <orvix/core/files.h>
#include <orvix/gsl/environment.h>

#include <string>
#include <string_view>

namespace orvix::gsl::env {

namespace {

bool empty_directory_levels(bool save) {
    bool saved = true;
    for (eeEnv* env = chain.master; env != nullptr; env = env->next) {
        if (save && env->cwd.capacity != 0 && !env_save_table(&env->cwd)) saved = false;
        clear(env->cwd);
    }
    return saved;
}

void load_directory_levels() {
    for (eeEnv* env = chain.master; env != nullptr; env = env->next) {
        Load load(env);
        env_load_level(load, env->cwd.path, ENVLOC_CWD, true, false);
    }
}

// Without the quotes around it; a bare drive stands for its root.
std::string directory_name(std::string_view text) {
    if (text.starts_with('"')) {
        if (text.size() >= 2 && text.ends_with('"')) text.remove_suffix(1);
        text.remove_prefix(1);
    }
    std::string name(text);
    if (name.ends_with(':')) name += '\\';
    return name;
}

bool enter(const std::string& name) {
    if (chdir_utf8(name) == 0) return true;
    // Automounters show what they have mounted under this name, and take the mount away when it is idle; the name
    // behind it mounts it again.
    constexpr std::string_view mount_point = "/tmp_mnt";
    return name.starts_with(mount_point) && chdir_utf8(name.substr(mount_point.size())) == 0;
}

}  // namespace

}  // namespace orvix::gsl::env

using namespace orvix::gsl::env;

int gui_chdir(const char* directory, bool save) {
    if (directory == nullptr) return -1;
    const bool saved = empty_directory_levels(save);
    if (!enter(directory_name(directory))) return -1;
    load_directory_levels();
    return saved ? 0 : -1;
}
