// Any sequence of operations leaves the string database as it leaves a slow model, with the same releases on the way.
// The first byte chooses the kind of database. Then each step is a byte that says what to do and a key that ends with a
// zero byte.
#include "../tests/containers/string_database_pair.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

void require(const orvix::test::StringDatabasePair& pair) {
    if (!pair.fault().empty()) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    orvix::test::StringDatabasePair pair((data[0] & 1) != 0, (data[0] & 2) != 0);
    std::string_view rest(reinterpret_cast<const char*>(data + 1), size - 1);
    std::string before;
    while (rest.size() > 1) {
        const auto choice = static_cast<std::uint8_t>(rest.front());
        rest.remove_prefix(1);
        const std::string key(rest.substr(0, rest.find('\0')));
        rest.remove_prefix(std::min(rest.size(), key.size() + 1));
        switch (choice % 8) {
            case 0:
            case 1:
                pair.remove(key);
                break;
            case 2:
                pair.remove_and_add(key, before);
                break;
            case 3:
                pair.find(key);
                break;
            case 4:
                pair.visit(1 + choice / 8);
                break;
            default:
                pair.add(key);
        }
        before = key;
        require(pair);
    }
    pair.destroy();
    require(pair);
    return 0;
}
