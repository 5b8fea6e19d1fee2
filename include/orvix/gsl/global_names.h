/// @file
/// Brings the names that the host's own C headers declare as well to global scope. Include it only where those headers
/// are not included, directly or through others (`<cstring>` brings `<strings.h>` on many systems); elsewhere name
/// `orvix::gsl` in full. No header of the library includes it.
#pragma once

#include <orvix/gsl/directory_scan.h>
#include <orvix/gsl/real_functions.h>
#include <orvix/gsl/search_table.h>
#include <orvix/gsl/string_utilities.h>

using orvix::gsl::_dirdesc;
using orvix::gsl::ACTIONSEARCH;
using orvix::gsl::closedir;
using orvix::gsl::dirent;
using orvix::gsl::ENTER;
using orvix::gsl::entry;
using orvix::gsl::FIND;
using orvix::gsl::finite;
using orvix::gsl::hcreate;
using orvix::gsl::hdestroy;
using orvix::gsl::hsearch;
using orvix::gsl::isnan;
using orvix::gsl::opendir;
using orvix::gsl::opendir_utf8;
using orvix::gsl::readdir;
using orvix::gsl::strcasecmp;
using orvix::gsl::strncasecmp;
