// The command line of the workbench.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>

namespace workbench {

struct Options {
    bool help = false;
    std::string installation;             // empty: the sample installation that is shipped
    std::optional<std::string> language;  // none: the user's own
    std::optional<std::string> set;       // set and line stand together, and ask for one message
    int line = 0;
};

// What is wrong with the arguments, in one line.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

extern const char* const help_text;

// Throws UsageError.
Options parse_options(int argc, char** argv);

}  // namespace workbench
