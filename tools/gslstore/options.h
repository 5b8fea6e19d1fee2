// The command line.
#pragma once

#include "store.h"

#include <optional>
#include <string>
#include <vector>

namespace gslstore {

enum class Command : std::uint8_t { none, stat, verify, dump, load, get, put, del };

struct Options {
    Command command = Command::none;  // none once help or version was printed
    std::string store;
    std::string key;
    std::optional<std::string> value;
    std::optional<std::string> file;  // of a value, or of pairs to load
    bool raw = false;                 // a value as it is
    bool escapes = false;             // key and value with escapes
    bool keep = false;                // existing keys as they are
    bool make_new = false;            // an empty store first
    bool quiet = false;
    Creation creation;
};

// Prints help and version where they are asked for.
// @param arguments  the program's name and its arguments
// @throw Failure    if they are wrong
Options parse_options(std::vector<std::string> arguments);

}  // namespace gslstore
