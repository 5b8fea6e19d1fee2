#include "containers/hash/bitmap.h"

#include "containers/hash/page.h"
#include "containers/hash/page_io.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace orvix::gsl::hash {

namespace {

struct Free {
    void operator()(std::uint32_t* bitmap) const { std::free(bitmap); }
};
using OwnedBitmap = std::unique_ptr<std::uint32_t, Free>;

OwnedBitmap allocate_bitmap(const htab* table) {
    OwnedBitmap bitmap(static_cast<std::uint32_t*>(std::malloc(table->page_size)));
    if (bitmap != nullptr) std::memset(bitmap.get(), 0xff, table->page_size);
    return bitmap;
}

}  // namespace

std::uint32_t* fetch_bitmap(htab* table, std::uint32_t slot) {
    if (slot >= static_cast<std::uint32_t>(table->bitmap_count)) {
        errno = EINVAL;
        return nullptr;
    }
    std::uint32_t*& known = table->bitmap_pages[slot];
    if (known != nullptr) return known;
    OwnedBitmap bitmap = allocate_bitmap(table);
    if (bitmap == nullptr) return nullptr;
    char* const page = reinterpret_cast<char*>(bitmap.get());
    if (__get_page(table, page, table->bitmap_addrs[slot], false, true, true) != 0) return nullptr;
    const bool marks_itself = (*bitmap & 1) != 0;
    if (table->fp != -1 && !marks_itself) {
        errno = EINVAL;
        return nullptr;
    }
    return known = bitmap.release();
}

}  // namespace orvix::gsl::hash

using namespace orvix::gsl::hash;

int __ibitmap(htab* table, std::uint32_t address, std::int32_t clear_bits, std::int32_t slot) {
    const auto at = static_cast<std::uint32_t>(slot);
    const auto bits = static_cast<std::uint32_t>(clear_bits);
    if (at >= most_bitmaps || bits == 0 || bits > table->page_size * 8) {
        errno = EINVAL;
        return 1;
    }
    OwnedBitmap bitmap = allocate_bitmap(table);
    if (bitmap == nullptr) return 1;
    const std::uint32_t clear_words = (bits - 1) / bitmap_word_bits + 1;
    std::memset(bitmap.get(), 0, clear_words * sizeof(std::uint32_t));
    bitmap.get()[clear_words - 1] = full_word << bits % bitmap_word_bits;
    *bitmap |= 1;
    ++table->bitmap_count;
    std::free(table->bitmap_pages[at]);
    table->bitmap_addrs[at] = static_cast<std::uint16_t>(address);
    table->bitmap_pages[at] = bitmap.release();
    return 0;
}
