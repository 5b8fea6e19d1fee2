// Arithmetic on file names beside std::filesystem::path, std::string, GLib and the C library.

#include "ratio.h"

#include <orvix/gsl/file_names.h>

#include <benchmark/benchmark.h>
#include <glib.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <iomanip>
#include <sstream>
#include <string>

namespace fs = std::filesystem;

namespace {

const bool glib =
    orvix::bench::peer_version("GLib", std::to_string(GLIB_MAJOR_VERSION) + '.' + std::to_string(GLIB_MINOR_VERSION));

// Calls `function(name)` for one name over and over, and keeps what it returns.
template <class Function>
bool measure(const std::string& benchmark, const std::string& name, Function function) {
    benchmark::RegisterBenchmark(benchmark.c_str(), [=](benchmark::State& state) {
        for (auto _ : state) {
            const char* text = name.c_str();
            benchmark::DoNotOptimize(text);
            benchmark::DoNotOptimize(function(text));
            benchmark::ClobberMemory();
        }
    });
    return true;
}

const std::string name = "C:/Projects/Amplifier/Layouts/Revision_12/output_stage_v3.cfg";

char scratch[256];

char* copied(const char* text) { return std::strcpy(scratch, text); }

const bool separators =
    measure("convert/ours", name, [](const char* n) { return convertFileName(copied(n)); }) &&
    measure("convert/GLib", name, [](const char* n) { return g_strdelimit(copied(n), "/", '\\'); }) &&
    measure("convert/std_filesystem", name, [](const char* n) { return fs::path(n).make_preferred(); });

const bool prefixes =  //
    measure("prefix_length/ours", name,
            [](const char* n) {
                int length = 0;
                gfile_hasdrv(n, &length);
                return length;
            }) &&
    measure("prefix_length/std_filesystem", name,
            [](const char* n) { return fs::path(n).parent_path().native().size(); }) &&
    measure("put_prefix/ours", name,
            [](const char* n) {
                gfile_fildrv(copied(n), true, "D:\\Archive\\");
                return scratch[0];
            }) &&
    measure("put_prefix/std_filesystem", name, [](const char* n) { return "D:\\Archive\\" / fs::path(n).filename(); });

const bool extensions =  //
    measure("has_extension/ours", name,
            [](const char* n) {
                int position = 0;
                gfile_hasext(n, &position);
                return position;
            }) &&
    measure("has_extension/std_filesystem", name, [](const char* n) { return fs::path(n).has_extension(); }) &&
    measure("replace_extension/ours", name,
            [](const char* n) {
                gfile_filext(copied(n), true, "bak");
                return scratch[0];
            }) &&
    measure("replace_extension/std_filesystem", name,
            [](const char* n) { return fs::path(n).replace_extension("bak"); }) &&
    measure("strip_extension/ours", name,
            [](const char* n) {
                gfile_stripext(n, scratch);
                return scratch[0];
            }) &&
    measure("strip_extension/std_filesystem", name, [](const char* n) { return fs::path(n).replace_extension(); }) &&
    measure("get_extension/ours", name,
            [](const char* n) {
                char* extension = gfile_getext(n);
                const char first = extension[0];
                std::free(extension);
                return first;
            }) &&
    measure("get_extension/std_filesystem", name, [](const char* n) { return fs::path(n).extension(); });

const bool basenames =  //
    measure("basename/ours", name, [](const char* n) { return HX_get_basename_from_file(const_cast<char*>(n)); }) &&
    measure("basename/strrchr", name, [](const char* n) { return std::strrchr(n, '/'); }) &&
    measure("basename_by_value/ours", name, [](const char* n) { return HX_get_basename_from_file_new(n); }) &&
    measure("basename_by_value/std_filesystem", name, [](const char* n) { return fs::path(n).filename(); }) &&
    measure("basename_by_value/GLib", name, [](const char* n) {
        char* base = g_path_get_basename(n);
        const char first = base[0];
        g_free(base);
        return first;
    });

const bool directories =  //
    measure("strip_directory/ours", name + '/', [](const char* n) { return gfile_strip_dir_name_kstring(n); }) &&
    measure("strip_directory/std_filesystem", name + '/', [](const char* n) { return fs::path(n).parent_path(); }) &&
    measure("absolute/ours", "sub/output_stage.cfg",
            [](const char* n) {
                char* full = gfile_abs_path(n);
                const char first = full[0];
                std::free(full);
                return first;
            }) &&
    measure("absolute/std_filesystem", "sub/output_stage.cfg", [](const char* n) { return fs::absolute(n); });

const std::string argument = "C:\\Program Files\\Suite\\viewer.exe \"open this\"";

const bool quoting =  //
    measure("quote/ours", argument, [](const char* a) { return HX_quote_argument(a); }) &&
    measure("quote/GLib", argument,
            [](const char* a) {
                char* quoted = g_shell_quote(a);
                const char first = quoted[0];
                g_free(quoted);
                return first;
            }) &&
    measure("quote/std_quoted", argument, [](const char* a) { return (std::ostringstream() << std::quoted(a)).str(); });

}  // namespace
