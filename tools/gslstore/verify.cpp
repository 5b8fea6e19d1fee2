#include "verify.h"

#include "chain_reader.h"
#include "file_source.h"

#include <algorithm>
#include <unordered_set>

namespace gslstore {

namespace {

class Verifier {
public:
    Verifier(PageSource* source, Hash hash)
        : source_(source),
          header_(source->header()),
          hash_(hash),
          chains_(
              source, Values::measured, [this](const Pair& pair) { take_pair(pair); },
              [this](std::uint64_t page, std::uint32_t offset, std::string text) {
                  note(Weight::fault, page, offset, std::move(text));
              }) {}

    Report run() {
        const std::uint64_t buckets = source_->bucket_count();
        for (std::uint64_t bucket = 0; bucket < buckets; ++bucket) {
            keys_.clear();
            chains_.walk(static_cast<std::uint32_t>(bucket));
        }
        report_.used_overflow_pages = chains_.used_overflow_pages();
        report_.longest_chain = chains_.longest_chain();
        for (std::uint32_t slot = 0; slot < header_.bitmap_count(); ++slot) check_bitmap(slot);
        check_count();
        return std::move(report_);
    }

private:
    void note(Weight weight, std::uint64_t page, std::uint32_t offset, std::string text) {
        report_.findings.push_back({weight, page, offset, std::move(text)});
    }

    void take_pair(const Pair& pair) {
        ++report_.pairs;
        report_.big_pairs += pair.is_big ? 1 : 0;
        report_.data_bytes += pair.key.size() + pair.value_bytes;
        const std::uint32_t bucket = hash_ != nullptr ? header_.bucket_of(hash_(pair.key)) : pair.bucket;
        if (bucket != pair.bucket) {
            ++report_.misplaced_pairs;
            note(Weight::remark, pair.page, pair.offset,
                 "the pair belongs in bucket " + std::to_string(bucket) + ", not in " + std::to_string(pair.bucket) +
                     ", and is not found");
        } else if (!keys_.emplace(pair.key).second) {
            note(Weight::fault, pair.page, pair.offset, "the key stands in the store twice");
        }
    }

    void check_bitmap(std::uint32_t slot) {
        const std::uint32_t address = header_.bitmap_addrs[slot];
        if (!header_.is_allocated(address)) return;  // a fault of the header
        const std::uint64_t page = header_.page_of_address(address);
        if (header_.overflow_number(address) != slot * header_.bitmap_bits()) {
            note(Weight::fault, page, 0,
                 "overflow bitmap " + std::to_string(slot) + " is not the first page it tells of");
        }
        if (const std::optional<Bytes> bitmap = source_->bitmap(slot)) {
            for (std::uint32_t i = 0; i < header_.bitmap_bits(); ++i) {
                if (!check_bit(page, slot, i, bit(*bitmap, source_->byte_order(), i))) return;
            }
        } else {
            note(Weight::fault, page, 0, "the file does not have the page of overflow bitmap " + std::to_string(slot));
        }
    }

    // False if nothing else need be said of the bitmap.
    bool check_bit(std::uint64_t page, std::uint32_t slot, std::uint32_t i, bool is_marked) {
        const std::uint32_t number = slot * header_.bitmap_bits() + i;
        const std::uint32_t offset = byte_of_bit(source_->byte_order(), i);
        if (number >= header_.overflow_pages()) {
            if (!is_marked) note(Weight::fault, page, offset, "a page that was never allocated is marked as free");
            return is_marked;
        }
        const std::string what = "overflow page " + std::to_string(number);
        const bool is_used = i == 0 || chains_.is_used(number);
        if (is_used && !is_marked) {
            note(Weight::fault, page, offset, what + " is in use and marked as free");
        } else if (!is_used && is_marked) {
            note(Weight::fault, page, offset, what + " is marked as used and in no chain");
        } else if (!is_marked && number / 32 < header_.free_hint / 32) {
            note(Weight::fault, page, offset, what + " is free and the header's hint lies behind it");
        }
        return true;
    }

    void check_count() {
        const auto pairs = static_cast<std::int64_t>(report_.pairs);
        if (header_.key_count == pairs) return;
        constexpr std::uint32_t offset_of_count = 56;
        const bool is_too_few = header_.key_count < pairs;
        note(is_too_few ? Weight::remark : Weight::fault, 0, offset_of_count,
             "the header counts " + std::to_string(header_.key_count) + " of " + std::to_string(pairs) + " pairs");
    }

    PageSource* source_;
    const Header header_;
    Hash hash_;
    ChainReader chains_;
    Report report_;
    std::unordered_set<std::string> keys_;  // of the bucket
};

}  // namespace

bool Report::has(Weight weight) const { return count(weight) != 0; }

std::uint64_t Report::count(Weight weight) const {
    const auto is_such = [=](const Finding& finding) { return finding.weight == weight; };
    return static_cast<std::uint64_t>(std::count_if(findings.begin(), findings.end(), is_such));
}

std::string Report::text() const {
    std::string text;
    for (const Finding& finding : findings) text += text_of(finding) + "\n";
    return text;
}

std::string text_of(const Finding& finding) {
    return (finding.weight == Weight::fault ? "fault: page " : "remark: page ") + std::to_string(finding.page) +
           ", offset " + std::to_string(finding.offset) + ": " + finding.text;
}

Report verify(PageSource* source, Hash hash) { return Verifier(source, hash).run(); }

Report verify_file(FileSource* source) {
    Report report;
    if (!source->hides(Loss::pages)) {
        const bool knows_buckets = has_default_hash(source->header()) && !source->hides(Loss::buckets_of_keys);
        report = verify(source, knows_buckets ? default_hash : nullptr);
    }
    std::vector<Finding> of_file;
    for (const HeaderFault& fault : source->header_faults()) {
        of_file.push_back({Weight::fault, 0, fault.offset, fault.text});
    }
    const std::uint64_t rest = source->hides(Loss::pages) ? 0 : source->file_bytes() % source->header().page_size;
    if (rest != 0) {
        of_file.push_back({Weight::fault, source->file_bytes() / source->header().page_size,
                           static_cast<std::uint32_t>(rest), "the file ends within the page"});
    }
    report.findings.insert(report.findings.begin(), of_file.begin(), of_file.end());
    return report;
}

}  // namespace gslstore
