// Any sequence of operations leaves a hash store as it leaves a map, but for what the page rules lose and the model
// knows. The first two bytes choose the store; then each step is a byte that says what to do, one for the key, and one
// for the size of the value.
#include "../tests/containers/hash_store_pair.h"

#include "empty_place.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

namespace {

using orvix::fuzz::expect;
using namespace orvix::test;

// Keys end with a byte that none has elsewhere, so that no key is another one and a byte.
std::string key_of(std::uint8_t byte, std::uint32_t page_size) {
    if (byte == 0) return "";
    const std::string name = std::to_string(byte);
    if (byte >= 250) return std::string(page_size * (byte - 249U) / 2, 'k') + name + '$';
    return std::string(byte % 16, '.') + name + '$';
}

// Small values, values around the size of a page, and values of several pages.
std::string value_of(std::uint8_t byte, std::uint32_t page_size) {
    const char letter = static_cast<char>('a' + byte % 26);
    if (byte < 160) return std::string(byte, letter);
    if (byte < 220) return std::string(page_size - 44 + (byte - 160U), letter);
    return std::string(page_size / 4 * (byte - 219U), letter);
}

HASHINFO info_of(std::uint8_t shape, std::uint8_t more) {
    HASHINFO info{};
    info.page_size = 64U << shape % 11;
    info.byte_order = (shape & 0x10) != 0 ? 4321 : 1234;
    info.cache_bytes = (shape & 0x20) != 0 ? 1 : 1U << 24;
    info.fill_factor = more % 16;
    info.expected_count = more / 16 * 5;
    return info;
}

void step(HashStorePair* pair, std::uint8_t action, const std::string& key, const std::string& value) {
    switch (action % 16) {
        case 0:
            return pair->scan();
        case 1:
            return pair->sync();
        case 2:
            return pair->reopen();
        case 3:
            return pair->verify();
        case 4:
            return pair->put_new(key, value);
        case 5:
        case 6:
        case 7:
            return pair->del(key);
        case 8:
            return pair->look_for(key);
        default:
            return pair->put(key, value);
    }
}

void require(const HashStorePair& pair) {
    if (pair.fault().empty()) return;
    std::fprintf(stderr, "%s\n", pair.fault().c_str());
    std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    const orvix::fuzz::Visit visit;
    const HASHINFO info = info_of(data[0], data[1]);
    const Keeps keeps = (data[0] & 0x40) != 0 ? Keeps::every_pair : Keeps::what_the_rules_keep;
    HashStorePair pair((data[0] & 0x80) != 0 ? "store" : "", info, keeps);
    for (std::size_t at = 2; at + 3 <= size; at += 3) {
        step(&pair, data[at], key_of(data[at + 1], info.page_size), value_of(data[at + 2], info.page_size));
        require(pair);
    }
    pair.scan();
    pair.verify();
    pair.reopen();
    pair.scan();
    require(pair);
    return 0;
}
