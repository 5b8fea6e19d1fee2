/// @file
/// Operations on one file or directory: questions, sizes, the current directory, copying, moving, erasing, appending,
/// and making directories.
///
/// Names are UTF-8 with slashes or backslashes, of any length unless said otherwise; a null name is a missing file.
/// Results are `bool`, true for success, unless said otherwise. Only `gfile_copy`, `gfile_move` and `gfile_erasefil`
/// leave a code in `GuiErrno` when they fail, with the system's error number beside it, and with the debug mode "error"
/// on they print the place of the failure and both messages (see `gerror_display_debug_info`).
///
/// No function locks. `gfile_setdefpath` changes the current directory of the whole process for its duration.
#pragma once

#include <orvix/gsl/export.h>

#include <cstdint>

/// Tells whether a name exists, links followed.
///
/// @param name  file or directory, spelled as `gsl_stat` takes it
/// @return true if it does
ORVIX_GSL_API bool gfile_exists(const char* name);

/// Tells whether a name is a directory, links followed.
///
/// @param name  name to test
/// @return true if it is
ORVIX_GSL_API bool gfile_is_dir(const char* name);

/// Tells whether the process may read a file or directory.
///
/// @param name  name to test
/// @return true if it exists and may be read
ORVIX_GSL_API bool gfile_is_readable(const char* name);

/// The same question as `gfile_is_readable`: whoever may read a file counts as able to run it.
///
/// @param name  name to test
/// @return true if it exists and may be read
ORVIX_GSL_API bool gfile_is_executable(const char* name);

/// Tells whether the process may write a file or directory.
///
/// @param name  name to test
/// @return true if it exists and may be written
ORVIX_GSL_API bool gfile_is_writable(const char* name);

/// Tells whether the **second** file is the older one. The name reads the other way; callers rely on this order.
///
/// @param first   file that is expected to be the newer one
/// @param second  file that is expected to be the older one
/// @return true if the modification time of `first` is later than that of `second`, in whole seconds; false if either
///         name is missing
ORVIX_GSL_API bool gfile_is_file_older(const char* first, const char* second);

/// Reads what kind of file a name is, links followed.
///
/// @param name  name of at most 1024 bytes, with or without a separator at its end
/// @return the type bits of its mode, e.g. 0x4000 for a directory and 0x8000 for a regular file; 0 if it cannot be read
///         or the name is too long
ORVIX_GSL_API int gfile_type(const char* name);

/// Reads the size of a file.
///
/// @param name  file; links are followed
/// @return bytes, at most 2,147,483,647; 0 if the name is null, missing or cannot be read
ORVIX_GSL_API std::int32_t gfile_filesize(const char* name);

/// Adds up the sizes below a directory, links followed. Directories whose name begins with "." are not entered: they
/// count with their own reported size only, `.` and `..` included. Other directories count with their own size and all
/// below them. A link that leads back to a directory on the way down to it is not entered either.
///
/// Prints "gfile: %s is not a directory \n" to the standard error stream for each directory that cannot be opened.
///
/// @param directory  directory to measure, with or without a separator at its end
/// @return units of 1024 bytes, rounded down, at most 2,147,483,647; 0 if it is no directory
ORVIX_GSL_API std::int32_t gfile_dirsize(const char* directory);

/// Reads how much room is left on the volume of a directory, to all users together.
///
/// @param directory  directory on the volume; its slashes are turned into backslashes in place
/// @return units of 1024 bytes, rounded down, at most 2,147,483,647. 0 on failure; if there is no such directory,
///         " The directory %s doesn't exist\n" is printed to the standard error stream.
ORVIX_GSL_API std::int32_t gfile_freedir_space(char* directory);

/// Reads the current directory, with a backslash at its end.
///
/// @param buffer  receives the name; null fails
/// @param size    **one less** than the bytes that `buffer` holds: the backslash that may have to be added is not
///                counted
/// @return false, with `buffer` untouched, if the name without an added backslash and its zero byte exceed `size`
ORVIX_GSL_API bool gfile_getdefpath(char* buffer, int size);

/// Tests whether a directory could be made the current one, and gives its absolute name. The current directory stays
/// what it was: it is changed for the length of the call alone, for the whole process.
///
/// @param directory  directory to test; its slashes are turned into backslashes and one backslash at its end is cut. A
///                   drive alone means its root, also as the remainder of `c:\`, and `c:x` means `c:\x`. On success it
///                   receives the absolute name with one backslash at its end, for which it must have the room.
/// @return false if the name is empty or cannot be entered
ORVIX_GSL_API bool gfile_setdefpath(char* directory);

/// Copies one file with its access and modification times. Permissions are not copied: a new target gets the system's
/// default mode, an existing one keeps its own. What a link leads to is copied.
///
/// The whole file is read at once if memory allows, else in pieces of half, a quarter and so on, down to 1000 bytes. An
/// existing target loses its contents; a copy that fails on the way leaves what it has written so far. A file is never
/// copied onto itself: that fails and changes nothing.
///
/// @param from  file to copy
/// @param to    file to make or replace
/// @return false with `GuiErrno` set: `GUI_ERR_FILE_NOT_FOUND` (before anything is made), `GUI_ERR_FILE_COPY_ALLOC`,
///         `GUI_ERR_FILE_OPEN` for either file, `GUI_ERR_FILE_READ` also if the source shrank meanwhile or is its own
///         target, `GUI_ERR_FILE_WRITE`
ORVIX_GSL_API bool gfile_copy(const char* from, const char* to);

/// Copies a file with `gfile_copy` and then erases the source with `gfile_erasefil`. The data are always rewritten; a
/// source that cannot be erased stays beside the target.
///
/// @param from  file to move
/// @param to    file to make or replace
/// @return false with `GuiErrno` set by the step that failed
ORVIX_GSL_API bool gfile_move(const char* from, const char* to);

/// Removes a file, a link (never what it leads to) or an empty directory.
///
/// @param name  name to remove
/// @return false with `GuiErrno` `GUI_ERR_FILE_DELETE`
ORVIX_GSL_API bool gfile_erasefil(const char* const name);

/// Never appends anything, and never succeeds: it is kept because applications link it and count on false. The target
/// is made if it is missing. If the source can be read, both files stay open until the process ends.
///
/// @param target  file to make
/// @param source  file to open
/// @return false
ORVIX_GSL_API bool gfile_append_file_to_file(const char* target, const char* source);

/// Appends a line and a line feed to a file, which is made if it is missing.
///
/// @param target  file to append to
/// @param line    text without a line feed; null and "" write nothing, not even the line feed
/// @return false if the file cannot be opened; a write that fails goes unnoticed
ORVIX_GSL_API bool gfile_append_line_to_file(const char* target, const char* line);

/// Makes one directory level, with the system's default permissions.
///
/// @param directory  directory to make, with or without a separator at its end
/// @param mode       ignored
/// @return 0 if it was made; -1 if not, also if it was there already or the level above is missing
ORVIX_GSL_API int gsl_mkdir(const char* directory, int mode);

/// Makes all missing levels of a directory, with the system's default permissions.
///
/// @param directory  directory to make, with or without a separator at its end
/// @param mode       ignored
/// @return 0 if something was made; -1 if not, also if it was there already
ORVIX_GSL_API int gsl_forceDirectoryToExist(const char* directory, int mode);
