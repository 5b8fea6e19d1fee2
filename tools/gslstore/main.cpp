// Looks into hash store files and changes them; `gslstore --help` tells how.
#include "commands.h"
#include "streams.h"

#include <orvix/core/program.h>

#include <cstdio>
#include <exception>

namespace gslstore {

namespace {

Status run(const Options& options) {
    switch (options.command) {
        case Command::none:
            return well;
        case Command::stat:
            return print_statistics(options);
        case Command::verify:
            return print_faults(options);
        case Command::dump:
            return dump_pairs(options);
        case Command::load:
            return load_pairs(options);
        case Command::get:
            return get_value(options);
        case Command::put:
            return put_pair(options);
        case Command::del:
            return remove_pair(options);
    }
    return failed;
}

}  // namespace

}  // namespace gslstore

int main(int argc, char** argv) {
    using namespace gslstore;
    try {
        for (std::FILE* const stream : {stdin, stdout, stderr}) orvix::core::pass_bytes_untranslated(stream);
        const Status status = run(parse_options(orvix::core::program_arguments(argc, argv)));
        finish_printing();
        return status;
    } catch (const std::exception& error) {
        complain(error.what());
        return failed;
    }
}
