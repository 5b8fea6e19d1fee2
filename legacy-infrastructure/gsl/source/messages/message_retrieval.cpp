#include <orvix/gsl/messages.h>

#include "messages/message_state.h"

#include <orvix/gsl/record_list.h>

#include <cstring>

using namespace orvix::gsl;

namespace {

// Of a separator of several bytes all but the first stay in the text; message files are written with that in mind.
void break_lines(char* text) {
    if (gmsg_separator[0] == '\0') return;
    for (char* found = text; (found = std::strstr(found, gmsg_separator)) != nullptr; ++found) *found = '\n';
}

}  // namespace

bool gmsg_check_index(GmsgHandleS* handle, const char* set, int line) {
    GuiErrno = GUI_ERR_NONE;
    if (handle == nullptr || handle->directory == nullptr) return fail(GUI_ERR_MSG_NOT_INITIALIZED);
    if (line < 1) return fail(GUI_ERR_MSG_BAD_LINE_NUMBER);
    if (set == nullptr) return fail(GUI_ERR_MSG_SET_NOT_SPECIFIED);
    if (!load_message_set(*handle, set)) return false;
    if (handle->list == nullptr) return fail(GUI_ERR_MSG_LIST_SIZE);
    int lines = 0;
    glist_query(handle->list, 21, &lines);
    return line <= lines || fail(GUI_ERR_MSG_BAD_LINE_NUMBER);
}

bool gmsg_retrieve_message(GmsgHandleS* handle, const char* set, int line, char* out) {
    if (!gmsg_check_index(handle, set, line)) return false;
    if (!glist_getstr(handle->list, static_cast<unsigned>(line) - 1, out)) return fail(GUI_ERR_MSG_RETRIEVE_FAILED);
    break_lines(out);
    return true;
}
