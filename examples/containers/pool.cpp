// Buffers for one net after the other, from memory that is kept.
#include <orvix/gsl/memory_controller.h>

#include <cstdio>

namespace {

MEMC memory;  // what a pool has taken stays taken, so it had better be one for the whole program

double length_of_route(int corners) {
    auto* x = static_cast<double*>(alloc_Mem(&memory, sizeof(double), corners));
    for (int i = 0; i < corners; ++i) x[i] = i * 0.5;
    const double length = x[corners - 1] - x[0];
    free_Mem(&memory, x);
    return length;
}

}  // namespace

int main() {
    initialize_MemCntl(&memory, poolMem);  // orvixMem for the plain heap: nothing else changes
    const int routes[] = {200, 12, 8};
    for (const int corners : routes) std::printf("%g\n", length_of_route(corners));
    std::printf("sound: %s\n", memory.methods->check(&memory.state) ? "yes" : "no");
}
