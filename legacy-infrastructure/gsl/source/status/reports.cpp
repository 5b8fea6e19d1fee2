#include <orvix/gsl/error_handler.h>

#include "status/handler_chain.h"
#include "status/text_joining.h"

#include <orvix/gsl/pending_error.h>

#include <cstdio>

using orvix::gsl::HandlerChain;
using orvix::gsl::on_separate_lines;
using orvix::gsl::text_or_empty;

void report_error(const char* text) {
    set_pending_error(text);
    report_pending_error();
}

void report_error(const std::string& text) {
    set_pending_error(text);
    report_pending_error();
}

void report_error(const char* first, const char* second) {
    set_pending_error(first, second);
    report_pending_error();
}

void report_error(const std::string& first, const std::string& second) {
    set_pending_error(first, second);
    report_pending_error();
}

void report_warning(const std::string& text) {
    if (HandlerChain::handlers != nullptr) {
        HandlerChain::deliver(*HandlerChain::handlers, ErrorHandler::Category::Warning, text);
    } else if (!text.empty()) {
        std::fprintf(stderr, "WARNING %s", text.c_str());
    }
}

void report_warning(const char* text) { report_warning(std::string(text_or_empty(text))); }

void report_warning(const char* first, const char* second) {
    report_warning(on_separate_lines(text_or_empty(first), text_or_empty(second)));
}

void report_warning(const std::string& first, const std::string& second) {
    report_warning(on_separate_lines(first, second));
}

void report_info(const std::string& text) {
    if (HandlerChain::handlers != nullptr) {
        HandlerChain::deliver(*HandlerChain::handlers, ErrorHandler::Category::Info, text);
    } else if (!text.empty()) {
        std::fprintf(stdout, "INFO %s", text.c_str());
    }
}

void report_info(const char* text) { report_info(std::string(text_or_empty(text))); }
