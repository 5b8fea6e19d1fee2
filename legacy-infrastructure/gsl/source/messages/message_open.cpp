#include <orvix/gsl/messages.h>

#include "messages/message_names.h"
#include "messages/message_state.h"

#include <orvix/core/path.h>
#include <orvix/gsl/environment.h>
#include <orvix/gsl/record_list.h>

#include <cstdio>
#include <new>
#include <string>

using namespace orvix::gsl;

namespace {

const char* text_or(const char* otherwise, const char* text) {
    return text == nullptr || *text == '\0' ? otherwise : text;
}

bool can_be_read(const std::string& name) {
    std::FILE* stream = orvix::Path(name).fopen("r");
    if (stream == nullptr) return false;
    std::fclose(stream);
    return true;
}

// A copy in a block of its own, of so many bytes and zeroed behind the text.
char* copy_of(const std::string& text, std::size_t bytes) {
    char* copy = gmem_ee_calloc(1, bytes);
    if (copy != nullptr) text.copy(copy, bytes - 1);
    return copy;
}

void free_text(char** text) {
    gmem_ee_free(*text);
    *text = nullptr;
}

// Null with GuiErrno set.
GmsgHandleS* open_directory(const MessageNames& names) {
    auto* handle = new (std::nothrow) GmsgHandleS{};
    if (handle == nullptr) {
        fail(GUI_ERR_MSG_ALLOC_RETRIEVAL);
        return nullptr;
    }
    if (!can_be_read(names.directory_file)) {
        delete handle;
        fail(GUI_ERR_MSG_LOCATE_FILE);
        show_error();
        return nullptr;
    }
    show_directory_file(names.directory_file.c_str());
    handle->directory = gui_env_open(names.directory_file.c_str(), ENVLOC_FILE);
    if (handle->directory == nullptr) {
        delete handle;
        fail(GUI_ERR_MSG_OPEN_ENV_FILE);
        return nullptr;
    }
    handle->extension = copy_of(names.extension, setting_bytes);
    handle->font = copy_of(names.font, setting_bytes);
    handle->language = copy_of(names.language, names.language.size() + 1);
    if (handle->extension == nullptr || handle->font == nullptr || handle->language == nullptr) {
        gmsg_close(handle);
        fail(GUI_ERR_MSG_ALLOC_RETRIEVAL);
        return nullptr;
    }
    return handle;
}

}  // namespace

GmsgHandleS* gmsg_open(const char* boot_file, const char* prefix, const char* language) {
    GuiErrno = GUI_ERR_NONE;
    gmsg_last_handle = nullptr;
    if (is_debug_mode_active_for("HXORVIX_DEBUG_MODE", "all", "msg", nullptr)) gmsg_debug = true;

    MessageNames names;
    if (!resolve_message_names(text_or("hxorvixsess", boot_file), text_or("hxorvix", prefix), text_or("", language),
                               &names)) {
        return nullptr;
    }
    gmsg_last_handle = open_directory(names);
    return gmsg_last_handle;
}

bool gmsg_close(GmsgHandleS* handle) {
    GuiErrno = GUI_ERR_NONE;
    if (handle == nullptr) return true;
    if (gmsg_last_handle == handle) gmsg_last_handle = nullptr;
    free_text(&handle->set_name);
    free_text(&handle->extension);
    free_text(&handle->font);
    free_text(&handle->language);
    const bool closed = gui_env_close(handle->directory, false);
    if (closed) handle->directory = nullptr;
    glist_close(handle->list);
    handle->list = nullptr;
    if (!closed) return fail(GUI_ERR_MSG_FREE_HANDLE);
    delete handle;
    return true;
}
