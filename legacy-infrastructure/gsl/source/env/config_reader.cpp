#include "env/config_line.h"
#include "env/line_reader.h"
#include "env/loading.h"
#include "env/table.h"

#include <orvix/core/file.h>
#include <orvix/core/path.h>

#include <cstring>
#include <string>

namespace orvix::gsl::env {

namespace {

// How the lines of one file are taken.
struct Reading {
    EnvlocE level;
    bool verbatim;
    bool included;
    bool expand_values;
};

void store_setting(Load& load, const Reading& reading, const KeyAndValue& setting) {
    const FoldedName name(setting.key);
    if (name.empty()) return;
    std::string expanded;
    const bool expand = reading.expand_values && expand_at_load(load, setting.value, &expanded) && !expanded.empty();
    put(*load.env, name, expand ? expanded : setting.value, reading.level,
        reading.included ? ENVMOD_INCLUDED : ENVMOD_CLEAN);
}

void read_line(Load& load, const Reading& reading, std::string_view line) {
    const std::string_view text = without_trailing_white_space(line);
    if (text.size() < 2 || text[0] == '#' || text.starts_with("//")) return;
    if (text[0] == '+') {
        env_read_include(load, text.substr(1), reading.level, reading.verbatim);
        return;
    }
    KeyAndValue setting;
    if (split_at_equals(text, &setting)) store_setting(load, reading, setting);
}

}  // namespace

void env_read_file(Load& load, EnvlocE level, bool verbatim, bool included, const char* path, EnvTable* table,
                   bool expand_values) {
    // Noted before the file is tried: a level without a file still knows where a save has to make it.
    if (!included) std::memmove(table->path, path, std::strlen(path) + 1);
    core::File file = core::File::open_to_read(Path(path));
    if (!file.is_open()) return;
    if (included) ++load.files;

    LineReader reader(file, line_buffer_step, line_buffer_step);
    const Reading reading{level, verbatim, included, expand_values};
    std::string_view line;
    while (reader.next(&line)) read_line(load, reading, line);
    if (included) load.bytes += reader.bytes_read();
}

}  // namespace orvix::gsl::env
