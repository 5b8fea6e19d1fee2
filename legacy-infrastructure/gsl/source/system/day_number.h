// Days counted from 1970.
#pragma once

#include <cstdint>

namespace orvix::gsl {

// The number of a day, 1 for the first of January 1970. Numbers that somebody has kept must compare with later ones, so
// the formula stays as it is: computed without a sign, and cut to 16 bits.
//
// A year counts 365.25 days, 1461 quarters of a day, and 1970 begins after 102,270 of them. The quarters left over are
// cut off, so that the year after a leap year begins with the number of the day before.
constexpr short day_number(std::int32_t years_since_1900, std::int32_t day_of_year_from_0) {
    const std::uint32_t quarters = static_cast<std::uint32_t>(years_since_1900) * 1461U - 102270U;
    const std::uint32_t days = (quarters >> 2U) + static_cast<std::uint32_t>(day_of_year_from_0) + 1U;
    return static_cast<short>(static_cast<std::uint16_t>(days));
}

}  // namespace orvix::gsl
