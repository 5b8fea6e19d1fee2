#include "streams.h"

#include "failure.h"

namespace gslstore {

namespace {

constexpr std::size_t buffer_bytes = std::size_t{1} << 16;

std::filesystem::path path_of_utf8(const std::string& text) { return std::u8string(text.begin(), text.end()); }

}  // namespace

orvix::Path path_of(const std::string& name) { return orvix::Path::from_fs_path(path_of_utf8(name)); }

std::filesystem::path host_path(const orvix::Path& path) { return path_of_utf8(path.host()); }

Input::Input(const std::string& name)
    : name_(name == "-" ? "standard input" : name),
      file_(name == "-" ? stdin : path_of(name).fopen("rb")),
      buffer_(buffer_bytes) {
    if (file_ == nullptr) throw Failure(name_ + ": " + system_text());
}

// False at the end of the file.
bool Input::fill() {
    const std::size_t bytes = std::fread(buffer_.data(), 1, buffer_.size(), file_.get());
    if (bytes == 0 && std::ferror(file_.get()) != 0) throw Failure(name_ + ": " + system_text());
    rest_ = {buffer_.data(), bytes};
    return bytes != 0;
}

bool Input::read_line(std::string* line) {
    line->clear();
    while (!rest_.empty() || fill()) {
        const std::size_t end = rest_.find('\n');
        *line += rest_.substr(0, end);
        if (end == std::string_view::npos) {
            rest_ = {};
            continue;
        }
        rest_.remove_prefix(end + 1);
        if (line->ends_with('\r')) line->pop_back();
        return true;
    }
    return !line->empty();
}

std::string Input::read_all() {
    std::string all(rest_);
    while (fill()) all += rest_;
    rest_ = {};
    return all;
}

void print(std::string_view bytes) {
    if (std::fwrite(bytes.data(), 1, bytes.size(), stdout) != bytes.size()) {
        throw Failure("standard output: " + system_text());
    }
}

void finish_printing() {
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) throw Failure("standard output: " + system_text());
}

void complain(const std::string& text) {
    std::fflush(stdout);  // in the order of events where both streams go to one place
    std::fprintf(stderr, "gslstore: %s\n", text.c_str());
}

}  // namespace gslstore
