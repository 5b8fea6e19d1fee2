#include "messages/message_state.h"

#include <orvix/gsl/directory_scan.h>
#include <orvix/gsl/environment.h>
#include <orvix/gsl/record_list.h>

#include <cstring>
#include <string>

namespace orvix::gsl {

namespace {

bool remember_set_name(GmsgHandleS& handle, const char* set) {
    const std::size_t bytes = std::strlen(set) + 1;
    char* name = handle.set_name;
    if (name == nullptr || bytes > std::strlen(name) + 1) {
        // Calloc'd afresh rather than resized: `set` may be the name itself.
        name = gmem_ee_calloc(1, bytes);
        if (name != nullptr) std::memcpy(name, set, bytes);
        gmem_ee_free(handle.set_name);
        handle.set_name = name;
    } else {
        std::memmove(name, set, bytes);
    }
    return name != nullptr || fail(GUI_ERR_MSG_ALLOC_SET);
}

void drop_list(GmsgHandleS& handle) {
    if (handle.list != nullptr) glist_close(handle.list);
    handle.list = nullptr;
}

bool find_set(eeEnv* directory, const char* set, char (&value)[setting_bytes]) {
    return gui_env_get(directory, set, value, nullptr, setting_bytes, ENVLOC_ANY) == 0 &&
           gui_env_expand_str(value, value, setting_bytes, directory, nullptr) == 0;
}

// The file that a set's value stands for; empty if there is none.
std::string message_file(const std::string& value, const char* extension) {
    for (const std::string& name : {value + ".msg", value + "." + extension, value}) {
        if (gsl_stat(name.c_str(), nullptr) == 0) return name;
    }
    return "";
}

bool load_message_file(GmsgHandleS& handle, const char* set) {
    drop_list(handle);
    if (!glist_create(&handle.list, 0, nullptr, nullptr)) return fail(GUI_ERR_MSG_LOAD_FILE);

    char value[setting_bytes] = "";
    const bool found = find_set(handle.directory, set, value);
    if (!found) {
        drop_list(handle);
        fail(GUI_ERR_MSG_FIND_SET);
    }
    show_set(set, value);
    if (!found) {
        show_error();
        return false;
    }
    std::string file = message_file(value, handle.extension);
    if (file.empty()) return fail(GUI_ERR_MSG_LOCATE_FILE);
    if (!glist_load(handle.list, file.data(), nullptr)) {
        drop_list(handle);
        return fail(GUI_ERR_MSG_LOAD_FILE);
    }
    return true;
}

}  // namespace

bool load_message_set(GmsgHandleS& handle, const char* set) {
    const bool in_memory =
        &handle == gmsg_last_handle && handle.set_name != nullptr && gsl_strcmp(handle.set_name, set) == 0;
    if (in_memory) return true;

    if (!remember_set_name(handle, set)) return false;
    if (!load_message_file(handle, handle.set_name)) {
        gmem_ee_free(handle.set_name);
        handle.set_name = nullptr;
        return false;
    }
    gmsg_last_handle = &handle;
    return true;
}

}  // namespace orvix::gsl
