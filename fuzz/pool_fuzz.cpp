// Any sequence of requests leaves the pool as it leaves a simple model, with the contents of all blocks untouched. Each
// step is a byte that says what to do, a byte that chooses a block, and two bytes of a size.
#include "../tests/containers/pool_pair.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t most_blocks = 100;
    orvix::test::PoolPair pair;
    for (; size >= 4; data += 4, size -= 4) {
        const std::size_t which = pair.used_blocks() == 0 ? 0 : data[1] % pair.used_blocks();
        const std::uint32_t bytes = data[2] + 256U * data[3];
        switch (data[0] % 8) {
            case 0:
            case 1:
                if (pair.used_blocks() > 0) pair.release(which);
                break;
            case 2:
                pair.release_again(data[1]);
                break;
            case 3:
            case 4:
                if (pair.used_blocks() > 0) pair.reallocate(which, bytes);
                break;
            default:
                if (pair.used_blocks() < most_blocks) pair.allocate(bytes, 1 + data[0] / 128 * data[1]);
        }
        if (!pair.fault().empty()) std::abort();
    }
    return 0;
}
