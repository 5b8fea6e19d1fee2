/// @file
/// Names for temporary files, and files made under such names.
///
/// `mkstemp` makes its file; the other functions only make up a name that no file bears at that moment, and somebody
/// else may take it before the caller does: open it exclusively. Nobody can guess the names, but `mkstemp` builds them
/// from the process number.
///
/// The default prefix and the last name of `gsl_tmpnam` belong to the process and are not synchronised.
#pragma once

#include <orvix/gsl/export.h>

#include <string>

/// Makes up a name.
///
///     gsl_tempnam("C:\\boards", "net")  ->  "C:\boards\net" and 12 characters
///
/// @param directory  directory for the name; null, or one that is missing or not writable, selects the system's
///                   directory for temporary files
/// @param prefix     how the last part of the name begins; null for nothing
/// @return the name with backslashes; empty on failure
ORVIX_GSL_API std::string gsl_tempnam(const char* directory, const char* prefix);

/// Makes up a name in the user's home directory, that of the process variable `HOME`, with the default prefix. Where
/// the home directory is missing or not writable, the system's directory for temporary files serves.
///
/// A caller's buffer receives a further name: the same text with a number of up to ten digits behind it. It comes from
/// `std::rand` after `std::srand` with the time in seconds, so that two calls in one second give the same number, and a
/// program's own sequence of random numbers starts anew. Nobody has looked whether a file bears that longer name.
///
/// @param buffer  receives the name with the number. Its size cannot be tested: it must hold the directory's name, the
///                prefix and 64 bytes more. Empty after a failure. May be null.
/// @return the name without the number, in a text of the library that stays good until the next call and must not be
///         freed; null on failure
ORVIX_GSL_API char* gsl_tmpnam(char* buffer);

/// Sets how the last part of the names of `gsl_tmpnam` begins. The first prefix fixes the length for the life of the
/// process: a later one of another length is ignored.
///
/// @param prefix  text to begin with, copied; null changes nothing
ORVIX_GSL_API void tmpnam_set_default_prefix(char* prefix);

namespace orvix::gsl {

/// Makes and opens a new, empty file that only its owner may read and write. The run of "X" at the end of the template
/// is replaced by the last digits of the process number. Where that name is taken, its characters step on from the
/// first: a digit turns into "a", a letter into the next, and after "z" the character next to it steps.
///
///     char name[] = "C:/boards/netXXXXXX";  // process 1234: net001234, then neta01234, netb01234, and so on
///     int descriptor = orvix::gsl::mkstemp(name);
///
/// A template without an "X" stands for itself. Re-entrant.
///
/// Not among the names of `<orvix/gsl/global_names.h>`: where the host has a function of this name, nearly every header
/// of the C++ library declares it at global scope, by way of `<stdlib.h>`.
///
/// @param name_template  name in UTF-8, changed in place to that of the file; null fails
/// @return the open descriptor, which the caller closes and child processes do not inherit; -1 on failure with `errno`
///         set: `ENOTDIR` if what comes before the last "/" is no directory (the template then ends there, and
///         directories before a "\" are not tested), `EEXIST` if all names are taken, else that of the failed opening
ORVIX_GSL_API int mkstemp(char* name_template);

}  // namespace orvix::gsl
