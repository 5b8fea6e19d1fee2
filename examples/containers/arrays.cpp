// Pins that are numbered, and layers that come and go under numbers that stay.
#include <orvix/gsl/arrays.h>
#include <orvix/gsl/status.h>

#include <cstdio>

namespace {

struct Pin {
    double x;
    double y;
};

bool is_free(const void* layers, long long i) { return static_cast<const char* const*>(layers)[i] == nullptr; }

}  // namespace

int main() {
    void* pins = nullptr;
    long long used = 0;
    long long capacity = 0;
    for (int i = 0; i < 6; ++i) {
        const long long pin = HX_alloc_array_sequentially(&pins, &used, &capacity, sizeof(Pin), 4);
        static_cast<Pin*>(pins)[pin] = {2.54 * i, 0};
    }
    std::printf("%lld pins, room for %lld\n", used, capacity);
    gmem_ee_free(static_cast<char*>(pins));

    void* layers = nullptr;
    long long layer_capacity = 0;
    const auto add = [&](const char* name) {
        const long long layer = HX_alloc_array(&layers, &layer_capacity, is_free, sizeof(char*), 3);
        if (layer < 0) return;
        static_cast<const char**>(layers)[layer] = name;
        std::printf("%s is layer %lld\n", name, layer);
    };
    add("top");
    add("inner");
    add("bottom");
    static_cast<const char**>(layers)[1] = nullptr;  // the inner layer goes
    add("ground");
    add("mask");
    gmem_ee_free(static_cast<char*>(layers));
}
