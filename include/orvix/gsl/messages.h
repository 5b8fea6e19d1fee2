/// @file
/// Numbered message texts in the language of the user.
///
/// A message has a set and a line number from 1. Three files lead to its text:
///
/// 1. the boot file of the application, an environment such as "hxorvixsess", names the message directory file, and
///    the language with its file extension and font;
/// 2. the message directory file is an environment too: each setting is a set, its value the path of a message file;
/// 3. the message file is plain text: line N is message N of the set.
///
/// A handle keeps one set in memory, and the process remembers which handle loaded last: runs of messages from one set
/// and one handle touch no file, and every change of set or handle loads anew.
///
/// Failures leave their code in `GuiErrno`, which every call here clears first. With the debug mode "msg" or "all" on
/// (process variable `HXORVIX_DEBUG_MODE`, read by `gmsg_open`; it stays on) what was looked up is told on the standard
/// error stream.
///
/// Not synchronised: the state between calls is the process's, as is that of the environments below. One thread at a
/// time.
#pragma once

#include <orvix/gsl/export.h>

struct eeEnv;

/// An open way to the messages of an application. Its fields are for reading.
struct GmsgHandleS {
    char* set_name;    ///< the set in `list`; null if none
    char* extension;   ///< ending of the language's message files, without its dot
    char* font;        ///< the language's font, for the application
    char* language;    ///< the language, such as "ENGLISH"
    eeEnv* directory;  ///< the message directory file
    void* list;        ///< the lines of the set, a record list; null if none
};

/// Opens the way to an application's messages.
///
/// The boot file's settings are `<prefix>_MSG_FILE` (the path of the message directory file, references in it
/// expanded), `HXORVIX_LANGUAGE`, `<language>_MSG_EXT` and `<language>_MSG_FONT`, of at most 2047 bytes each. The last
/// three have defaults: "ENGLISH", "eng" and "9x15bold".
///
/// @param boot_file  name of the application's environment; null or empty means "hxorvixsess"
/// @param prefix     begins the name of the setting; null or empty means "hxorvix"
/// @param language   language to use instead of the one that is set; null or empty asks the boot file
/// @return the handle, to give back with `gmsg_close`, and then `GuiErrno` may hold `GUI_ERR_MSG_GET_LANGUAGE`,
///         `GUI_ERR_MSG_GET_LANG_EXT` or `GUI_ERR_MSG_GET_LANG_FONT`: a default is in use, the last of them if several
///         are. Null with `GuiErrno` `GUI_ERR_MSG_OPEN_ENV`, `GUI_ERR_MSG_OPEN_BOOT`, `GUI_ERR_MSG_GET_DIR_FILE` (not
///         set, or its references yield nothing), `GUI_ERR_MSG_LOCATE_FILE` (the directory file cannot be read),
///         `GUI_ERR_MSG_OPEN_ENV_FILE` or `GUI_ERR_MSG_ALLOC_RETRIEVAL`.
ORVIX_GSL_API GmsgHandleS* gmsg_open(const char* boot_file, const char* prefix, const char* language);

/// Gives back a handle and all it holds.
///
/// @param handle  from `gmsg_open`; null is nothing to do
/// @return true; false with `GuiErrno` `GUI_ERR_MSG_FREE_HANDLE` if the directory file could not be closed, and then
///         the handle is still the caller's, who may try again
ORVIX_GSL_API bool gmsg_close(GmsgHandleS* handle);

/// Tells whether there is such a message, and loads its set.
///
/// A set's file is the first that exists of: the value of the set's setting with ".msg", with "." and the language's
/// extension, and as it is.
///
/// @param handle  from `gmsg_open`
/// @param set     name of the set
/// @param line    number of the message, from 1
/// @return true if the message exists, possibly empty. False with `GuiErrno` `GUI_ERR_MSG_NOT_INITIALIZED` (null
///         handle), `GUI_ERR_MSG_BAD_LINE_NUMBER` (below 1, told before the set is looked at, or above the number of
///         lines), `GUI_ERR_MSG_SET_NOT_SPECIFIED` (null set), `GUI_ERR_MSG_FIND_SET` (the directory file has no such
///         set, or its references yield nothing), `GUI_ERR_MSG_LOCATE_FILE` (no such file), `GUI_ERR_MSG_LOAD_FILE`,
///         `GUI_ERR_MSG_LIST_SIZE` or `GUI_ERR_MSG_ALLOC_SET`. A set that cannot be loaded leaves the handle good for
///         others.
ORVIX_GSL_API bool gmsg_check_index(GmsgHandleS* handle, const char* set, int line);

/// Fetches a message.
///
/// Wherever the separator stands in the text, its first byte becomes a line feed. The separator is byte 14, or what the
/// setting `MSG_SEPARATOR` of the environment "hxorvix" holds (at most 7 bytes; of a longer one the rest stays in the
/// text, and an empty one replaces nothing), read once in a process.
///
/// @param handle  from `gmsg_open`
/// @param set     name of the set
/// @param line    number of the message, from 1
/// @param out     receives the text, zero byte included; at least 1024 bytes
/// @return true; false as `gmsg_check_index` gives it, with `out` untouched, or with `GUI_ERR_MSG_RETRIEVE_FAILED`,
///         also for a null `out`
ORVIX_GSL_API bool gmsg_retrieve_message(GmsgHandleS* handle, const char* set, int line, char* out);
