// What the message calls share between them and from one call to the next.
#pragma once

#include <orvix/gsl/messages.h>
#include <orvix/gsl/status.h>

#include <cstddef>

namespace orvix::gsl {

constexpr std::size_t setting_bytes = 2048;  // a value of the boot or directory file, with its zero byte

extern bool gmsg_environment_ready;    // environments could be brought up
extern bool gmsg_debug;                // debug lines are on, and stay on
extern char gmsg_separator[8];         // stands for a line break within a message; empty for nothing
extern GmsgHandleS* gmsg_last_handle;  // that of the last set that was loaded or found in memory

// Debug lines, if they are on. Each takes its strings as they are.
void show_boot_setting(const char* file, const char* key, const char* value);
void show_set(const char* set, const char* value);
void show_directory_file(const char* path);
void show_error();  // the text of GuiErrno

// Notes why a call fails.
inline bool fail(GuiError error) {
    GuiErrno = error;
    return false;
}

// Makes sure that the handle holds the lines of the set. False with GuiErrno set.
bool load_message_set(GmsgHandleS& handle, const char* set);

}  // namespace orvix::gsl
