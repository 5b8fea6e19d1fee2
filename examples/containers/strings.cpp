// How often each net is named, without regard to letter case.
#include <orvix/gsl/string_database.h>

#include <cstdio>

int main() {
    const auto release = [](void* count) { delete static_cast<int*>(count); };
    HXstringDB* counts = HXstringDB_new(release, true);
    const char* const nets[] = {"gnd", "clk", "GND", "d0", "Gnd"};
    for (const char* net : nets) {
        if (void** count = counts->find(counts, net)) {
            ++*static_cast<int*>(*count);
        } else {
            counts->add(counts, net, new int(1));
        }
    }
    const auto print = [](HXstringDBItem* item, void*) {
        std::printf("%s %d\n", item->key, *static_cast<int*>(item->value));
        return true;
    };
    counts->foreach (counts, print, nullptr);
    counts->destroy(counts);
}
