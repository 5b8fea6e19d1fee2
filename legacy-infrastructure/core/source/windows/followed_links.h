// Systems that follow links although told not to.
#pragma once

#include "windows/handle.h"

#include <string_view>

#include <windows.h>

namespace orvix::core {

// True under Wine, which (as of 2023) opens what a link of the host leads to whatever the flags say, tells its
// attributes, and removes it in place of the link. Elsewhere the functions below never say yes.
bool links_are_followed_always();

// True if what was opened under a name, links not to be followed, is something else that the name leads to.
bool was_followed(HANDLE opened, const wchar_t* name);

// The same for an entry of an open directory.
bool was_followed(HANDLE opened, HANDLE directory, std::string_view entry);

}  // namespace orvix::core
