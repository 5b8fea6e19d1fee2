// The pages of a store in a file.
#pragma once

#include "header_check.h"
#include "page_source.h"

#include <filesystem>
#include <istream>
#include <memory>
#include <vector>

namespace gslstore {

class FileSource : public PageSource {
public:
    // @param host  name of the file as the system has it
    explicit FileSource(const std::filesystem::path& host);
    // @param file  any stream that can be read from any place; null for a file that cannot be opened
    explicit FileSource(std::unique_ptr<std::istream> file);

    // False if there is no file, or nobody may read it; all else is faults of the header.
    bool is_open() const { return file_ != nullptr; }
    // What is wrong with the header. A file that is shorter than that has a fault which hides everything.
    const std::vector<HeaderFault>& header_faults() const { return faults_; }
    bool hides(Loss what) const { return is_lost(faults_, what); }
    // The first of them; null if there is none.
    const char* fault() const { return faults_.empty() ? nullptr : faults_.front().text.c_str(); }
    std::uint64_t file_bytes() const { return file_bytes_; }

    // Pages can be asked for unless they are hidden.
    const Header& header() const override { return header_; }
    ByteOrder byte_order() const override { return header_.byte_order == 4321 ? ByteOrder::big : ByteOrder::little; }
    // Those at the end that lie behind the file are left out.
    std::uint64_t bucket_count() const override;
    std::optional<Bytes> bucket(std::uint32_t number) override { return page(header_.page_of_bucket(number)); }
    std::optional<Bytes> overflow(std::uint32_t address) override { return page(header_.page_of_address(address)); }
    std::optional<Bytes> bitmap(std::uint32_t slot) override { return overflow(header_.bitmap_addrs[slot]); }

private:
    std::optional<Bytes> page(std::uint64_t number);
    void read_header();
    void hide_all(const char* text) { faults_.push_back({0, Loss::pages, text}); }

    std::unique_ptr<std::istream> file_;
    Header header_{};
    std::uint64_t file_bytes_ = 0;
    std::vector<HeaderFault> faults_;
};

}  // namespace gslstore
