#include "env/line_reader.h"

#include <orvix/core/file.h>
#include <orvix/gsl/status.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace orvix::gsl::env {

void LineReader::Free::operator()(char* block) const { gmem_ee_free(block); }

LineReader::LineReader(core::File& file, std::size_t first_bytes, std::size_t growth_bytes)
    : file_(file), line_bytes_(first_bytes), growth_bytes_(growth_bytes) {}

bool LineReader::next(std::string_view* line) {
    std::size_t searched = 0;  // bytes of the line that hold no newline
    for (;;) {
        const std::size_t room = line_bytes_ - 1;
        const std::size_t bytes = std::min(end_ - begin_, room);
        if (bytes > searched) {
            const char* text = chunk_ + begin_;
            const void* newline = std::memchr(text + searched, '\n', bytes - searched);
            if (newline != nullptr) {
                *line = take(static_cast<std::size_t>(static_cast<const char*>(newline) - text) + 1);
                return true;
            }
            searched = bytes;
        }
        if (bytes < room) {
            if (read_more()) continue;
            if (failed_ || bytes == 0) return false;
            *line = take(bytes);
            return true;
        }
        const bool full_of_text = nul_ - begin_ >= bytes;
        if (growth_bytes_ == 0 || !full_of_text) {
            *line = take(bytes);
            return true;
        }
        line_bytes_ += growth_bytes_;
    }
}

// Hands out the text of the next `bytes` bytes, and steps over them.
std::string_view LineReader::take(std::size_t bytes) {
    const std::string_view text(chunk_ + begin_, std::min(bytes, nul_ - begin_));
    begin_ += bytes;
    if (nul_ < begin_) find_nul(begin_);
    return text;
}

// False at the end of the file, and on failure.
bool LineReader::read_more() {
    if (ended_) return false;
    if (!make_room()) {
        ended_ = failed_ = true;
        return false;
    }
    const std::size_t wanted = chunk_bytes_ - end_;
    errno = 0;  // tells a failed read from the end
    const std::size_t got = file_.read(chunk_ + end_, wanted);
    const std::size_t before = end_;
    const bool had_nul = nul_ < end_;
    end_ += got;
    bytes_read_ += got;
    if (!had_nul) find_nul(before);
    if (got < wanted) {
        ended_ = true;
        failed_ = errno != 0;
    }
    return got > 0 && !failed_;
}

// Leaves room behind `end_`. The next chunk is a larger one until reads are cheap; later chunks grow only for a line
// that does not fit.
bool LineReader::make_room() {
    constexpr std::size_t good_chunk_bytes = std::size_t{32} << 10;
    if (end_ < chunk_bytes_) return true;
    if (begin_ > 0 && chunk_bytes_ >= good_chunk_bytes) {
        move_to_front(chunk_);
        return true;
    }
    const std::size_t larger_bytes = std::max(good_chunk_bytes, 2 * chunk_bytes_);
    std::unique_ptr<char, Free> larger(gmem_ee_malloc(larger_bytes, 1));
    if (larger == nullptr) return false;
    move_to_front(larger.get());
    larger_chunk_ = std::move(larger);
    chunk_ = larger_chunk_.get();
    chunk_bytes_ = larger_bytes;
    return true;
}

// Moves the text not handed out yet to the front of a chunk.
void LineReader::move_to_front(char* chunk) {
    std::memmove(chunk, chunk_ + begin_, end_ - begin_);
    nul_ -= begin_;
    end_ -= begin_;
    begin_ = 0;
}

void LineReader::find_nul(std::size_t from) {
    const void* nul = from < end_ ? std::memchr(chunk_ + from, '\0', end_ - from) : nullptr;
    nul_ = nul != nullptr ? static_cast<std::size_t>(static_cast<const char*>(nul) - chunk_) : end_;
}

}  // namespace orvix::gsl::env
