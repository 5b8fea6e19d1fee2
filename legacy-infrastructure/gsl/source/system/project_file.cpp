#include "system/project_file.h"

#include <orvix/core/path.h>
#include <orvix/gsl/status.h>
#include <orvix/gsl/streams.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <memory>
#include <string_view>

namespace orvix::gsl::system {

namespace {

constexpr std::size_t line_bytes = 1024;

struct CloseStream {
    void operator()(std::FILE* stream) const { gsl_fclose(stream); }
};

std::string_view without_blanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(' ') + 1 - first);
}

// Takes the text up to the next `=` off the front of a line. A run of `=` counts as one, and those in front as none.
// Empty at the end of the line.
std::string_view next_part(std::string_view* line) {
    line->remove_prefix(std::min(line->find_first_not_of('='), line->size()));
    const std::string_view part = line->substr(0, line->find('='));
    line->remove_prefix(part.size());
    return part;
}

}  // namespace

bool gprj_read_value(const std::string& directory, const std::string& file, const char* key, std::string* value) {
    value->clear();
    const std::unique_ptr<std::FILE, CloseStream> stream(Path(directory + '\\' + file).fopen("r"));
    if (stream == nullptr) return false;
    std::array<char, line_bytes> buffer;
    while (gfile_getline_limited(stream.get(), buffer.data(), buffer.size())) {
        std::string_view line = without_blanks(buffer.data());
        const std::string_view name = next_part(&line);
        if (name.empty() || without_blanks(name) != key) continue;
        *value = next_part(&line);
        return true;
    }
    return false;
}

}  // namespace orvix::gsl::system
