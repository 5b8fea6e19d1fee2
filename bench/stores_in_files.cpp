#include "stores.h"

#include "ratio.h"

#include <algorithm>
#include <stdexcept>
#include <vector>

#include <fcntl.h>
#include <gdbm.h>
#include <kchashdb.h>
#include <leveldb/cache.h>
#include <leveldb/db.h>
#include <lmdb.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <tkrzw_dbm_hash.h>

// The header leaves these to its includer.
#include <csignal>
#include <cstdarg>
#include <cstdbool>
extern "C" {
#include <tdb.h>
}

namespace orvix::bench {

namespace {

void require(bool done, const char* what) {
    if (!done) throw std::runtime_error(what);
}

class KyotoHash : public KeyValueStore {
public:
    KyotoHash(const std::string& path, bool is_new, const Purpose& purpose) {
        using Db = kyotocabinet::HashDB;
        if (purpose.count != 0) db_.tune_buckets(static_cast<std::int64_t>(purpose.count) * 2);
        if (purpose.count != 0 && purpose.cache_bytes == 0) db_.tune_map(std::int64_t{1} << 30);
        require(db_.open(path, Db::OWRITER | Db::ONOLOCK | (is_new ? Db::OCREATE | Db::OTRUNCATE : 0U)), "HashDB");
    }
    bool put(std::string_view key, std::string_view value) override {
        return db_.set(key.data(), key.size(), value.data(), value.size());
    }
    std::int64_t get(std::string_view key) override {
        const std::int32_t size = db_.get(key.data(), key.size(), value_.data(), value_.size());
        return size >= 0 ? touch({value_.data(), static_cast<std::size_t>(size)}) : -1;
    }
    bool del(std::string_view key) override { return db_.remove(key.data(), key.size()); }
    std::int64_t scan() override { return 0; }

private:
    kyotocabinet::HashDB db_;
    std::vector<char> value_ = std::vector<char>(std::size_t{1} << 17);
};

class TkrzwHash : public KeyValueStore {
public:
    TkrzwHash(const std::string& path, bool is_new, const Purpose& purpose) {
        tkrzw::HashDBM::TuningParameters tuning;
        if (purpose.count != 0) tuning.num_buckets = static_cast<std::int64_t>(purpose.count) * 2;
        const int options = is_new ? tkrzw::File::OPEN_TRUNCATE : tkrzw::File::OPEN_DEFAULT;
        require(db_.OpenAdvanced(path, true, options | tkrzw::File::OPEN_NO_LOCK, tuning).IsOK(), "HashDBM");
    }
    ~TkrzwHash() override { db_.Close(); }
    bool put(std::string_view key, std::string_view value) override { return db_.Set(key, value).IsOK(); }
    std::int64_t get(std::string_view key) override { return db_.Get(key, &value_).IsOK() ? touch(value_) : -1; }
    bool del(std::string_view key) override { return db_.Remove(key).IsOK(); }
    std::int64_t scan() override { return 0; }

private:
    tkrzw::HashDBM db_;
    std::string value_;
};

class Gdbm : public KeyValueStore {
public:
    Gdbm(const std::string& path, bool is_new, const Purpose& purpose) {
        db_ = gdbm_open(path.c_str(), 0, (is_new ? GDBM_NEWDB : GDBM_WRITER) | GDBM_NOLOCK, 0600, nullptr);
        require(db_ != nullptr, "gdbm_open");
        if (purpose.cache_bytes == 0) return;
        int off = 0;
        gdbm_setopt(db_, GDBM_SETMMAP, &off, sizeof off);
        auto pages = static_cast<int>(std::max<std::size_t>(purpose.cache_bytes / 4096, 10));
        gdbm_setopt(db_, GDBM_SETCACHESIZE, &pages, sizeof pages);
    }
    ~Gdbm() override { gdbm_close(db_); }
    bool put(std::string_view key, std::string_view value) override {
        return gdbm_store(db_, text(key), text(value), GDBM_REPLACE) == 0;
    }
    std::int64_t get(std::string_view key) override {
        const datum value = gdbm_fetch(db_, text(key));
        if (value.dptr == nullptr) return -1;
        const std::int64_t touched = touch({value.dptr, static_cast<std::size_t>(value.dsize)});
        std::free(value.dptr);
        return touched;
    }
    bool del(std::string_view key) override { return gdbm_delete(db_, text(key)) == 0; }
    std::int64_t scan() override { return 0; }

private:
    static datum text(std::string_view bytes) {
        return {const_cast<char*>(bytes.data()), static_cast<int>(bytes.size())};
    }
    GDBM_FILE db_;
};

class Tdb : public KeyValueStore {
public:
    Tdb(const std::string& path, bool is_new, const Purpose& purpose) {
        const int slots = static_cast<int>(purpose.count);
        db_ = tdb_open(path.c_str(), slots, TDB_NOLOCK | TDB_NOSYNC, O_RDWR | (is_new ? O_CREAT | O_TRUNC : 0), 0600);
        require(db_ != nullptr, "tdb_open");
    }
    ~Tdb() override { tdb_close(db_); }
    bool put(std::string_view key, std::string_view value) override {
        return tdb_store(db_, text(key), text(value), TDB_REPLACE) == 0;
    }
    std::int64_t get(std::string_view key) override {
        std::int64_t touched = -1;
        const auto parse = [](TDB_DATA, TDB_DATA value, void* result) {
            *static_cast<std::int64_t*>(result) = touch({reinterpret_cast<const char*>(value.dptr), value.dsize});
            return 0;
        };
        tdb_parse_record(db_, text(key), parse, &touched);
        return touched;
    }
    bool del(std::string_view key) override { return tdb_delete(db_, text(key)) == 0; }
    std::int64_t scan() override { return 0; }

private:
    static TDB_DATA text(std::string_view bytes) {
        return {reinterpret_cast<unsigned char*>(const_cast<char*>(bytes.data())), bytes.size()};
    }
    tdb_context* db_;
};

// Writes in one transaction, which ends when the first reader begins.
class Lmdb : public KeyValueStore {
public:
    Lmdb(const std::string& path, bool is_new, const Purpose&) {
        require(mdb_env_create(&environment_) == 0, "mdb_env_create");
        mdb_env_set_mapsize(environment_, std::size_t{4} << 30);
        require(mdb_env_open(environment_, path.c_str(), MDB_NOSUBDIR | MDB_NOSYNC | MDB_NOLOCK, 0600) == 0, "mdb");
        begin(is_new);
        require(mdb_dbi_open(transaction_, nullptr, is_new ? MDB_CREATE : 0, &db_) == 0, "mdb_dbi_open");
    }
    ~Lmdb() override {
        if (transaction_ != nullptr) mdb_txn_commit(transaction_);
        mdb_env_close(environment_);
    }
    bool put(std::string_view key, std::string_view value) override {
        begin(true);
        MDB_val k = text(key);
        MDB_val v = text(value);
        return mdb_put(transaction_, db_, &k, &v, 0) == 0;
    }
    std::int64_t get(std::string_view key) override {
        begin(false);
        MDB_val k = text(key);
        MDB_val v;
        return mdb_get(transaction_, db_, &k, &v) == 0 ? touch({static_cast<const char*>(v.mv_data), v.mv_size}) : -1;
    }
    bool del(std::string_view key) override {
        begin(true);
        MDB_val k = text(key);
        return mdb_del(transaction_, db_, &k, nullptr) == 0;
    }
    std::int64_t scan() override {
        begin(false);
        MDB_cursor* cursor = nullptr;
        mdb_cursor_open(transaction_, db_, &cursor);
        MDB_val k;
        MDB_val v;
        std::int64_t bytes = 0;
        while (mdb_cursor_get(cursor, &k, &v, MDB_NEXT) == 0) bytes += static_cast<std::int64_t>(k.mv_size + v.mv_size);
        mdb_cursor_close(cursor);
        return bytes;
    }

private:
    void begin(bool writing) {
        if (transaction_ != nullptr && writing_ == writing) return;
        if (transaction_ != nullptr) mdb_txn_commit(transaction_);
        require(mdb_txn_begin(environment_, nullptr, writing ? 0 : MDB_RDONLY, &transaction_) == 0, "mdb_txn_begin");
        writing_ = writing;
    }
    static MDB_val text(std::string_view bytes) { return {bytes.size(), const_cast<char*>(bytes.data())}; }

    MDB_env* environment_ = nullptr;
    MDB_txn* transaction_ = nullptr;
    MDB_dbi db_ = 0;
    bool writing_ = false;
};

class Sqlite : public KeyValueStore {
public:
    Sqlite(const std::string& path, bool is_new, const Purpose& purpose) {
        require(sqlite3_open(path.c_str(), &db_) == SQLITE_OK, "sqlite3_open");
        run("pragma synchronous=off; pragma journal_mode=off; pragma locking_mode=exclusive;");
        const std::size_t kib = purpose.cache_bytes != 0 ? purpose.cache_bytes / 1024 : std::size_t{1} << 20;
        run("pragma cache_size=-" + std::to_string(kib) + ";");
        if (is_new) run("create table pairs (key blob primary key, value blob) without rowid;");
        run("begin;");
        prepare("insert or replace into pairs values (?1, ?2)", &put_);
        prepare("select value from pairs where key = ?1", &get_);
        prepare("delete from pairs where key = ?1", &del_);
    }
    ~Sqlite() override {
        for (sqlite3_stmt* const statement : {put_, get_, del_}) sqlite3_finalize(statement);
        sqlite3_exec(db_, "commit;", nullptr, nullptr, nullptr);
        sqlite3_close(db_);
    }
    bool put(std::string_view key, std::string_view value) override {
        bind(put_, 1, key);
        bind(put_, 2, value);
        return finish(put_);
    }
    std::int64_t get(std::string_view key) override {
        bind(get_, 1, key);
        std::int64_t touched = -1;
        if (sqlite3_step(get_) == SQLITE_ROW) {
            const auto size = static_cast<std::size_t>(sqlite3_column_bytes(get_, 0));
            touched = touch({static_cast<const char*>(sqlite3_column_blob(get_, 0)), size});
        }
        sqlite3_reset(get_);
        return touched;
    }
    bool del(std::string_view key) override {
        bind(del_, 1, key);
        return finish(del_);
    }
    std::int64_t scan() override { return 0; }

private:
    void run(const std::string& text) {
        require(sqlite3_exec(db_, text.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK, text.c_str());
    }
    void prepare(const char* text, sqlite3_stmt** statement) {
        require(sqlite3_prepare_v2(db_, text, -1, statement, nullptr) == SQLITE_OK, text);
    }
    static void bind(sqlite3_stmt* statement, int index, std::string_view bytes) {
        sqlite3_bind_blob(statement, index, bytes.data(), static_cast<int>(bytes.size()), nullptr);
    }
    static bool finish(sqlite3_stmt* statement) {
        const bool done = sqlite3_step(statement) == SQLITE_DONE;
        sqlite3_reset(statement);
        return done;
    }

    sqlite3* db_ = nullptr;
    sqlite3_stmt* put_ = nullptr;
    sqlite3_stmt* get_ = nullptr;
    sqlite3_stmt* del_ = nullptr;
};

class LevelDb : public KeyValueStore {
public:
    LevelDb(const std::string& path, bool is_new, const Purpose&) {
        leveldb::Options options;
        options.create_if_missing = is_new;
        options.compression = leveldb::kNoCompression;
        options.write_buffer_size = std::size_t{64} << 20;
        leveldb::DB* db = nullptr;
        require(leveldb::DB::Open(options, path, &db).ok(), "leveldb");
        db_.reset(db);
    }
    bool put(std::string_view key, std::string_view value) override {
        return db_->Put({}, text(key), text(value)).ok();
    }
    std::int64_t get(std::string_view key) override {
        return db_->Get({}, text(key), &value_).ok() ? touch(value_) : -1;
    }
    bool del(std::string_view key) override { return db_->Delete({}, text(key)).ok(); }
    std::int64_t scan() override { return 0; }

private:
    static leveldb::Slice text(std::string_view bytes) { return {bytes.data(), bytes.size()}; }
    std::unique_ptr<leveldb::DB> db_;
    std::string value_;
};

std::string number(int major, int minor, int patch) {
    return std::to_string(major) + "." + std::to_string(minor) + "." + std::to_string(patch);
}

}  // namespace

Opened open_kyoto_hash(const std::string& path, bool is_new, const Purpose& purpose) {
    return std::make_unique<KyotoHash>(path, is_new, purpose);
}
Opened open_tkrzw_hash(const std::string& path, bool is_new, const Purpose& purpose) {
    return std::make_unique<TkrzwHash>(path, is_new, purpose);
}
Opened open_gdbm(const std::string& path, bool is_new, const Purpose& purpose) {
    return std::make_unique<Gdbm>(path, is_new, purpose);
}
Opened open_tdb(const std::string& path, bool is_new, const Purpose& purpose) {
    return std::make_unique<Tdb>(path, is_new, purpose);
}
Opened open_lmdb(const std::string& path, bool is_new, const Purpose& purpose) {
    return std::make_unique<Lmdb>(path, is_new, purpose);
}
Opened open_sqlite(const std::string& path, bool is_new, const Purpose& purpose) {
    return std::make_unique<Sqlite>(path, is_new, purpose);
}
Opened open_leveldb(const std::string& path, bool is_new, const Purpose& purpose) {
    return std::make_unique<LevelDb>(path, is_new, purpose);
}

bool name_versions() {
    return peer_version("Kyoto", kyotocabinet::VERSION) && peer_version("Stash", kyotocabinet::VERSION) &&
           peer_version("Tiny", tkrzw::PACKAGE_VERSION) && peer_version("tkrzw", tkrzw::PACKAGE_VERSION) &&
           peer_version("GDBM", number(GDBM_VERSION_MAJOR, GDBM_VERSION_MINOR, GDBM_VERSION_PATCH)) &&
           peer_version("LMDB", number(MDB_VERSION_MAJOR, MDB_VERSION_MINOR, MDB_VERSION_PATCH)) &&
           peer_version("SQLite", SQLITE_VERSION) &&
           peer_version("LevelDB", number(leveldb::kMajorVersion, leveldb::kMinorVersion, 0));
}

}  // namespace orvix::bench
