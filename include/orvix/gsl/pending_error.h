/// @file
/// The one pending error of the process: left by code that knows what went wrong, told or thrown away by a caller
/// higher up who knows whether it matters.
///
///     set_pending_error("bad value");         // deep down
///     add_error_location_info("parse.c");     // on the way up
///     report_pending_error();                 // at the top: "ERROR: parse.c: bad value", or one call of a handler
///
/// The flag, the message and the location are independent: an empty message can be pending, and a cleared flag leaves
/// the texts behind. Errors do not queue: a second one replaces the message of the first.
///
/// One plain mutex guards the texts. It is not recursive and not held while handlers run. The flag is a plain `bool`
/// that some functions read or clear without the lock. A failure of the lock raises `std::system_error`.
///
/// Of every `const char*` text here a null pointer counts as the empty text.
#pragma once

#include <orvix/gsl/export.h>

#include <string>
#include <string_view>

/// True while an error is pending; false at load.
ORVIX_GSL_API extern bool AerrFlag;

/// Makes an error pending and replaces the message. The location stays.
///
/// @param text  the message
ORVIX_GSL_API void set_pending_error(const char* text);

/// The same on `std::string`s, zero bytes included.
ORVIX_GSL_API void set_pending_error(const std::string& text);

/// The same with a message of several texts. Before each further text a newline is added, unless the message so
/// far is empty or ends in one, or the text begins with one: ("a", "b") gives "a\nb", and ("a", "") gives "a\n".
ORVIX_GSL_API void set_pending_error(const char* first, const char* second);

/// The same on `std::string`s, zero bytes included.
ORVIX_GSL_API void set_pending_error(const std::string& first, const std::string& second);

/// The same with three texts.
ORVIX_GSL_API void set_pending_error(const char* first, const char* second, const char* third);

/// As `set_pending_error`, for code that already holds the lock or runs where none can be taken.
///
/// @param text  the message
ORVIX_GSL_API void set_pending_error_no_lock(const char* text);

/// Reads the message, pending or left behind. Nothing is cleared.
///
/// @param out  receives the message, possibly empty; null only asks
/// @return true if the message is not empty, whatever the flag says
ORVIX_GSL_API bool get_pending_error(std::string* out);

/// @return the location and the message, with a newline between them if both have text and the location does not end
///         in one
ORVIX_GSL_API std::string get_pending_error_with_location();

/// Sets where the error happened, a text that the caller composes. It lasts until an error is reported or
/// `reset_pending_error_and_location`, so it attaches to the next error if this one is dropped.
///
/// @param location  replaces the earlier location; empty changes nothing
ORVIX_GSL_API void add_error_location_info(const std::string& location);

/// Clears the flag. Message and location stay.
ORVIX_GSL_API void reset_pending_error();

/// Clears the flag and the location. The message stays.
ORVIX_GSL_API void reset_pending_error_and_location();

/// @return `AerrFlag`, read without the lock
ORVIX_GSL_API bool error_pending();

/// Delivers the pending error and clears flag, message and location; does nothing if none is pending.
///
/// With handlers put up (see `ErrorHandler`), the newest is given the text of `get_pending_error_with_location`, or the
/// message alone if it skips locations; if it declines, the older ones follow. A handler's exception passes through,
/// and then the error stays pending. An error that a handler sets meanwhile is cleared with the rest.
///
/// Without handlers prints "ERROR: location: message\n" to the standard error stream, leaving out what is empty.
ORVIX_GSL_API void report_pending_error();

/// The same.
ORVIX_GSL_API void aerr_report(void);

/// Composes a text of an error and its location. Touches nothing else.
///
/// @param message   comes second in the result
/// @param location  comes first
/// @return both, with a newline between them unless the location is empty or ends in one, or the message begins with
///         one; the location as it is if the message is empty
ORVIX_GSL_API std::string format_legacy_error_message(std::string_view message, std::string_view location);
