/// @file
/// Numbers out of text, and text out of numbers.
///
/// Reading is strict: a whole text must be one number. Writing is made for fields: the caller gives a width and a
/// number of decimals, and the size of the value decides between a fixed form, a zero form and an exponent form. The
/// stripped conversions drop surplus zeros for display.
///
/// A point is always ".", whatever the locale of the process. Digits are exact: the number read is the one nearest to
/// its text, and the text written is the one nearest to its number, ties to even.
///
/// No function here touches `GuiErrno`; a false or null result is the report. All but the stripped conversions may run
/// on any thread on buffers of their own.
#pragma once

#include <orvix/gsl/export.h>

#include <cstddef>
#include <cstdint>

// ---------------------------------------------------------------------------------------------------------------------
// Strict reading
//
// A text is a number if all of it is one by the rules of `strtod` in the "C" locale, its first byte is "+", "-", "." or
// a digit, and its last byte is "." or a digit. So "1e5", "1.", ".5" and "0x10" are numbers; "", " 7", "7 ", "1e",
// "0x1f", "inf" and "nan" are not.

/// Reads a number in double precision.
///
/// @param s    text to read; null is no number
/// @param out  receives the number, infinite if it is too large. If `s` is no number, receives what `strtod` makes of
///             its beginning: 12 for "12mm", 0 for "abc", infinity for "inf". Untouched if `s` is null.
/// @return true if `s` is a number
ORVIX_GSL_API bool gparse_astodbl(const char* s, double* out);

/// Reads a number in single precision: the nearest double, rounded.
///
/// @param s    text to read; null is no number
/// @param out  receives the number; 0 if there is none. A number beyond 1.701411e+38 in magnitude, about half of what a
///             float holds, is refused, and the float of that sign with the bits 0x7EFFFFF8 or 0xFEFFFFF8 is stored.
/// @return true if `s` is a number in that range
ORVIX_GSL_API bool gparse_astoflt(const char* s, float* out);

/// Reads a whole number. "12.", "1e3" and "2.0" are whole.
///
/// @param s    text to read; null is no number
/// @param out  receives the number; 0 if there is none
/// @return true if `s` is a number without fraction, from -2147483647 to 2147483647; -2147483648 is out of range
ORVIX_GSL_API bool gparse_astoint(const char* s, int* out);

/// Does as `gparse_astoint`.
///
/// @param s    text to read; null is no number
/// @param out  receives the number; 0 if there is none
/// @return true if `s` is a number without fraction, from -2147483647 to 2147483647
ORVIX_GSL_API bool gparse_astolng(const char* s, std::int32_t* out);

// ---------------------------------------------------------------------------------------------------------------------
// Reading as the C library does

/// Reads what `strtod` reads in the "C" locale: white space in front, named values and hexadecimal numbers too. Nothing
/// may be left over. The empty text gives 0.
///
/// `errno` is 0 afterwards, or `ERANGE` if the number is too large or too small.
///
/// @param s    text to read; not null
/// @param out  receives the number; untouched if there is none
/// @return false if something is left over, or the number is out of range
ORVIX_GSL_API bool astr_str_to_double(const char* s, double* out);

/// Reads what `strtol` reads with base 10: white space in front, a sign, decimal digits. Nothing may be left over. The
/// empty text gives 0.
///
/// `errno` is 0 afterwards, or `ERANGE` if the number is out of range.
///
/// @param s    text to read; not null
/// @param out  receives the number; untouched if there is none
/// @return false if something is left over, or the number is not one of -2147483648 to 2147483647
ORVIX_GSL_API bool astr_str_to_long(const char* s, std::int32_t* out);

/// Reads the digits that stand at one place of a text, and finds what follows them.
///
///     gparse_parse_numeric_and_postnumeric_part("R12b", 1, 4, &number)  ->  number is 12, result is "b"
///
/// @param s      text; not null
/// @param first  position of the first digit; behind the end of `s` there is none
/// @param last   position behind the last byte that may be a digit
/// @param out    receives the number; 0 if no digit is there, 2147483647 for any that is larger
/// @return the place in `s` behind the digits
ORVIX_GSL_API const char* gparse_parse_numeric_and_postnumeric_part(const char* s, std::size_t first, std::size_t last,
                                                                    int* out);

// ---------------------------------------------------------------------------------------------------------------------
// Writing for a field
//
// Widths and decimals are counts of bytes. The forms, for a width of 10 and three decimals:
//
//     fixed     "12.500"     the decimals asked for, and a point even without any; not filled up to the width
//     zero      "    0.000"  filled up with blanks in front, to one byte less than the width
//     exponent  "1.25e+001"  as many digits as the width takes beside a sign's place, and three for the exponent; not
//                            for widths below 9
//
// 0 with no decimals is "0". Infinite values and those that are no number have no text.

/// Writes a number in fixed form if it fits and its first digits show, in zero form up to 1e-23, and in exponent form
/// otherwise.
///
///     gparse_dbltoas(1.5, 10, 3, dst)       ->  "1.500"
///     gparse_dbltoas(123456.0, 10, 3, dst)  ->  "1.23e+005"
///     gparse_dbltoas(0.04, 12, 1, dst)      ->  "4.0000e-002"
///
/// It fits if it is not above 10^(width - prec - 2) - 10^-prec, which leaves places for a sign and the point; its first
/// digits show if it is not below 10^-prec.
///
/// @param v      number to write
/// @param width  width of the field
/// @param prec   decimals of the fixed form; below 0 there is only the exponent form
/// @param dst    receives the text; empty if no form fits. Must hold `max(width, prec + 3) + 2` bytes.
/// @return false if no form fits
ORVIX_GSL_API bool gparse_dbltoas(double v, int width, int prec, char* dst);

/// Writes a number in zero form below 10^-prec, and in fixed form otherwise.
///
///     gparse_dblxxas(1e-10, 10, 3, dst)     ->  "    0.000"
///     gparse_dblxxas(123456.0, 10, 3, dst)  ->  false, ""
///
/// @param v      number to write
/// @param width  width of the field
/// @param prec   decimals; below 0 the number is written in exponent form
/// @param dst    receives the text; empty on failure. Must hold `max(width, prec + 3) + 2` bytes.
/// @return false if the number has more than `width - prec - 2` digits in front of its point
ORVIX_GSL_API bool gparse_dblxxas(double v, int width, int prec, char* dst);

/// Writes a number as `gparse_dbltoas` does, with as many decimals as the field takes: `width - 3`, and one fewer for
/// each digit in front of the point beyond the first.
///
///     gparse_dblmxas(123.456, 10, dst)  ->  "123.45600"
///
/// @param v      number to write
/// @param width  width of the field
/// @param dst    receives the text; empty if no form fits. Must hold `max(width, 3) + 2` bytes.
/// @return false if no form fits
ORVIX_GSL_API bool gparse_dblmxas(double v, int width, char* dst);

/// Writes a whole number in decimal digits, with "-" in front of one below zero.
///
/// @param v      number to write
/// @param width  most bytes of the text, sign included
/// @param dst    receives the text; empty if it is longer than that. Must hold `min(width, 11) + 1` bytes.
/// @return false if the text is longer than `width`
ORVIX_GSL_API bool gparse_lngtoas(std::int32_t v, int width, char* dst);

/// Does as `gparse_lngtoas`.
///
/// @param v      number to write
/// @param width  most bytes of the text, sign included
/// @param dst    receives the text; empty if it is longer than that. Must hold `min(width, 11) + 1` bytes.
/// @return false if the text is longer than `width`
ORVIX_GSL_API bool gparse_inttoas(int v, int width, char* dst);

/// Writes a number with four decimals, as "%.4f" does in the "C" locale.
///
/// @param v    number to write
/// @param dst  receives the text, 315 bytes with its zero byte if the number is the largest; null is a failure
/// @return false if `dst` is null
ORVIX_GSL_API bool astr_double_to_str(double v, char* dst);

/// Writes a whole number in decimal digits, with "-" in front of one below zero.
///
/// @param v    number to write
/// @param dst  receives the text, of 12 bytes at most with its zero byte; null is a failure
/// @return false if `dst` is null
ORVIX_GSL_API bool astr_long_to_str(std::int32_t v, char* dst);

// ---------------------------------------------------------------------------------------------------------------------
// Stripped text for display
//
// `out` is a buffer on the heap, of 33 bytes at least, from `malloc` or `gmem_ee_malloc`; or null, and then the result
// lies in a buffer of the library, good until the next call of the same function. These buffers belong to one thread at
// a time.
//
// A result of null is a failure, of memory too, and `out` has then been freed. A text of more than 32 bytes for `out`
// is such a failure; one of more than 31 for a buffer of the library prints "FATAL ERROR: number text longer than 31
// bytes\n" to the standard error stream and ends the process.

/// Splits a number into mantissa and power of ten, by way of its logarithm: good for display, not to the last bit.
///
///     1250.0  ->  1.25 and 3
///
/// @param v         number to split
/// @param mantissa  receives the mantissa, from 1 to below 10, with the number's sign; 10 if the magnitude is not above
///                  1e-99
/// @param exponent  receives the exponent; -99 if the magnitude is not above 1e-99
ORVIX_GSL_API void gparse_cnvt_double_e_format(double v, double* mantissa, double* exponent);

/// Writes a number with at most so many digits, and without the zeros at its end. The first decimal stays.
///
///     gparse_cnvt_double_string_stripped(nullptr, 1.5, 0, 10)    ->  "1.5"
///     gparse_cnvt_double_string_stripped(nullptr, 2.0, 0, 10)    ->  "2.0"
///     gparse_cnvt_double_string_stripped(nullptr, 1.5, 3, 10)    ->  "1.500"
///     gparse_cnvt_double_string_stripped(nullptr, 1.5e20, 0, 10) ->  "1.5e+020"
///
/// @param out           receives the text; may be null
/// @param v             number to write
/// @param min_decimals  least decimals, zeros if need be; more than 30 are 30
/// @param max_digits    most digits; more than 30 are 30. The text is that of `gparse_dblmxas` for a width of two more,
///                      and then stripped.
/// @return `out`, or the library's buffer if it is null; null if the width takes no form of the number
ORVIX_GSL_API char* gparse_cnvt_double_string_stripped(char* out, double v, int min_decimals, int max_digits);

/// Strips the zeros at the end of a number text. The first decimal stays. What stands from an "e" on is dropped; an "E"
/// is a byte like any other. A text without point loses the zeros of its whole part.
///
///     "1.500"       ->  "1.5"
///     "2.000"       ->  "2.0"
///     "1.500e+003"  ->  "1.5"
///     "1500"        ->  "15"
///
/// @param out  receives the text; may be null
/// @param s    number text; not null
/// @return `out`, or the library's buffer if it is null
ORVIX_GSL_API char* gparse_cnvt_string_stripped_zeros(char* out, char* s);

/// Brings a number text to a number of decimals, filled up with zeros or cut.
///
///     gparse_cnvt_string_string_stripped(out, "1.5", 2, 4)      ->  "1.50"
///     gparse_cnvt_string_string_stripped(out, "1.23456", 2, 4)  ->  "1.23"
///     gparse_cnvt_string_string_stripped(out, "123", 2, 4)      ->  "123.00"
///     gparse_cnvt_string_string_stripped(out, "1.5e3", 2, 4)    ->  its argument
///     gparse_cnvt_string_string_stripped(out, "0.0001", 2, 4)   ->  "0.000100000"
///
/// Ask for more digits than decimals. If `max_digits` is not above `min_decimals`, or the decimals do not reach the
/// first digit of the number, the result may show it twice, rounded and in full, with an "e" between: "5.25" with two
/// and two gives "5.25e5.25". A number without text of its width, as the last one above, is given nine decimals.
///
/// @param out           receives the text; may be null. Not written to where the result is `s`.
/// @param s             number text, as for `gparse_astodbl`; null is none
/// @param min_decimals  decimals; more than 30 are 30
/// @param max_digits    above `min_decimals`, to cut the text behind them; more than 30 are 30
/// @return `s` if it has an exponent; else `out`. If `out` is null: the library's buffer for a text without point, `s`
///         for a number that no form fits, and otherwise a new block that the caller frees with `gmem_ee_free`. Null on
///         failure: `s` is no number.
ORVIX_GSL_API char* gparse_cnvt_string_string_stripped(char* out, char* s, int min_decimals, int max_digits);

/// Gives a number text on as it is: nothing is converted, exponent or not.
///
/// @param out  receives the text if it has no exponent; may be null
/// @param s    text to give on; not null
/// @param n    not used
/// @return `out` if it is not null and `s` has no exponent; else `s`. Null, and `out` is freed, if `s` does not begin
///         with a digit, "+" or "-".
ORVIX_GSL_API char* gparse_cnvt_from_e_to_string(char* out, char* s, int n);
