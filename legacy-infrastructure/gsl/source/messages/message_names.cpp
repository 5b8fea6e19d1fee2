#include "messages/message_names.h"

#include "messages/message_state.h"

#include <orvix/gsl/environment.h>

#include <cstring>
#include <memory>

namespace orvix::gsl {

namespace {

constexpr const char* suite_environment = "hxorvix";
constexpr char default_separator[] = "\x0e";

struct CloseUnsaved {
    void operator()(eeEnv* environment) const { gui_env_close(environment, false); }
};
using Environment = std::unique_ptr<eeEnv, CloseUnsaved>;

void read_separator() {
    std::strcpy(gmsg_separator, default_separator);
    const Environment environment(gui_env_open(suite_environment, ENVLOC_ANY));
    if (environment == nullptr) return;
    char value[sizeof gmsg_separator];
    if (gui_env_get_ee_and_expand("MSG_SEPARATOR", value, nullptr, sizeof value, ENVLOC_ANY) == 0) {
        std::strcpy(gmsg_separator, value);
    }
}

bool bring_up_environment() {
    if (gmsg_environment_ready) return true;
    gmsg_environment_ready = gui_env_init();
    if (!gmsg_environment_ready) return fail(GUI_ERR_MSG_OPEN_ENV);
    read_separator();
    return true;
}

// Null with GuiErrno set; *name is the one that was opened.
Environment open_boot_file(const char** name) {
    Environment boot(gui_env_open(*name, ENVLOC_ANY));
    if (boot == nullptr && std::strcmp(*name, suite_environment) != 0) {
        *name = suite_environment;
        boot.reset(gui_env_open(*name, ENVLOC_ANY));
    }
    if (boot == nullptr) fail(GUI_ERR_MSG_OPEN_BOOT);
    return boot;
}

bool find_directory_file(eeEnv* boot, const std::string& key, char (&value)[setting_bytes]) {
    return gui_env_get(boot, key.c_str(), value, nullptr, setting_bytes, ENVLOC_ANY) == 0 &&
           gui_env_expand_str(value, value, setting_bytes, boot, nullptr) == 0;
}

// The value of a setting; without it the default, with the warning in GuiErrno.
std::string setting_or(const char* otherwise, eeEnv* boot, const std::string& key, GuiError warning) {
    char value[setting_bytes];
    if (gui_env_get(boot, key.c_str(), value, nullptr, setting_bytes, ENVLOC_ANY) == 0) return value;
    GuiErrno = warning;
    return otherwise;
}

}  // namespace

bool resolve_message_names(const char* boot_file, const char* prefix, const char* language, MessageNames* names) {
    if (!bring_up_environment()) return false;
    Environment boot = open_boot_file(&boot_file);
    if (boot == nullptr) return false;

    const std::string key = std::string(prefix) + "_MSG_FILE";
    char directory_file[setting_bytes] = "";
    const bool found = find_directory_file(boot.get(), key, directory_file);
    if (!found) {
        boot.reset();
        GuiErrno = GUI_ERR_MSG_GET_DIR_FILE;
    }
    show_boot_setting(boot_file, key.c_str(), directory_file);
    if (!found) {
        show_error();
        return false;
    }
    names->directory_file = directory_file;
    names->language = language;
    if (names->language.empty()) {
        names->language = setting_or("ENGLISH", boot.get(), "HXORVIX_LANGUAGE", GUI_ERR_MSG_GET_LANGUAGE);
    }
    names->extension = setting_or("eng", boot.get(), names->language + "_MSG_EXT", GUI_ERR_MSG_GET_LANG_EXT);
    names->font = setting_or("9x15bold", boot.get(), names->language + "_MSG_FONT", GUI_ERR_MSG_GET_LANG_FONT);
    return true;
}

}  // namespace orvix::gsl
