// A plain, recursive model of the library's sort, and the library's sort itself on elements that bear numbers. Both
// note which elements they compare, so that one can be held against the other.
#pragma once

#include <orvix/gsl/sort.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <stdexcept>
#include <utility>
#include <vector>

namespace orvix::test {

// Compares the elements that bear two numbers.
using NumberOrder = std::function<int(int, int)>;

// What a sort of the elements 0, 1, 2 and so on did: their order at its end, and which were compared.
struct SortRecord {
    std::vector<int> order;
    std::vector<std::pair<int, int>> comparisons;

    bool operator==(const SortRecord&) const = default;
};

inline std::vector<int> numbers_below(int count) {
    std::vector<int> numbers;
    for (int i = 0; i < count; ++i) numbers.push_back(i);
    return numbers;
}

class SortModel {
public:
    SortModel(int count, NumberOrder compare) : compare_numbers_(std::move(compare)) {
        record_.order = numbers_below(count);
        sort(0, count);
    }

    const SortRecord& record() const { return record_; }

private:
    int& at(int place) { return record_.order.at(static_cast<std::size_t>(place)); }

    int compare(int place, int other) {
        record_.comparisons.emplace_back(at(place), at(other));
        return compare_numbers_(at(place), at(other));
    }

    void exchange(int place, int other) { std::swap(at(place), at(other)); }

    void exchange_blocks(int place, int other, int length) {
        for (int i = 0; i < length; ++i) exchange(place + i, other + i);
    }

    void insert_each(int first, int count) {
        for (int next = first + 1; next < first + count; ++next)
            for (int place = next; place > first && compare(place - 1, place) > 0; --place) exchange(place, place - 1);
    }

    int median(int a, int b, int c) {
        if (compare(a, b) < 0) return compare(b, c) < 0 ? b : compare(a, c) < 0 ? c : a;
        return compare(b, c) > 0 ? b : compare(a, c) < 0 ? a : c;
    }

    int pivot(int first, int count) {
        int middle = first + count / 2;
        if (count == 7) return middle;
        int low = first;
        int high = first + count - 1;
        if (count > 40) {
            const int step = count / 8;
            low = median(low, low + step, low + 2 * step);
            middle = median(middle - step, middle, middle + step);
            high = median(high - 2 * step, high - step, high);
        }
        return median(low, middle, high);
    }

    void sort(int first, int count) {
        if (count < 7) {
            insert_each(first, count);
            return;
        }
        exchange(first, pivot(first, count));

        const int end = first + count;
        int a = first + 1;
        int b = first + 1;
        int c = end - 1;
        int d = end - 1;
        bool exchanged = false;
        while (true) {
            for (int result; b <= c && (result = compare(b, first)) <= 0; ++b)
                if (result == 0) {
                    exchanged = true;
                    exchange(a++, b);
                }
            for (int result; b <= c && (result = compare(c, first)) >= 0; --c)
                if (result == 0) {
                    exchanged = true;
                    exchange(c, d--);
                }
            if (b > c) break;
            exchanged = true;
            exchange(b++, c--);
        }
        if (!exchanged) {
            insert_each(first, count);
            return;
        }

        const int in_front = std::min(a - first, b - a);
        exchange_blocks(first, b - in_front, in_front);
        const int behind = std::min(d - c, end - d - 1);
        exchange_blocks(b, end - behind, behind);
        if (b - a > 1) sort(first, b - a);
        if (d - c > 1) sort(end - (d - c), d - c);
    }

    NumberOrder compare_numbers_;
    SortRecord record_;
};

// An array of elements that bear their numbers in all their bytes. Sorted by gsl_qsort.
class NumberedElements {
public:
    // `offset` bytes stand before the first element. With a size of one byte there is room for 256 numbers.
    NumberedElements(int count, std::size_t element_size, std::size_t offset)
        : count_(count), size_(element_size), offset_(offset) {
        bytes_.assign(offset_ + static_cast<std::size_t>(count_) * size_ + guard, guard_byte);
        for (int i = 0; i < count_; ++i) write(element(i), i);
    }

    // Sorts, and tells what happened.
    // @throw std::logic_error  if an element was torn, if bytes outside the array changed, or if a pointer to no
    //                          element was handed out
    SortRecord sort(const NumberOrder& order) {
        record_ = {};
        order_ = &order;
        active_ = this;
        const auto untyped = reinterpret_cast<void (*)()>(compare);
        gsl_qsort(base(), static_cast<std::size_t>(count_), size_, reinterpret_cast<int (*)()>(untyped));
        active_ = nullptr;
        for (int i = 0; i < count_; ++i) record_.order.push_back(number(element(i)));
        const auto is_guard = [](char byte) { return byte == guard_byte; };
        if (!std::all_of(bytes_.begin(), bytes_.begin() + static_cast<std::ptrdiff_t>(offset_), is_guard) ||
            !std::all_of(bytes_.end() - guard, bytes_.end(), is_guard))
            throw std::logic_error("bytes outside the array changed");
        return std::move(record_);
    }

private:
    static constexpr int guard = 32;
    static constexpr char guard_byte = '#';

    char* base() { return bytes_.data() + offset_; }
    char* element(int place) { return base() + static_cast<std::size_t>(place) * size_; }

    // Byte i of the element with a number.
    static char byte_of(int number, std::size_t i) {
        const int step = i < 2 ? 0 : static_cast<int>(i);
        return static_cast<char>((i == 1 ? number / 256 : number + 7 * step) % 256);
    }

    void write(char* element, int number) const {
        for (std::size_t i = 0; i < size_; ++i) element[i] = byte_of(number, i);
    }

    int number(const char* element) const {
        const int low = static_cast<unsigned char>(element[0]);
        const int found = size_ == 1 ? low : low + 256 * static_cast<unsigned char>(element[1]);
        for (std::size_t i = 0; i < size_; ++i)
            if (element[i] != byte_of(found, i)) throw std::logic_error("an element was torn");
        return found;
    }

    int number_at(const void* pointer) {
        const std::ptrdiff_t distance = static_cast<const char*>(pointer) - base();
        const auto size = static_cast<std::ptrdiff_t>(size_);
        if (distance < 0 || distance % size != 0 || distance / size >= count_)
            throw std::logic_error("a pointer to no element");
        return number(static_cast<const char*>(pointer));
    }

    static int compare(const void* a, const void* b) {
        const int first = active_->number_at(a);
        const int second = active_->number_at(b);
        active_->record_.comparisons.emplace_back(first, second);
        return (*active_->order_)(first, second);
    }

    static inline NumberedElements* active_ = nullptr;

    int count_;
    std::size_t size_;
    std::size_t offset_;
    std::vector<char> bytes_;
    const NumberOrder* order_ = nullptr;
    SortRecord record_;
};

}  // namespace orvix::test
