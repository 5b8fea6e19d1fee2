#include <orvix/gsl/error_handler.h>

#include "status/handler_chain.h"
#include "status/text_joining.h"

#include <orvix/gsl/pending_error.h>

#include <vector>

using orvix::gsl::HandlerChain;
using orvix::gsl::text_or_empty;

constinit ErrorHandler* HandlerChain::handlers = nullptr;

void HandlerChain::deliver(ErrorHandler& first, ErrorHandler::Category category, const std::string& text) {
    if (!first.handle_message(category, text) && first.next != nullptr) {
        first.next->call_handle_message(category, text);
    }
}

namespace {

// Handlers that an older one took out of the chain when it died. They still point into the chain, which no walk from
// its head would find out when what they point to dies in turn.
std::vector<ErrorHandler*>& orphans() {
    static auto& list = *new std::vector<ErrorHandler*>;  // never destroyed: handlers may be static objects
    return list;
}

constinit bool any_orphans = false;  // spares everyone who destroys handlers in order the list

}  // namespace

ErrorHandler::ErrorHandler() : next(HandlerChain::handlers), includeLocation(true) { HandlerChain::handlers = this; }

ErrorHandler::~ErrorHandler() {
    ErrorHandler* const head = HandlerChain::handlers;
    if (head == this) {
        HandlerChain::handlers = next;
    } else if (head != nullptr && head->next != nullptr) {
        head->next->unlink_handler(this, head);
    }
    if (!any_orphans) return;
    std::erase(orphans(), this);
    for (ErrorHandler* orphan : orphans()) {
        if (orphan->next == this) orphan->next = next;
    }
    any_orphans = !orphans().empty();
}

void ErrorHandler::unlink_handler(ErrorHandler* target, ErrorHandler* previous) {
    ErrorHandler* handler = this;
    while (handler != target) {
        if (handler == nullptr) return;
        previous = handler;
        handler = handler->next;
    }
    for (ErrorHandler* newer = HandlerChain::handlers; newer != target; newer = newer->next) {
        orphans().push_back(newer);
        any_orphans = true;
    }
    // The head moves behind the removed handler also when that was not the head: applications that tear a whole group
    // of handlers down from its oldest end rely on none of the group being asked any more.
    HandlerChain::handlers = target->next;
    if (previous != nullptr) previous->next = target->next;
}

void ErrorHandler::capture_message(Category, const std::string&) {}

bool ErrorHandler::handle_message(Category category, const std::string& text) {
    capture_message(category, text);
    return true;
}

void ErrorHandler::call_handle_message(Category category, const std::string& text) {
    for (ErrorHandler* handler = this; handler != nullptr; handler = handler->next) {
        if (handler->handle_message(category, text)) return;
    }
}

void ErrorHandler::skip_location_info() { includeLocation = false; }

void ErrorHandler::report_error(const char* text) {
    AerrFlag = false;
    HandlerChain::deliver(*this, Category::Error, text_or_empty(text));
}

void ErrorHandler::report_warning(const char* text) {
    HandlerChain::deliver(*this, Category::Warning, text_or_empty(text));
}

void ErrorHandler::report_info(const char* text) { HandlerChain::deliver(*this, Category::Info, text_or_empty(text)); }

void ErrorHandler::report_error(const std::string& text) { report_error(text.c_str()); }

void ErrorHandler::report_warning(const std::string& text) { report_warning(text.c_str()); }

void ErrorHandler::report_info(const std::string& text) { report_info(text.c_str()); }
