#include "containers/hash/page_io.h"

#include "containers/hash/byte_order.h"

#include <orvix/core/descriptors.h>
#include <orvix/core/files.h>
#include <orvix/gsl/temporary_names.h>

#include <cerrno>

namespace orvix::gsl::hash {

namespace {

// Stores in memory share the name of their files. It is filled in once: no two of them bear it at the same time, since
// each is unlinked as soon as it is open.
constinit char temporary_name[] = "_hashXXXXXX";

bool open_temporary(htab* table) {
    table->fp = mkstemp(temporary_name);
    if (table->fp == -1) return false;
    unlink_utf8(temporary_name);
    return true;
}

bool fail_damaged() {
    errno = EINVAL;
    return false;
}

void swap_to_file(const htab* table, char* page, PageKind kind) {
    if (kind == PageKind::bitmap) {
        swap_bitmap(page, table->page_size);
    } else {
        swap_out(Page(page, table->page_size));
    }
}

bool swap_from_file(const htab* table, char* page, PageKind kind) {
    if (kind != PageKind::bitmap) return swap_in(Page(page, table->page_size));
    swap_bitmap(page, table->page_size);
    return true;
}

bool write_as_it_stands(htab* table, const char* page, std::uint32_t address, PageKind kind) {
    if (table->fp == -1 && !open_temporary(table)) return false;
    const std::int64_t offset = offset_of(table, address, kind);
    if (offset == -1) return false;
    const std::ptrdiff_t done = core::write_at(table->fp, page, table->page_size, static_cast<std::uint64_t>(offset));
    if (done == -1) return false;
    return done == static_cast<std::ptrdiff_t>(table->page_size) || fail_damaged();
}

PageKind kind_of(bool is_bucket, bool is_bitmap) {
    if (is_bitmap) return PageKind::bitmap;
    return is_bucket ? PageKind::bucket : PageKind::overflow;
}

}  // namespace

std::int64_t offset_of(const htab* table, std::uint32_t address, PageKind kind) {
    if (kind != PageKind::bucket && !is_allocated(*table, address)) {
        errno = EINVAL;
        return -1;
    }
    const std::uint64_t page =
        kind == PageKind::bucket ? page_of_bucket(*table, address) : page_of_address(*table, address);
    if (!lies_in_file(*table, page)) {
        errno = EFBIG;
        return -1;
    }
    return static_cast<std::int64_t>(page << table->page_shift);
}

bool read_page(htab* table, char* bytes, std::uint32_t address, PageKind kind) {
    const std::int64_t offset = offset_of(table, address, kind);
    if (offset == -1) return false;
    const std::ptrdiff_t done = core::read_at(table->fp, bytes, table->page_size, static_cast<std::uint64_t>(offset));
    if (done == -1) return false;
    Page page(bytes, table->page_size);
    if (done == 0) page.set_word(0, 0);
    if (done != 0 && done != static_cast<std::ptrdiff_t>(table->page_size)) return fail_damaged();
    if (kind != PageKind::bitmap && page.is_empty()) {
        page.make_fresh();
        return true;
    }
    if (is_swapped(*table) && !swap_from_file(table, bytes, kind)) return fail_damaged();
    return kind == PageKind::bitmap || is_sound(*table, page, kind == PageKind::bucket) || fail_damaged();
}

bool write_page(htab* table, char* page, std::uint32_t address, PageKind kind) {
    if (!is_swapped(*table)) return write_as_it_stands(table, page, address, kind);
    swap_to_file(table, page, kind);
    const bool written = write_as_it_stands(table, page, address, kind);
    swap_from_file(table, page, kind);
    return written;
}

}  // namespace orvix::gsl::hash

using namespace orvix::gsl::hash;

int __get_page(htab* table, char* page, std::uint32_t address, bool is_bucket, bool is_disk, bool is_bitmap) {
    if (table->fp == -1 || !is_disk) {
        Page(page, table->page_size).make_fresh();
        return 0;
    }
    return read_page(table, page, address, kind_of(is_bucket, is_bitmap)) ? 0 : -1;
}

int __put_page(htab* table, char* page, std::uint32_t address, bool is_bucket, bool is_bitmap) {
    const PageKind kind = kind_of(is_bucket, is_bitmap);
    if (table->fp == -1 && !open_temporary(table)) return -1;
    if (is_swapped(*table)) swap_to_file(table, page, kind);
    return write_as_it_stands(table, page, address, kind) ? 0 : -1;
}
