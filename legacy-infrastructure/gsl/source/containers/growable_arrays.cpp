#include <orvix/gsl/arrays.h>
#include <orvix/gsl/status.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <new>

namespace {

constexpr long long default_capacity = 5;
constexpr long long least_fixed_capacity = 10;

// An array that a caller keeps.
class Array {
public:
    Array(void** elements, long long* capacity, std::size_t element_size)
        : elements_(elements), capacity_(capacity), element_size_(element_size) {}

    bool exists() const { return *elements_ != nullptr && *capacity_ > 0; }
    const void* elements() const { return *elements_; }
    long long capacity() const { return *capacity_; }

    // Makes an array of `count` zeroed elements. False without memory, and then all is as it was.
    bool create(long long count) {
        const auto size = static_cast<std::uint64_t>(count);
        return fits(size) && take(gmem_ee_calloc(size, element_size_), size);
    }
    bool create_or_default(long long count) { return create(count < 1 ? default_capacity : count); }

    // Makes the array twice as long as `count` elements, more than it has, with zeroed ones. False as above.
    bool grow_to_twice(long long count) {
        const auto old_size = static_cast<std::uint64_t>(*capacity_);
        const auto size = 2 * static_cast<std::uint64_t>(count);
        if (!fits(size)) return false;
        char* const block = gmem_ee_realloc(static_cast<char*>(*elements_), size, element_size_);
        if (!take(block, size)) return false;
        std::memset(block + old_size * element_size_, 0, (size - old_size) * element_size_);
        return true;
    }

private:
    // Whether so many elements are something, and their bytes a number of 32 bits.
    bool fits(std::uint64_t count) const {
        return element_size_ != 0 && count <= std::numeric_limits<std::uint32_t>::max() / element_size_;
    }

    bool take(char* block, std::uint64_t count) {
        if (block == nullptr) return false;
        *elements_ = block;
        *capacity_ = static_cast<long long>(count);
        return true;
    }

    void** elements_;
    long long* capacity_;
    std::size_t element_size_;
};

}  // namespace

long long HX_alloc_array(void** array, long long* capacity, bool (*is_free)(const void* array, long long index),
                         std::size_t element_size, long long initial_capacity) {
    Array elements(array, capacity, element_size);
    if (!elements.exists() && !elements.create_or_default(initial_capacity)) return -1;
    const long long count = elements.capacity();
    for (long long i = 0; i < count; ++i) {
        if (is_free(elements.elements(), i)) return i;
    }
    return elements.grow_to_twice(count) ? count : -1;
}

long long HX_alloc_array_sequentially(void** array, long long* used, long long* capacity, std::size_t element_size,
                                      long long initial_capacity) {
    Array elements(array, capacity, element_size);
    if (!elements.exists()) {
        if (!elements.create_or_default(initial_capacity)) throw std::bad_alloc();
        *used = 0;
    }
    if (*used >= elements.capacity() && !elements.grow_to_twice(*used)) throw std::bad_alloc();
    return (*used)++;
}

bool HX_alloc_fixed_array(void** array, long long* capacity, std::size_t element_size, long long wanted) {
    Array elements(array, capacity, element_size);
    if (!elements.exists()) return elements.create(std::max(wanted, least_fixed_capacity));
    return wanted <= elements.capacity() || elements.grow_to_twice(wanted);
}
