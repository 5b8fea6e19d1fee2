/// @file
/// What users know from a shell: copying and removing with wildcards and whole trees, permissions over a wildcard, and
/// making a path of directories.
///
/// Names are UTF-8. In a wildcard name only the part behind the last `:` or backslash is a pattern, and the directory
/// in front of it must be named with a backslash: `*.txt` alone is refused, and `dir/a*` has no directory. Patterns
/// match bytes, letter case included:
///
/// - `?` stands for any one character, `*` for any number of them;
/// - the character behind a `*` stands for itself, whatever it is: `*?x` looks for a question mark and an x.
///
/// Names that were typed are found ignoring letter case where they do not exist as spelled; what a walk meets is taken
/// as it is stored. Trees of any depth do, as long as names do not exceed 1024 bytes. Results are `bool`, true for
/// success; `GuiErrno` is left alone, but by `gfile_copy` underneath. No function locks: what others make or remove
/// during a walk is seen or not seen.
#pragma once

#include <orvix/gsl/export.h>

/// Copies a file, the files that match a wildcard, or a whole tree.
///
/// - A wildcard copies the files that match, and passes directories over. The target must be a directory.
/// - A directory is copied with all below it into the target, if `recursive` is true. The target is made if it is
///   missing; its parent must be there.
/// - Anything else is copied with `gfile_copy`, into the target under its own name if that is a directory.
///
/// Links are followed. The copy stops at the first failure and leaves what it has made so far. A subdirectory that the
/// target already has is a failure, and so are a link that leads back to a directory that is just being copied, and a
/// target inside the source.
///
/// @param from       file, directory or wildcard name, at most 1024 bytes; one separator at its end is ignored
/// @param to         target, at most 1024 bytes; one separator at its end is ignored
/// @param recursive  whether a directory may be copied
/// @return true if all was copied, also if no name matched a wildcard
ORVIX_GSL_API bool gfile_cp(const char* from, const char* to, bool recursive);

/// Removes a file, the files that match a wildcard, or a whole tree. Removal never goes through a link: a link is
/// removed itself, whatever it leads to, like a file.
///
/// What can be removed is removed: unlike a copy, removal goes on after a failure and reports at the end.
///
/// @param name       file, directory or wildcard name, at most 1024 bytes; one separator at its end is ignored. A
///                   wildcard removes no directories.
/// @param recursive  whether a directory may be removed, with all below it
/// @return true if all was removed, also if no name matched a wildcard; false if the name is missing
ORVIX_GSL_API bool gfile_rm(const char* name, bool recursive);

/// Changes the permissions of a file or directory, or of all entries that match a wildcard, directories included but
/// not entered. Links are followed. Stops at the first failure.
///
/// @param name  name, of at most 1024 bytes without a wildcard; one separator at its end is ignored
/// @param mode  permission bits as for the system's `chmod`
/// @return true if all were changed, also if no name matched a wildcard; false if a name or directory is missing
ORVIX_GSL_API bool gfile_chmod(const char* name, int mode);

/// Lets the owner read, write and run or search: `gfile_chmod` with mode octal 700.
///
/// @param name  as for `gfile_chmod`
/// @return as `gfile_chmod`
ORVIX_GSL_API bool gfile_chmod_give_all_permissions(const char* name);

/// Makes a directory, or all levels of its path. A part of the name that begins with `$`, or begins and ends with `%`,
/// is a process variable, whose value may hold separators.
///
///     char name[] = "$HOME\\projects\\new";
///     gfile_mkdir(name, true, 0);
///
/// A name that begins with a backslash is taken from the root of the current drive and, as ever, loses the character
/// behind that backslash: `\xdir` makes `dir`.
///
/// @param name        directory; its slashes are turned into backslashes in place
/// @param each_level  whether missing levels above the last are made too
/// @param mode        ignored
/// @return true if the name is there now, as a directory or, if it was there before, as whatever else. False if a level
///         cannot be made, if a variable is empty, and if a variable is not set, which prints
///         "gfile:gfile_expand_dir could not expand %s\n" with the part of the name to the standard error stream.
ORVIX_GSL_API bool gfile_mkdir(char* name, bool each_level, int mode);

/// Tells whether `gfile_mkdir` could make a directory, and makes nothing. The name is read in the same way, with the
/// same message.
///
/// @param name                   directory; its slashes are turned into backslashes in place
/// @param levels_may_be_missing  whether levels above the last may be missing: then the nearest that exists decides
/// @return true if the nearest level that exists is a directory that may be written, or no level exists; false if a
///         level above the last is missing and may not be, or a variable is empty or not set
ORVIX_GSL_API bool gfile_makebledir(char* name, bool levels_may_be_missing);
