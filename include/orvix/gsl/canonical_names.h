/// @file
/// One spelling for file names, so that they can be stored and compared as text; the search for a file along a path
/// list; and whether two names are one.
///
/// The canonical text of a name is absolute, has single backslashes as separators (two in front if the name began with
/// two backslashes, a network name), no `\.\` pieces, and ASCII letters in lower case. A `..`, a `\.` at the end, a `~`
/// and bytes from 0x80 on stay as they are. A name is absolute if it begins with a separator of either kind, or with an
/// ASCII letter and ":"; so "c:x" counts as absolute.
///
/// Canonicalisation comes in two strengths. `HX_canonical_path` works on the text: it puts the current directory in
/// front of a relative name and looks at nothing else. The `_force` form and `HX_get_canonical_directory_name` ask the
/// system what a directory is called, through links, `..` and short names, and remember the answer.
///
/// The `_new` forms take and give values, and are more than wrappers: they keep one trailing backslash where the text
/// forms keep none ("a/b/" gives "a\b\"), answer the empty string where the text forms answer null, and have a cache of
/// their own.
///
/// The two caches of directories live as long as the process, and an answer in them never changes: a directory that is
/// moved, replaced or removed keeps its first name. Nothing here is synchronised. Functions that enter a directory
/// change the current directory of the whole process until they return (also by an exception); then it is restored.
///
/// Nothing here sets `GuiErrno` or prints. Names may have any length.
#pragma once

#include <orvix/core/path.h>
#include <orvix/gsl/export.h>

#include <string>

// ---------------------------------------------------------------------------------------------------------------------
// Spelling alone

/// Brings a name to canonical spelling, in place, without making it absolute.
///
///     HX_fixup_path("C:\Temp\File.TXT")  ->  "c:\temp\file.txt"
///     HX_fixup_path("\\srv//x/./y/")     ->  "\\srv\x\y"
///     HX_fixup_path("/")                 ->  ""
///
/// Separators at the end go, the root's too: `c:\` gives "c:". One pass is made, so of two `.\` in a row only the first
/// goes: "a/./.\b" gives "a\.\b", and "a//./b" likewise.
///
/// @param name  name to change, which never gets longer; null is harmless
ORVIX_GSL_API void HX_fixup_path(char* name);

/// As `HX_fixup_path`, by value, but one separator at the end stays: "a/b/" gives "a\b\", "/" gives `\`.
///
/// @return the name in canonical spelling
ORVIX_GSL_API std::string HX_fixup_path_new(const std::string& name);

// ---------------------------------------------------------------------------------------------------------------------
// Canonical names, as text

/// Makes the canonical text of a name: any "./" and ".\" at the front of a relative name go, the current directory
/// comes in front, and the spelling is fixed as by `HX_fixup_path`.
///
///     HX_canonical_path("Sub/x", out)  ->  "c:\work\sub\x"    in the directory C:\Work
///     HX_canonical_path(".", out)      ->  "c:\work\."
///     HX_canonical_path("c:X", out)    ->  "c:x"
///
/// @param name  name to complete, which need not exist
/// @param out   receives the text. Must hold `strlen(name) + 1` bytes for an absolute name, and for a relative one the
///              length of the current directory and 1 byte more. May be `name` if that is absolute, and must not
///              overlap it otherwise.
/// @return `out`; null, with `out` untouched, if `name` is null, empty, or nothing but "./" and ".\"
ORVIX_GSL_API char* HX_canonical_path(const char* name, char* out);

/// As `HX_canonical_path`, by value, with the spelling of `HX_fixup_path_new`: one separator at the end stays.
///
/// @return the canonical text; empty if the name is empty or nothing but "./" and ".\"
ORVIX_GSL_API std::string HX_canonical_path_new(const std::string& name);

/// Makes the canonical text of the directory of a file: of what stands before the last separator, or of "." without
/// one.
///
/// For a file in the root without a drive (`\file`) that is the empty name, which has no canonical text: `out` stays as
/// it is. Give it a text beforehand if such names may come.
///
/// @param name  name of a file; null and "" stand for a file in the current directory
/// @param out   receives the text; as in `HX_canonical_path`
/// @return `out`
ORVIX_GSL_API char* HX_get_directory_from_file(const char* name, char* out);

/// As `HX_get_directory_from_file`, by value, with one separator at the end kept.
///
/// @return the canonical text of the directory; empty for a file in the root without a drive
ORVIX_GSL_API std::string HX_get_directory_from_file_new(const std::string& name);

// ---------------------------------------------------------------------------------------------------------------------
// Canonical names, as the system knows them

/// As `HX_canonical_path`, with the directory of the name, all that stands before its last separator, in the spelling
/// of `HX_get_canonical_directory_name`. The last part is not looked up and need not exist, nor need the directory.
///
/// The directory of a file in the root of a drive is the bare drive (`c:` of `c:\file`), which means the current
/// directory on that drive; that too is remembered, as it is when it is first asked for.
///
/// @param name  name to complete
/// @param out   receives the text; must hold the canonical name of the directory, the last part and 2 bytes more
/// @return `out`; null, with `out` untouched, if `name` is null, empty, nothing but "./" and ".\", or has no separator
///         though it is absolute ("c:x")
/// @throw std::bad_alloc  if memory is exhausted
ORVIX_GSL_API char* HX_canonical_path_force(const char* name, char* out);

/// As `HX_canonical_path_force`, by value, through `HX_get_canonical_directory_name_new` and the spelling of
/// `HX_fixup_path_new`. A name without separator ("c:x") has the empty directory and gives `\c:x`.
///
/// @return the canonical text; empty if the name is empty or nothing but "./" and ".\"
ORVIX_GSL_API std::string HX_canonical_path_force_new(const std::string& name);

/// Tells what the system calls a directory: enters it, reads back the current directory, spells every part as it is
/// stored, and lowers ASCII letters. What cannot be entered keeps the name given, in lower case.
///
/// The answer is remembered under exactly the text given, letter case included, for the life of the process. So is that
/// for a relative name, which then means the same directory wherever the process goes: give names in full.
///
/// @param directory  directory to name; not written to
/// @return a new block with the name, to free with `gmem_ee_free`; null for null, or if the name cannot be remembered
/// @throw std::bad_alloc  with the text "bad allocation", if memory is exhausted
ORVIX_GSL_API char* HX_get_canonical_directory_name(char* directory);

/// As `HX_get_canonical_directory_name`, by value, with a cache of its own in which names are one that
/// `orvix::Path::compare_filenames` calls equal; what cannot be entered is spelled as stored all the same, as far as it
/// exists.
///
/// @param directory  directory to name
/// @return the name; empty, unlike in the text form, for a directory that can be entered but not told: one on no drive,
///         or with a backslash in its host's name
ORVIX_GSL_API orvix::Path HX_get_canonical_directory_name_new(const orvix::Path& directory);

// ---------------------------------------------------------------------------------------------------------------------
// Search

/// Looks for a file along a list of directories; the first that holds it wins. An absolute name is looked for as it is,
/// in canonical spelling, without the list.
///
///     HX_find_file("x", "a;b", false)  ->  "b\x"    if only b holds x
///
/// Found is a regular file; a symbolic link to one is not. With `accept_directories` a directory is found as well, also
/// through a link. There is no fall-back to the current directory.
///
/// Walks the list with `gui_env_get_tok`, whose own walk, if any, ends thereby.
///
/// @param name                name to look for; null and "" are never found
/// @param search_path         directories, separated as for `gui_env_get_tok`; null stands for "."
/// @param accept_directories  whether a directory will do
/// @return a new block, to free with `gmem_ee_free`: the directory in the spelling of `HX_fixup_path`, a backslash and
///         the name as given, or the absolute name in that spelling; null if it is not found, or if memory is exhausted
///         while the list is walked
/// @throw std::bad_alloc                     if there is no memory for a copy of the name or the list
/// @throw std::filesystem::filesystem_error  with "symlink_status", if a file can be found but not told from a link
ORVIX_GSL_API char* HX_find_file(const char* name, const char* search_path, bool accept_directories);

/// As `HX_find_file`, by value.
///
/// @param name                name to look for; "" is never found
/// @param search_path         directories; "" is a list of one, the empty name, under which the root is looked at
/// @param accept_directories  whether a directory will do
/// @return what was found; empty if nothing was
ORVIX_GSL_API std::string HX_find_file_new(const std::string& name, const std::string& search_path,
                                           bool accept_directories);

// ---------------------------------------------------------------------------------------------------------------------
// Comparison

/// Tells whether two names have one canonical text, as made by `HX_canonical_path`; or whether the first names
/// something directly in the directory that the second names.
///
///     HX_paths_are_same("d\f", "d", true)  ->  true
///     HX_paths_are_same("d", "d\f", true)  ->  false
///
/// @param a                   a name; null, "" and "./" are the same as nothing
/// @param b                   a name; null, "" and "./" are the same as nothing
/// @param cut_last_part_of_a  whether the last part of `a`, and of `a` alone, is cut off first. A name that has only a
///                            root before its last part (`\x`, `\\srv`) is not cut.
/// @return true if the texts are equal
ORVIX_GSL_API bool HX_paths_are_same(const char* a, const char* b, bool cut_last_part_of_a);

/// Tells whether two names are one as text: ASCII letter case, the kind of separators and one separator at the end
/// (except that of a root, `c:\`) make no difference. The current directory plays no part, so a relative name never
/// equals an absolute one, nor "a\..\b" the name "b".
///
/// @param a  a name; null is the same as nothing
/// @param b  a name; null is the same as nothing
/// @return true if they are the same
ORVIX_GSL_API bool gdir_compare_paths(const char* a, const char* b);
