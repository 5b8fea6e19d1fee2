// Pairs as lines of text: all bytes make the round trip, what is written holds no control character, and what is read
// means the same when it is written again.
#include "empty_place.h"
#include "pair_text.h"

#include <cstdint>
#include <string>

namespace {

using orvix::fuzz::expect;

bool is_control(char byte) { return static_cast<unsigned char>(byte) < 0x20 || byte == 0x7f; }

void expect_round_trip(const std::string& key, const std::string& value) {
    std::string line = gslstore::line_of_pair(key, value);
    expect(line.back() == '\n');
    line.pop_back();
    std::string key_again;
    std::string value_again;
    expect(!gslstore::read_pair(line, &key_again, &value_again));
    expect(key_again == key && value_again == value);
    line.erase(line.find('\t'), 1);
    for (const char byte : line) expect(!is_control(byte));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    expect_round_trip(text.substr(0, size / 2), text.substr(size / 2));
    std::string key;
    std::string value;
    if (const auto fault = gslstore::read_pair(text, &key, &value)) {
        expect(fault->column >= 1 && fault->column <= size + 1 && !fault->text.empty());
    } else {
        expect_round_trip(key, value);
    }
    return 0;
}
