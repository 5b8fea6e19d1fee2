// A site of a test's own: directories for every level of settings, and the process variables that point to them.
#pragma once

#include "support/temporary_directory.h"

#include <orvix/gsl/environment.h>

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace orvix::test {

// Levels of an environment "demo", below the site's directory:
//
//   1  work/demo.cfg                           the current directory is work/
//   2  home/hxorvix/config/demo.cfg            HOME is home/
//   3  install/custom/config/demo.cfg          QDS_CUSTOM_DIR is unset
//   4  install/config/demo.cfg                 HXORVIX_DIR is install/
//      install/config/addons_cfgs/demo/        add-on files
//
// The end of the scope drops all environments unsaved and puts everything back. (QDS_CUSTOM_DIR is read once in a
// process: a test of it needs a process of its own.)
class TempSite {
public:
    TempSite() { std::filesystem::current_path(make("work")); }
    ~TempSite() {
        gui_env_deinit(false);
        guienv_set_root_directory(nullptr);
    }
    TempSite(const TempSite&) = delete;
    TempSite& operator=(const TempSite&) = delete;

    std::filesystem::path path(std::string_view relative = "") const { return directory_.path() / host_path(relative); }

    // The name of a file below, in the library's form.
    std::string name(std::string_view relative = "") const { return directory_.name(relative); }

    std::string write(std::string_view relative, std::string_view bytes) const {
        return directory_.write(relative, bytes);
    }
    std::string read(std::string_view relative) const { return directory_.read(relative); }

    // Writes the file of one level of "name", and opens that level alone.
    eeEnv* open(const char* name, std::string_view bytes, EnvlocE level = ENVLOC_CWD) const {
        write(file_of(name, level), bytes);
        return gui_env_open(name, level);
    }

    // The file of a level, below the site's directory.
    static std::string file_of(const std::string& name, EnvlocE level) {
        switch (level) {
            case ENVLOC_USER:
                return "home/hxorvix/config/" + name + ".cfg";
            case ENVLOC_CUSTOM:
                return "install/custom/config/" + name + ".cfg";
            case ENVLOC_SYSTEM:
                return "install/config/" + name + ".cfg";
            default:
                return "work/" + name + ".cfg";
        }
    }

private:
    std::filesystem::path make(std::string_view relative) const {
        std::filesystem::create_directories(path(relative));
        return path(relative);
    }

    TemporaryDirectory directory_{TemporaryDirectory::Enter::yes};
    ScopedVariable home_{"HOME", library_name(make("home")).c_str()};
    ScopedVariable install_{"HXORVIX_DIR", library_name(make("install")).c_str()};
    ScopedVariable custom_{"QDS_CUSTOM_DIR", nullptr};
};

// The value of a setting; none if it does not exist.
inline std::optional<std::string> setting(eeEnv* env, const char* name, EnvlocE level = ENVLOC_ANY) {
    std::string value(100, '\0');
    long long needed = gui_env_get(env, name, value.data(), nullptr, value.size(), level);
    if (needed > 0) {
        value.resize(static_cast<std::size_t>(needed));
        needed = gui_env_get(env, name, value.data(), nullptr, value.size(), level);
    }
    if (needed != 0) return std::nullopt;
    return value.c_str();
}

// The entry of a key in a table, removed ones too; null if there is none. Walks the slots as the table shows them.
inline const EnvEntry* entry_of(const EnvTable& table, std::string_view key) {
    for (std::int32_t slot = 0; slot < table.used; ++slot) {
        if (table.entries[slot].key == key) return &table.entries[slot];
    }
    return nullptr;
}

}  // namespace orvix::test
