// A store beside a map. With every pair kept both must agree after each step. By the page rules to the letter two
// losses are allowed, which the map's side knows: a squeezed pair may be gone at any later time, and a pair that was
// put one byte off stands in the store under a key with one byte more. Keys of a test must not be another key and one
// byte.
#pragma once

#include "containers/hash_store.h"

#include <cerrno>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <utility>

namespace orvix::test {

enum class Keeps : std::uint8_t { every_pair, what_the_rules_keep };

class HashStorePair {
public:
    // A store in a file if `name` is not empty, else in memory.
    HashStorePair(std::string name, const HASHINFO& info, Keeps keeps)
        : name_(std::move(name)), info_(info), keeps_(keeps), store_(open(true)) {}

    // What went wrong first; empty if nothing did.
    const std::string& fault() const { return fault_; }
    Store& store() { return store_; }
    std::size_t size() const { return pairs_.size(); }

    void put(const std::string& key, const std::string& value) {
        look_for(key);
        const bool was_there = pairs_.count(key) != 0;
        const std::int32_t before = store_.table()->key_count;
        errno = 0;
        const int result = store_.put(key, value);
        if (result != 0) return adopt_after_failure("put", key, value);
        const std::int32_t counted = store_.table()->key_count - before;
        const std::int32_t expected = was_there ? 0 : 1;
        const bool is_squeezed = counted == expected - 1;
        if (counted != expected && (!is_squeezed || keeps_ == Keeps::every_pair)) {
            return fail("put counts " + std::to_string(counted));
        }
        const std::optional<std::string> found = store_.get(key);
        if (!found && keeps_ == Keeps::what_the_rules_keep && stands_one_byte_off(key, value)) {
            pairs_.erase(key);
            one_byte_off_.insert(key);
            return;
        }
        if (found != value) return fail("put is not found again");
        pairs_[key] = {value, is_squeezed};
    }

    void put_new(const std::string& key, const std::string& value) {
        look_for(key);
        if (pairs_.count(key) == 0) return put(key, value);
        if (store_.put(key, value, gsl::hash_keep_existing) != 1) fail("put does not tell that the key is there");
    }

    void del(const std::string& key) {
        look_for(key);
        const int expected = pairs_.erase(key) != 0 ? 0 : 1;
        if (store_.del(key) != expected) fail("del");
        if (store_.get(key)) fail("a key is there behind its removal");
    }

    void look_for(const std::string& key) {
        errno = 0;
        DBT value;
        const int result = store_.get_result(key, &value);
        if (result == -1) return fail("get gives errno " + std::to_string(errno));
        const auto known = pairs_.find(key);
        if (known == pairs_.end()) {
            if (result == 0) fail("a key is there that was never put");
        } else if (result == 0) {
            if (string_of(value) != known->second.value) fail("get gives another value");
        } else if (known->second.may_be_gone) {
            pairs_.erase(known);
        } else {
            fail("a key is gone");
        }
    }

    void scan() {
        std::set<std::string> seen;
        DBT key;
        DBT value;
        int result = store_.db()->seq(store_.db(), &key, &value, gsl::hash_first);
        for (; result == 0; result = store_.db()->seq(store_.db(), &key, &value, gsl::hash_next)) {
            const std::string name = string_of(key);
            const auto known = pairs_.find(name);
            if (known != pairs_.end()) {
                if (known->second.value != string_of(value)) return fail("seq gives another value");
                if (!seen.insert(name).second) return fail("seq gives a pair twice");
            } else if (!is_one_byte_off(name)) {
                return fail("seq gives a key that was never put");
            }
        }
        if (result != 1) return fail("seq gives errno " + std::to_string(errno));
        for (auto pair = pairs_.begin(); pair != pairs_.end();) {
            const bool is_missing = seen.count(pair->first) == 0;
            if (is_missing && !pair->second.may_be_gone) return fail("seq leaves a pair out");
            pair = is_missing ? pairs_.erase(pair) : std::next(pair);
        }
    }

    void sync() {
        if (store_.sync() != 0) fail("sync gives errno " + std::to_string(errno));
    }

    void reopen() {
        if (name_.empty()) return;
        if (store_.close() != 0) fail("close gives errno " + std::to_string(errno));
        check(report_on_file(name_));
        store_ = open(false);
    }

    // All pages of the store as it stands.
    void verify() { check(report_on(store_)); }

private:
    struct Known {
        std::string value;
        bool may_be_gone;
    };

    Store open(bool is_new) {
        HASHINFO info = info_;
        Store store =
            name_.empty() ? Store::in_memory(info) : Store::in_file(name_, is_new ? create_new() : read_write(), info);
        if (!store.is_open()) {
            fail("open gives errno " + std::to_string(errno));
            store = Store::in_memory();
        }
        gsl::hash_keep_every_pair(store.db(), keeps_ == Keeps::every_pair);
        return store;
    }

    void fail(const std::string& what) {
        if (fault_.empty()) fault_ = what;
    }

    void check(const gslstore::Report& report) {
        const bool is_good =
            keeps_ == Keeps::every_pair ? report.findings.empty() : !report.has(gslstore::Weight::fault);
        if (!is_good) fail(report.text());
    }

    // A store that is full tells so; whether the new pair is there after all does not matter.
    void adopt_after_failure(const std::string& what, const std::string& key, const std::string& value) {
        if (errno != ENOSPC && errno != EFBIG) return fail(what + " gives errno " + std::to_string(errno));
        const std::optional<std::string> found = store_.get(key);
        if (!found) {
            pairs_.erase(key);
        } else if (found == value) {
            pairs_[key] = {value, false};
        } else {
            fail(what + " leaves another value when it fails");
        }
    }

    bool is_one_byte_off(const std::string& key) const {
        return !key.empty() && one_byte_off_.count(key.substr(0, key.size() - 1)) != 0;
    }

    // Looks along the chain first: a squeezed pair may be gone by the end of a scan. A pair that is not squeezed may
    // have been moved by the growth of the table.
    bool stands_one_byte_off(const std::string& key, const std::string& value) {
        const auto is_it = [&](std::string_view name) {
            return name.size() == key.size() + 1 && name.starts_with(key);
        };
        htab* const table = store_.table();
        _bufhead* const first = __get_buf(table, __call_hash(table, key.data(), key.size()), nullptr, false);
        first->flags |= BUFFER_PINNED;
        bool found = false;
        for (_bufhead* page = first; page != nullptr && !found;) {
            const Words words = words_of(page, table->page_size / 2);
            const bool has_pair = words[0] >= 2 && words[2] >= MARK_PAIR_MIN;
            found = has_pair && is_it({page->page + words[1], table->page_size - words[1]});
            const bool has_link =
                words[0] >= 2 && (words[words[0]] == MARK_OVERFLOW || (words[0] > 2 && words[2] < MARK_PAIR_MIN));
            page = has_link ? __get_buf(table, words[words[0] - 1], page, false) : nullptr;
        }
        first->flags = static_cast<std::uint8_t>(first->flags & ~BUFFER_PINNED);
        for (auto pair = store_.next(gsl::hash_first); pair && !found; pair = store_.next()) {
            found = pair->second == value && is_it(pair->first);
        }
        return found;
    }

    std::string name_;
    HASHINFO info_;
    Keeps keeps_;
    std::string fault_;
    Store store_;
    std::map<std::string, Known> pairs_;
    std::set<std::string> one_byte_off_;
};

}  // namespace orvix::test
