// Any elements are sorted as the model sorts them: the same order and the same comparisons, in the same order. The
// first byte chooses the size of an element, the second where the array begins and what the rest means: keys, or
// answers that follow no order.
#include "../tests/support/sort_model.h"

#include <cstdint>
#include <cstdlib>
#include <vector>

namespace {

using orvix::test::NumberedElements;
using orvix::test::NumberOrder;
using orvix::test::numbers_below;
using orvix::test::SortModel;
using orvix::test::SortRecord;

void expect(bool condition) {
    if (!condition) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t most_elements = 256;  // as many as elements of one byte can tell apart
    if (size < 2) return 0;
    const std::vector<std::uint8_t> bytes(data + 2, data + std::min(size, most_elements + 2));
    const int count = static_cast<int>(bytes.size());
    const auto key = [&](int number) { return static_cast<int>(bytes[static_cast<std::size_t>(number)]); };

    const bool has_order = data[1] < 128;
    const NumberOrder order = [&](int a, int b) { return has_order ? key(a) - key(b) : (key(a) + 3 * key(b)) % 3 - 1; };
    const SortRecord record = NumberedElements(count, data[0] % 24U + 1U, data[1] % 8U).sort(order);
    expect(record == SortModel(count, order).record());

    const auto comes_later = [&](int a, int b) { return key(a) > key(b); };
    if (has_order) {
        expect(std::adjacent_find(record.order.begin(), record.order.end(), comes_later) == record.order.end());
    }
    std::vector<int> numbers = record.order;
    std::sort(numbers.begin(), numbers.end());
    expect(numbers == numbers_below(count));
    return 0;
}
