// Includes no host header, hence no test framework either; global_names_test.cpp calls what stands here.
#include "text/global_names.h"

#include <orvix/gsl/global_names.h>

int orvix::test::strcasecmp_at_global_scope(const char* a, const char* b) { return ::strcasecmp(a, b); }

int orvix::test::strncasecmp_at_global_scope(const char* a, const char* b, int n) { return ::strncasecmp(a, b, n); }

int orvix::test::entries_at_global_scope(const char* directory) {
    _dirdesc* scan = ::opendir(directory);
    if (scan == nullptr) return -1;
    int entries = 0;
    while (const ::dirent* entry = ::readdir(scan)) entries += entry->d_namlen > 0 ? 1 : 0;
    ::closedir(scan);
    return entries;
}

bool orvix::test::is_nan_at_global_scope(double x) { return ::isnan(x) != 0; }

double orvix::test::finite_at_global_scope(double x) { return ::finite(x); }
