#include "file_source.h"

#include <algorithm>
#include <fstream>
#include <utility>

namespace gslstore {

namespace {

// Null if there is no such file. A directory opens on some systems and cannot be read.
std::unique_ptr<std::istream> open_file(const std::filesystem::path& host) {
    std::error_code none;
    if (std::filesystem::is_directory(host, none)) return nullptr;
    auto stream = std::make_unique<std::ifstream>(host, std::ios::binary);
    if (!stream->is_open()) return nullptr;
    return stream;
}

}  // namespace

FileSource::FileSource(const std::filesystem::path& host) : FileSource(open_file(host)) {}

FileSource::FileSource(std::unique_ptr<std::istream> file) : file_(std::move(file)) {
    if (is_open()) {
        read_header();
    } else {
        hide_all("the file cannot be opened");
    }
}

void FileSource::read_header() {
    std::array<unsigned char, header_bytes> bytes;
    if (!file_->read(reinterpret_cast<char*>(bytes.data()), bytes.size())) {
        hide_all("the file is shorter than the header of a hash store");
        return;
    }
    file_->seekg(0, std::ios::end);
    file_bytes_ = static_cast<std::uint64_t>(std::max<std::streamoff>(file_->tellg(), 0));
    header_ = decode_header(bytes);
    faults_ = faults_of(header_, file_bytes_);
}

// Pages of buckets lie one behind the other but for the overflow pages in between, so that the first one that the file
// lacks is found by halves.
std::uint64_t FileSource::bucket_count() const {
    const std::uint64_t pages = std::min(file_bytes_, file_limit) / header_.page_size;
    std::uint64_t first = 0;
    std::uint64_t last = std::uint64_t{header_.top_bucket} + 1;
    if (header_.page_of_bucket(header_.top_bucket) < pages) return last;
    while (first < last) {
        const std::uint64_t middle = first + (last - first) / 2;
        if (header_.page_of_bucket(static_cast<std::uint32_t>(middle)) < pages) {
            first = middle + 1;
        } else {
            last = middle;
        }
    }
    return first;
}

std::optional<Bytes> FileSource::page(std::uint64_t number) {
    Bytes bytes(header_.page_size);
    const std::uint64_t offset = number * header_.page_size;
    if (offset >= std::min(file_bytes_, file_limit)) return std::nullopt;
    file_->clear();
    file_->seekg(static_cast<std::streamoff>(offset));
    file_->read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    if (!*file_) return std::nullopt;
    return bytes;
}

}  // namespace gslstore
