// The pages of a store in a file.
#pragma once

#include "verify.h"

#include <fstream>
#include <string>

namespace gslstore {

class FileSource : public PageSource {
public:
    // @param host  name of the file as the system has it
    explicit FileSource(const std::string& host);

    // What keeps the file from being a store; null if nothing does. Nothing else may be asked of one that has a fault.
    const char* fault() const { return fault_; }
    std::uint64_t file_bytes() const { return file_bytes_; }

    const Header& header() const override { return header_; }
    ByteOrder byte_order() const override { return header_.byte_order == 4321 ? ByteOrder::big : ByteOrder::little; }
    std::optional<Bytes> bucket(std::uint32_t number) override { return page(header_.page_of_bucket(number)); }
    std::optional<Bytes> overflow(std::uint32_t address) override { return page(header_.page_of_address(address)); }
    std::optional<Bytes> bitmap(std::uint32_t slot) override;

private:
    std::optional<Bytes> page(std::uint64_t number);

    std::ifstream file_;
    Header header_{};
    std::uint64_t file_bytes_ = 0;
    const char* fault_ = nullptr;
};

}  // namespace gslstore
