// The classes that the bytes of names fall into, and sets of classes.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace orvix::gsl::text {

enum class NameClass : std::uint8_t {
    legal = 0,
    illegal = 1,
    arithmetic = 2,
    dot = 3,
    mark = 4,
    index = 5,
    exclamation = 6,
};

constexpr std::string_view arithmetic_bytes = "+-=^$%";
constexpr std::string_view mark_bytes = "`@#&";

// The class of each byte, indexed by its value.
constexpr std::array<NameClass, 256> name_char_class = [] {
    std::array<NameClass, 256> table{};
    const auto put = [&](std::string_view bytes, NameClass name_class) {
        for (const char c : bytes) table[static_cast<unsigned char>(c)] = name_class;
    };
    put("~*)[]{}/\\<>?,:\" \t|';", NameClass::illegal);
    put(arithmetic_bytes, NameClass::arithmetic);
    put(".", NameClass::dot);
    put(mark_bytes, NameClass::mark);
    put("(", NameClass::index);
    put("!", NameClass::exclamation);
    return table;
}();

class NameClassSet {
public:
    template <class... Classes>
    constexpr explicit NameClassSet(Classes... classes) : bits_(((1U << static_cast<unsigned>(classes)) | ... | 0U)) {}

    constexpr NameClassSet with(NameClassSet more, bool if_so = true) const {
        NameClassSet result = *this;
        if (if_so) result.bits_ |= more.bits_;
        return result;
    }

    // Whether the byte is of one of these classes.
    constexpr bool holds(char byte) const {
        return (bits_ >> static_cast<unsigned>(name_char_class[static_cast<unsigned char>(byte)]) & 1) != 0;
    }

private:
    unsigned bits_;
};

}  // namespace orvix::gsl::text
