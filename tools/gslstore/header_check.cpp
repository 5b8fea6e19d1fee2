#include "header_check.h"

#include <algorithm>

namespace gslstore {

namespace {

constexpr std::uint32_t offset_of_counts = 68;
constexpr std::uint32_t offset_of_addresses = 196;

bool is_power_of_two(std::uint32_t value) { return value != 0 && (value & (value - 1)) == 0; }
bool is_logarithm(std::uint32_t shift, std::uint32_t value) { return shift < 32 && value == std::uint32_t{1} << shift; }
std::string number(std::uint64_t value) { return std::to_string(value); }

class HeaderCheck {
public:
    explicit HeaderCheck(const Header& header) : h_(header) {}

    std::vector<HeaderFault> run(std::uint64_t file_bytes) {
        if (h_.magic != store_magic) {
            note(0, Loss::pages, "the file is no hash store");
            return std::move(faults_);
        }
        check_sizes();
        check_buckets();
        check_counts();
        if (!is_lost(faults_, Loss::pages)) {
            check_overflow();
            check_file(file_bytes);
        }
        return std::move(faults_);
    }

private:
    void note(std::uint32_t offset, Loss loss, std::string text) { faults_.push_back({offset, loss, std::move(text)}); }

    void check_sizes() {
        if (h_.version != 1 && h_.version != 2) {
            note(4, Loss::nothing, "the version is " + number(h_.version) + ", neither 1 nor 2");
        }
        if (h_.byte_order != 1234 && h_.byte_order != 4321) {
            note(8, Loss::pages, "the byte order is " + number(h_.byte_order) + ", neither 1234 nor 4321");
        }
        if (!is_power_of_two(h_.page_size) || h_.page_size < least_page_bytes || h_.page_size > most_page_bytes) {
            note(12, Loss::pages,
                 "the page size is " + number(h_.page_size) + ", which is no power of two from 64 to 65536");
        } else {
            if (!is_logarithm(h_.page_shift, h_.page_size)) {
                note(16, Loss::nothing, number(h_.page_shift) + " is not the logarithm of the page size");
            }
            const std::uint32_t header_pages = (reserved_header_bytes - 1) / h_.page_size + 1;
            if (h_.header_pages != header_pages) {
                note(60, Loss::pages,
                     "the header takes " + number(h_.header_pages) + " pages instead of " + number(header_pages));
            }
        }
        if (!is_power_of_two(h_.seg_size) || h_.seg_size > most_segment_size) {
            note(24, Loss::nothing,
                 "the segment size is " + number(h_.seg_size) + ", which is no power of two up to 65536");
        } else if (!is_logarithm(h_.seg_shift, h_.seg_size)) {
            note(28, Loss::nothing, number(h_.seg_shift) + " is not the logarithm of the segment size");
        }
    }

    void check_buckets() {
        if (!is_power_of_two(h_.mask_low + 1) || h_.mask_low == 0 || h_.mask_low > 0x3fffffff) {
            note(48, Loss::buckets_of_keys, "the low mask is " + number(h_.mask_low) + ", which masks no low bits");
        } else if (h_.mask_high != 2 * h_.mask_low + 1) {
            note(44, Loss::buckets_of_keys,
                 "the high mask is " + number(h_.mask_high) + " instead of " + number(2 * h_.mask_low + 1));
        } else if (h_.top_bucket < h_.mask_low || h_.top_bucket > h_.mask_high) {
            note(40, Loss::buckets_of_keys,
                 "the last bucket is " + number(h_.top_bucket) + ", not one from " + number(h_.mask_low) + " to " +
                     number(h_.mask_high));
        }
        if (h_.seg_size != 0 && h_.top_bucket / h_.seg_size >= h_.dir_size) {
            note(20, Loss::nothing, "the directory has no room for " + number(h_.top_bucket) + " buckets");
        }
        if (h_.fill_factor == 0) note(52, Loss::nothing, "the fill factor is 0");
    }

    void check_counts() {
        if (h_.spare_point >= most_split_points) {
            return note(32, Loss::pages, "there is no split point " + number(h_.spare_point));
        }
        if (h_.spare_point < split_of_bucket(h_.top_bucket)) {
            note(32, Loss::pages,
                 "the split point is " + number(h_.spare_point) + ", which has no bucket " + number(h_.top_bucket));
        }
        std::uint32_t before = 0;
        for (std::uint32_t split = 0; split <= h_.spare_point; ++split) {
            const std::uint32_t count = h_.spare_counts[split];
            const std::uint32_t offset = offset_of_counts + 4 * split;
            if (count < before) {
                note(offset, Loss::pages, "the number of overflow pages falls to " + number(count));
            } else if (count - before > pages_of_split) {
                note(offset, Loss::pages,
                     "split point " + number(split) + " has " + number(count - before) +
                         " overflow pages, more than 2047");
            }
            before = count;
        }
    }

    void check_overflow() {
        const std::uint32_t offset_of_total = offset_of_counts + 4 * h_.spare_point;
        if (h_.overflow_pages() == 0) note(offset_of_total, Loss::nothing, "there is no page for an overflow bitmap");
        if (h_.wanted_bitmaps() > most_bitmaps) {
            note(offset_of_total, Loss::nothing,
                 number(h_.overflow_pages()) + " overflow pages are more than 32 bitmaps can tell of");
        }
        if (h_.free_hint > h_.overflow_pages()) {
            note(36, Loss::nothing, "the hint to a free overflow page lies behind all of them");
        }
        for (std::uint32_t slot = 0; slot < h_.bitmap_count(); ++slot) {
            if (!h_.is_allocated(h_.bitmap_addrs[slot])) {
                note(offset_of_addresses + 2 * slot, Loss::nothing,
                     "the page of overflow bitmap " + number(slot) + " was never allocated");
            }
        }
    }

    void check_file(std::uint64_t file_bytes) {
        const std::uint64_t end = (h_.page_of_bucket(h_.top_bucket) + 1) * h_.page_size;
        if (end > file_limit) {
            note(40, Loss::nothing, "bucket " + number(h_.top_bucket) + " would lie beyond 4 GiB");
        } else if (end > file_bytes) {
            note(40, Loss::nothing, "the file ends before bucket " + number(h_.top_bucket));
        }
    }

    const Header& h_;
    std::vector<HeaderFault> faults_;
};

}  // namespace

std::vector<HeaderFault> faults_of(const Header& header, std::uint64_t file_bytes) {
    return HeaderCheck(header).run(file_bytes);
}

bool is_lost(const std::vector<HeaderFault>& faults, Loss what) {
    return std::any_of(faults.begin(), faults.end(), [=](const HeaderFault& fault) { return fault.loss >= what; });
}

}  // namespace gslstore
