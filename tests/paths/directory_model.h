// What canonical names must be where the system is asked, told by the standard library alone; and directories, files
// and links to name. For hosts whose own names have slashes and no drives.
#pragma once

#include "canonical_models.h"

#include <array>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace orvix::test::model {

class Directories {
public:
    // Below the directory, which must be the current one whenever a member is called:
    //
    //     a/B/    Mixed/Case/
    //     drive/inside/       which is on drive D:, whose root is `drive`
    //     behind\slash/       whose name the library's form cannot tell
    //     to_a  to_case  to_file  to_inside  to_behind  to_nothing  to_itself     links
    //
    // and a `file` in each of them.
    explicit Directories(const std::filesystem::path& top) : drives_{{'c', ""}, {'d', (top / "drive").string()}} {
        namespace fs = std::filesystem;
        std::ofstream(top / "file").put('x');
        for (const char* directory : {"a", "a/B", "Mixed", "Mixed/Case", "drive", "drive/inside", "behind\\slash"}) {
            fs::create_directories(top / directory);
            std::ofstream(top / directory / "file").put('x');
        }
        constexpr const char* links[][2] = {{"to_a", "a"},
                                            {"to_case", "Mixed/Case"},
                                            {"to_file", "a/file"},
                                            {"to_inside", "drive/inside"},
                                            {"to_behind", "behind\\slash"},
                                            {"to_nothing", "nothing"},
                                            {"to_itself", "to_itself"}};
        for (const auto& [link, target] : links) fs::create_symlink(target, top / link);
        name_ = library_name(top.string());
        host_ = top;
    }

    // The directory, as the library and as the host names it.
    const std::string& name() const { return name_; }
    const std::filesystem::path& host() const { return host_; }

    // What ORVIX_DRIVE_D must be.
    const std::string& drive() const { return drives_.at('d'); }

    // Pieces of names, of which some lead somewhere. The last one is the directory itself.
    static constexpr std::size_t piece_count = 25;
    std::string piece(std::size_t number) const {
        static constexpr std::array<const char*, piece_count - 1> pieces = {
            "a",      "B",    "b",       "Mixed",   "mIXED",     "case",      "file",       "FILE",
            "inside", "to_a", "TO_CASE", "to_file", "to_Inside", "to_behind", "to_nothing", "to_itself",
            "none",   "..",   ".",       "/",       "\\",        "d:",        "D:\\",       "c:"};
        return number < pieces.size() ? pieces[number] : name_;
    }

    // What the system calls a directory: none if it cannot be entered, "" if it can and has no name.
    std::optional<std::string> entered(const std::string& name) const {
        namespace fs = std::filesystem;
        const std::optional<std::string> host = spelled(name);
        if (!host) return std::nullopt;
        const fs::path before = fs::current_path();
        std::error_code failed;
        fs::current_path(*host, failed);
        if (failed) return std::nullopt;
        const std::string inside = fs::current_path().string();
        fs::current_path(before);
        return library_name(inside);
    }

    std::string canonical_directory(const std::string& name) const {
        const std::string known = entered(name).value_or("");
        return lowered(known.empty() ? name : known);
    }

    // None for a name without a canonical text.
    std::optional<std::string> canonical(const std::string& name) const {
        const std::string whole = completed(name, name_);
        const std::size_t separator = whole.find_last_of("/\\");
        if (separator == std::string::npos) return std::nullopt;
        const std::string directory = canonical_directory(whole.substr(0, separator));
        return fixed_up(directory + '/' + whole.substr(separator + 1), true);
    }

    // Whether a search ends with this name.
    bool is_found(const std::string& name, bool accept_directories) const {
        namespace fs = std::filesystem;
        const std::optional<std::string> host = spelled(name);
        if (!host) return false;
        std::error_code ignored;
        if (fs::is_regular_file(*host, ignored)) return !fs::is_symlink(*host, ignored);
        return accept_directories && fs::is_directory(*host, ignored);
    }

private:
    // The host's name of what a library name leads to; none if the name can lead nowhere.
    std::optional<std::string> spelled(const std::string& name) const {
        const std::optional<std::string> host = host_name(name);
        return host ? std::optional(as_stored(*host)) : std::nullopt;
    }

    std::optional<std::string> host_name(const std::string& name) const {
        const auto separator_at = [&](std::size_t i) { return i < name.size() && is_separator(name[i]); };
        if (name.empty() || (separator_at(0) && separator_at(1))) return std::nullopt;
        if (separator_at(0)) return with_slashes(name);  // the current directory is on C:
        if (!is_absolute(name)) return with_slashes(name);
        const char letter = lowered(name)[0];
        const std::string rest = with_slashes(name.substr(2));
        if (letter == 'c' && !separator_at(2)) return rest.empty() ? "." : rest;
        if (drives_.count(letter) == 0) return std::nullopt;
        return with_slashes(drives_.at(letter) + '/' + rest);
    }

    static std::string with_slashes(const std::string& name) {
        std::string result;
        for (const char c : name) {
            if (!is_separator(c)) {
                result += c;
            } else if (!result.ends_with('/')) {
                result += '/';
            }
        }
        return result;
    }

    // Each part that is missing in the spelling of the one entry that differs from it in letter case alone; the name as
    // it is if that leads nowhere.
    static std::string as_stored(const std::string& host) {
        namespace fs = std::filesystem;
        std::error_code ignored;
        if (fs::exists(host, ignored)) return host;
        fs::path result;
        for (const fs::path& part : fs::path(host)) {
            if (part.empty()) continue;  // behind a slash at the end
            if (fs::exists(result / part, ignored)) {
                result /= part;
                continue;
            }
            std::vector<fs::path> matches;
            for (const auto& entry : fs::directory_iterator(result.empty() ? "." : result, ignored)) {
                if (lowered(entry.path().filename().string()) == lowered(part.string()))
                    matches.push_back(entry.path());
            }
            if (matches.size() != 1) return host;
            result /= matches[0].filename();
        }
        return result.string() + (host.ends_with('/') ? "/" : "");
    }

    // "" if a backslash stands in it, which would read as a separator.
    std::string library_name(const std::string& host) const {
        if (host.find('\\') != std::string::npos) return "";
        const std::string& drive = drives_.at('d');
        const bool on_d = host == drive || host.starts_with(drive + '/');
        std::string name = on_d ? host.substr(drive.size()) : host;
        if (name.empty()) name = "/";
        for (char& c : name) c = c == '/' ? '\\' : c;
        return (on_d ? "D:" : "C:") + name;
    }

    std::map<char, std::string> drives_;
    std::string name_;
    std::filesystem::path host_;
};

}  // namespace orvix::test::model
