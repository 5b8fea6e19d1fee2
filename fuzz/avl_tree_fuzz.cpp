// Any sequence of operations leaves the tree as it leaves a slow model and the standard library's map, with the same
// comparisons and the same releases on the way. Two bytes make a step: what to do, and the key.
#include "../tests/containers/avl_tree_pair.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    orvix::test::AvlTreePair pair;
    for (std::size_t i = 0; i + 1 < size; i += 2) {
        const int key = data[i + 1];
        const bool with_release = (data[i] & 0x80) != 0;
        switch (data[i] % 16) {
            case 0:
                pair.clear(with_release);
                break;
            case 1:
                pair.visit(data[i + 1]);
                break;
            case 2:
                pair.search(key);
                break;
            case 3:
            case 4:
            case 5:
            case 6:
            case 7:
                pair.erase(key, with_release);
                break;
            default:
                pair.insert(key, with_release);
        }
        if (!pair.fault().empty()) std::abort();
    }
    return 0;
}
