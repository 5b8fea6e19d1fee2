// The operations on trees in their plain form: whole names, a step for each entry, recursion. Knows no links.
#pragma once

#include "files/wildcard_model.h"

#include <orvix/core/files.h>
#include <orvix/core/path.h>
#include <orvix/gsl/directory_scan.h>
#include <orvix/gsl/file_names.h>
#include <orvix/gsl/files.h>
#include <orvix/gsl/getenv.h>

#include <cstring>
#include <filesystem>
#include <functional>
#include <string>

namespace orvix::test {

class TreesModel {
public:
    static bool copy(const std::string& from, const std::string& to, bool recursive) {
        if (from.size() > 1024 || to.size() > 1024) return false;
        const std::string source = cut(from);
        std::string target = cut(to);
        if (has_wildcard(source)) {
            const std::size_t backslash = source.rfind('\\');
            if (type(target) != directory_type || backslash == std::string::npos) return false;
            const std::string parent = source.substr(0, backslash);
            return type(parent) == directory_type && copy_matching(parent, tail(source), target, false);
        }
        if (type(source) == 0) return false;
        if (type(source) != directory_type) {
            if (type(target) == directory_type) target = prepared(target) + tail(source);
            return target.size() <= 1024 && gfile_copy(source.c_str(), target.c_str());
        }
        if (!recursive) return false;
        const bool missing = type(target) == 0;
        if (missing && !Path(target).create_directory()) return false;
        if (type(target) != directory_type) return false;
        // Nothing is copied into itself.
        if (is_below(target, source)) {
            if (missing) Path(target).delete_file_or_directory();
            return false;
        }
        return copy_matching(source, "*", target, true);
    }

    static bool remove(const std::string& name, bool recursive) {
        if (name.size() > 1024) return false;
        const std::string plain = cut(name);
        if (has_wildcard(plain)) {
            const std::size_t backslash = plain.rfind('\\');
            if (backslash == std::string::npos) return false;
            const std::string parent = plain.substr(0, backslash);
            return type(parent) == directory_type && remove_matching(parent, tail(plain), false);
        }
        if (type(plain) < 4096) return false;
        if (type(plain) != directory_type) return Path(plain).delete_file_or_directory();
        return recursive && remove_matching(plain, "*", true) && Path(plain).delete_file_or_directory();
    }

    static bool change_mode(const std::string& name, int mode) {
        const std::string plain = gfile_strip_dir_name_kstring(fixFilenameSlashes(name));
        if (!has_wildcard(plain)) return type(plain) != 0 && chmod_utf8(plain, mode) == 0;
        std::string parent = Path(plain).parent_path();
        parent = gfile_strip_dir_name_kstring(fixFilenameSlashes(parent));
        bool changed = true;
        const bool scanned = for_each_entry(parent, tail(plain), [&](const std::string& entry) {
            changed = chmod_utf8(prepared(parent) + entry, mode) == 0;
            return changed;
        });
        return scanned && changed;
    }

    static bool make_directory(const std::string& name, bool each_level) {
        std::string path;
        const bool walked = walk(name, [&](const std::string& so_far, const std::string& part, std::size_t*) {
            path = so_far;
            if (!each_level || part.empty() || exists(path) || gsl_mkdir(path.c_str(), 0) == 0) return go_on;
            return fail;
        });
        return walked && (each_level || exists(path) || gsl_mkdir(path.c_str(), 0) == 0);
    }

    static bool is_makeable(const std::string& name, bool levels_may_be_missing) {
        bool answer = true;
        const std::string converted = fixFilenameSlashes(name);
        const bool walked = walk(name, [&](const std::string& path, const std::string&, std::size_t* at) {
            if (exists(path)) {
                answer = gfile_is_dir(path.c_str()) && gfile_is_writable(path.c_str());
                return go_on;
            }
            if (levels_may_be_missing) return stop;
            while (converted[*at] == '\\') ++*at;
            if (*at == converted.size()) return stop;
            answer = false;
            return go_on;
        });
        return walked && answer;
    }

private:
    static constexpr int directory_type = 16384;

    static bool has_wildcard(const std::string& name) { return name.find_first_of("*?") != std::string::npos; }

    static std::string cut(std::string name) {
        gfile_strip_dir_name(name.data());
        return name.c_str();
    }

    static std::string prepared(std::string name) {
        if (!name.empty() && name.back() == '/') name.back() = '\\';
        return name.empty() || name.back() == '\\' ? name : name + '\\';
    }

    static std::string tail(const std::string& name) {
        int prefix = 0;
        gfile_hasdrv(name.c_str(), &prefix);
        return name.substr(static_cast<std::size_t>(prefix));
    }

    static bool exists(const std::string& name) { return gsl_stat(name.c_str(), nullptr) == 0; }

    static int type(const std::string& name) {
        _stat64i32 status;
        return gsl_stat(name.c_str(), &status) == 0 ? static_cast<int>(status.st_mode & 61440U) : 0;
    }

    static bool is_below(const std::string& inner, const std::string& outer) {
        const auto real = [](const std::string& name) {
            const std::string with_root = name.size() == 2 && name[1] == ':' ? name + '\\' : name;
            return std::filesystem::canonical(Path(with_root).host()).string() + '/';
        };
        return real(inner).starts_with(real(outer));
    }

    // False if the directory cannot be read. `step` gives false to end the scan.
    static bool for_each_entry(const std::string& directory, const std::string& pattern,
                               const std::function<bool(const std::string&)>& step) {
        gsl::_dirdesc* scan = gsl::opendir_utf8(directory.c_str());
        if (scan == nullptr) return false;
        while (const gsl::dirent* entry = gsl::readdir(scan)) {
            const std::string name = entry->d_name;
            if (name == "." || name == ".." || !matches(name, pattern)) continue;
            if (!step(name)) break;
        }
        gsl::closedir(scan);
        return true;
    }

    static bool copy_matching(const std::string& from, const std::string& pattern, const std::string& to,
                              bool recursive) {
        bool whole = true;
        const bool scanned = for_each_entry(cut(from), pattern, [&](const std::string& entry) {
            const std::string source = prepared(from) + entry;
            const std::string target = prepared(to) + entry;
            whole = source.size() <= 1024 && target.size() <= 1024 && type(source) != 0;
            if (!whole) return false;
            if (type(source) != directory_type) {
                whole = gfile_copy(source.c_str(), target.c_str());
            } else if (recursive) {
                whole = gsl_mkdir((target + '\\').c_str(), 493) != -1 && copy_matching(source, "*", target, true);
            }
            return whole;
        });
        return scanned && whole;
    }

    static bool remove_matching(const std::string& from, const std::string& pattern, bool recursive) {
        bool whole = true;
        const bool scanned = for_each_entry(cut(from), pattern, [&](const std::string& entry) {
            const std::string name = prepared(from) + entry;
            if (name.size() > 1024 || type(name) == 0) return whole = false;
            if (type(name) != directory_type) {
                if (!Path(name).delete_file_or_directory()) whole = false;
            } else if (recursive) {
                if (!remove_matching(name, "*", true) || !Path(name).delete_file_or_directory()) whole = false;
            }
            return true;
        });
        return scanned && whole;
    }

    enum Outcome { go_on, stop, fail };

    // Goes through a name character by character. `step` gets the path so far, the part just added, and the place of
    // the part's end, which it may move on. False after a failure.
    static bool walk(const std::string& given,
                     const std::function<Outcome(const std::string&, const std::string&, std::size_t*)>& step) {
        const std::string name = fixFilenameSlashes(given);
        std::string path;
        std::string part;
        std::size_t i = 0;
        bool first = true;
        if (name[0] == '\\') {
            path = Path::current_path().native().substr(0, 2) + '\\';
            i = std::min<std::size_t>(2, name.size());
            first = false;
        } else if (name.size() >= 3 && name[1] == ':' && name[2] == '\\') {
            path = name.substr(0, 2) + '\\';
            i = 2;
            first = false;
        }
        for (; i <= name.size(); ++i) {
            if (i < name.size() && name[i] != '\\') {
                part += name[i];
                continue;
            }
            std::string variable;
            bool is_variable = false;
            if (!part.empty() && part[0] == '$') {
                is_variable = true;
                variable = part.substr(1);
            } else if (part.size() >= 2 && part[0] == '%' && part.back() == '%') {
                is_variable = true;
                variable = part.substr(1, part.size() - 2);
            }
            if (is_variable) {
                const char* value = gsl_getenv(variable.c_str());
                if (value == nullptr || *value == '\0') return false;
                part = value;
            }
            if (first) {
                path = part.empty() ? "\\" : part + '\\';
                first = false;
            } else if (!part.empty()) {
                if (path.back() != '\\') path += '\\';
                path += part;
            }
            const Outcome outcome = step(path, part, &i);
            if (outcome != go_on) return outcome == stop;
            part.clear();
        }
        return true;
    }
};

}  // namespace orvix::test
