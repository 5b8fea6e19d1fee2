// Handlers that keep what they are given.
#pragma once

#include <orvix/gsl/error_handler.h>

#include <string>
#include <utility>
#include <vector>

namespace orvix::test {

struct Message {
    ErrorHandler::Category category;
    std::string text;

    bool operator==(const Message&) const = default;
};

inline Message error(std::string text) { return {ErrorHandler::Category::Error, std::move(text)}; }
inline Message warning(std::string text) { return {ErrorHandler::Category::Warning, std::move(text)}; }
inline Message info(std::string text) { return {ErrorHandler::Category::Info, std::move(text)}; }

// Takes every message.
class Recorder : public ErrorHandler {
public:
    std::vector<Message> messages;

private:
    void capture_message(Category category, const std::string& text) override { messages.push_back({category, text}); }
};

// Looks at every message and declines it.
class Onlooker : public ErrorHandler {
public:
    std::vector<Message> messages;

private:
    bool handle_message(Category category, const std::string& text) override {
        messages.push_back({category, text});
        return false;
    }
};

}  // namespace orvix::test
