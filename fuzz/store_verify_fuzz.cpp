// Any bytes taken for a store file. Verifier and reader end, and agree with each other; where they find nothing wrong
// the library opens the file too, scans the same pairs, and finds each of them.
#include "chain_reader.h"
#include "empty_place.h"
#include "file_source.h"
#include "verify.h"

#include <orvix/core/open_flags.h>
#include <orvix/gsl/hash_store.h>

#include <cstdint>
#include <map>
#include <memory>
#include <sstream>
#include <string>

namespace {

using orvix::fuzz::expect;
using Pairs = std::multimap<std::string, std::string>;

// All pairs that can be reached.
Pairs pairs_of(gslstore::FileSource* source, std::uint64_t* faults) {
    Pairs pairs;
    gslstore::ChainReader chains(
        source, gslstore::Values::read,
        [&](const gslstore::Pair& pair) {
            expect(pair.value.size() == pair.value_bytes);
            pairs.emplace(pair.key, pair.value);
        },
        [&](std::uint64_t, std::uint32_t offset, const std::string& text) {
            expect(offset < source->header().page_size && !text.empty());
            ++*faults;
        });
    const std::uint64_t buckets = source->bucket_count();
    for (std::uint64_t bucket = 0; bucket < buckets; ++bucket) chains.walk(static_cast<std::uint32_t>(bucket));
    return pairs;
}

std::string string_of(const DBT& text) { return {static_cast<const char*>(text.data), text.size}; }

void expect_library_reads(const std::string& bytes, const Pairs& expected) {
    static const orvix::fuzz::EmptyPlace place;
    const std::string name = (place.path() / "store").string();
    orvix::fuzz::write_file(name.c_str(), bytes);
    __db* const db = hash_open(name.c_str(), orvix::core::open_flags().read_only, 0, nullptr);
    expect(db != nullptr);
    Pairs pairs;
    DBT key;
    DBT value;
    int result;
    while ((result = db->seq(db, &key, &value, 0)) == 0) pairs.emplace(string_of(key), string_of(value));
    expect(result == 1 && pairs == expected);
    for (const auto& [wanted, stored] : expected) {
        const DBT text{const_cast<char*>(wanted.data()), wanted.size()};
        expect(db->get(db, &text, &value, 0) == 0 && string_of(value) == stored);
    }
    db->close(db);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(data, data + size);
    gslstore::FileSource source(std::make_unique<std::istringstream>(bytes));
    const gslstore::Report report = verify_file(&source);
    if (source.hides(gslstore::Loss::pages)) {
        expect(report.has(gslstore::Weight::fault) && report.pairs == 0);
        return 0;
    }
    std::uint64_t faults = 0;
    const Pairs pairs = pairs_of(&source, &faults);
    std::uint64_t data_bytes = 0;
    for (const auto& [key, value] : pairs) data_bytes += key.size() + value.size();
    expect(pairs.size() == report.pairs && data_bytes == report.data_bytes);
    expect(faults <= report.count(gslstore::Weight::fault));

    const bool is_sound = !report.has(gslstore::Weight::fault) && report.misplaced_pairs == 0;
    if (is_sound && gslstore::has_default_hash(source.header())) expect_library_reads(bytes, pairs);
    return 0;
}
