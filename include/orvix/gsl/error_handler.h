/// @file
/// Where messages go: the chain of handlers that applications put up, and the functions that report to it.
///
/// The chain belongs to one thread: construction and destruction of handlers and every report are unsynchronised. No
/// lock is held while a handler runs, so a handler may itself report.
///
/// Of every `const char*` text here a null pointer counts as the empty text.
#pragma once

#include <orvix/gsl/export.h>

#include <cstdint>
#include <string>

namespace orvix::gsl {
struct HandlerChain;
}

/// A sink of messages. An object joins the front of the process-wide chain when it is constructed and leaves it when
/// it is destroyed; the newest handler is asked first. Applications derive from it, override `capture_message`, and
/// usually give the object automatic lifetime, to redirect messages for the length of a scope.
///
///     class Log : public ErrorHandler {
///         void capture_message(Category category, const std::string& text) override { lines.push_back(text); }
///         ...
///     };
///
/// Handlers are expected to die in the reverse order of their creation. One that dies earlier takes every newer handler
/// out of the chain with it: they live on, are asked no more, and their destructors change nothing.
class ORVIX_GSL_API ErrorHandler {
public:
    /// What kind of message it is.
    enum class Category : std::int32_t { Error = 1, Warning = 2, Info = 4 };

    /// Joins the front of the chain, with locations wanted.
    ErrorHandler();

    ErrorHandler(const ErrorHandler&) = delete;
    ErrorHandler& operator=(const ErrorHandler&) = delete;

    /// Delivers an error to this handler and, as long as handlers decline it, to the older ones behind it; newer
    /// handlers are not asked. The pending error's flag is cleared, without its lock, though its texts play no part and
    /// stay.
    ///
    /// @param text  the message, taken up to its first zero byte
    void report_error(const char* text);

    /// The same on a `std::string`.
    void report_error(const std::string& text);

    /// Delivers a warning, likewise; the pending error is not touched.
    void report_warning(const char* text);

    /// The same on a `std::string`.
    void report_warning(const std::string& text);

    /// Delivers information, likewise; the pending error is not touched.
    void report_info(const char* text);

    /// The same on a `std::string`.
    void report_info(const std::string& text);

    /// From now on, while this handler is the newest, a reported pending error arrives without its location. There is
    /// no way back.
    void skip_location_info();

private:
    friend struct orvix::gsl::HandlerChain;

    /// Takes a message. This one drops it.
    virtual void capture_message(Category category, const std::string& text);

    /// Takes or declines a message. This one hands it to `capture_message` and takes it.
    ///
    /// @return true if the message was taken; false passes it on to the next older handler. What nobody takes is
    ///         dropped.
    virtual bool handle_message(Category category, const std::string& text);

protected:
    virtual ~ErrorHandler();

private:
    void call_handle_message(Category category, const std::string& text);
    void unlink_handler(ErrorHandler* target, ErrorHandler* previous);

    ErrorHandler* next;
    bool includeLocation;
};

/// Reports an error: it becomes the pending error, in the place of an earlier one, and is delivered at once as
/// `report_pending_error` does, with the location that is set.
///
/// @param text  the message
ORVIX_GSL_API void report_error(const char* text);

/// The same on `std::string`s.
ORVIX_GSL_API void report_error(const std::string& text);

/// Reports an error of two texts, joined with a newline as `set_pending_error` does.
///
/// @param first   begins the message
/// @param second  ends it
ORVIX_GSL_API void report_error(const char* first, const char* second);

/// The same on `std::string`s.
ORVIX_GSL_API void report_error(const std::string& first, const std::string& second);

/// Delivers a warning to the chain, from the newest handler on. Without handlers prints "WARNING %s" to the standard
/// error stream, with no line end of its own; nothing if the text is empty.
///
/// @param text  the message
ORVIX_GSL_API void report_warning(const char* text);

/// The same on `std::string`s.
ORVIX_GSL_API void report_warning(const std::string& text);

/// Reports a warning of two texts. A newline is put between them unless the first is empty or ends in one, or the
/// second begins with one.
///
/// @param first   begins the message
/// @param second  ends it
ORVIX_GSL_API void report_warning(const char* first, const char* second);

/// The same on `std::string`s.
ORVIX_GSL_API void report_warning(const std::string& first, const std::string& second);

/// Delivers information to the chain, from the newest handler on. Without handlers prints "INFO %s" to the standard
/// output stream, with no line end of its own; nothing if the text is empty.
///
/// @param text  the message
ORVIX_GSL_API void report_info(const char* text);

/// The same on `std::string`s.
ORVIX_GSL_API void report_info(const std::string& text);
