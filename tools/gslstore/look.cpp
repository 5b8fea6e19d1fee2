// The commands that read a file without the library's help, whatever state it is in.
#include "chain_reader.h"
#include "commands.h"
#include "file_source.h"
#include "pair_text.h"
#include "streams.h"
#include "verify.h"

#include <algorithm>
#include <cstdio>
#include <memory>

namespace gslstore {

namespace {

// @throw Failure  if there is no such file
std::unique_ptr<FileSource> open(const std::string& name) {
    const orvix::Path path = path_of(name);
    if (path.is_directory()) throw Failure(name + ": " + system_text(EISDIR));
    auto source = std::make_unique<FileSource>(host_path(path));
    if (!source->is_open()) throw Failure(name + ": " + system_text());
    return source;
}

std::string counted(std::uint64_t count, const char* what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

void print_field(const char* name, const std::string& value) {
    std::string line = name;
    line.resize(std::max<std::size_t>(line.size() + 1, 22), ' ');
    print(line + value + "\n");
}
void print_field(const char* name, std::int64_t value) { print_field(name, std::to_string(value)); }

std::string in_hexadecimal(std::uint32_t value) {
    char text[11];
    std::snprintf(text, sizeof text, "0x%08x", value);
    return text;
}

template <class Numbers>
std::string list(const Numbers& numbers, std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) text += (i == 0 ? "" : " ") + std::to_string(numbers[i]);
    return text;
}

void print_header(const Header& h) {
    print_field("magic", in_hexadecimal(h.magic));
    print_field("version", h.version);
    print_field("byte_order", h.byte_order);
    print_field("page_size", h.page_size);
    print_field("page_shift", h.page_shift);
    print_field("dir_size", h.dir_size);
    print_field("seg_size", h.seg_size);
    print_field("seg_shift", h.seg_shift);
    print_field("spare_point", h.spare_point);
    print_field("free_hint", h.free_hint);
    print_field("top_bucket", h.top_bucket);
    print_field("mask_high", in_hexadecimal(h.mask_high));
    print_field("mask_low", in_hexadecimal(h.mask_low));
    print_field("fill_factor", std::to_string(h.fill_factor) + (h.fill_factor == 65536 ? " (not decided yet)" : ""));
    print_field("key_count", h.key_count);
    print_field("header_pages", h.header_pages);
    print_field("check_hash", in_hexadecimal(h.check_hash) + (has_default_hash(h) ? "" : " (not the default hash)"));
}

void print_use(const FileSource& source, const Report& report) {
    const Header& h = source.header();
    print_field("spare_counts", list(h.spare_counts, h.spare_point + std::size_t{1}));
    print_field("bitmap_addrs", list(h.bitmap_addrs, h.bitmap_count()));
    print_field("buckets", static_cast<std::int64_t>(source.bucket_count()));
    print_field("overflow pages", h.overflow_pages());
    print_field("  of bitmaps", h.bitmap_count());
    print_field("  in chains", static_cast<std::int64_t>(report.used_overflow_pages));
    print_field("  free", static_cast<std::int64_t>(h.overflow_pages()) - h.bitmap_count() -
                              static_cast<std::int64_t>(report.used_overflow_pages));
    print_field("longest chain", counted(report.longest_chain + 1, "page"));
    print_field("pairs", static_cast<std::int64_t>(report.pairs));
    print_field("  too big for a page", static_cast<std::int64_t>(report.big_pairs));
    const std::uint64_t room = (source.bucket_count() + report.used_overflow_pages) * h.page_size;
    print_field("bytes of pairs", std::to_string(report.data_bytes) + ", " +
                                      std::to_string(report.data_bytes * 100 / std::max<std::uint64_t>(room, 1)) +
                                      " % of their pages");
}

bool has_faults(const Report& report) { return report.has(Weight::fault) || report.misplaced_pairs != 0; }

void print_report(const FileSource& source, const Report& report) {
    for (const Finding& finding : report.findings) print(text_of(finding) + "\n");
    const bool is_another_hash = !source.hides(Loss::pages) && !has_default_hash(source.header());
    if (is_another_hash) {
        print(
            "remark: page 0, offset 64: the store was made with another hash function; nobody looked whether pairs "
            "stand in their buckets\n");
    }
    print(counted(report.count(Weight::fault), "fault") + ", " +
          counted(report.count(Weight::remark) + (is_another_hash ? 1 : 0), "remark") + ", " +
          counted(report.pairs, "pair") + "\n");
}

}  // namespace

Status print_statistics(const Options& options) {
    const auto source = open(options.store);
    if (source->fault() != nullptr && source->header().magic != store_magic) {
        throw Failure(options.store + ": " + source->fault());
    }
    print_field("file bytes", static_cast<std::int64_t>(source->file_bytes()));
    print_header(source->header());
    const Report report = verify_file(source.get());
    if (!source->hides(Loss::pages)) print_use(*source, report);
    if (!has_faults(report)) return well;
    complain(options.store + ": the file has faults; gslstore verify names them");
    return found_wanting;
}

Status print_faults(const Options& options) {
    const auto source = open(options.store);
    const Report report = verify_file(source.get());
    if (!options.quiet) print_report(*source, report);
    return has_faults(report) ? found_wanting : well;
}

Status dump_pairs(const Options& options) {
    const auto source = open(options.store);
    Status status = well;
    const auto report = [&](std::uint64_t page, std::uint32_t offset, const std::string& text) {
        complain(options.store + ": " + text_of({Weight::fault, page, offset, text}));
        status = found_wanting;
    };
    for (const HeaderFault& fault : source->header_faults()) report(0, fault.offset, fault.text);
    if (source->hides(Loss::pages)) return status;
    ChainReader chains(
        source.get(), Values::read, [](const Pair& pair) { print(line_of_pair(pair.key, pair.value)); }, report);
    const std::uint64_t buckets = source->bucket_count();
    for (std::uint64_t bucket = 0; bucket < buckets; ++bucket) chains.walk(static_cast<std::uint32_t>(bucket));
    return status;
}

}  // namespace gslstore
