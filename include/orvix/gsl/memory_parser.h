/// @file
/// The line parser without a limit of clumps: a record is small, and its clumps lie on the heap.
///
/// Lines, delimiters, singles, comments and numbers are those of `gparse_parline`. There are two forms with the same
/// results, the plain one and the efficient one. Each keeps a registry of the records that it has parsed into, by which
/// they are parsed again in place or all dropped at once. The efficient form is made for programs with many live
/// records: it finds a record in constant time on the usual path, where the plain one searches from the first.
///
///     parserecMem record;
///     gparse_init_parserecMem(&record);
///     while (next_line(&line)) {
///         gparse_efficient_parline_mem(line, " \t", "", '!', &record);
///         // read clumps
///     }
///     gparse_efficient_parline_free_mem(&record);
///
/// A record belongs to the form that parsed into it first, until that form frees it. The state of a form is shared by
/// the process: its parses and frees belong to one thread at a time. Reading of finished records needs no state.
/// Nothing here sets `GuiErrno`: a failure, of memory too, is a false result. Only the copy of a very long number can
/// end the process in `aerr_memory_error`, as it can for `gparse_parline`.
#pragma once

#include <orvix/gsl/export.h>
#include <orvix/gsl/line_parser.h>

#include <cstddef>
#include <cstdint>

/// A parsed line of any number of clumps. The caller owns it; `gparse_init_parserecMem` makes it ready for its first
/// parse.
struct parserecMem {
    const char* line;        ///< the caller's line, which must stay alive and unchanged; null if it was empty
    std::size_t nclumps;     ///< how many clumps there are
    parserec_clump* clumps;  ///< the clumps in the order of the line; null if there are none
    std::uint32_t slot;      ///< the record's number in the registry of its form; 0 if it is not there
};

/// Makes a record ready for its first parse: all fields become zero. Frees nothing.
///
/// @param rec  record; not null
ORVIX_GSL_API void gparse_init_parserecMem(parserecMem* rec);

// ---------------------------------------------------------------------------------------------------------------------
// Parsing

/// Cuts a line into clumps, with the plain form. The record's earlier clumps are freed.
///
/// An empty line leaves a record without line and clumps that stays registered.
///
/// @param line     line to parse; not null
/// @param delims   bytes that separate clumps; not null
/// @param singles  bytes that are clumps on their own; wins over `delims` for a byte in both; not null, may be empty
/// @param comment  byte that ends the line wherever it stands, even if it is listed in the other two; NUL for none
/// @param rec      receives the clumps; not null
/// @return false, with the record untouched, if `delims` is empty; false, with no clumps to read, for a record that the
///         registry does not know, as after `gparse_parline_free_all_mem`, and if memory is exhausted
ORVIX_GSL_API bool gparse_parline_mem(const char* line, const char* delims, const char* singles, char comment,
                                      parserecMem* rec);

/// Does as `gparse_parline_mem`, with the efficient form.
///
/// @param line     line to parse; not null
/// @param delims   bytes that separate clumps; not null
/// @param singles  bytes that are clumps on their own; wins over `delims` for a byte in both; not null, may be empty
/// @param comment  byte that ends the line wherever it stands, even if it is listed in the other two; NUL for none
/// @param rec      receives the clumps; not null
/// @return false, with the record untouched, if `delims` is empty; false, with no clumps to read, for a record that the
///         registry does not know, as after `gparse_efficient_parline_free_all_mem`, and if memory is exhausted
ORVIX_GSL_API bool gparse_efficient_parline_mem(const char* line, const char* delims, const char* singles, char comment,
                                                parserecMem* rec);

// ---------------------------------------------------------------------------------------------------------------------
// Release

/// Frees a record's clumps and takes it out of the registry of the plain form. It can be parsed into again at once.
///
/// @param rec  record that `gparse_parline_mem` parsed into, or one made ready and never used; not null
/// @return false, with the record untouched, if it is not in the registry and others are
ORVIX_GSL_API bool gparse_parline_free_mem(parserecMem* rec);

/// Frees a record's clumps and takes it out of the registry of the efficient form. It can be parsed into again at once.
///
/// @param rec  record that `gparse_efficient_parline_mem` parsed into, or one made ready and never used; not null
/// @return false, with the record untouched, if it has a number that is not in the registry, and others are there
ORVIX_GSL_API bool gparse_efficient_parline_free_mem(parserecMem* rec);

/// Drops the registry of the plain form, at the end of a phase. Records are not touched: their clumps stay readable,
/// and a caller frees `clumps` of each with `gmem_ee_free`, and makes it ready anew before it is parsed into again.
///
/// @return true
ORVIX_GSL_API bool gparse_parline_free_all_mem(void);

/// Does as `gparse_parline_free_all_mem`, for the efficient form.
///
/// @return true
ORVIX_GSL_API bool gparse_efficient_parline_free_all_mem(void);

// ---------------------------------------------------------------------------------------------------------------------
// Reading, whatever the form

/// Copies the text of a clump, as `gparse_getclump` does.
///
/// @param rec    parsed line
/// @param index  clump, counted from 0
/// @param dst    receives the text; must hold it and a zero byte
/// @return false, with `dst` untouched, if there is no such clump
ORVIX_GSL_API bool gparse_getclump_mem(parserecMem* rec, std::size_t index, char* dst);

/// Copies the stretch of the line from one clump to another, as `gparse_getplinstr` does.
///
/// @param rec    parsed line
/// @param first  clump to begin with, counted from 0
/// @param last   clump to end with
/// @param dst    receives the text and a zero byte; empty if `first` begins behind the end of `last`, or there is no
/// such
///               clump
ORVIX_GSL_API void gparse_getplinstr_mem(parserecMem* rec, std::size_t first, std::size_t last, char* dst);

/// Gives a clump as a whole number, as `gparse_intclump` does.
///
/// @param rec    parsed line
/// @param index  clump, counted from 0
/// @param out    receives the number; 0 if there is none
/// @return false if there is no such clump, or it is no whole number from -2147483647 to 2147483647
ORVIX_GSL_API bool gparse_intclump_mem(parserecMem* rec, std::size_t index, int* out);

/// Gives a clump as a number in double precision, as `gparse_d_relclump` does.
///
/// @param rec    parsed line
/// @param index  clump, counted from 0
/// @param out    receives the number, infinite if it is too large; 0 if there is none
/// @return false if there is no such clump, or it is no number
ORVIX_GSL_API bool gparse_d_relclump_mem(parserecMem* rec, std::size_t index, double* out);

/// Gives a clump as a number in single precision, as `gparse_s_relclump` does.
///
/// @param rec    parsed line
/// @param index  clump, counted from 0
/// @param out    receives the number, infinite if it is too large; 0 if there is none
/// @return false if there is no such clump, or it is no number
ORVIX_GSL_API bool gparse_s_relclump_mem(parserecMem* rec, std::size_t index, float* out);
