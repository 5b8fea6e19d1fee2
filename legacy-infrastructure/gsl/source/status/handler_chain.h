// The chain of message handlers, as the report functions see it.
#pragma once

#include <orvix/gsl/error_handler.h>

#include <string>

namespace orvix::gsl {

struct HandlerChain {
    static ErrorHandler* handlers;  // the newest, which is asked first; null without any

    // Offers the text to `first`, then to the older handlers behind it, until one takes it.
    static void deliver(ErrorHandler& first, ErrorHandler::Category category, const std::string& text);

    static bool wants_location(const ErrorHandler& handler) { return handler.includeLocation; }
};

}  // namespace orvix::gsl
