#include <orvix/core/path.h>
#include <orvix/gsl/file_names.h>
#include <orvix/gsl/file_trees.h>
#include <orvix/gsl/files.h>
#include <orvix/gsl/getenv.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

namespace {

// The variable that a part of a name stands for, if it has the form of one.
std::optional<std::string> variable_of(std::string_view part) {
    if (part.starts_with('$')) return std::string(part.substr(1));
    if (part.size() >= 2 && part.starts_with('%') && part.ends_with('%')) {
        return std::string(part.substr(1, part.size() - 2));
    }
    return std::nullopt;
}

// The part itself or the value of its variable; none if that is empty or not set.
std::optional<std::string> gfile_expand_dir(std::string part) {
    const std::optional<std::string> variable = variable_of(part);
    if (!variable) return part;
    const char* value = gsl_getenv(variable->c_str());
    if (value == nullptr) {
        std::fprintf(stderr, "gfile:gfile_expand_dir could not expand %s\n", part.c_str());
        return std::nullopt;
    }
    return value[0] != '\0' ? std::optional<std::string>(value) : std::nullopt;
}

// Goes through a name part by part and builds the path that the parts make up, variables expanded.
class PathWalk {
public:
    explicit PathWalk(std::string_view name) : name_(name) {
        if (name.starts_with('\\')) {
            const std::string current = orvix::Path::current_path().native();
            if (!current.empty()) start_behind_root(current.substr(0, 2));
        } else if (name.size() >= 3 && name[1] == ':' && name[2] == '\\') {
            start_behind_root(std::string(name.substr(0, 2)));
        }
    }

    // Adds the next part to the path. False behind the last part, and at a part that cannot be expanded.
    bool next() {
        if (begin_ > name_.size()) return false;
        end_ = std::min(name_.find('\\', begin_), name_.size());
        std::optional<std::string> part = gfile_expand_dir(std::string(name_.substr(begin_, end_ - begin_)));
        failed_ = !part;
        if (failed_) return false;
        begin_ = end_ + 1;
        part_ = std::move(*part);
        add_part();
        return true;
    }

    // Steps over further separators, and over the first character behind them. False if there is none.
    bool skip_to_second_character() {
        const std::size_t first = name_.find_first_not_of('\\', end_);
        if (first == std::string_view::npos) return false;
        begin_ = first + 1;
        return true;
    }

    const char* path() const { return path_.c_str(); }
    bool is_part_empty() const { return part_.empty(); }
    bool failed() const { return failed_; }

private:
    // A name with a drive goes on at its separator, which makes an empty part. One without a drive goes on at the same
    // place, and so loses the character behind its separator, as ever.
    void start_behind_root(const std::string& drive) {
        path_ = drive + '\\';
        begin_ = std::min<std::size_t>(2, name_.size());
        at_first_part_ = false;
    }

    void add_part() {
        if (at_first_part_) {
            path_ = part_ + '\\';
        } else if (!part_.empty()) {
            if (!path_.ends_with('\\')) path_ += '\\';
            path_ += part_;
        }
        at_first_part_ = false;
    }

    std::string_view name_;
    std::size_t begin_ = 0;  // of the next part
    std::size_t end_ = 0;    // of the part before: its separator, or the end of the name
    std::string path_;
    std::string part_;
    bool at_first_part_ = true;
    bool failed_ = false;
};

bool make_if_missing(const PathWalk& walk, int mode) {
    return gfile_exists(walk.path()) || gsl_mkdir(walk.path(), mode) == 0;
}

}  // namespace

bool gfile_mkdir(char* name, bool each_level, int mode) {
    if (name == nullptr) return false;
    PathWalk walk(convertFileName(name));
    while (walk.next()) {
        if (each_level && !walk.is_part_empty() && !make_if_missing(walk, mode)) return false;
    }
    return !walk.failed() && (each_level || make_if_missing(walk, mode));
}

bool gfile_makebledir(char* name, bool levels_may_be_missing) {
    if (name == nullptr) return false;
    PathWalk walk(convertFileName(name));
    bool makeable = true;
    while (walk.next()) {
        if (gfile_exists(walk.path())) {
            makeable = gfile_is_dir(walk.path()) && gfile_is_writable(walk.path());
        } else if (levels_may_be_missing || !walk.skip_to_second_character()) {
            return makeable;
        } else {
            // Only a path further on that does exist can turn the answer back.
            makeable = false;
        }
    }
    return !walk.failed() && makeable;
}
