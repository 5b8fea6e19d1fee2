/// @file
/// Project directories, and the suite's version text.
///
/// A project is a directory with the subdirectories "data" and "networks" (others may be there: "synthesis" and
/// "verification") and a marker: a small text file that the applications write, with a line `PROJECT_VERSION=1000`.
///
/// Nothing here is synchronised: the marker's name and the buffer of `qds_version_str` belong to the process, and
/// `gprj_is_project` changes the current directory for the length of a call. No call sets `GuiErrno` or prints.
#pragma once

#include <orvix/gsl/export.h>

#include <string>

/// Sets the marker's name. To be called before `gprj_is_project`.
///
/// @param name  name of the marker without its ".cfg", copied; null takes the name back. Exhausted memory ends in
///              `aerr_memory_error`.
ORVIX_GSL_API void gprj_init(const char* name);

/// Tells whether a directory is a project.
///
/// Of the marker, the first line counts whose text before the `=` is "PROJECT_VERSION", in these letters; blanks around
/// that and at the end of the line do not matter. What is behind the `=` must be "1000": a blank there is a mismatch.
/// Lines have 1023 bytes, what is behind them is dropped, and several `=` count as one.
///
/// @param directory  directory, of which 1023 bytes count; null is no project. A drive alone means its root.
/// @param list       subdirectories to require in place of the usual two, separated by `;`, at most 10; what is behind
///                   a "!" is ignored. Null and "" require the usual two. A list without any name requires none.
/// @return true if the subdirectories exist, the marker can be read, and the version is right; false also if the full
///         name of a subdirectory is longer than 255 bytes, if the list holds more than 10 names, and if no name is set
///         by `gprj_init`
ORVIX_GSL_API bool gprj_is_project(const char* directory, char* list);

/// Removes a directory with all in it, as `gfile_rm` does. Whether it is a project is not tested.
///
/// @param directory  directory, at most 255 bytes; one separator at its end is ignored; null fails
/// @return true if all was removed; false if it does not exist, if something is left, and for a longer name
ORVIX_GSL_API bool gprj_delete(const char* directory);

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
