#include "messages/message_state.h"

#include <cstdio>

namespace orvix::gsl {

constinit bool gmsg_environment_ready = false;
constinit bool gmsg_debug = false;
constinit char gmsg_separator[8] = "\x0e";
constinit GmsgHandleS* gmsg_last_handle = nullptr;

void show_boot_setting(const char* file, const char* key, const char* value) {
    if (gmsg_debug) std::fprintf(stderr, "gmsg: %s : %s = %s\n", file, key, value);
}

void show_set(const char* set, const char* value) {
    if (gmsg_debug) std::fprintf(stderr, "gmsg: %s = %s\n", set, value);
}

void show_directory_file(const char* path) {
    if (gmsg_debug) std::fprintf(stderr, "gmsg: msg_directory_filename = %s\n", path);
}

void show_error() {
    if (gmsg_debug) std::fprintf(stderr, "gmsg: ERROR = %s\n", gerror_get_error_message());
}

}  // namespace orvix::gsl
