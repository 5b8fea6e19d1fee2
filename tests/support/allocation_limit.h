// Libraries whose `new` fails.
#pragma once

namespace orvix::test {

// For the length of its scope `new` gives a number of blocks, and std::bad_alloc from then on.
class AllocationLimit {
public:
    explicit AllocationLimit(int blocks);
    ~AllocationLimit();
    AllocationLimit(const AllocationLimit&) = delete;
    AllocationLimit& operator=(const AllocationLimit&) = delete;

private:
    [[maybe_unused]] void* replacement_ = nullptr;  // where it takes one
};

}  // namespace orvix::test
