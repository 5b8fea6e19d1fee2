// Any bytes are split into lines as the model splits them, by both readers. The first byte chooses the limit.
#include "../tests/support/line_reader_model.h"

#include <orvix/gsl/streams.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

using orvix::test::LineReaderModel;

void expect(bool condition) {
    if (!condition) std::abort();
}

// A stream of the bytes, at its start.
class Input {
public:
    explicit Input(const std::string& bytes) : stream_(std::tmpfile()) {
        expect(stream_ != nullptr);
        expect(std::fwrite(bytes.data(), 1, bytes.size(), stream_) == bytes.size());
        std::rewind(stream_);
    }
    ~Input() { std::fclose(stream_); }
    Input(const Input&) = delete;
    Input& operator=(const Input&) = delete;

    std::FILE* stream() { return stream_; }

private:
    std::FILE* stream_;
};

void check_limited(const std::string& bytes, std::size_t limit) {
    Input input(bytes);
    LineReaderModel model(bytes);
    std::string buffer(limit, '?');
    while (const auto expected = model.limited_line(limit)) {
        expect(gfile_getline_limited(input.stream(), buffer.data(), limit));
        expect(*expected == buffer.c_str());
    }
    expect(!gfile_getline_limited(input.stream(), buffer.data(), limit));
}

void check_whole(const std::string& bytes) {
    Input input(bytes);
    LineReaderModel model(bytes);
    std::string line;
    while (const auto expected = model.whole_line()) {
        expect(gfile_getline_std_string(input.stream(), &line));
        expect(*expected == line);
    }
    expect(!gfile_getline_std_string(input.stream(), &line));
    expect(line.empty());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::size_t choice = data[0] % 8;
    const std::string bytes(data + 1, data + size);
    check_limited(bytes, choice == 7 ? 1024 : choice + 2);
    check_whole(bytes);
    return 0;
}
