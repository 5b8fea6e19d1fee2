// The linked list beside the standard library's lists and GLib's: batches of items that come, are filled in, are read
// or not, and go, over and over.

#include "ratio.h"

#include <orvix/gsl/linked_list.h>

#include <benchmark/benchmark.h>
#include <glib.h>

#include <cstdint>
#include <forward_list>
#include <list>
#include <memory_resource>
#include <string>

namespace {

using orvix::bench::bar;

const bool bars = bar("batch/100", "std_list", 0.25) && bar("batch/1000", "std_list", 0.25) &&
                  bar("batch/10000", "std_list", 0.25) && bar("batch/100000", "std_list", 0.25);
const bool glib =
    orvix::bench::peer_version("GSList", std::to_string(GLIB_MAJOR_VERSION) + '.' + std::to_string(GLIB_MINOR_VERSION));

struct Point {
    std::int64_t x;
    std::int64_t y;
};

enum class Work { fill, fill_and_sum };

template <Work work>
void ours(benchmark::State& state, int count) {
    ListID spare;
    list_null(&spare);
    for (auto _ : state) {
        ListID points;
        list_alloc(count, sizeof(Point), &points, &spare);
        for (std::int64_t i = 0; points.cur != nullptr; points.cur = points.cur->next, ++i) {
            *static_cast<Point*>(list_item(&points)) = {i, -i};
        }
        if constexpr (work == Work::fill_and_sum) {
            std::int64_t sum = 0;
            for (list_head(&points); points.cur != nullptr; points.cur = points.cur->next) {
                sum += static_cast<Point*>(list_item(&points))->x;
            }
            benchmark::DoNotOptimize(sum);
        }
        list_free(&points, &spare);
    }
}

template <Work work, class List>
void use(List* points, int count) {
    for (std::int64_t i = 0; i < count; ++i) {
        if constexpr (requires { points->push_back({i, -i}); }) {
            points->push_back({i, -i});
        } else {
            points->push_front({i, -i});
        }
    }
    if constexpr (work == Work::fill_and_sum) {
        std::int64_t sum = 0;
        for (const Point& point : *points) sum += point.x;
        benchmark::DoNotOptimize(sum);
    }
    benchmark::DoNotOptimize(points);
}

template <Work work, class List>
void standard(benchmark::State& state, int count) {
    for (auto _ : state) {
        List points;
        use<work>(&points, count);
    }
}

// Nodes from a pool that keeps what is dropped.
template <Work work>
void standard_with_pool(benchmark::State& state, int count) {
    std::pmr::unsynchronized_pool_resource pool;
    for (auto _ : state) {
        std::pmr::list<Point> points(&pool);
        use<work>(&points, count);
    }
}

template <Work work>
void glib_list(benchmark::State& state, int count) {
    for (auto _ : state) {
        GSList* points = nullptr;
        for (std::int64_t i = 0; i < count; ++i) {
            points = g_slist_prepend(points, new (g_slice_alloc(sizeof(Point))) Point{i, -i});
        }
        if constexpr (work == Work::fill_and_sum) {
            std::int64_t sum = 0;
            for (const GSList* node = points; node != nullptr; node = node->next) {
                sum += static_cast<Point*>(node->data)->x;
            }
            benchmark::DoNotOptimize(sum);
        }
        g_slist_free_full(points, [](void* point) { g_slice_free1(sizeof(Point), point); });
    }
}

template <Work work>
bool batch(const std::string& name, int count) {
    const std::string prefix = name + "/" + std::to_string(count) + "/";
    const auto measure = [&](const char* who, auto function) {
        benchmark::RegisterBenchmark((prefix + who).c_str(), [=](benchmark::State& state) { function(state, count); });
    };
    measure("ours", ours<work>);
    measure("std_list", standard<work, std::list<Point>>);
    measure("std_forward_list", standard<work, std::forward_list<Point>>);
    measure("pmr_list", standard_with_pool<work>);
    measure("GSList", glib_list<work>);
    return true;
}

bool register_all() {
    for (const int count : {100, 1000, 10000, 100000}) {
        batch<Work::fill>("batch", count);
        batch<Work::fill_and_sum>("batch_read", count);
    }
    return true;
}

const bool registered = register_all();

}  // namespace
