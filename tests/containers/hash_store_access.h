// Hash stores as tests use them.
#pragma once

#include "containers/hash_store.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <string>

namespace orvix::test {

// Nothing is wrong with any page; pairs may have been lost by the page rules.
inline void expect_sound(const gslstore::Report& report) {
    EXPECT_FALSE(report.has(gslstore::Weight::fault)) << report.text();
}
// Nothing is wrong at all.
inline void expect_faultless(const gslstore::Report& report) { EXPECT_EQ(report.text(), ""); }

// Makes keys of one bucket, each of so many bytes, all different.
class KeysOfBucket {
public:
    KeysOfBucket(const Store& store, std::uint32_t bucket) : table_(store.table()), bucket_(bucket) {}

    std::string next(std::size_t bytes) {
        for (;;) {
            std::string key = std::to_string(counter_++);
            key.insert(0, bytes > key.size() ? bytes - key.size() : 0, '.');
            if (__call_hash(table_, key.data(), key.size()) == bucket_) return key;
        }
    }

private:
    htab* table_;
    std::uint32_t bucket_;
    int counter_ = 0;
};

}  // namespace orvix::test
