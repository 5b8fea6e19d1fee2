#include "options.h"

#include <charconv>
#include <string_view>

namespace workbench {

const char* const help_text =
    "Usage: workbench [--installation DIR]\n"
    "       workbench [--installation DIR] [--language LANGUAGE] --set NAME --line N\n"
    "\n"
    "The first form tours a sample installation: its settings files, what wins at which level, values\n"
    "expanded step by step, messages in three languages, an error on its way to the user, a saved change.\n"
    "The second form prints one message, as the catalogue holds it, and nothing else.\n"
    "\n"
    "  --installation DIR   the installation to copy and work on, instead of the one that is shipped\n"
    "  --language LANGUAGE  ENGLISH, GERMAN or JAPANESE; by default the language of the user's boot file\n"
    "  --set NAME           message set: netlist, simulator or layout\n"
    "  --line N             number of the message in its set, from 1\n"
    "  --help               this text\n"
    "\n"
    "The program works on a copy in a temporary directory, which is removed at the end.\n"
    "Exit status: 0 done, 1 failed, 2 wrong arguments.\n";

namespace {

int parse_line_number(std::string_view text) {
    int number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || stop != end) {
        throw UsageError("--line needs a number, not \"" + std::string(text) + "\"");
    }
    return number;
}

}  // namespace

Options parse_options(int argc, char** argv) {
    Options options;
    bool has_line = false;
    for (int i = 1; i < argc; ++i) {
        const std::string_view name = argv[i];
        const auto value = [&]() -> std::string {
            if (i + 1 == argc) throw UsageError(std::string(name) + " needs a value");
            return argv[++i];
        };
        if (name == "--help") {
            options.help = true;
        } else if (name == "--installation") {
            options.installation = value();
            if (options.installation.empty()) throw UsageError("--installation needs a directory");
        } else if (name == "--language") {
            options.language = value();
        } else if (name == "--set") {
            options.set = value();
        } else if (name == "--line") {
            options.line = parse_line_number(value());
            has_line = true;
        } else {
            throw UsageError("unknown argument \"" + std::string(name) + "\"");
        }
    }
    if (options.help) return options;
    if (options.set.has_value() != has_line) throw UsageError("--set and --line stand together");
    if (options.language && !options.set) throw UsageError("--language needs --set and --line");
    return options;
}

}  // namespace workbench
