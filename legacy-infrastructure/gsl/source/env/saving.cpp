#include "env/saving.h"

#include "env/config_line.h"
#include "env/line_reader.h"
#include "env/stream.h"
#include "env/table.h"
#include "env/text_writer.h"
#include "text/bytes.h"

#include <orvix/core/temporary_file.h>

#include <algorithm>
#include <cerrno>
#include <string>

namespace orvix::gsl::env {

namespace {

bool is_unsaved(const EnvEntry& entry) { return entry.mod == ENVMOD_CHANGED || entry.mod == ENVMOD_REMOVED; }

void write_setting(TextWriter& out, std::string_view key, std::string_view value) {
    out.write(key);
    out.write("=");
    out.write(value);
    out.write("\n");
}

void write_entry(TextWriter& out, EnvEntry* entry) {
    entry->mod = ENVMOD_CLEAN;
    write_setting(out, entry->key, value_of(*entry));
}

// Closes a stream that was written to; what the system held back until now may fail here.
bool finish(TextWriter& out, Stream stream) {
    const bool written = out.flush();
    return std::fclose(stream.release()) == 0 && written;
}

// Removed settings are written too: with the file, the lines to remove are gone.
bool write_new_file(EnvTable& table) {
    Stream stream = open_stream(table.path, "w");
    if (stream == nullptr) return false;
    TextWriter out(stream.get());
    for (EnvEntry& entry : used_slots(table)) {
        if (entry.key[0] != '\0' && entry.mod != ENVMOD_INCLUDED) write_entry(out, &entry);
    }
    return finish(out, std::move(stream));
}

std::string upper_case(std::string_view name) {
    std::string folded(name);
    for (char& c : folded) c = text::to_upper(c);
    return folded;
}

// Writes what becomes of one line of the old file. `hint`: where in the table to look first.
void merge_line(TextWriter& out, EnvTable& table, std::string_view line, std::size_t* hint) {
    KeyAndValue setting;
    if (line.size() < 2 || line[0] == '#' || !split_at_equals(line, &setting)) {
        out.write(line);
        return;
    }
    const std::string key = upper_case(setting.key);
    EnvEntry* entry = key.size() <= longest_name ? find_from(table, FoldedName(key), hint) : nullptr;
    if (entry == nullptr) {
        // The value still ends in its newline, so an empty line follows. Files have looked like that for long.
        write_setting(out, key, setting.value);
    } else if (entry->mod == ENVMOD_CHANGED) {
        write_entry(out, entry);
    } else if (entry->mod != ENVMOD_REMOVED) {
        write_setting(out, key, without_trailing_white_space(setting.value));
    }
}

// Writes what becomes of all lines of the old file, and then the settings that no line held.
bool write_merged(EnvTable& table, std::FILE* old_file, std::FILE* target) {
    TextWriter out(target);
    LineReader reader(old_file, line_buffer_step, line_buffer_step);
    std::size_t hint = 0;
    std::string_view line;
    while (reader.next(&line)) merge_line(out, table, line, &hint);
    for (EnvEntry& entry : used_slots(table)) {
        if (entry.key[0] != '\0' && entry.mod == ENVMOD_CHANGED) write_entry(out, &entry);
    }
    return out.flush() && !reader.failed();
}

bool merge_into_file(EnvTable& table, Stream old_file) {
    TemporaryFile merged("env_file", "cfg");
    std::FILE* stream = merged.stream();
    if (stream == nullptr) return false;
    go_without_buffer(stream);
    if (!write_merged(table, old_file.get(), stream)) return false;
    old_file.reset();
    std::rewind(stream);
    return env_replace_file(table.path, stream);
}

}  // namespace

bool env_save_table(EnvTable* table) {
    const auto entries = used_slots(*table);
    if (std::none_of(entries.begin(), entries.end(), is_unsaved)) return true;
    Stream old_file = open_stream(table->path, "r");
    if (old_file != nullptr) return merge_into_file(*table, std::move(old_file));
    // A file that is there but cannot be read must not be written over.
    return errno == ENOENT && write_new_file(*table);
}

void env_prepare_user_directories(const char* path) {
    const auto directory_of = [](const std::string& name) { return name.substr(0, name.rfind('\\')); };
    const std::string file = path;
    const std::string config = directory_of(file);
    const std::string above = directory_of(config);
    if (config == file || above == config) return;
    if (!Path(above).exists() && !Path(above).create_directory()) return;
    if (!Path(config).exists()) Path(config).create_directory();
}

bool env_replace_file(const Path& target, std::FILE* source) {
    Stream to = open_stream(target, "w");
    if (to == nullptr) return false;
    constexpr std::size_t line_bytes = 12'000;
    LineReader reader(source, line_bytes, 0);
    TextWriter out(to.get());
    std::string_view line;
    while (reader.next(&line)) out.write(line);
    return finish(out, std::move(to)) && !reader.failed();
}

}  // namespace orvix::gsl::env
