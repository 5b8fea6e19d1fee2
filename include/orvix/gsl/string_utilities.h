/// @file
/// Operations on zero-ended byte strings: copies into fixed columns, limited copies and appends, clean-up, tolerant and
/// natural comparison, search, and the `astr_` helpers for strings and file names on the heap.
///
/// Two conventions stand side by side. The `gparse_` functions put the source first and the destination last, write to
/// a buffer of the caller without being told its size, and check no pointer but where said. The `astr_` functions test
/// their pointers, and return what they build as a new string that the caller frees with `astr_free_string`.
///
/// A blank is the byte 0x20 and nothing else. Letter case is that of ASCII whatever the locale; bytes from 0x80 on have
/// no case. No function here touches `GuiErrno` or keeps state: any thread may call them on buffers of its own. Where
/// buffers may overlap, the function says so.
#pragma once

#include <orvix/gsl/export.h>

#include <cstddef>

// ---------------------------------------------------------------------------------------------------------------------
// Copy

/// Copies `src` and its zero byte. The buffers may overlap.
///
/// @param src  text to copy; not null
/// @param dst  receives the text; must hold `strlen(src) + 1` bytes
ORVIX_GSL_API void gparse_cpystr(const char* src, char* dst);

/// Copies at most `n` bytes of `src` and always ends the result. `dst` may be `src`, which is then cut behind `n`
/// bytes.
///
///     gparse_cpystrl("abcde", dst, 3)  ->  "abc"
///     gparse_cpystrl("abcde", dst, 0)  ->  ""
///
/// @param src  text to copy; not null
/// @param dst  receives the text; must hold `min(strlen(src), n) + 1` bytes
/// @param n    most bytes to copy, zero byte not counted; 0 empties `dst`, unlike `gparse_strncpy`
ORVIX_GSL_API void gparse_cpystrl(const char* src, char* dst, std::size_t n);

/// Copies at most `n` bytes of `src` and always ends the result; never pads. `dst` may be `src`.
///
/// @param src  text to copy; not null
/// @param n    most bytes to copy, zero byte not counted; 0 leaves `dst` untouched, unlike `gparse_cpystrl`
/// @param dst  receives the text; must hold `min(strlen(src), n) + 1` bytes
ORVIX_GSL_API void gparse_strncpy(const char* src, std::size_t n, char* dst);

/// Copies `src` into a column of exactly `n` bytes: cut, or filled up with blanks at its right end.
///
///     gparse_cpystrn("abc", 5, dst)  ->  "abc  "
///
/// `dst` may be `src`, which is then cut or filled in place. Callers must count on `src` being written to for the time
/// of the call, and so not share it with another thread.
///
/// @param src  text to copy, writable; not null
/// @param n    width of the column in bytes
/// @param dst  receives `n` bytes and a zero byte
ORVIX_GSL_API void gparse_cpystrn(char* src, std::size_t n, char* dst);

/// Left-justifies a text in a column of exactly `n` bytes: leading blanks go, then as `gparse_cpystrn`. Blanks behind
/// the text count as text. `dst` may be `src`.
///
///     gparse_szstrlj("  ab", 3, dst)  ->  "ab "
///
/// @param src  text to justify, writable as for `gparse_cpystrn`; not null
/// @param n    width of the column in bytes
/// @param dst  receives `n` bytes and a zero byte
ORVIX_GSL_API void gparse_szstrlj(char* src, std::size_t n, char* dst);

/// Right-justifies a text in a column of exactly `n` bytes. Nothing is stripped. A text too long for the column loses
/// its right end, not its left.
///
///     gparse_szstrrj("ab", 4, dst)     ->  "  ab"
///     gparse_szstrrj("abcde", 3, dst)  ->  "abc"
///
/// @param src  text to justify; not null
/// @param n    width of the column in bytes
/// @param dst  receives `n` bytes and a zero byte; may be `src` only where no padding is needed, and must not overlap
///             it otherwise
ORVIX_GSL_API void gparse_szstrrj(char* src, std::size_t n, char* dst);

/// Copies `src[first]` to `src[last]`, both included, as they lie: a zero byte among them is copied like any other. The
/// buffers may overlap.
///
/// @param src    bytes to copy; not null
/// @param first  position of the first byte
/// @param last   position of the last byte; not held against the length of `src`. Below `first` gives the empty string.
/// @param dst    receives the bytes and a zero byte; must hold `last - first + 2` bytes, at least 1
ORVIX_GSL_API void gparse_strtostr(const char* src, std::size_t first, std::size_t last, char* dst);

// ---------------------------------------------------------------------------------------------------------------------
// Append

/// Joins two texts. `a` and `b` may each be `dst` or overlap it. If memory for a copy of `b` is not to be had, `dst`
/// becomes the empty string.
///
/// @param a    first text; not null
/// @param b    second text; not null
/// @param dst  receives both; must hold `strlen(a) + strlen(b) + 1` bytes
ORVIX_GSL_API void gparse_addstr(const char* a, const char* b, char* dst);

/// Joins two texts in a column of exactly `n` bytes: cut, or filled up with blanks at its right end. If `a` fills the
/// column, `b` is ignored. Either may be `dst` or overlap it. Exhausted memory ends in `aerr_memory_error`.
///
/// @param a    first text, writable as for `gparse_cpystrn`; not null
/// @param b    second text; not null
/// @param n    width of the column in bytes
/// @param dst  receives `n` bytes and a zero byte
ORVIX_GSL_API void gparse_addstrn(char* a, char* b, std::size_t n, char* dst);

/// Appends `src` to `dst` as far as the whole stays within `n` bytes. A `dst` that holds `n` bytes or more already is
/// left as it is, even where it is longer. `src` may overlap `dst`.
///
/// @param src  text to append; not null
/// @param n    most bytes that `dst` may come to, zero byte not counted
/// @param dst  text to extend; must hold `min(strlen(dst) + strlen(src), n) + 1` bytes
ORVIX_GSL_API void gparse_strncat(const char* src, std::size_t n, char* dst);

// ---------------------------------------------------------------------------------------------------------------------
// Clean-up, in place unless said otherwise

/// Copies `src` without the blanks at both its ends. `dst` may be `src` or overlap it.
///
/// @param src  text to strip; null leaves `dst` untouched
/// @param dst  receives the text; must hold what is left and a zero byte
ORVIX_GSL_API void gparse_strpbl(const char* src, char* dst);

/// Replaces each tab by one blank.
///
/// @param s  text to change; not null
ORVIX_GSL_API void gparse_strptab(char* s);

/// @param s  text to measure; not null
/// @return its length in bytes, zero byte not counted
ORVIX_GSL_API std::size_t gparse_strlength(const char* s);

/// Ends a text at `n` bytes by a zero byte at `s[n]`. The present length plays no part.
///
/// @param s  buffer of more than `n` bytes; not null
/// @param n  length in bytes
ORVIX_GSL_API void gparse_setstrlength(char* s, std::size_t n);

/// Turns "a" to "z" into upper case.
///
/// @param s  text to change; not null
ORVIX_GSL_API void gparse_lowtoup(char* s);

/// Turns "A" to "Z" into lower case.
///
/// @param s  text to change; not null
ORVIX_GSL_API void gparse_uptolow(char* s);

// ---------------------------------------------------------------------------------------------------------------------
// Comparison. An order is negative, zero or positive for less, equal or greater.

/// @return true if both texts are equal byte by byte; null counts as the empty text, unlike in `astr_strings_equal`
ORVIX_GSL_API bool gparse_eqlstr(const char* a, const char* b);

/// @return 1 if `a` is greater than `b`, -1 if it is smaller, 0 if they are equal
ORVIX_GSL_API int gparse_intcmp(int a, int b);

/// Orders two texts without regard to letter case.
///
/// @param a  first text; not null
/// @param b  second text; not null
/// @return 0 if they are equal; else the difference of the first two bytes that differ in upper case. Bytes are taken
///         as signed here: those from 0x80 on come before all others.
ORVIX_GSL_API int gparse_stricmp(const char* a, const char* b);

namespace orvix::gsl {

/// Orders two texts without regard to letter case, bytes taken as unsigned. Null counts as the empty text.
///
/// @return 0 if they are equal; else the difference of the first two bytes that differ in lower case, the zero byte
///         included
ORVIX_GSL_API int strcasecmp(const char* a, const char* b);

/// Orders the first `n` bytes of two texts as `strcasecmp` does.
///
/// @param a  first text; null counts as empty
/// @param b  second text; null counts as empty
/// @param n  most bytes to compare; 0 and below give 0. With a null pointer the count is not looked at: the result is
///           then the difference of the first bytes in lower case, whatever `n`.
/// @return as `strcasecmp`, 0 if the first `n` bytes are equal
ORVIX_GSL_API int strncasecmp(const char* a, const char* b, int n);

}  // namespace orvix::gsl

/// Tells whether two texts are equal but for letter case and blanks at their ends. Blanks inside count.
///
///     gparse_simstr("  Abc ", "aBC")  ->  true
///
/// @param a  first text; not null
/// @param b  second text; not null
ORVIX_GSL_API bool gparse_simstr(const char* a, const char* b);

/// Tells whether two texts are equal but for letter case. Nothing is stripped.
///
/// @param a  first text; not null
/// @param b  second text; not null
ORVIX_GSL_API bool gparse_simstr2(const char* a, const char* b);

/// Orders names so that "net2" comes before "net10". Letter case does not matter, a digit comes after every other byte,
/// and of two texts that agree as far as both go the longer comes last.
///
/// Numbers decide only where nothing but the number tells the names apart: the text behind the two numbers must be
/// equal byte by byte, letter case included. Hence "a10x" comes before "a9y" ("1" before "9"), though "a9x" comes
/// before "a10x". Numbers of any length compare by value; if they are equal, the longer text comes last ("a7" before
/// "a007").
///
/// @param a  first name; not null
/// @param b  second name; not null
/// @return exactly -1, 0 or 1
ORVIX_GSL_API int gparse_alpha_numeric_strcasecmp(const char* a, const char* b);

/// Tells whether the bytes from `s[first]` up to but without `s[last]` are all "0" to "9". Looks no further than the
/// first byte that is not.
///
/// @param s      bytes to test; not null
/// @param first  position of the first byte
/// @param last   position behind the last byte
/// @return true if they are, and for an empty range (`first >= last`)
ORVIX_GSL_API bool gparse_all_digits(const char* s, std::size_t first, std::size_t last);

/// @return true if both texts are equal but for letter case; false if a pointer is null, even if both are, unlike
///         `gparse_eqlstr`
ORVIX_GSL_API bool astr_strings_equal(const char* a, const char* b);

/// @return true if `s` ends with `tail`, letter case included; the empty tail ends every text; false if a pointer is
///         null
ORVIX_GSL_API bool astr_str_matches_at_tail(const char* s, const char* tail);

// ---------------------------------------------------------------------------------------------------------------------
// Search, in time linear in the length of both texts

/// Finds the first occurrence of a text without regard to letter case. Takes no memory from the heap.
///
/// @param hay     text to search
/// @param needle  text to find
/// @return the occurrence inside `hay`; null if there is none and if `hay` is null or empty; else `hay` if `needle` is
///         null or empty
ORVIX_GSL_API const char* gsl_strcasestr(const char* hay, const char* needle);

/// Finds the last occurrence of a text, letter case included.
///
/// @param hay     text to search; not null
/// @param needle  text to find; not null
/// @return the occurrence inside `hay`; null if there is none; for an empty needle the pointer `needle` itself, which
///         does not lie in `hay`
ORVIX_GSL_API char* strrstr(const char* hay, const char* needle);

// ---------------------------------------------------------------------------------------------------------------------
// Strings and file names. Exhausted memory ends in `aerr_memory_error`.

/// @param s  text to copy; null gives null
/// @return a copy, to free with `astr_free_string`
ORVIX_GSL_API char* astr_new_string(const char* s);

/// Frees a string that an `astr_` or `gmem_ee_` function returned. Null is harmless.
ORVIX_GSL_API void astr_free_string(const char* s);

/// Builds a file name with an extension that is not doubled. Every `/` of the result is turned into `\`.
///
///     astr_add_extent("a/x", ".cfg")    ->  "a\x.cfg"
///     astr_add_extent("x.cfg", ".cfg")  ->  "x.cfg"
///     astr_add_extent("x.CFG", ".cfg")  ->  "x.CFG.cfg"
///
/// @param path  file name
/// @param ext   extension with its dot: none is supplied. It counts as there already if `path` ends with exactly these
///              bytes and is longer than they are.
/// @return a new string, to free with `astr_free_string`; null if a pointer is null or `ext` is empty. A name beyond
///         2 GiB ends in `aerr_memory_error`.
ORVIX_GSL_API char* astr_add_extent(const char* path, const char* ext);

/// Cuts the last part of a file name at its *first* dot: "dir.d\a.b.c" becomes "dir.d\a". Compare
/// `astr_replace_extent`, which sees the extension behind the last dot.
///
/// @param path  file name to change; both separators count; not null
/// @return true, also where there was no dot
ORVIX_GSL_API bool astr_remove_extent(char* path);

/// Replaces the extension of a file name, which begins at the *last* dot of its last part; without one the new
/// extension is appended. Every `/` of the name is turned into `\`.
///
/// @param path    file name to change, in a buffer of at least `maxlen + 1` bytes; null gives false
/// @param maxlen  bytes that the name may have, its zero byte not counted. One byte is reckoned for the dot even where
///                `ext` brings its own.
/// @param ext     new extension; a dot is supplied if it does not begin with one, also if it is empty. Null removes
///                the extension.
/// @return true when done; false if the result would be too long, and then the name is left without extension
ORVIX_GSL_API bool astr_replace_extent(char* path, int maxlen, const char* ext);

/// Finds the last part of a file name.
///
/// @param path  file name; both separators count
/// @return a pointer into `path` behind its last separator: `path` itself if there is none, its end if it ends in one;
///         null for null
ORVIX_GSL_API char* astr_get_leaf_name(char* path);

/// The same for a name that may not be written to.
ORVIX_GSL_API const char* astr_get_leaf_name(const char* path);

/// Builds the name of the directory that a file name lies in, without trailing separator.
///
///     "a/b/c"  ->  "a\b"        "c"   ->  ".\"        "\c"  ->  ".\"
///
/// @param path  file name; every `/` in it is turned into `\`
/// @return a new string, to free with `astr_free_string`; null for null
ORVIX_GSL_API char* astr_get_path_name(char* path);

/// Copies the first line of a text, without its line feed. A carriage return is a byte like any other.
///
/// A line of more than `maxlen` bytes is cut: its first `maxlen` bytes come out, *the byte behind them is lost*, and
/// the rest counts as the next line.
///
///     for (char* rest = text; rest != nullptr;) {
///         rest = astr_extract_line_from_multilines(rest, line, 80);
///         use(line);
///     }
///
/// @param text    text to read, left as it is; not null
/// @param out     receives the line; must hold `maxlen + 1` bytes and not overlap `text`
/// @param maxlen  most bytes of a line, zero byte not counted; below 0 counts as 0
/// @return the text behind what was taken; null if this was the last line. A text that ends in a line feed gives a
///         pointer to its end, from where the next call takes an empty line and returns null.
ORVIX_GSL_API char* astr_extract_line_from_multilines(char* text, char* out, int maxlen);

/// @param path  UTF-8 name
/// @return true if something exists under that name; false for null and whenever the question fails
ORVIX_GSL_API bool astr_file_exists(const char* const path);

/// Makes a file empty, creating it if it is missing. If that fails nothing is told.
///
/// @param path  UTF-8 name; null is ignored
ORVIX_GSL_API void astr_clear_file(const char* path);
