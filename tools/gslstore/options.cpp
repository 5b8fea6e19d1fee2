#include "options.h"

#include "failure.h"
#include "streams.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <limits>

namespace gslstore {

namespace {

const char* const description = "Looks into hash store files and changes them.";

const char* const footer =
    "\nA pair is a line of text: KEY, a tab, VALUE. In it \\t is a tab, \\n a line feed, \\r a carriage return,\n"
    "\\\\ a backslash, and \\xHH any byte in hexadecimal. `gslstore COMMAND --help` tells of a command. What begins\n"
    "with \"-\" and is no option stands behind \"--\".\n"
    "\n"
    "stat, verify, dump and get never change the file. Nobody else may change it meanwhile.\n"
    "\n"
    "Exit status: 0 done; 1 the key is not there (put --keep: is there), or the file has faults; 2 the command is\n"
    "wrong, or failed.\n";

// What all commands have.
CLI::App* add_command(CLI::App* app, Options* options, Command command, const char* name, const char* does) {
    CLI::App* const sub = app->add_subcommand(name, does);
    sub->add_option("STORE", options->store, "file of the store")->required();
    sub->callback([=] { options->command = command; });
    return sub;
}

void add_key(CLI::App* sub, Options* options) {
    sub->add_option("KEY", options->key, "key, as it is unless --escapes is given")->required();
    sub->add_flag("-e,--escapes", options->escapes, "read escapes in KEY and VALUE");
}

void add_creation(CLI::App* sub, Options* options) {
    constexpr std::uint32_t most = std::numeric_limits<std::uint32_t>::max();
    const char* const group = "A store that is made now";
    sub->add_option("--page-size", options->creation.page_size, "bytes of a page, rounded up to a power of two [1024]")
        ->check(CLI::Range(64U, 65536U))
        ->option_text("64..65536")
        ->group(group);
    const auto take_order = [options](const std::string& order) {
        if (order != "little" && order != "big") throw Failure("--byte-order is little or big, not " + order);
        options->creation.byte_order = order == "little" ? 1234 : 4321;
    };
    sub->add_option_function<std::string>("--byte-order", take_order, "byte order of pages [little]")
        ->option_text("little|big")
        ->group(group);
    sub->add_option("--expected-count", options->creation.expected_count, "pairs to make room for")
        ->check(CLI::Range(1U, most))
        ->option_text("N")
        ->group(group);
    sub->add_option("--fill-factor", options->creation.fill_factor,
                    "pairs of a bucket above which the store grows [as many as fill a page]")
        ->check(CLI::Range(1U, most))
        ->option_text("N")
        ->group(group);
}

void add_looking(CLI::App* app, Options* options) {
    add_command(app, options, Command::stat, "stat", "Print the fields of the header and how pages are used");
    CLI::App* const verify = add_command(app, options, Command::verify, "verify",
                                         "Check every bucket, chain and bitmap, and name each fault with its place");
    verify->add_flag("-q,--quiet", options->quiet, "print nothing");
    add_command(app, options, Command::dump, "dump", "Print all pairs as lines of text; those of a damaged file too");

    CLI::App* const get = add_command(app, options, Command::get, "get", "Print the value of a key");
    add_key(get, options);
    get->add_flag("-r,--raw", options->raw, "print the value's bytes and nothing else, instead of a line of text");
}

void add_changing(CLI::App* app, Options* options) {
    CLI::App* const load = add_command(app, options, Command::load, "load",
                                       "Store pairs from lines of text; make the store if it is not there");
    load->add_option("FILE", options->file, "file of lines; - or none for standard input");
    load->add_flag("--new", options->make_new, "drop what STORE holds, and make it anew");
    load->add_flag("-k,--keep", options->keep, "leave keys that are there as they are");
    add_creation(load, options);

    CLI::App* const put =
        add_command(app, options, Command::put, "put", "Store a pair; make the store if it is not there");
    add_key(put, options);
    CLI::Option* const value = put->add_option("VALUE", options->value, "value, as KEY");
    put->add_option("-f,--file", options->file, "take the value from a file, as it is; - for standard input")
        ->option_text("FILE")
        ->excludes(value);
    put->add_flag("-k,--keep", options->keep, "leave a key that is there as it is");
    add_creation(put, options);

    CLI::App* const del = add_command(app, options, Command::del, "del", "Remove a key and its value");
    add_key(del, options);
}

// The parser leaves two empty lines between its sections.
std::string without_gaps(std::string help) {
    constexpr std::string_view gap = "\n\n\n";
    for (std::size_t at = 0; (at = help.find(gap, at)) != std::string::npos;) help.erase(at, 1);
    if (help.ends_with("\n\n")) help.pop_back();
    return help;
}

}  // namespace

Options parse_options(std::vector<std::string> arguments) {
    Options options;
    CLI::App app(description, "gslstore");
    app.set_version_flag("--version", "gslstore " GSLSTORE_VERSION);
    app.require_subcommand(1);
    app.footer(footer);
    app.get_formatter()->column_width(28);
    add_looking(&app, &options);
    add_changing(&app, &options);

    std::reverse(arguments.begin(), arguments.end());
    if (!arguments.empty()) arguments.pop_back();
    try {
        app.parse(std::move(arguments));
    } catch (const CLI::CallForHelp&) {
        const std::vector<CLI::App*> chosen = app.get_subcommands();
        print(without_gaps(chosen.empty() ? app.help() : chosen.front()->help("gslstore")));
        return {};
    } catch (const CLI::CallForVersion& version) {
        print(version.what() + std::string("\n"));
        return {};
    } catch (const CLI::ParseError& error) {
        throw Failure(error.what() + std::string(" (see gslstore --help)"));
    }
    if (options.command == Command::put && !options.value && !options.file) {
        throw Failure("put needs VALUE or --file (see gslstore put --help)");
    }
    return options;
}

}  // namespace gslstore
