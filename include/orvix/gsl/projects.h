/// @file
/// The suite's version text.
///
/// Not synchronised: the buffer of `qds_version_str` belongs to the process.
#pragma once

#include <orvix/gsl/export.h>

#include <string>

/// Forms the version text of the suite, with the date when the library was built.
///
///     qds_version_str("")     ->  591.zelta Apr  2 2025
///     qds_version_str("abc")  ->  abc (*) 591.zelta Apr  2 2025
///
/// @param prefix  name to stand in front, of any length; null counts as empty
/// @return the text, in a buffer of the library that stays good until the next call
ORVIX_GSL_API char* qds_version_str(const char* prefix);

/// Forms the version text of the suite with a date of the caller's.
///
///     qds_version_str_with_date("", "today")  ->  591.zelta today
///
/// @param prefix  name to stand in front, may be empty
/// @param date    date, taken as it is
/// @return the text
ORVIX_GSL_API std::string qds_version_str_with_date(const std::string& prefix, const std::string& date);
