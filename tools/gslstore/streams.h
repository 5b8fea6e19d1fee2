// Bytes in and out: files by the names that a user typed, and the standard streams.
#pragma once

#include <orvix/core/path.h>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace gslstore {

// A name as the system's users type it, in UTF-8.
orvix::Path path_of(const std::string& name);
// The file of a path in the host's form, for the standard library.
std::filesystem::path host_path(const orvix::Path& path);

// A file that is read from its start to its end, or the standard input.
class Input {
public:
    // @param name  "-" for the standard input
    // @throw Failure  if it cannot be opened
    explicit Input(const std::string& name);

    const std::string& name() const { return name_; }

    // Up to the line feed, which is left out, as is a carriage return before it. False at the end of the file.
    // @throw Failure  if it cannot be read
    bool read_line(std::string* line);
    // @throw Failure  if it cannot be read
    std::string read_all();

private:
    struct Close {
        void operator()(std::FILE* file) const {
            if (file != stdin) std::fclose(file);
        }
    };
    bool fill();

    std::string name_;
    std::unique_ptr<std::FILE, Close> file_;
    std::vector<char> buffer_;
    std::string_view rest_;  // of the buffer
};

// @throw Failure  if the standard output takes no more
void print(std::string_view bytes);
// What is left in memory too.
void finish_printing();

// One line to the standard error stream.
void complain(const std::string& text);

}  // namespace gslstore
