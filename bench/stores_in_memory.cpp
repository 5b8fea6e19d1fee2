#include "stores.h"

#include <orvix/core/open_flags.h>
#include <orvix/gsl/hash_store.h>

#include <stdexcept>
#include <unordered_map>

#include <absl/container/flat_hash_map.h>
#include <kcstashdb.h>
#include <tkrzw_dbm_tiny.h>

namespace orvix::bench {

namespace {

class Ours : public KeyValueStore {
public:
    Ours(const std::string& path, bool is_new, const Tuning& tuning) {
        const core::OpenFlags flags = core::open_flags();
        HASHINFO info{};
        info.page_size = tuning.page_size;
        info.fill_factor = tuning.fill_factor;
        info.expected_count = tuning.expected_count;
        info.cache_bytes = tuning.cache_bytes;
        db_ = hash_open(path.empty() ? nullptr : path.c_str(),
                        flags.read_write | (is_new ? flags.create | flags.truncate : 0), 0600, &info);
        if (db_ == nullptr) throw std::runtime_error("hash_open");
    }
    ~Ours() override { db_->close(db_); }

    bool put(std::string_view key, std::string_view value) override {
        const DBT k = text(key);
        const DBT v = text(value);
        return db_->put(db_, &k, &v, 0) == 0;
    }
    std::int64_t get(std::string_view key) override {
        const DBT k = text(key);
        DBT v;
        return db_->get(db_, &k, &v, 0) == 0 ? touch({static_cast<const char*>(v.data), v.size}) : -1;
    }
    bool del(std::string_view key) override {
        const DBT k = text(key);
        return db_->del(db_, &k, 0) == 0;
    }
    std::int64_t scan() override {
        std::int64_t bytes = 0;
        DBT k;
        DBT v;
        for (int r = db_->seq(db_, &k, &v, gsl::hash_first); r == 0; r = db_->seq(db_, &k, &v, gsl::hash_next)) {
            bytes += static_cast<std::int64_t>(k.size + v.size);
        }
        return bytes;
    }

private:
    static DBT text(std::string_view bytes) { return {const_cast<char*>(bytes.data()), bytes.size()}; }
    __db* db_;
};

// Both maps of the standard library's interface.
template <class Map>
class OfMap : public KeyValueStore {
public:
    bool put(std::string_view key, std::string_view value) override {
        map_.insert_or_assign(std::string(key), std::string(value));
        return true;
    }
    std::int64_t get(std::string_view key) override {
        key_.assign(key);
        const auto found = map_.find(key_);
        return found != map_.end() ? touch(found->second) : -1;
    }
    bool del(std::string_view key) override { return map_.erase(std::string(key)) != 0; }
    std::int64_t scan() override {
        std::int64_t bytes = 0;
        for (const auto& [key, value] : map_) bytes += static_cast<std::int64_t>(key.size() + value.size());
        return bytes;
    }

private:
    Map map_;
    std::string key_;
};

class TkrzwTiny : public KeyValueStore {
public:
    bool put(std::string_view key, std::string_view value) override { return db_.Set(key, value).IsOK(); }
    std::int64_t get(std::string_view key) override { return db_.Get(key, &value_).IsOK() ? touch(value_) : -1; }
    bool del(std::string_view key) override { return db_.Remove(key).IsOK(); }
    std::int64_t scan() override {
        std::int64_t bytes = 0;
        auto iterator = db_.MakeIterator();
        std::string key;
        for (iterator->First(); iterator->Get(&key, &value_).IsOK(); iterator->Next()) {
            bytes += static_cast<std::int64_t>(key.size() + value_.size());
        }
        return bytes;
    }

private:
    tkrzw::TinyDBM db_;
    std::string value_;
};

class KyotoStash : public KeyValueStore {
public:
    KyotoStash() {
        if (!db_.open("*", kyotocabinet::StashDB::OWRITER | kyotocabinet::StashDB::OCREATE)) {
            throw std::runtime_error("StashDB");
        }
    }
    bool put(std::string_view key, std::string_view value) override {
        return db_.set(key.data(), key.size(), value.data(), value.size());
    }
    std::int64_t get(std::string_view key) override {
        const std::int32_t size = db_.get(key.data(), key.size(), value_, sizeof value_);
        return size >= 0 ? touch({value_, static_cast<std::size_t>(size)}) : -1;
    }
    bool del(std::string_view key) override { return db_.remove(key.data(), key.size()); }
    std::int64_t scan() override { return 0; }

private:
    kyotocabinet::StashDB db_;
    char value_[1024];
};

}  // namespace

Opened open_ours(const std::string& path, bool is_new, const Tuning& tuning) {
    return std::make_unique<Ours>(path, is_new, tuning);
}
Opened open_unordered_map() { return std::make_unique<OfMap<std::unordered_map<std::string, std::string>>>(); }
Opened open_flat_hash_map() { return std::make_unique<OfMap<absl::flat_hash_map<std::string, std::string>>>(); }
Opened open_tkrzw_tiny() { return std::make_unique<TkrzwTiny>(); }
Opened open_kyoto_stash() { return std::make_unique<KyotoStash>(); }

}  // namespace orvix::bench
