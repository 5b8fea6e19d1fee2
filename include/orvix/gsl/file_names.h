/// @file
/// Arithmetic on file names: directory prefix, base name and extension, their joining, comparison, and quoting for a
/// command line. Only `gfile_abs_path` looks at the system, for its current directory.
///
/// Two families differ on purpose. The `gfile_` functions know `\` as separator, and most turn `/` into `\` before or
/// after their work, as told for each. The `HX_` functions take both separators and never rewrite the text. The `_new`
/// and `_kstring` forms take and give values.
///
/// A name is UTF-8, of which only the bytes `/`, `\`, ":", "." and the ASCII letters have a meaning. Nothing here sets
/// `GuiErrno`. All functions may run on any thread but `HX_quote_argument`. Names may have any length; counts that
/// leave through an `int*` are clamped to 2147483647.
#pragma once

#include <orvix/gsl/export.h>

#include <string>

/// Turns every `/` into `\`, in place.
///
/// @param name  text to change; may be null
/// @return `name`
ORVIX_GSL_API char* convertFileName(char* name);

// ---------------------------------------------------------------------------------------------------------------------
// Prefix: everything up to and including the last ":" or `\` of a name. The `/` is no mark here, so "dir/file" has no
// prefix, "dir\file" has "dir\" and "c:file" has "c:".

/// Measures the prefix of a name.
///
/// @param name    name to look at; not null
/// @param length  receives the length of the prefix in bytes, 0 without one; not null
/// @return true if there is a prefix
ORVIX_GSL_API bool gfile_hasdrv(const char* name, int* length);

/// Puts a prefix in front of a name.
///
///     gfile_fildrv("c:\x\file", true, "d:/y")  ->  "d:\y\file"
///     gfile_fildrv("a/file", false, "d:")      ->  "d:\a/file"
///
/// @param name       name to change; must hold the lengths of `drive` and of the name without prefix, and 2 bytes more
/// @param overwrite  false leaves a name alone that has a prefix already; true replaces that prefix
/// @param drive      the prefix. Its `/` become `\`, and a `\` is added unless it ends in one. The empty text strips
///                   the prefix. Not null.
ORVIX_GSL_API void gfile_fildrv(char* name, bool overwrite, const char* drive);

/// Copies a name without its prefix.
///
/// @param name  name to copy; not null
/// @param out   receives the rest; must hold it and a zero byte, and may be `name`
ORVIX_GSL_API void gfile_stripdrv(const char* const name, char* out);

// ---------------------------------------------------------------------------------------------------------------------
// Extension: what begins at the last "." of a name, if no separator of either kind stands behind it. A leading dot
// counts (".profile"), and so does one with nothing behind it ("a.").

/// Finds the extension of a name.
///
/// @param name      name to look at; not null
/// @param position  receives the position of the dot, counted from 1; 0 without extension; not null
/// @return true if there is an extension
ORVIX_GSL_API bool gfile_hasext(const char* name, int* position);

/// Puts an extension behind a name, and turns every `/` of the name into `\` in any case.
///
///     gfile_filext("a.txt", true, "dat")  ->  "a.dat"
///     gfile_filext("x.d/a", false, "c")   ->  "x.d\a.c"
///
/// @param name       name to change; must hold its own length, that of `extension`, and 2 bytes more
/// @param overwrite  false keeps an extension that is there already; true replaces it
/// @param extension  the extension without its dot; not null
ORVIX_GSL_API void gfile_filext(char* name, bool overwrite, const char* extension);

/// Copies a name without its extension. Separators stay as they are.
///
/// @param name  name to copy; not null
/// @param out   receives the name; must hold `strlen(name) + 1` bytes, and may be `name`
ORVIX_GSL_API void gfile_stripext(const char* name, char* out);

/// Copies what stands behind the *first* dot of a whole name, directories included; another rule than that of the other
/// extension functions. "a.tar.gz" gives "tar.gz", and "dir.d\file" gives "d\file".
///
/// @param name  name to look at; not null
/// @return a new string, to free with `free`, empty if there is no dot or nothing behind it; null for the empty name
///         and if memory is exhausted
ORVIX_GSL_API char* gfile_getext(const char* name);

// ---------------------------------------------------------------------------------------------------------------------
// Absolute names

/// Tells whether a name begins with a separator of either kind, or with an ASCII letter and ":". A name relative to a
/// drive ("c:x") counts as full.
///
/// @return true if so; false for null
ORVIX_GSL_API bool gfile_hasfullpath(const char* name);

/// The same question as `gfile_hasfullpath`.
///
/// @param name  name to look at; not null
ORVIX_GSL_API bool HX_path_is_absolute(const char* name);

/// Completes a name from the current directory.
///
/// @param name  name to complete; not null
/// @return a new string with the absolute name in the system's form, to free with `free`; null if memory is exhausted
ORVIX_GSL_API char* gfile_abs_path(const char* name);

// ---------------------------------------------------------------------------------------------------------------------
// Directory names

/// Makes a directory name end in `\`, so that a file name can be put behind it. Only a `/` at its end is turned.
///
/// @param name  directory name to change; must hold one byte more; the empty name stays; null is harmless
/// @return true
ORVIX_GSL_API bool gfile_prepare_dir_name(char* name);

/// Cuts one separator from the end of a directory name. The root of a drive (`c:\`) and names of one byte stay. A `/`
/// at the end that stays is turned into `\` (`c:/` gives `c:\`).
///
/// @param name  directory name to change; null is harmless
/// @return true
ORVIX_GSL_API bool gfile_strip_dir_name(char* name);

/// Cuts one separator from the end of a directory name and changes nothing else. Names of one byte stay, and so do
/// those of three with ":" in the middle, whatever the third byte is.
///
/// @return the name without trailing separator
ORVIX_GSL_API std::string gfile_strip_dir_name_kstring(const std::string& name);

/// As `gfile_strip_dir_name_kstring`, after the separators were brought to the system's form.
ORVIX_GSL_API std::string gfile_strip_dir_name_and_convert_kstring(const std::string& name);

// ---------------------------------------------------------------------------------------------------------------------
// Base names

/// Finds the last part of a name; both separators count.
///
/// @param name  name to look at
/// @return a pointer into `name` behind its last separator: `name` itself if there is none, its end if it ends in one;
///         null for null
ORVIX_GSL_API char* HX_get_basename_from_file(char* name);

/// As `HX_get_basename_from_file`, by value.
///
/// @return the last part of the name, possibly empty
ORVIX_GSL_API std::string HX_get_basename_from_file_new(const std::string& name);

// ---------------------------------------------------------------------------------------------------------------------
// Comparison, repair, quoting

/// Orders two file names without regard to ASCII letter case, bytes taken as unsigned. The two separators are different
/// bytes. Null counts as the empty name.
///
/// @return 0 if they are equal; else the difference of the first two bytes that differ in lower case
ORVIX_GSL_API int gfile_file_name_strcmp(const char* a, const char* b);

/// Orders the beginnings of two file names as `gfile_file_name_strcmp` does.
///
/// @param a      first name; null counts as empty
/// @param b      second name; null counts as empty
/// @param count  most bytes to compare; 0 gives 0, and below 0 the first byte of each alone is compared
/// @return 0 if they are equal so far; else the difference of the first two bytes that differ in lower case
ORVIX_GSL_API int gfile_file_name_strncmp(const char* a, const char* b, int count);

/// Repairs a name whose backslashes were taken for escape sequences: each of the bytes 7 to 13 becomes two backslashes
/// and the letter of its escape ("a", "b", "t", "n", "v", "f", "r").
///
/// @param name  address of a string on the heap, which is resized with `realloc` to just hold the result; the string
///              stays as it is if memory is exhausted; not null, and nothing happens if the string is null
ORVIX_GSL_API void gfile_fix_path(char** name);

/// Makes a text one argument of a command line: double quotes around it, a backslash before each double quote and each
/// backslash.
///
/// Not synchronised: the library keeps one buffer for the whole process, which grows to twice the longest argument and
/// is never freed.
///
/// @param argument  text to quote, which may be an earlier result; not null
/// @return the quoted text, in that buffer, good until the next call; null if memory is exhausted
ORVIX_GSL_API char* HX_quote_argument(const char* argument);
