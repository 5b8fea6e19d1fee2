#include <orvix/gsl/status.h>

#include <array>
#include <cstdio>
#include <cstring>

GuiError GuiErrno = GUI_ERR_NONE;

namespace {

std::int32_t SystemErrno = 0;
bool debug_latch = false;

constexpr std::array messages{
    "No error",
    "System library call failed",
    "Unable to allocate memory for message retrieval",
    "Unable to allocate memory for message set",
    "Unable to free resources from message retrieval handle",
    "Unable to open HX Orvix environment for message retrieval",
    "Unable to open application boot file for message retrieval",
    "Unable to get HXORVIX_LANGUAGE variable for message retrieval",
    "Unable to get language extension for message retrieval",
    "Unable to get language font for message retrieval",
    "Unable to get directory file name for message retrieval",
    "Unable to expand directory file name for message retrieval",
    "Unable to locate message file for message retrieval",
    "Unable to open environment file for message retrieval",
    "Unable to load message file for message retrieval",
    "Unable to find message set for message retrieval",
    "Unable to manipulate message set for message retrieval",
    "Unable to resolve message list size for message retrieval",
    "Message set not specified for message retreival",  // applications match on this spelling
    "Message file system not initialized",
    "Invalid message retrieval line number",
    "Failed to retrieve message",
    "Cannot find file",
    "Cannot open file",
    "Error reading file",
    "Error writing file",
    "Unable to delete file",
    "Unable to allocate memory for file copy operation",
    "Unable to seek to beginning of file",
    "Clock start failed",
    "Clock stop failed",
};
static_assert(messages.size() == GUI_ERR_CLOCK_STOP + 1);

// The bound is the table's size in bytes, not its count of entries, and always was: numbers from 31 on pass the test.
constexpr std::int32_t message_bound = 248;
static_assert(message_bound == messages.size() * 8);

// No system that the library runs on numbers its errors higher; 133 is the last on Linux, 140 or so on Windows.
constexpr std::int32_t system_error_bound = 4095;

constexpr const char* out_of_range = "GuiErrno out of range";

bool in_range(GuiError error) { return error >= 1 && error <= message_bound; }

bool system_error_in_range() { return SystemErrno >= 1 && SystemErrno <= system_error_bound; }

// Null when the number is out of range. A number that passes the range test without naming a message has no text.
const char* message_of(GuiError error) {
    if (!in_range(error)) return nullptr;
    const auto index = static_cast<std::size_t>(error);
    return index < messages.size() ? messages[index] : "";
}

const char* system_message() { return system_error_in_range() ? std::strerror(SystemErrno) : nullptr; }

}  // namespace

GuiError gerror_get_error(void) { return GuiErrno; }

int gerror_get_system_error(void) { return SystemErrno; }

void gerror_get_all_errors(GuiError* error, int* system_error) {
    *error = GuiErrno;
    *system_error = SystemErrno;
}

void gerror_set_error(GuiError error) { GuiErrno = error; }

void gerror_set_system_error(int system_error) { SystemErrno = system_error; }

void gerror_set_all_errors(GuiError error, int system_error) {
    GuiErrno = error;
    SystemErrno = system_error;
}

const char* gerror_get_error_message(void) {
    const char* text = message_of(GuiErrno);
    return text != nullptr ? text : out_of_range;
}

char* gerror_get_system_error_message(void) {
    static char unknown[] = "system errno out of range";
    return system_error_in_range() ? std::strerror(SystemErrno) : unknown;
}

void gerror_display_error_message(void) { std::fprintf(stderr, "%s\n", gerror_get_error_message()); }

void gerror_display_all_error_messages(void) {
    const char* library = message_of(GuiErrno);
    const char* system = system_message();
    if (library != nullptr && system != nullptr) {
        std::fprintf(stderr, "%s : %s\n", library, system);
    } else if (library != nullptr || system != nullptr) {
        std::fprintf(stderr, "%s\n", library != nullptr ? library : system);
    }
}

void gerror_display_debug_info(const char* file, int line) {
    if (!debug_latch) debug_latch = is_debug_mode_active_for("HXORVIX_DEBUG_MODE", "error", "all", nullptr);
    if (!debug_latch) return;
    std::fprintf(stderr, "\n? Error at line %d of file %s\n", line, file);
    gerror_display_all_error_messages();
}
