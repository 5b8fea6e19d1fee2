// A directory of the process's own with nothing in it, and every level's place below it.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>

namespace orvix::fuzz {

inline void expect(bool condition) {
    if (!condition) std::abort();
}

class EmptyPlace {
public:
    EmptyPlace() {
        namespace fs = std::filesystem;
        std::error_code none;
        const fs::path parent = fs::is_directory("/dev/shm", none) ? fs::path("/dev/shm") : fs::temp_directory_path();
        directory_ = parent / ("orvix_fuzz_" + std::to_string(std::random_device()()));
        fs::create_directory(directory_);
        for (const char* name : {"HOME", "HXORVIX_DIR", "TMPDIR"}) setenv(name, directory_.c_str(), 1);
        unsetenv("QDS_CUSTOM_DIR");
    }
    ~EmptyPlace() {
        std::error_code ignored;
        std::filesystem::remove_all(directory_, ignored);
    }
    EmptyPlace(const EmptyPlace&) = delete;
    EmptyPlace& operator=(const EmptyPlace&) = delete;

    const std::filesystem::path& path() const { return directory_; }

private:
    std::filesystem::path directory_;
};

// Stands in the empty place for the length of one input. In between the fuzzing engine stands where it was started, for
// the names that it was given.
class Visit {
public:
    Visit() : before_(std::filesystem::current_path()) {
        static const EmptyPlace place;
        std::filesystem::current_path(place.path());
    }
    ~Visit() { std::filesystem::current_path(before_); }
    Visit(const Visit&) = delete;
    Visit& operator=(const Visit&) = delete;

private:
    std::filesystem::path before_;
};

inline void write_file(const char* name, std::string_view bytes) {
    std::ofstream stream(name, std::ios::binary);
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    expect(stream.good());
}

inline std::string read_file(const char* name) {
    std::ifstream stream(name, std::ios::binary);
    expect(stream.good());
    return {std::istreambuf_iterator<char>(stream), {}};
}

// Takes every way out of the place from the names that include lines may give, and references too: expansions that
// never end are slow.
inline std::string without_ways_out(std::string text) {
    for (char& c : text) {
        if (c == '/' || c == '\\' || c == ':' || c == '.' || c == '$' || c == '%') c = '_';
    }
    return text;
}

}  // namespace orvix::fuzz
