#include <orvix/gsl/record_list.h>

#include "messages/record_list.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>

using namespace orvix::gsl;

namespace {

constexpr std::int32_t default_block_bytes = 256;

// All open lists, in the order of their creation.
constinit glist_header* lists = nullptr;
constinit glist_header** lists_end = &lists;

bool decline(glist_header*, ListOperation, std::uint32_t) { return false; }

char** new_name(const char* text) {
    auto** holder = static_cast<char**>(std::malloc(sizeof(char*)));
    if (holder == nullptr) return nullptr;
    *holder = static_cast<char*>(std::calloc(list_name_bytes + 1, 1));
    if (*holder == nullptr) {
        std::free(holder);
        return nullptr;
    }
    std::strncpy(*holder, text, list_name_bytes);
    return holder;
}

void free_name(char** holder) {
    if (holder != nullptr) std::free(*holder);
    std::free(holder);
}

void link_list(glist_header& list) {
    list.prev_link = lists_end;
    *lists_end = &list;
    lists_end = &list.next;
}

void unlink_list(glist_header& list) {
    *list.prev_link = list.next;
    if (list.next != nullptr) {
        list.next->prev_link = list.prev_link;
    } else {
        lists_end = list.prev_link;
    }
}

}  // namespace

bool glist_create(void** handle, int flags, char* tag, char* name) {
    if (handle == nullptr) return false;
    auto* list = new (std::nothrow) glist_header{};
    if (list == nullptr) return false;
    list->last_link = &list->first_block;
    list->name_holder = new_name(name != nullptr ? name : "");
    list->self = list;
    list->ref_count = 1;
    list->flags = static_cast<std::uint32_t>(flags) & flags_kept;
    list->block_bytes = default_block_bytes;
    list->compare = compare_record;
    list->copy_out = copy_record;
    list->hook = decline;
    if (tag != nullptr) std::memcpy(list->tag, tag, std::min(std::strlen(tag), sizeof list->tag));
    link_list(*list);
    *handle = list;
    return true;
}

bool glist_close(void* handle) {
    glist_header* list = as_list(handle);
    if (list == nullptr) return false;
    if (is_taken_over(list, ListOperation::close, 0)) return true;
    if (list->ref_count-- != 1) return true;
    glist_setlength(list, 0);
    unlink_list(*list);
    free_name(list->name_holder);
    delete list;
    return true;
}
