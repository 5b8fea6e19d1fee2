// Any bytes as a hash store: it opens or is refused, is read and changed, and nothing takes longer than its pages
// allow. What is refused or only read stays as it is, and what was closed opens again. The first byte chooses how the
// store is opened and the second one seeds what is done to it. The file follows; or if the first byte asks for it,
// changes to words of a sound file, four bytes each.
#include "empty_place.h"

#include <orvix/core/open_flags.h>
#include <orvix/gsl/hash_careful.h>
#include <orvix/gsl/hash_store.h>
#include <orvix/gsl/hash_table.h>

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace {

using orvix::fuzz::expect;

constexpr const char* file = "store";
constexpr std::size_t most_file_bytes = 16384;

DBT text_of(std::string_view text) { return {const_cast<char*>(text.data()), text.size()}; }

bool is_result(int result) { return result == 0 || result == 1 || (result == -1 && errno != 0); }

// Each bucket may lead through every page of the file, and each page holds a pair for four of its bytes.
std::size_t most_steps(std::size_t file_bytes) {
    const std::size_t pages = file_bytes / 64 + 2;
    return pages * pages * 32;
}

std::vector<std::string> scan(__db* db, std::size_t file_bytes) {
    std::vector<std::string> keys;
    DBT key;
    DBT value;
    std::size_t steps = 0;
    std::string copy;  // reads all bytes
    int result = db->seq(db, &key, &value, orvix::gsl::hash_first);
    for (; result != 1; result = db->seq(db, &key, &value, orvix::gsl::hash_next)) {
        expect(is_result(result));
        expect(++steps < most_steps(file_bytes));
        if (result != 0) continue;
        copy.assign(static_cast<const char*>(value.data), value.size);
        if (keys.size() < 50) keys.emplace_back(static_cast<const char*>(key.data), key.size);
    }
    return keys;
}

// A sound file of small pages, of several kinds.
std::string make_sound(std::uint32_t kind) {
    const orvix::core::OpenFlags flags = orvix::core::open_flags();
    HASHINFO info{};
    info.page_size = 64;
    info.fill_factor = (kind & 1) != 0 ? 1000 : 3;
    info.byte_order = (kind & 2) != 0 ? 4321 : 1234;
    __db* const db = hash_open(file, flags.read_write | flags.create | flags.truncate, 0600, &info);
    expect(db != nullptr);
    for (std::size_t i = 0; i < 24; ++i) {
        const std::string key = std::string(i % 7 == 6 ? 90 : 1, 'k') + std::to_string(i);
        const std::string value(i % 5 == 4 ? 40 * i % 300 : i, 'v');
        const DBT k = text_of(key);
        const DBT v = text_of(value);
        expect(db->put(db, &k, &v, 0) == 0);
        if (i % 8 == 7) expect(db->del(db, &k, 0) == 0);
    }
    expect(db->close(db) == 0);
    return orvix::fuzz::read_file(file);
}

std::string damaged(std::uint32_t kind, std::string_view changes) {
    static const std::string sound[] = {make_sound(0), make_sound(1), make_sound(2), make_sound(3)};
    std::string bytes = sound[kind % 4];
    const std::size_t pages = bytes.size() / 64 - 8;  // behind those of the header
    for (; changes.size() >= 4; changes.remove_prefix(4)) {
        const std::size_t page = 8 + static_cast<unsigned char>(changes[0]) % pages;
        const std::size_t word = static_cast<unsigned char>(changes[1]) % 32U;
        bytes.replace(64 * page + 2 * word, 2, changes.substr(2, 2));
    }
    return bytes;
}

class Numbers {
public:
    explicit Numbers(std::uint32_t seed) : state_(seed * 2654435761U + 1) {}
    std::uint32_t next(std::uint32_t below) {
        state_ = state_ * 1664525U + 1013904223U;
        return (state_ >> 8) % below;
    }

private:
    std::uint32_t state_;
};

void change(__db* db, const std::vector<std::string>& keys, Numbers* numbers) {
    for (int i = 0; i < 40; ++i) {
        const bool is_known = !keys.empty() && numbers->next(3) != 0;
        const std::string key = is_known ? keys[numbers->next(static_cast<std::uint32_t>(keys.size()))]
                                         : std::string(numbers->next(100), 'n') + std::to_string(numbers->next(50));
        const std::string value(numbers->next(8) == 0 ? numbers->next(3000) : numbers->next(40), 'v');
        const DBT k = text_of(key);
        DBT v = text_of(value);
        errno = 0;
        switch (numbers->next(8)) {
            case 0:
            case 1:
                expect(is_result(db->del(db, &k, 0)));
                break;
            case 2:
                expect(is_result(db->get(db, &k, &v, 0)));
                break;
            case 3:
                expect(is_result(__expand_table(static_cast<htab*>(db->internal))));
                break;
            case 4:
                expect(is_result(db->sync(db, 0)));
                break;
            case 5:
                expect(is_result(db->seq(db, &v, &v, 0)));
                break;
            default:
                expect(is_result(db->put(db, &k, &v, 0)));
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2 || size > most_file_bytes) return 0;
    const orvix::fuzz::Visit visit;
    const std::string_view rest(reinterpret_cast<const char*>(data + 2), size - 2);
    const std::string bytes = (data[0] & 8) != 0 ? damaged(data[0] / 16, rest) : std::string(rest);
    orvix::fuzz::write_file(file, bytes);
    const orvix::core::OpenFlags flags = orvix::core::open_flags();
    const bool is_changed = (data[0] & 1) != 0;
    HASHINFO info{};
    info.cache_bytes = (data[0] & 2) != 0 ? 1 : 0;
    errno = 0;
    __db* db = hash_open(file, is_changed ? flags.read_write : flags.read_only, 0, &info);
    if (db == nullptr) {
        expect(errno == EINVAL);
        expect(orvix::fuzz::read_file(file) == bytes);
        return 0;
    }
    orvix::gsl::hash_keep_every_pair(db, (data[0] & 4) != 0);
    const std::vector<std::string> keys = scan(db, bytes.size());
    Numbers numbers(data[1]);
    if (is_changed) change(db, keys, &numbers);
    for (const std::string& key : keys) {
        const DBT k = text_of(key);
        DBT value;
        expect(is_result(db->get(db, &k, &value, 0)));
    }
    const bool closed = db->close(db) == 0;
    if (!is_changed) expect(orvix::fuzz::read_file(file) == bytes);
    if (!closed) return 0;
    db = hash_open(file, flags.read_only, 0, &info);
    expect(db != nullptr);
    scan(db, std::filesystem::file_size(file));
    expect(db->close(db) == 0);
    return 0;
}
