#include <orvix/gsl/pending_error.h>

#include "status/handler_chain.h"
#include "status/text_joining.h"

#include <cstdio>
#include <mutex>

using orvix::gsl::append_on_new_line;
using orvix::gsl::HandlerChain;
using orvix::gsl::on_separate_lines;
using orvix::gsl::text_or_empty;

constinit bool AerrFlag = false;

namespace {

struct PendingError {
    std::mutex lock;  // guards the texts and AerrFlag
    std::string message;
    std::string location;
};

PendingError& pending() {
    static auto& error = *new PendingError;  // never destroyed: destructors of static objects may report
    return error;
}

using Guard = std::lock_guard<std::mutex>;

void set_pending(std::string message) {
    const Guard guard(pending().lock);
    AerrFlag = true;
    pending().message.swap(message);
}

// Unlike the legacy form it looks at the location's end alone: a message keeps a newline at its head as a blank line.
std::string with_location(std::string location, const std::string& message) {
    if (message.empty()) return location;
    if (!location.empty() && location.back() != '\n') location += '\n';
    return location + message;
}

void print(const std::string& location, const std::string& message) {
    const char* separator = location.empty() || message.empty() ? "" : ": ";
    std::fprintf(stderr, "ERROR: %s%s%s\n", location.c_str(), separator, message.c_str());
}

}  // namespace

void set_pending_error(const char* text) { set_pending(text_or_empty(text)); }

void set_pending_error(const std::string& text) { set_pending(text); }

void set_pending_error(const char* first, const char* second) {
    set_pending(on_separate_lines(text_or_empty(first), text_or_empty(second)));
}

void set_pending_error(const std::string& first, const std::string& second) {
    set_pending(on_separate_lines(first, second));
}

void set_pending_error(const char* first, const char* second, const char* third) {
    std::string message = on_separate_lines(text_or_empty(first), text_or_empty(second));
    append_on_new_line(message, text_or_empty(third));
    set_pending(std::move(message));
}

void set_pending_error_no_lock(const char* text) {
    AerrFlag = true;
    pending().message = text_or_empty(text);
}

bool get_pending_error(std::string* out) {
    const Guard guard(pending().lock);
    if (out != nullptr && out != &pending().message) *out = pending().message;
    return !pending().message.empty();
}

std::string get_pending_error_with_location() {
    const Guard guard(pending().lock);
    return with_location(pending().location, pending().message);
}

void add_error_location_info(const std::string& location) {
    if (location.empty()) return;
    const Guard guard(pending().lock);
    pending().location = location;
}

void reset_pending_error() {
    const Guard guard(pending().lock);
    AerrFlag = false;
}

void reset_pending_error_and_location() {
    const Guard guard(pending().lock);
    AerrFlag = false;
    pending().location.clear();
}

bool error_pending() { return AerrFlag; }

void report_pending_error() {
    if (!AerrFlag) return;

    std::string location;
    std::string message;
    {
        const Guard guard(pending().lock);
        location = pending().location;
        message = pending().message;
    }
    if (ErrorHandler* newest = HandlerChain::handlers; newest != nullptr) {
        const bool located = HandlerChain::wants_location(*newest);
        HandlerChain::deliver(*newest, ErrorHandler::Category::Error,
                              located ? with_location(std::move(location), message) : message);
    } else {
        print(location, message);
    }

    // Not by a destructor: when a handler throws, the error stays pending.
    const Guard guard(pending().lock);
    AerrFlag = false;
    pending().location.clear();
    pending().message.clear();
}

void aerr_report(void) { report_pending_error(); }

std::string format_legacy_error_message(std::string_view message, std::string_view location) {
    return message.empty() ? std::string(location) : on_separate_lines(location, message);
}
