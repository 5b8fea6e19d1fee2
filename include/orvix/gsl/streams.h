/// @file
/// Reading and writing of streams: text lines, buffers, characters, positions and big-endian integers.
///
/// Results are `bool`, true for success, unless said otherwise; nothing else is reported and `GuiErrno` is not touched.
/// Streams come from `gsl_fopen` or `orvix::Path::fopen`. A stream must not be null: null goes to the runtime, which
/// takes it as badly as ever (`gsl_fclose` alone accepts it). Streams lock as the runtime does; two threads that read
/// lines from one stream share them out.
///
/// A line of text ends at its first line feed, carriage return or byte 26 (the old end-of-file mark), wherever that
/// stands; what follows up to the line feed is dropped. A line that begins with byte 26 ends the file for the reader. A
/// zero byte ends the text as well, but not the line.
#pragma once

#include <orvix/gsl/export.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>

/// Reads the next line into a buffer of 1024 bytes: `gfile_getline_limited` with that limit.
///
/// @param stream  stream to read
/// @param buffer  receives the text, zero byte included; at least 1024 bytes
/// @return false at the end of the file, at a read error, or at a line that begins with byte 26
ORVIX_GSL_API bool gfile_getline(std::FILE* stream, char* buffer);

/// Reads the next line. The rest of a line that is longer than the buffer is read and thrown away, so that it never
/// shows up as a line of its own.
///
///     limit 5, file "abcdefgh\nij\n": "abcd", "ij", then false
///
/// @param stream  stream to read
/// @param buffer  receives the text, zero byte included; untouched at the end of the file, and left as read by a line
///                that begins with byte 26
/// @param limit   bytes that `buffer` holds. With 1 there is room for no text, and each line is read and dropped; with
///                0 nothing is read and the result is false. More than 2,147,483,647 counts as that.
/// @return as `gfile_getline`
ORVIX_GSL_API bool gfile_getline_limited(std::FILE* stream, char* buffer, std::size_t limit);

/// Reads the next line whole, however long it is. It is taken in chunks of 1023 bytes: where a carriage return, byte 26
/// or zero byte ends the text, what follows in the same chunk is dropped, and the chunks after it make the next line.
///
/// @param stream  stream to read
/// @param line    receives the text; empty if the result is false
/// @return as `gfile_getline`
ORVIX_GSL_API bool gfile_getline_std_string(std::FILE* stream, std::string* line);

/// Writes a text.
///
/// @param stream        stream to write
/// @param add_new_line  whether a line feed follows
/// @param text          text to write; null counts as empty
/// @return true if all was taken by the stream
ORVIX_GSL_API bool gfile_putline(std::FILE* stream, bool add_new_line, const char* text);

/// Reads elements. A short count is no failure: at the end of the file the result is true.
///
/// @param stream        stream to read
/// @param element_size  bytes an element
/// @param count         elements to read
/// @param buffer        receives them; at least `element_size * count` bytes
/// @return false if the stream's error mark is set afterwards
ORVIX_GSL_API bool gfile_getfilbuf(std::FILE* stream, std::size_t element_size, std::size_t count, char* buffer);

/// Writes elements.
///
/// @param stream        stream to write
/// @param element_size  bytes an element
/// @param count         elements to write
/// @param buffer        holds them; `element_size * count` bytes
/// @return false if the stream's error mark is set afterwards
ORVIX_GSL_API bool gfile_putfilbuf(std::FILE* stream, std::size_t element_size, std::size_t count, char* buffer);

/// Reads one byte. The end of the file gives true and byte 255: callers test `feof` themselves.
///
/// @param stream  stream to read
/// @param out     receives the byte; not null
/// @return false only if both the error mark and the end mark of the stream are set afterwards
ORVIX_GSL_API bool gfile_getfilchr(std::FILE* stream, char* out);

/// Writes one byte.
///
/// @return false if the stream's error mark is set afterwards
ORVIX_GSL_API bool gfile_putfilchr(std::FILE* stream, char byte);

/// Tells the position in the file.
///
/// @param stream  stream to ask
/// @param out     receives the bytes from the start; -1 if the stream cannot tell or is beyond 2,147,483,647; not null
/// @return false if -1 was stored
ORVIX_GSL_API bool gfile_getfilptr(std::FILE* stream, std::int32_t* out);

/// Moves to a position in the file. A failure does not set `GUI_ERR_FILE_SEEK_START`, which is left to callers.
///
/// @param stream    stream to move
/// @param position  bytes from the start
/// @return true if it went there
ORVIX_GSL_API bool gfile_putfilptr(std::FILE* stream, std::int32_t position);

/// Moves to the start of the file.
///
/// @return true if it went there
ORVIX_GSL_API bool gfile_resetfilptr(std::FILE* stream);

/// Debugging aid: prints "gfile: current number of files open = %d\n" with the lowest free descriptor to the standard
/// error stream, or "gfile: could not determine number of files opened, tmpfile() failed\n".
ORVIX_GSL_API void gfile_fopen_status(void);

/// Opens a file.
///
/// @param name  name in UTF-8, with slashes or backslashes; null opens nothing
/// @param mode  as for `std::fopen`; null opens nothing
/// @return the stream, to close with `gsl_fclose`; null with `errno` set
ORVIX_GSL_API std::FILE* gsl_fopen(const char* name, const char* mode);

/// Closes a stream.
///
/// @param stream  stream to close; null is harmless
/// @return 0, or `EOF` if what was still to be written could not be
ORVIX_GSL_API int gsl_fclose(std::FILE* stream);

/// `std::fgets`.
ORVIX_GSL_API char* gsl_fgets(char* buffer, int size, std::FILE* stream);

/// @return the system's descriptor under a stream, -1 if it has none
ORVIX_GSL_API int gsl_fileno(std::FILE* stream);

/// Reads an integer of 4 bytes in the machine's order, as `gsl_putw` wrote it.
///
/// @return the integer, or -1 at the end of the file and at errors: ask `feof` and `ferror` which it is
ORVIX_GSL_API int gsl_getw(std::FILE* stream);

/// Writes an integer as 4 bytes in the machine's order.
///
/// @return `value`, or -1 at errors: ask `ferror` which it is
ORVIX_GSL_API int gsl_putw(int value, std::FILE* stream);

/// An integer of 16 bits as it stands in a file: the most significant byte first, on every machine.
struct TwoBytes {
    unsigned char bytes[2];  ///< the most significant byte first
};

/// An integer of 32 bits as it stands in a file: the most significant byte first, on every machine.
struct FourBytes {
    unsigned char bytes[4];  ///< the most significant byte first
};

/// Takes the integer from its record.
///
/// @param record  bytes of the file
/// @param out     receives the integer; not null
ORVIX_GSL_API void agsl_bin_to_int16(TwoBytes record, short* out);

/// Makes the record of an integer: 258 gives the bytes 1, 2.
///
/// @param value  integer
/// @param out    receives the bytes for the file; not null
ORVIX_GSL_API void agsl_int16_to_bin(short value, TwoBytes* out);

/// Takes the integer from its record.
///
/// @param record  bytes of the file
/// @param out     receives the integer; not null
ORVIX_GSL_API void agsl_bin_to_int32(FourBytes record, int* out);

/// Makes the record of an integer: 1 gives the bytes 0, 0, 0, 1.
///
/// @param value  integer
/// @param out    receives the bytes for the file; not null
ORVIX_GSL_API void agsl_int32_to_bin(int value, FourBytes* out);
