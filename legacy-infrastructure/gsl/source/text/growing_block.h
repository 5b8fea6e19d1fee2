// Memory of the process that grows and is never given back at its end, for state that comes up on first use.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <type_traits>

namespace orvix::gsl::text {

// Elements that may be copied as bytes. No constructor and no destructor runs, neither for them nor for the block.
template <class Element>
class GrowingBlock {
    static_assert(std::is_trivially_copyable_v<Element> && std::is_trivially_destructible_v<Element>);

public:
    Element& operator[](std::size_t i) const { return elements_[i]; }
    Element* begin() const { return elements_; }
    std::size_t capacity() const { return capacity_; }

    // False, with everything as it was, without memory.
    bool grow(std::size_t capacity) {
        void* const block = std::realloc(elements_, capacity * sizeof(Element));
        if (block == nullptr) return false;
        elements_ = static_cast<Element*>(block);
        capacity_ = capacity;
        return true;
    }

    void release() {
        std::free(elements_);
        elements_ = nullptr;
        capacity_ = 0;
    }

private:
    Element* elements_ = nullptr;
    std::size_t capacity_ = 0;
};

}  // namespace orvix::gsl::text
