// What a source sees that brings the library's twins of host names to global scope.
#pragma once

namespace orvix::test {

int strcasecmp_at_global_scope(const char* a, const char* b);
int strncasecmp_at_global_scope(const char* a, const char* b, int n);
bool is_nan_at_global_scope(double x);
double finite_at_global_scope(double x);

// Entries of a directory.
int entries_at_global_scope(const char* directory);

}  // namespace orvix::test
