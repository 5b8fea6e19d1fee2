#include <orvix/gsl/streams.h>

#include <algorithm>
#include <climits>
#include <cstring>

namespace {

constexpr std::size_t line_limit = 1024;  // bytes of a line, zero byte included, that the suite's text files keep to
constexpr char end_of_file_mark = 26;
constexpr const char* line_ends = "\n\r\x1a";

// The length of the text up to its first line end.
std::size_t text_length(const char* text) { return std::strcspn(text, line_ends); }

bool ends_in_line_feed(const char* text, std::size_t length) { return length > 0 && text[length - 1] == '\n'; }

void skip_rest_of_line(std::FILE* stream) {
    char chunk[line_limit];
    while (std::fgets(chunk, sizeof chunk, stream) != nullptr) {
        const std::size_t length = std::strlen(chunk);
        if (length == 0 || ends_in_line_feed(chunk, length)) return;
    }
}

// What fgets gives for a buffer without room for text differs between runtimes, and one that never reports the end of
// the file would keep its caller reading for ever.
bool skip_line(std::FILE* stream, char* buffer) {
    const int first = std::fgetc(stream);
    if (first == EOF) return false;
    std::ungetc(first, stream);
    skip_rest_of_line(stream);
    buffer[0] = '\0';
    return true;
}

}  // namespace

bool gfile_getline_limited(std::FILE* stream, char* buffer, std::size_t limit) {
    if (limit == 0) return false;
    if (limit == 1) return skip_line(stream, buffer);

    const int size = static_cast<int>(std::min<std::size_t>(limit, INT_MAX));
    if (std::fgets(buffer, size, stream) == nullptr) return false;
    const std::size_t kept = text_length(buffer);
    const std::size_t length = kept + std::strlen(buffer + kept);
    if (length == static_cast<std::size_t>(size) - 1 && !ends_in_line_feed(buffer, length)) skip_rest_of_line(stream);
    if (buffer[0] == end_of_file_mark) return false;
    buffer[kept] = '\0';
    return true;
}

bool gfile_getline(std::FILE* stream, char* buffer) { return gfile_getline_limited(stream, buffer, line_limit); }

bool gfile_getline_std_string(std::FILE* stream, std::string* line) {
    line->clear();
    char chunk[line_limit];
    bool finished = false;
    while (!finished) {
        if (std::fgets(chunk, sizeof chunk, stream) == nullptr) return !line->empty();
        if (line->empty() && chunk[0] == end_of_file_mark) return false;
        const std::size_t kept = text_length(chunk);
        // Any line end finishes the line, not only one that the chunk ends in, and so does a chunk that is not full.
        finished = kept < sizeof chunk - 1;
        line->append(chunk, kept);
    }
    return true;
}
