// First station: the files behind an environment.
#include "tour.h"

#include <orvix/core/path.h>

#include <algorithm>

namespace workbench {

namespace {

// Settings of a table that came by `+` lines.
std::ptrdiff_t included_count(const EnvTable& table) {
    return std::count_if(table.entries, table.entries + table.used,
                         [](const EnvEntry& entry) { return entry.mod == ENVMOD_INCLUDED; });
}

std::string file_of(const EnvTable& table, const ShortNames& names) {
    const std::string short_name = names.shorten(table.path);
    return orvix::Path(table.path).exists() ? short_name : short_name + "  (no such file)";
}

}  // namespace

void show_files(const ShortNames& names) {
    print_heading("1. Files that were read");
    Table report({"environment", "level", "settings", "included", "file"});
    for (const char* name : {"hxorvix", "workbench", "hxorvixsess"}) {
        const Environment env = open_environment(name);
        for (auto level = std::rbegin(levels); level != std::rend(levels); ++level) {
            const EnvTable& table = env.get()->*level->table;
            const bool is_first = level == std::rbegin(levels);
            report.add({is_first ? name : "", level->title, std::to_string(table.used),
                        std::to_string(included_count(table)), file_of(table, names)});
        }
    }
    report.print(2);
    print_indented(
        "\n\"hxorvix\" is the master environment, which references in all others fall back on. Included settings\n"
        "came by a `+` line; no save writes them. A level names the file that was read last, which a save would\n"
        "rewrite: at the system level of \"workbench\" its add-on file, read behind <root>\\config\\workbench.cfg.",
        2);
}

}  // namespace workbench
