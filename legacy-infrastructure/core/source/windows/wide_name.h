// The way of a library name to the system: UTF-16, backslashes, and the prefix that lifts the limit on a name's length.
#pragma once

#include "common/path_access.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include <windows.h>

namespace orvix::core {

// A growing UTF-16 text that lives on the stack as long as it is of a usual name's length.
//
// Invariant: `text_` points at `inline_` or at `heap_`, holds `size_` units and a zero unit behind them.
class WideName {
public:
    WideName() { inline_[0] = L'\0'; }
    WideName(const WideName&) = delete;
    WideName& operator=(const WideName&) = delete;

    const wchar_t* c_str() const { return text_; }
    std::wstring_view view() const { return {text_, size_}; }
    std::size_t size() const { return size_; }

    void append(std::wstring_view text);

    // Makes room for `size` units, keeps what is there, and gives the start of the text. cut() sets the length.
    wchar_t* grow_to(std::size_t size);

    void cut(std::size_t size) {
        size_ = size;
        text_[size] = L'\0';
    }

private:
    wchar_t inline_[296];
    std::unique_ptr<wchar_t[]> heap_;
    wchar_t* text_ = inline_;
    std::size_t size_ = 0;
    std::size_t capacity_ = sizeof inline_ / sizeof inline_[0];
};

// Appends UTF-8 as UTF-16; what is not UTF-8 becomes U+FFFD.
void append_wide(WideName* wide, std::string_view utf8);

// Translates a name for the system's wide calls. False with errno ENOENT for the empty name, and for one with a zero
// byte, which no system takes.
bool translate(const Name& name, WideName* wide);

// UTF-16 as UTF-8.
std::string narrow(std::wstring_view wide);

// UTF-8 as UTF-16, for calls that take no name.
std::wstring widen(std::string_view utf8);

// A name that the system gave, as the library spells it: without the prefix of long names.
std::string library_name(std::wstring_view wide);

// The name that an open file has now, in the library's form; empty if it cannot be told.
std::string final_name(HANDLE file);

}  // namespace orvix::core
