/// @file
/// The line parser: cuts a line of text into clumps, maximal runs of ordinary bytes between delimiters, and tells which
/// of them are numbers.
///
/// `gparse_parline` is the general parser. `gparse_parline2` and `gparse_parline3` serve lines of a fixed shape of
/// three or four fields, take no numbers, and keep the positions of their clumps in one table for the whole process,
/// not in the record.
///
/// There is no quoting: a quote is an ordinary byte, or a delimiter if it is listed. The line is not copied. Records
/// keep a pointer to it, and it must stay alive and unchanged for as long as clumps are read. Positions are of 32 bits:
/// what lies behind the first 2147483647 bytes of a line is not there for these functions.
///
/// A clump reads as a number if it is one as a whole by the rules of `strtod` in the "C" locale, begins with "+", "-",
/// "." or a digit, and ends in "." or a digit. So "1e5", "1." and "0x10" are numbers, while "inf", "nan", "1e" and "1f"
/// are not. The process's locale plays no part.
///
/// `gparse_parline` and its accessors may run on any thread on records of their own, and several threads may read one
/// record. The functions with a 2 or a 3 at their end share the table of the process: a parse and the reading of its
/// clumps belong to one thread at a time. Nothing here sets `GuiErrno`; if there is no memory for a copy of a very long
/// number, the process ends in `aerr_memory_error`.
#pragma once

#include <orvix/gsl/export.h>

#include <cstddef>
#include <cstdint>

// ---------------------------------------------------------------------------------------------------------------------
// Lines of any shape

/// One clump of a parsed line.
struct parserec_clump {
    std::int32_t start;      ///< position of its first byte in the line
    std::int32_t end;        ///< position of its last byte in the line
    bool is_int;             ///< it reads as a whole number from -2147483647 to 2147483647
    std::int32_t int_value;  ///< that number; 0 if it is none
    bool is_real;            ///< it reads as a number; true whenever `is_int` is
    double real_value;       ///< that number, infinite if it is too large; 0 if it is none
};

/// A parsed line. The caller owns it, usually on the stack; it needs no initialisation and no release.
struct parserec {
    const char* line;            ///< the caller's line
    std::size_t nclumps;         ///< how many clumps there are
    parserec_clump clumps[301];  ///< the clumps in the order of the line; at most 300 but for one case
};

/// Cuts a line into clumps.
///
///     gparse_parline("a=1 ! note", " ", "=", '!', &rec)  ->  "a", "=", "1"
///
/// A line without clumps is no failure. What lies behind the 300th clump is dropped without a word. A single byte
/// directly behind a run of text that is the 300th clump is kept all the same, as the 301st.
///
/// @param line     line to parse; not null
/// @param delims   bytes that separate clumps; not null
/// @param singles  bytes that are clumps on their own; wins over `delims` for a byte in both; not null, may be empty
/// @param comment  byte that ends the line wherever it stands, even if it is listed in the other two; NUL for none
/// @param rec      receives the clumps; not null
/// @return false if `delims` is empty, which gives no clumps
ORVIX_GSL_API bool gparse_parline(const char* line, const char* delims, const char* singles, char comment,
                                  parserec* rec);

/// Copies the text of a clump.
///
/// @param rec    parsed line
/// @param index  clump, counted from 0
/// @param dst    receives the text; must hold it and a zero byte
/// @return false, with `dst` untouched, if there is no such clump
ORVIX_GSL_API bool gparse_getclump(parserec* rec, std::size_t index, char* dst);

/// Copies the stretch of the line from one clump to another, with all that stands between them.
///
///     clumps 0 to 1 of "a , b" with the delimiters " ,"  ->  "a , b"
///
/// The numbers are not compared with the count of clumps. Numbers of clumps that this parse did not write give some
/// part of the line, which is never left, or the empty text.
///
/// @param rec    parsed line
/// @param first  clump to begin with, counted from 0
/// @param last   clump to end with
/// @param dst    receives the text and a zero byte; empty if `first` begins behind the end of `last`
ORVIX_GSL_API void gparse_getplinstr(parserec* rec, std::size_t first, std::size_t last, char* dst);

/// Gives a clump as a whole number. "2.0" and "1e3" are whole.
///
/// @param rec    parsed line
/// @param index  clump, counted from 0
/// @param out    receives the number; 0 if there is none
/// @return false if there is no such clump, or it is no whole number from -2147483647 to 2147483647
ORVIX_GSL_API bool gparse_intclump(parserec* rec, std::size_t index, int* out);

/// Gives a clump as a number in double precision.
///
/// @param rec    parsed line
/// @param index  clump, counted from 0
/// @param out    receives the number, infinite if it is too large; 0 if there is none
/// @return false if there is no such clump, or it is no number
ORVIX_GSL_API bool gparse_d_relclump(parserec* rec, std::size_t index, double* out);

/// Gives a clump as a number in single precision: that of `gparse_d_relclump`, rounded.
///
/// @param rec    parsed line
/// @param index  clump, counted from 0
/// @param out    receives the number, infinite if it is too large; 0 if there is none
/// @return false if there is no such clump, or it is no number
ORVIX_GSL_API bool gparse_s_relclump(parserec* rec, std::size_t index, float* out);

// ---------------------------------------------------------------------------------------------------------------------
// Lines of three or four fields
//
// One table of four clumps serves the whole process. A parse writes what it reaches, and the rest keeps what an earlier
// parse, of either kind, left there. A clump is closed if a delimiter stands behind it; the last clump of a line may be
// open.

/// A line parsed by `gparse_parline2` or `gparse_parline3`, good until the next call of either by anyone.
struct parserecStruct1 {
    char* line;           ///< the caller's line
    std::size_t nclumps;  ///< how many closed clumps the line has; an open one does not count
};

/// Parses a line of three fields: the first two closed clumps go to clumps 0 and 1 of the table, and an open one goes
/// to clump 2, whatever its number.
///
/// @param line    line to parse, usually with its line feed, which must be no delimiter; not written to; not null
/// @param delims  bytes that separate clumps; not null
/// @param rec     receives line and count; not null
/// @return false for empty `delims`, for an empty line, and if clump 0 of the table, left by an earlier line, ends
///         exactly where this line does
ORVIX_GSL_API bool gparse_parline2(char* line, char* delims, parserecStruct1* rec);

/// Parses a line of four fields: the first three closed clumps go to clumps 0 to 2 of the table. An open one behind two
/// closed ones goes to clumps 2 and 3, behind three to clump 3, and is dropped otherwise.
///
/// @param line    line to parse; not written to; not null
/// @param delims  bytes that separate clumps; not null
/// @param rec     receives line and count; not null
/// @return false for empty `delims` and for an empty line
ORVIX_GSL_API bool gparse_parline3(char* line, char* delims, parserecStruct1* rec);

/// Copies a clump of a line parsed by `gparse_parline2`, without blanks at its ends. Clump 2 is given without its last
/// byte, unless it is a single one: that byte is the line feed. On a line without line feed its last real byte is lost.
///
/// The count of clumps plays no part: a clump that the parse did not reach gives the bytes of this line at the place
/// where an earlier line had it, as far as the line goes.
///
/// @param rec    parsed line
/// @param index  clump, 0 to 2
/// @param dst    receives the text; must hold it, with the blanks, and a zero byte
/// @return false, with `dst` untouched, for any other index
ORVIX_GSL_API bool gparse_getclump2(parserecStruct1* rec, std::size_t index, char* dst);

/// Copies a clump of a line parsed by `gparse_parline3`, without blanks at its ends, and writes a second zero byte
/// behind the first. A clump that the parse did not reach gives what `gparse_getclump2` would give.
///
/// @param rec    parsed line
/// @param index  clump, 0 to 3
/// @param dst    receives the text; must hold it, with the blanks, and two zero bytes
/// @return false, with `dst` untouched, for any other index
ORVIX_GSL_API bool gparse_getclump3(parserecStruct1* rec, std::size_t index, char* dst);
