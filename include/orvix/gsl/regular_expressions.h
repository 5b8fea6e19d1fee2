/// @file
/// Regular expressions over zero-ended byte strings: compile a pattern, search a subject, expand a template.
///
///     __gsl_regexp* number = gsl_regcomp("R([0-9]+)");
///     if (gsl_regexec(number, "move R12 up") == 1) {
///         char text[64];
///         gsl_regsub(number, "resistor \\1", text);  // "resistor 12"
///     }
///     std::free(number);
///
/// **Patterns.** Alternatives are separated by `|`; an empty one matches the empty string. An alternative is a row of
/// pieces, each an atom that `*`, `+` or `?` may follow. Atoms are
///
/// | Atom | Matches |
/// |---|---|
/// | `(` pattern `)` | the pattern, as a group; groups are numbered 1 to 9 by their opening parentheses |
/// | `^` and `$` | the start and the end of the whole subject; a line feed is a byte like any other |
/// | `.` | any byte |
/// | `[abc]`, `[a-z]` | a byte of the set; `]` or `-` is a member if it comes first, `-` also if it comes last |
/// | `[^abc]` | a byte that is not in the set |
/// | `\` and a byte | that byte, whatever it is: `\n` is the letter n |
/// | any other byte | itself |
///
/// There are no counted repeats, back references, named classes or letter case folding. What `*` and `+` repeat must
/// not match the empty string, and no repeat follows another.
///
/// **Which match.** The leftmost one. Among those that start there, earlier alternatives are preferred to later ones
/// and more repetitions to fewer, each choice before those behind it. A group that takes part more than once holds its
/// last part.
///
/// **Errors end the process**, through `gsl_regerror`: a caller cannot recover from a bad pattern. Programs that take
/// patterns from users must accept that, or check them first.
///
/// **Cost.** Searching takes no more steps than the length of the pattern times that of the subject, whatever both are,
/// and memory in proportion to the pattern alone. The call stack does not grow with either.
///
/// One compilation or one search at a time in a process.
#pragma once

#include <orvix/gsl/export.h>

#include <cstdint>

/// A compiled pattern, in one block of `malloc`; free it with `free`. Callers may read all fields. They write none.
struct __gsl_regexp {
    /// Where the whole match (0) and the groups (1 to 9) start in the subject of the last search; null for a group that
    /// took no part, and after most searches that failed.
    const char* startp[10];
    const char* endp[10];       ///< where each ends: one behind its last byte; null with its start
    char regstart;              ///< byte that every match begins with; 0 if not known
    char reganch;               ///< not 0 if a match can only begin at the start of the subject
    unsigned char reserved[6];  ///< the library's own
    const char* regmust;        ///< text inside the program that every match contains; null if not known
    std::int32_t regmlen;       ///< length of `regmust` in bytes
    unsigned char program[1];   ///< the program: 156, then the nodes, going on behind the record
};

/// Compiles a pattern.
///
/// The program is at most 32766 bytes long: a pattern of a few thousand bytes compiles for sure, except that a set
/// takes a byte for each of its members.
///
/// @param pattern  pattern as told above; not needed once this returns
/// @return the compiled pattern, never null. The caller frees it with `free`.
///
/// Ends the process for a pattern that is null or wrong, makes too long a program or has more than nine groups, and if
/// memory is exhausted.
ORVIX_GSL_API __gsl_regexp* gsl_regcomp(const char* pattern);

/// Searches a subject for the leftmost match.
///
/// @param re       compiled pattern; receives the places of the match in `startp` and `endp`. A search that fails sets
///                 all of them to null, or leaves them alone if no place was worth a try.
/// @param subject  text to search. `startp` and `endp` point into it: it must live as long as they are used.
/// @return 1 if there is a match, otherwise 0
///
/// Ends the process if an argument is null, if the program is damaged, and if memory is exhausted.
ORVIX_GSL_API int gsl_regexec(__gsl_regexp* re, const char* subject);

/// Expands a template with the places of the last match.
///
/// `&` stands for the whole match and a backslash with a digit for that group, `\0` for the whole match; a group that
/// took no part adds nothing. `\&` gives `&` and `\\` a backslash; a backslash in front of any other byte is a
/// backslash.
///
/// @param re      compiled pattern, after a search that found a match; its subject must still be there, unchanged
/// @param source  template
/// @param dest    receives the expanded text and its zero byte; must hold what `source` and the groups in it come to,
///                and overlap neither `source` nor the subject
///
/// Ends the process if an argument is null, if the program is damaged, and if a part of the subject that is copied ends
/// in a zero byte by now.
ORVIX_GSL_API void gsl_regsub(__gsl_regexp* re, const char* source, char* dest);

/// Reports an error in the use of regular expressions, as all functions of this family do: writes
/// "\nFATAL ERROR: regexp(3): %s" with the message to the standard error stream, flushes it and calls `abort`.
///
/// @param message  text to report
[[noreturn]] ORVIX_GSL_API void gsl_regerror(const char* message);
