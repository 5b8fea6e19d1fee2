/// @file
/// Allocation wrappers, the status word, the fatal memory exit, debug modes and the library's string order.
///
/// Nothing here is synchronised: `GuiErrno`, its system companion, the exit hook and the debug latch belong to the
/// process, not to a thread.
#pragma once

#include <orvix/gsl/export.h>

#include <cstddef>
#include <cstdint>

/// Codes of the status word. Read `GuiErrno` only after a call whose own result says that it failed: a success leaves
/// the earlier code where it was.
enum GuiError : std::int32_t {
    GUI_ERR_NONE = 0,
    GUI_ERR_SYSTEM_CALL = 1,
    GUI_ERR_MSG_ALLOC_RETRIEVAL = 2,
    GUI_ERR_MSG_ALLOC_SET = 3,
    GUI_ERR_MSG_FREE_HANDLE = 4,
    GUI_ERR_MSG_OPEN_ENV = 5,
    GUI_ERR_MSG_OPEN_BOOT = 6,
    GUI_ERR_MSG_GET_LANGUAGE = 7,
    GUI_ERR_MSG_GET_LANG_EXT = 8,
    GUI_ERR_MSG_GET_LANG_FONT = 9,
    GUI_ERR_MSG_GET_DIR_FILE = 10,
    GUI_ERR_MSG_EXPAND_DIR_FILE = 11,
    GUI_ERR_MSG_LOCATE_FILE = 12,
    GUI_ERR_MSG_OPEN_ENV_FILE = 13,
    GUI_ERR_MSG_LOAD_FILE = 14,
    GUI_ERR_MSG_FIND_SET = 15,
    GUI_ERR_MSG_MANIPULATE_SET = 16,
    GUI_ERR_MSG_LIST_SIZE = 17,
    GUI_ERR_MSG_SET_NOT_SPECIFIED = 18,
    GUI_ERR_MSG_NOT_INITIALIZED = 19,
    GUI_ERR_MSG_BAD_LINE_NUMBER = 20,
    GUI_ERR_MSG_RETRIEVE_FAILED = 21,
    GUI_ERR_FILE_NOT_FOUND = 22,
    GUI_ERR_FILE_OPEN = 23,
    GUI_ERR_FILE_READ = 24,
    GUI_ERR_FILE_WRITE = 25,
    GUI_ERR_FILE_DELETE = 26,
    GUI_ERR_FILE_COPY_ALLOC = 27,
    GUI_ERR_FILE_SEEK_START = 28,
    GUI_ERR_CLOCK_START = 29,
    GUI_ERR_CLOCK_STOP = 30,
};

/// The last library status, `GUI_ERR_NONE` at load. Sticky: written by failing calls, cleared on entry by the message
/// calls alone. Applications may write it.
ORVIX_GSL_API extern GuiError GuiErrno;

/// Allocates `count * size` bytes, uninitialised. The product is not checked for overflow.
///
/// @return a block to give back with `gmem_ee_free` or `free`; null if the product is 0, which asks nothing of the
///         allocator, or if memory is exhausted
ORVIX_GSL_API char* gmem_ee_malloc(std::size_t count, std::size_t size);

/// Allocates `count` elements of `size` bytes each, zeroed.
///
/// @return as `gmem_ee_malloc`
ORVIX_GSL_API char* gmem_ee_calloc(std::size_t count, std::size_t size);

/// Resizes a block to `count * size` bytes. The product is not checked for overflow.
///
/// @param pointer  block of this family or of `malloc`. Null allocates afresh, and then only the low 32 bits of the
///                 product count.
/// @return the block, possibly moved; null on exhaustion or if the product is 0, and in both cases `pointer` stays
///         allocated and the caller's
ORVIX_GSL_API char* gmem_ee_realloc(char* pointer, std::size_t count, std::size_t size);

/// Gives back a block of this family or of `malloc`. Null is harmless.
ORVIX_GSL_API void gmem_ee_free(char* pointer);

/// Prints "FATAL ERROR: out of memory\n" to the standard error stream, calls the hook of `aerr_set_exit_function` and
/// ends the process with status 1. A hook that does not return (it throws or jumps) skips the exit.
[[noreturn]] ORVIX_GSL_API void aerr_memory_error(void);

/// Sets what `aerr_memory_error` calls before it exits.
///
/// @param hook  function to call; null clears it
ORVIX_GSL_API void aerr_set_exit_function(void (*hook)(void));

/// @return `GuiErrno`
ORVIX_GSL_API GuiError gerror_get_error(void);

/// @return the system's error number that goes with `GuiErrno`; 0 at load
ORVIX_GSL_API int gerror_get_system_error(void);

/// Reads both at once.
///
/// @param error         receives `GuiErrno`; not null
/// @param system_error  receives the system's error number; not null
ORVIX_GSL_API void gerror_get_all_errors(GuiError* error, int* system_error);

/// Stores `GuiErrno` and leaves the system's error number.
ORVIX_GSL_API void gerror_set_error(GuiError error);

/// Stores the system's error number and leaves `GuiErrno`.
ORVIX_GSL_API void gerror_set_system_error(int system_error);

/// Stores both.
ORVIX_GSL_API void gerror_set_all_errors(GuiError error, int system_error);

/// @return the text of `GuiErrno`, constant; "GuiErrno out of range" for `GUI_ERR_NONE`, which is no error to show,
///         and for numbers that are no code
ORVIX_GSL_API const char* gerror_get_error_message(void);

/// @return the system's text of its error number, good until the next such call; "system errno out of range" for 0,
///         for negative numbers and for those above 4095, beyond which no system numbers its errors. The caller may
///         not write to it.
ORVIX_GSL_API char* gerror_get_system_error_message(void);

/// Prints the text of `gerror_get_error_message` and a line end to the standard error stream.
ORVIX_GSL_API void gerror_display_error_message(void);

/// Prints "%s : %s\n" with the library's text and the system's to the standard error stream; one of them alone if the
/// other number is out of range; nothing if both are.
ORVIX_GSL_API void gerror_display_all_error_messages(void);

/// With the debug mode "error" or "all" on (process variable `HXORVIX_DEBUG_MODE`), prints
/// "\n? Error at line %d of file %s\n" and then what `gerror_display_all_error_messages` prints. Once the mode was seen
/// on it stays on for the life of the process.
///
/// @param file  source file to name; not null
/// @param line  line to name
ORVIX_GSL_API void gerror_display_debug_info(const char* file, int line);

/// Tells whether a process variable holds one of the values that follow it. Whole texts are compared, letter case
/// included: a comma list matches nothing.
///
///     is_debug_mode_active_for("HXORVIX_DEBUG_MODE", "error", "all", nullptr)
///
/// @param variable  process variable to read, with `gsl_getenv`
/// @param ...       `const char*` values, ended by a null pointer
/// @return true if the variable is set and equals a value
ORVIX_GSL_API bool is_debug_mode_active_for(const char* variable, ...);

/// The library's string order: bytes compare as unsigned, and a null pointer counts as the empty string.
///
/// @return exactly -1, 0 or 1
ORVIX_GSL_API int gsl_strcmp(const char* a, const char* b);
