#include "paths/last_mark.h"

#include <orvix/gsl/file_names.h>

#include <string>
#include <string_view>

namespace {

std::size_t basename_start(std::string_view name) { return orvix::gsl::paths::length_to_last<'/', '\\'>(name); }

}  // namespace

char* HX_get_basename_from_file(char* name) { return name != nullptr ? name + basename_start(name) : nullptr; }

std::string HX_get_basename_from_file_new(const std::string& name) { return name.substr(basename_start(name)); }
