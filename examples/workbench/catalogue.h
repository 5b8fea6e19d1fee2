// The message catalogues in one language.
#pragma once

#include <orvix/gsl/messages.h>
#include <orvix/gsl/status.h>

#include <initializer_list>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace workbench {

class Catalogue {
public:
    // A null language is that of the user's boot file. Throws MessageError if the catalogues cannot be opened.
    explicit Catalogue(const char* language);

    // What the language lacks, so that a default stands in; null if it lacks nothing.
    const char* warning() const { return warning_; }

    const char* extension() const { return handle_->extension; }
    const char* font() const { return handle_->font; }
    const char* language() const { return handle_->language; }

    // The message in line `line` of the set, with its line breaks. None with the reason in `GuiErrno`.
    std::optional<std::string> text(const char* set, int line) const;

private:
    struct Close {
        void operator()(GmsgHandleS* handle) const { gmsg_close(handle); }
    };
    std::unique_ptr<GmsgHandleS, Close> handle_;
    const char* warning_ = nullptr;
};

// The library's text for a failed call on messages.
class MessageError : public std::runtime_error {
public:
    MessageError() : std::runtime_error(gerror_get_error_message()) {}
};

// Puts texts in the places {1}, {2} and so on. Languages order them as they need.
std::string filled_in(std::string message, std::initializer_list<std::string_view> texts);

}  // namespace workbench
