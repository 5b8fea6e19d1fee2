// Open streams and their owner.
#pragma once

#include <orvix/core/path.h>

#include <cstdio>
#include <memory>

namespace orvix::gsl::env {

struct CloseStream {
    void operator()(std::FILE* stream) const { std::fclose(stream); }
};

using Stream = std::unique_ptr<std::FILE, CloseStream>;

// LineReader and TextWriter move large pieces: a buffer of the stream's own would only be one more copy. To be called
// before anything else is done with the stream.
inline void go_without_buffer(std::FILE* stream) { std::setvbuf(stream, nullptr, _IONBF, 0); }

// Opens a file for LineReader ("r") or TextWriter ("w"). Null on failure, with errno set.
inline Stream open_stream(const Path& path, const char* mode) {
    Stream stream(path.fopen(mode));
    if (stream != nullptr) go_without_buffer(stream.get());
    return stream;
}

}  // namespace orvix::gsl::env
