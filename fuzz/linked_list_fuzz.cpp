// Any sequence of operations leaves lists as it leaves simple models, with all items untouched. The first byte is the
// item size. Then each step is a byte that says what to do, one that chooses two lists, and one for a count.
#include "../tests/containers/list_pair.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using orvix::test::ListPair;
    if (size == 0) return 0;
    ListPair pair(data[0] % 32);
    ++data;
    --size;
    for (int steps = 0; size >= 3 && steps < 300; data += 3, size -= 3, ++steps) {
        const std::size_t one = data[1] % ListPair::list_count;
        const std::size_t other =
            (one + 1 + data[1] / ListPair::list_count % (ListPair::list_count - 1)) % ListPair::list_count;
        switch (data[0] % 9) {
            case 0:
                pair.allocate(one, data[2] % 16 - 1, other);
                break;
            case 1:
                pair.extend(one, data[2], other);
                break;
            case 2:
                pair.insert(one, other);
                break;
            case 3:
                pair.erase(one, data[2], other);
                break;
            case 4:
                pair.free(one, other);
                break;
            case 5:
                pair.head(one);
                break;
            case 6:
                pair.tail(one);
                break;
            case 7:
                pair.prev(one);
                break;
            default:
                pair.next(one);
        }
        if (!pair.fault().empty()) std::abort();
    }
    return 0;
}
