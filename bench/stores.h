// Stores of keys and values under one interface, so that all are measured by the same code. Each is set up as its
// makers advise for bulk work: no synchronisation with the disk, as few transactions as it allows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace orvix::bench {

class KeyValueStore {
public:
    KeyValueStore() = default;
    virtual ~KeyValueStore() = default;  // closes
    KeyValueStore(const KeyValueStore&) = delete;
    KeyValueStore& operator=(const KeyValueStore&) = delete;

    virtual bool put(std::string_view key, std::string_view value) = 0;
    // Gives the value's size plus its first and last byte; -1 if the key is absent.
    virtual std::int64_t get(std::string_view key) = 0;
    virtual bool del(std::string_view key) = 0;
    // Counts the bytes of all keys and values.
    virtual std::int64_t scan() = 0;
};

inline std::int64_t touch(std::string_view value) {
    return static_cast<std::int64_t>(value.size()) + (value.empty() ? 0 : value.front() + value.back());
}

// What a store is to be made for.
struct Purpose {
    std::size_t count = 0;        // expected pairs
    std::size_t cache_bytes = 0;  // 0 for as much as it likes
};

// What hash_open takes beyond that.
struct Tuning {
    std::uint32_t page_size = 0;
    std::uint32_t fill_factor = 0;
    std::uint32_t expected_count = 0;
    std::uint32_t cache_bytes = 0;
};

using Opened = std::unique_ptr<KeyValueStore>;

Opened open_ours(const std::string& path, bool is_new, const Tuning& tuning);  // an empty path for memory
Opened open_unordered_map();
Opened open_flat_hash_map();
Opened open_tkrzw_tiny();
Opened open_kyoto_stash();
Opened open_kyoto_hash(const std::string& path, bool is_new, const Purpose& purpose);
Opened open_tkrzw_hash(const std::string& path, bool is_new, const Purpose& purpose);
Opened open_gdbm(const std::string& path, bool is_new, const Purpose& purpose);
Opened open_tdb(const std::string& path, bool is_new, const Purpose& purpose);
Opened open_lmdb(const std::string& path, bool is_new, const Purpose& purpose);
Opened open_sqlite(const std::string& path, bool is_new, const Purpose& purpose);
Opened open_leveldb(const std::string& path, bool is_new, const Purpose& purpose);

// Names the versions of all peers in the table of ratios.
bool name_versions();

}  // namespace orvix::bench
