// Trees for tests to work on.
#pragma once

#include "support/random_text.h"
#include "support/temporary_directory.h"
#include "support/temporary_place.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <vector>

namespace orvix::test {

// A directory to work in.
class TreeSite {
public:
    const TemporaryDirectory& directory() const { return directory_; }

private:
    ScopedVariable variable_{temporary_place, fast_place()};
    TemporaryDirectory directory_{TemporaryDirectory::Enter::yes};
};

// All entries below a directory, relative to it.
inline std::set<std::string> entries_below(
    const std::filesystem::path& directory,
    std::filesystem::directory_options options = std::filesystem::directory_options::none) {
    std::set<std::string> names;
    const std::filesystem::path top = of_any_length(directory, true);
    for (const auto& entry : std::filesystem::recursive_directory_iterator(top, options)) {
        const std::filesystem::path below = entry.path().native().substr(top.native().size());
        names.insert(below.relative_path().generic_string());
    }
    return names;
}

// True if two trees have the same entries with the same bytes, links counting as what they lead to.
inline bool same_trees(const std::filesystem::path& a, const std::filesystem::path& b) {
    constexpr auto through_links = std::filesystem::directory_options::follow_directory_symlink;
    const std::set<std::string> entries = entries_below(a, through_links);
    if (entries != entries_below(b, through_links)) return false;
    return std::all_of(entries.begin(), entries.end(), [&](const std::string& entry) {
        const bool directory = std::filesystem::is_directory(of_any_length(a / entry));
        if (directory != std::filesystem::is_directory(of_any_length(b / entry))) return false;
        return directory || read_file(a / entry) == read_file(b / entry);
    });
}

// Fills a directory with files and directories whose names are hard on programs that join and split them.
inline void grow_random_tree(const std::filesystem::path& directory, RandomText& random, std::size_t most_entries) {
    std::vector<std::filesystem::path> directories{directory};
    std::filesystem::create_directories(directory);
    const std::size_t entries = random.number(most_entries);
    for (std::size_t i = 0; i < entries; ++i) {
        const std::filesystem::path& parent = directories[random.number(directories.size() - 1)];
        const std::string name = random.text(letters_of_names, 6);
        const std::filesystem::path path = parent / name;
        if (!host_takes_name(name) || std::filesystem::exists(path)) continue;
        if (random.number(3) == 0) {
            std::filesystem::create_directory(path);
            directories.push_back(path);
        } else {
            std::ofstream(path, std::ios::binary) << random.text("abc\n", 3000);
        }
    }
}

// Makes "d/d/.../d" below a directory, so many levels deep, with a file at the bottom.
inline std::filesystem::path grow_deep_tree(const std::filesystem::path& directory, int levels) {
    std::filesystem::path path = directory;
    for (int level = 0; level < levels; ++level) path /= "d";
    std::filesystem::create_directories(of_any_length(path));
    write_file(path / "f", "bottom");
    return path;
}

}  // namespace orvix::test
