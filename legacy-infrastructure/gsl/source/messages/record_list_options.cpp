#include <orvix/gsl/record_list.h>

#include "messages/record_list.h"

#include <cstring>

using namespace orvix::gsl;

namespace {

enum Option : int {
    option_mark = 20,
    option_length = 21,
    option_name = 22,
    option_exists = 23,
    option_flag_1 = 24,
    option_flag_2 = 25,
    option_shared = 26,
    option_sorted = 27,
    option_block_bytes = 28,
    option_toggle = 29,
};

char* as_text(int* value) { return reinterpret_cast<char*>(value); }

bool store(int* value, std::int64_t number) {
    if (value == nullptr) return false;
    *value = static_cast<int>(number);
    return true;
}

bool store_name(int* value, const char* name) {
    if (value == nullptr) return false;
    std::strcpy(as_text(value), name);
    return true;
}

bool query_nothing(int option, int* value) {
    if (option == option_mark || option == option_length || option == option_block_bytes) store(value, 0);
    if (option == option_name) store_name(value, "");
    return false;
}

}  // namespace

bool glist_query(void* handle, int option, int* value) {
    const glist_header* list = as_list(handle);
    if (list == nullptr) return query_nothing(option, value);
    const auto has = [list](std::uint32_t flag) { return (list->flags & flag) != 0; };
    switch (option) {
        case option_mark:
            return store(value, list->mark);
        case option_length:
            return store(value, list->length);
        case option_name:
            return store_name(value, list->name_holder != nullptr ? *list->name_holder : "");
        case option_exists:
            return true;
        case option_flag_1:
            return has(0x001);
        case option_flag_2:
            return has(0x002);
        case option_shared:
            return list->ref_count > 1;
        case option_sorted:
            return has(flag_sorted);
        case option_block_bytes:
            return store(value, list->block_bytes);
        case option_toggle:
            return has(flag_toggle);
        default:
            return false;
    }
}

bool glist_set(void* handle, int option, int* value) {
    glist_header* list = as_list(handle);
    if (list == nullptr) return false;
    if (option == option_toggle) {
        list->flags ^= flag_toggle;
        return true;
    }
    if (value == nullptr) return false;
    switch (option) {
        case option_mark:
            list->mark = static_cast<std::uint32_t>(*value);
            return true;
        case option_name:
            if (list->name_holder == nullptr) return false;
            std::strncpy(*list->name_holder, as_text(value), list_name_bytes);
            return true;
        case option_block_bytes:
            list->block_bytes = *value;
            return true;
        default:
            return false;
    }
}
