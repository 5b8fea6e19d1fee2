// A line buffer filled by std::fgets, as plainly as it can be written.
#pragma once

#include <cstddef>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace orvix::test {

// The texts that a buffer of `first_bytes` takes from a stream; full of text without a newline it grows by
// `growth_bytes`, and stays grown. 0 never grows.
inline std::vector<std::string> lines_by_fgets(std::FILE* stream, std::size_t first_bytes, std::size_t growth_bytes) {
    std::vector<std::string> lines;
    std::vector<char> buffer(first_bytes);
    while (std::fgets(buffer.data(), static_cast<int>(buffer.size()), stream) != nullptr) {
        while (growth_bytes > 0 && std::strlen(buffer.data()) == buffer.size() - 1 &&
               buffer[buffer.size() - 2] != '\n') {
            const std::size_t end = buffer.size() - 1;
            buffer.resize(buffer.size() + growth_bytes);
            if (std::fgets(buffer.data() + end, static_cast<int>(growth_bytes + 1), stream) == nullptr) break;
        }
        lines.emplace_back(buffer.data());
    }
    return lines;
}

inline std::vector<std::string> lines_by_fgets(std::string_view bytes, std::size_t first_bytes,
                                               std::size_t growth_bytes) {
    std::FILE* stream = std::tmpfile();
    std::fwrite(bytes.data(), 1, bytes.size(), stream);
    std::rewind(stream);
    std::vector<std::string> lines = lines_by_fgets(stream, first_bytes, growth_bytes);
    std::fclose(stream);
    return lines;
}

}  // namespace orvix::test
