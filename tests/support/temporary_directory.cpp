#include "support/temporary_directory.h"

#include "support/host.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>

namespace orvix::test {

namespace fs = std::filesystem;

namespace {

fs::path unique_directory() {
    std::random_device device;
    for (int attempt = 0; attempt < 100; ++attempt) {
        fs::path candidate = fs::temp_directory_path() / ("orvix_test_" + std::to_string(device()));
        if (fs::create_directory(candidate)) return fs::canonical(candidate);
    }
    throw std::runtime_error("no temporary directory to be had");
}

}  // namespace

TemporaryDirectory::TemporaryDirectory(Enter enter) : path_(unique_directory()), before_(fs::current_path()) {
    if (enter == Enter::yes) fs::current_path(path_);
}

TemporaryDirectory::~TemporaryDirectory() {
    std::error_code ignored;
    fs::current_path(before_, ignored);
    remove_tree(path_);
}

std::string TemporaryDirectory::name(std::string_view relative) const {
    return library_name(relative.empty() ? path_ : path_ / host_path(relative));
}

std::string TemporaryDirectory::write(std::string_view relative, std::string_view bytes) const {
    const fs::path file = path_ / host_path(relative);
    fs::create_directories(of_any_length(file.parent_path()));
    write_file(file, bytes);
    return library_name(file);
}

std::string TemporaryDirectory::read(std::string_view relative) const { return read_file(path_ / host_path(relative)); }

ScopedVariable::ScopedVariable(const char* name, const char* value) : name_(name), before_(process_variable(name)) {
    set_process_variable(name, value != nullptr ? std::optional<std::string>(value) : std::nullopt);
}

ScopedVariable::ScopedVariable(const char* name, const fs::path& value)
    : ScopedVariable(name, name_of_host(value).c_str()) {}

ScopedVariable::~ScopedVariable() { set_process_variable(name_.c_str(), before_); }

fs::path host_path(std::string_view utf8) { return std::u8string(utf8.begin(), utf8.end()); }

std::string library_name(const fs::path& host) {
    std::string text = name_of_host(host);
    if (text.starts_with('/')) text.insert(0, root_drive);
    std::replace(text.begin(), text.end(), '/', '\\');
    return text;
}

std::string read_file(const fs::path& host) {
    std::ifstream stream(of_any_length(host), std::ios::binary);
    if (!stream) throw std::runtime_error("cannot read " + host.string());
    return {std::istreambuf_iterator<char>(stream), {}};
}

void write_file(const fs::path& host, std::string_view bytes) {
    std::ofstream stream(of_any_length(host), std::ios::binary);
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!stream) throw std::runtime_error("cannot write " + host.string());
}

}  // namespace orvix::test
