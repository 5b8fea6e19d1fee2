// A small engineering workbench: a tour through the library on a sample installation, or one message of it.
#include "catalogue.h"
#include "options.h"
#include "tour.h"

#include <cstdio>
#include <exception>

namespace workbench {

namespace {

constexpr int done = 0;
constexpr int failed = 1;
constexpr int wrong_arguments = 2;

int complain(const std::string& text, int status) {
    std::fprintf(stderr, "workbench: %s\n", text.c_str());
    return status;
}

int print_message(const Options& options) {
    const Catalogue catalogue(options.language ? options.language->c_str() : nullptr);
    if (catalogue.warning() != nullptr) {
        complain(std::string(catalogue.language()) + ": " + catalogue.warning(), done);
    }
    const auto message = catalogue.text(options.set->c_str(), options.line);
    if (!message) return complain(gerror_get_error_message(), failed);
    print_line(*message);
    return done;
}

int tour(const Sandbox& sandbox) {
    print_line("A tour through settings, messages, errors and files");
    print_line("==================================================");
    print_line("A copy of the sample installation was made. Names of files are shortened:");
    for (const auto& [directory, short_name] : sandbox.names().all()) {
        print_indented(padded(short_name, 10) + directory, 2);
    }
    const Environment env = open_environment("workbench");
    show_files(sandbox.names());
    show_levels(env.get());
    const bool passes_agree = show_expansion(env.get(), sandbox.names());
    show_messages();
    show_error();
    const bool was_saved = show_saving(sandbox.names());
    const bool reached_the_file = show_short_calls(sandbox.names());
    const bool project_went_well = show_project();
    return passes_agree && was_saved && reached_the_file && project_went_well ? done : failed;
}

int run(const Options& options) {
    const Sandbox sandbox(options.installation.empty() ? WORKBENCH_INSTALLATION : options.installation);
    return options.set ? print_message(options) : tour(sandbox);
}

}  // namespace

}  // namespace workbench

int main(int argc, char** argv) {
    using namespace workbench;
    int status = done;
    try {
        const Options options = parse_options(argc, argv);
        if (options.help) {
            print(help_text);
        } else {
            status = run(options);
        }
    } catch (const UsageError& error) {
        return complain(std::string(error.what()) + " (see workbench --help)", wrong_arguments);
    } catch (const NoInstallation& error) {
        return complain(error.what(), wrong_arguments);
    } catch (const std::exception& error) {
        return complain(error.what(), failed);
    }
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) return complain("cannot write the output", failed);
    return status;
}
