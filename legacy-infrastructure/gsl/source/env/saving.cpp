#include "env/saving.h"

#include "env/config_line.h"
#include "env/line_reader.h"
#include "env/table.h"
#include "env/text_writer.h"
#include "text/bytes.h"

#include <orvix/core/file.h>
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

// Closes a file that was written to; what the system held back until now may fail here.
bool finish(TextWriter& out, core::File& file) {
    const bool written = out.finish();
    return file.close() && written;
}

// Removed settings are written too: with the file, the lines to remove are gone.
bool write_new_file(EnvTable& table) {
    core::File file = core::File::open_to_write(Path(table.path));
    if (!file.is_open()) return false;
    TextWriter out(file);
    for (EnvEntry& entry : used_slots(table)) {
        if (entry.key[0] != '\0' && entry.mod != ENVMOD_INCLUDED) write_entry(out, &entry);
    }
    return finish(out, file);
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
bool write_merged(EnvTable& table, core::File& old_file, core::File& target) {
    TextWriter out(target);
    LineReader reader(old_file, line_buffer_step, line_buffer_step);
    std::size_t hint = 0;
    std::string_view line;
    while (reader.next(&line)) merge_line(out, table, line, &hint);
    for (EnvEntry& entry : used_slots(table)) {
        if (entry.key[0] != '\0' && entry.mod == ENVMOD_CHANGED) write_entry(out, &entry);
    }
    return out.finish() && !reader.failed();
}

bool merge_into_file(EnvTable& table, core::File old_file) {
    TemporaryFile merged("env_file", "cfg");
    if (!merged.file().is_open() || !write_merged(table, old_file, merged.file())) return false;
    old_file.close();
    return merged.file().rewind() && env_replace_file(Path(table.path), merged.file());
}

}  // namespace

bool env_save_table(EnvTable* table) {
    const auto entries = used_slots(*table);
    if (std::none_of(entries.begin(), entries.end(), is_unsaved)) return true;
    core::File old_file = core::File::open_to_read(Path(table->path));
    if (old_file.is_open()) return merge_into_file(*table, std::move(old_file));
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

bool env_replace_file(const Path& target, core::File& source) {
    core::File to = core::File::open_to_write(target);
    if (!to.is_open()) return false;
    constexpr std::size_t line_bytes = 12'000;
    LineReader reader(source, line_bytes, 0);
    TextWriter out(to);
    std::string_view line;
    while (reader.next(&line)) out.write(line);
    return finish(out, to) && !reader.failed();
}

}  // namespace orvix::gsl::env
