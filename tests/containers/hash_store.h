// A hash store as tests and fuzz targets use it: strings in, strings out, and every page looked at by other code than
// the library's.
#pragma once

#include "file_source.h"
#include "verify.h"

#include <orvix/core/open_flags.h>
#include <orvix/core/path.h>
#include <orvix/gsl/hash_careful.h>
#include <orvix/gsl/hash_store.h>
#include <orvix/gsl/hash_table.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orvix::test {

inline DBT text_of(std::string_view text) { return {const_cast<char*>(text.data()), text.size()}; }
inline std::string string_of(const DBT& text) { return {static_cast<const char*>(text.data), text.size}; }

// Flags of hash_open.
inline int read_only() { return core::open_flags().read_only; }
inline int read_write() { return core::open_flags().read_write; }
inline int create_new() {
    const core::OpenFlags flags = core::open_flags();
    return flags.read_write | flags.create | flags.truncate;
}

using Pair = std::pair<std::string, std::string>;

// A store that is closed at the end of its scope.
class Store {
public:
    explicit Store(__db* db) : db_(db) {}
    static Store in_memory(const HASHINFO& info = {}) { return Store(hash_open(nullptr, read_write(), 0, &info)); }
    static Store in_file(const std::string& name, int flags, const HASHINFO& info = {}) {
        return Store(hash_open(name.c_str(), flags, 0644, &info));
    }
    // The same with every pair kept.
    static Store careful(const std::string& name, int flags, const HASHINFO& info = {}) {
        Store store = in_file(name, flags, info);
        gsl::hash_keep_every_pair(store.db(), true);
        return store;
    }

    __db* db() const { return db_.get(); }
    bool is_open() const { return db_ != nullptr; }
    htab* table() const { return static_cast<htab*>(db_->internal); }

    int put(std::string_view key, std::string_view value, std::uint32_t flags = 0) {
        const DBT k = text_of(key);
        const DBT v = text_of(value);
        return db_->put(db(), &k, &v, flags);
    }
    // None if the key is absent, or on failure.
    std::optional<std::string> get(std::string_view key) {
        DBT value;
        return get_result(key, &value) == 0 ? std::optional(string_of(value)) : std::nullopt;
    }
    int get_result(std::string_view key, DBT* value) {
        const DBT k = text_of(key);
        return db_->get(db(), &k, value, 0);
    }
    int del(std::string_view key, std::uint32_t flags = 0) {
        const DBT k = text_of(key);
        return db_->del(db(), &k, flags);
    }
    int sync() { return db_->sync(db(), 0); }
    int close() {
        __db* const db = db_.release();
        return db->close(db);
    }
    // The next pair of the scan, none at its end.
    std::optional<Pair> next(std::uint32_t flags = 0) {
        DBT key;
        DBT value;
        if (db_->seq(db(), &key, &value, flags) != 0) return std::nullopt;
        return Pair(string_of(key), string_of(value));
    }
    // All pairs; a key that comes again is told apart.
    std::map<std::string, std::string> scan() {
        std::map<std::string, std::string> pairs;
        for (auto pair = next(gsl::hash_first); pair; pair = next()) {
            while (pairs.count(pair->first) != 0) pair->first += " (once more)";
            pairs.insert(*pair);
        }
        return pairs;
    }

private:
    struct Close {
        void operator()(__db* db) const { db->close(db); }
    };
    std::unique_ptr<__db, Close> db_;
};

// The pages of an open store, modified ones as they stand in memory.
class OpenStoreSource : public gslstore::PageSource {
public:
    explicit OpenStoreSource(const Store& store) : table_(store.table()) {
        const HashHeader& h = *table_;
        header_ = {398689,
                   2,
                   static_cast<std::uint32_t>(h.byte_order),
                   h.page_size,
                   h.page_shift,
                   h.dir_size,
                   h.seg_size,
                   h.seg_shift,
                   h.spare_point,
                   h.free_hint,
                   h.top_bucket,
                   h.mask_high,
                   h.mask_low,
                   h.fill_factor,
                   h.key_count,
                   h.header_pages,
                   h.check_hash,
                   {},
                   {}};
        std::copy(std::begin(h.spare_counts), std::end(h.spare_counts), header_.spare_counts.begin());
        std::copy(std::begin(h.bitmap_addrs), std::end(h.bitmap_addrs), header_.bitmap_addrs.begin());
    }

    const gslstore::Header& header() const override { return header_; }
    gslstore::ByteOrder byte_order() const override {
        return std::endian::native == std::endian::little ? gslstore::ByteOrder::little : gslstore::ByteOrder::big;
    }
    std::optional<gslstore::Bytes> bucket(std::uint32_t number) override {
        return bytes_of(before_ = __get_buf(table_, number, nullptr, false));
    }
    std::optional<gslstore::Bytes> overflow(std::uint32_t address) override {
        return bytes_of(before_ = __get_buf(table_, address, before_, false));
    }
    std::optional<gslstore::Bytes> bitmap(std::uint32_t slot) override {
        if (table_->bitmap_pages[slot] == nullptr) {
            gslstore::Bytes page(table_->page_size);
            const int result =
                __get_page(table_, reinterpret_cast<char*>(page.data()), table_->bitmap_addrs[slot], false, true, true);
            return result == 0 ? std::optional(page) : std::nullopt;
        }
        const auto* const bytes = reinterpret_cast<const unsigned char*>(table_->bitmap_pages[slot]);
        return gslstore::Bytes(bytes, bytes + table_->page_size);
    }

private:
    std::optional<gslstore::Bytes> bytes_of(const _bufhead* buffer) const {
        if (buffer == nullptr) return std::nullopt;
        const auto* const bytes = reinterpret_cast<const unsigned char*>(buffer->page);
        return gslstore::Bytes(bytes, bytes + table_->page_size);
    }

    htab* table_;
    gslstore::Header header_;
    _bufhead* before_ = nullptr;
};

inline gslstore::Report report_on(const Store& store) {
    OpenStoreSource source(store);
    constexpr std::string_view text = "any text";
    const bool has_default_hash = store.table()->hash(text.data(), text.size()) == gslstore::default_hash(text);
    return verify(&source, has_default_hash ? gslstore::default_hash : nullptr);
}

inline gslstore::Report report_on_file(const std::string& name) {
    gslstore::FileSource source(Path(name).host());
    if (source.fault() != nullptr) {
        gslstore::Report report;
        report.findings.push_back({gslstore::Weight::fault, 0, 0, source.fault()});
        return report;
    }
    return verify(&source, gslstore::has_default_hash(source.header()) ? gslstore::default_hash : nullptr);
}

// The words of a page in memory.
inline std::vector<std::uint32_t> words_of(const _bufhead* buffer, std::size_t count) {
    std::vector<std::uint32_t> words;
    for (std::size_t i = 0; i < count; ++i) {
        std::uint16_t word;
        std::memcpy(&word, buffer->page + 2 * i, sizeof word);
        words.push_back(word);
    }
    return words;
}
using Words = std::vector<std::uint32_t>;

}  // namespace orvix::test
