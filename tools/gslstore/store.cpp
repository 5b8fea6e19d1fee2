#include "store.h"

#include "failure.h"
#include "file_source.h"
#include "streams.h"

#include <orvix/core/open_flags.h>
#include <orvix/gsl/hash_careful.h>

#include <algorithm>

namespace gslstore {

namespace {

constexpr std::uint32_t cache_bytes = std::uint32_t{64} << 20;
constexpr std::size_t most_bytes = 2147483647;  // of a key or a value
constexpr int mode_of_new_files = 0666;         // less what the user's mask takes away

// The library's texts are not changed by what it only reads.
DBT text_of(std::string_view text) { return {const_cast<char*>(text.data()), text.size()}; }

std::string reason_of_refusal(const std::string& name, int error) {
    if (error != EINVAL) return system_text(error);
    const FileSource source(host_path(path_of(name)));
    if (!source.is_open()) return system_text(error);
    if (source.fault() != nullptr) return source.fault();
    if (!has_default_hash(source.header())) return "the store was made with another hash function";
    return "the store is damaged";
}

}  // namespace

Store::Store(const std::string& name, int flags, const Creation& creation) : name_(name) {
    const HASHINFO info{creation.page_size, creation.fill_factor, creation.expected_count, cache_bytes, nullptr,
                        creation.byte_order};
    db_.reset(hash_open(path_of(name).string().c_str(), flags, mode_of_new_files, &info));
    if (db_ == nullptr) throw Failure(name_ + ": " + reason_of_refusal(name, errno));
    orvix::gsl::hash_keep_every_pair(db_.get(), true);
}

Store Store::open_to_read(const std::string& name) { return {name, orvix::core::open_flags().read_only, {}}; }

Store Store::open_to_change(const std::string& name) { return {name, orvix::core::open_flags().read_write, {}}; }

Store Store::open_or_make(const std::string& name, const Creation& creation) {
    const orvix::core::OpenFlags flags = orvix::core::open_flags();
    return {name, flags.read_write | flags.create, creation};
}

Store Store::make(const std::string& name, const Creation& creation) {
    const orvix::core::OpenFlags flags = orvix::core::open_flags();
    return {name, flags.read_write | flags.create | flags.truncate, creation};
}

bool Store::done(int result) const {
    if (result != -1) return result == 0;
    throw Failure(name_ + ": " + (errno == EINVAL ? "the store is damaged" : system_text()));
}

std::optional<std::string_view> Store::get(std::string_view key) {
    const DBT wanted = text_of(key);
    DBT value;
    if (!done(db_->get(db_.get(), &wanted, &value, 0))) return std::nullopt;
    return std::string_view(static_cast<const char*>(value.data), value.size);
}

bool Store::put(std::string_view key, std::string_view value, bool keep_existing) {
    if (std::max(key.size(), value.size()) > most_bytes) {
        throw Failure(name_ + ": a key or a value has at most 2147483647 bytes");
    }
    const DBT stored_key = text_of(key);
    const DBT stored_value = text_of(value);
    const std::uint32_t flags = keep_existing ? orvix::gsl::hash_keep_existing : 0U;
    return done(db_->put(db_.get(), &stored_key, &stored_value, flags));
}

bool Store::remove(std::string_view key) {
    const DBT removed = text_of(key);
    return done(db_->del(db_.get(), &removed, 0));
}

void Store::close() {
    __db* const db = db_.release();
    done(db->close(db));
}

}  // namespace gslstore
