/// @file
/// UTF-8 and UTF-16.
#pragma once

#include <orvix/core/export.h>

#include <string>
#include <string_view>

namespace orvix {

/// UTF-8 to UTF-16. A byte that begins no well-formed character becomes U+FFFD, so the call always succeeds; three
/// bytes that spell a lone surrogate become that surrogate, so that every name a system hands out makes the round trip.
ORVIX_CORE_API std::u16string toUtf16(std::string_view utf8);

/// UTF-16 to UTF-8. A lone surrogate becomes the three bytes that spell it.
ORVIX_CORE_API std::string toStdString(std::u16string_view utf16);

}  // namespace orvix
