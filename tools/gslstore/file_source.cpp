#include "file_source.h"

namespace gslstore {

FileSource::FileSource(const std::string& host) : file_(host, std::ios::binary) {
    std::array<unsigned char, header_bytes> bytes;
    if (!file_.is_open()) {
        fault_ = "the file cannot be opened";
    } else if (!file_.read(reinterpret_cast<char*>(bytes.data()), bytes.size())) {
        fault_ = "the file is shorter than the header of a hash store";
    } else {
        header_ = decode_header(bytes);
        fault_ = fault_of(header_);
        file_.seekg(0, std::ios::end);
        file_bytes_ = static_cast<std::uint64_t>(file_.tellg());
        const bool ends_early =
            fault_ == nullptr && header_.page_of_bucket(header_.top_bucket) * header_.page_size >= file_bytes_;
        if (ends_early) fault_ = "the file ends before the last bucket";
    }
}

std::optional<Bytes> FileSource::page(std::uint64_t number) {
    Bytes bytes(header_.page_size);
    const std::uint64_t offset = number * header_.page_size;
    if (offset >= file_bytes_) return bytes;
    file_.clear();
    file_.seekg(static_cast<std::streamoff>(offset));
    file_.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    if (!file_) return std::nullopt;
    return bytes;
}

std::optional<Bytes> FileSource::bitmap(std::uint32_t slot) {
    const std::uint64_t number = header_.page_of_address(header_.bitmap_addrs[slot]);
    if (number * header_.page_size >= file_bytes_) return std::nullopt;
    return page(number);
}

}  // namespace gslstore
