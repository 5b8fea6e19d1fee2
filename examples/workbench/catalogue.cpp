#include "catalogue.h"

#include <array>

namespace workbench {

namespace {

constexpr std::size_t longest_message = 1023;  // bytes of a catalogue's line that a set keeps

}  // namespace

Catalogue::Catalogue(const char* language) : handle_(gmsg_open("hxorvixsess", "workbench", language)) {
    if (!handle_) throw MessageError();
    if (gerror_get_error() != GUI_ERR_NONE) warning_ = gerror_get_error_message();
}

std::optional<std::string> Catalogue::text(const char* set, int line) const {
    std::array<char, longest_message + 1> buffer;
    if (!gmsg_retrieve_message(handle_.get(), set, line, buffer.data())) return std::nullopt;
    return std::string(buffer.data());
}

std::string filled_in(std::string message, std::initializer_list<std::string_view> texts) {
    std::string result;
    std::string_view rest = message;
    while (!rest.empty()) {
        const bool is_place = rest.size() >= 3 && rest[0] == '{' && rest[1] >= '1' && rest[1] <= '9' && rest[2] == '}';
        const std::size_t number = is_place ? static_cast<std::size_t>(rest[1] - '1') : texts.size();
        if (number < texts.size()) {
            result += texts.begin()[number];
            rest.remove_prefix(3);
        } else {
            result += rest.front();
            rest.remove_prefix(1);
        }
    }
    return result;
}

}  // namespace workbench
