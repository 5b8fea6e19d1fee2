// Growable arrays beside std::vector and GLib's array.

#include "ratio.h"

#include <orvix/gsl/arrays.h>
#include <orvix/gsl/status.h>

#include <benchmark/benchmark.h>
#include <glib.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

namespace {

const bool glib =
    orvix::bench::peer_version("GArray", std::to_string(GLIB_MAJOR_VERSION) + '.' + std::to_string(GLIB_MINOR_VERSION));

struct Point {
    std::int64_t x;
    std::int64_t y;
};

// Points one by one, each filled in.

void append_ours(benchmark::State& state, long long count) {
    for (auto _ : state) {
        void* points = nullptr;
        long long used = 0;
        long long capacity = 0;
        for (long long i = 0; i < count; ++i) {
            const long long index = HX_alloc_array_sequentially(&points, &used, &capacity, sizeof(Point), 0);
            static_cast<Point*>(points)[index] = {i, -i};
        }
        benchmark::DoNotOptimize(points);
        gmem_ee_free(static_cast<char*>(points));
    }
}

void append_vector(benchmark::State& state, long long count) {
    for (auto _ : state) {
        std::vector<Point> points;
        for (long long i = 0; i < count; ++i) points.push_back({i, -i});
        benchmark::DoNotOptimize(points.data());
    }
}

void append_glib(benchmark::State& state, long long count) {
    for (auto _ : state) {
        GArray* const points = g_array_new(0, 1, sizeof(Point));
        for (long long i = 0; i < count; ++i) {
            const Point point{i, -i};
            g_array_append_val(points, point);
        }
        benchmark::DoNotOptimize(points->data);
        g_array_free(points, 1);
    }
}

// The last of `count` elements is the free one.

bool is_free(const void* points, long long index) { return static_cast<const Point*>(points)[index].x == 0; }

void free_element_ours(benchmark::State& state, long long count) {
    std::vector<Point> points(static_cast<std::size_t>(count), Point{1, 1});
    points.back().x = 0;
    void* array = points.data();
    long long capacity = count;
    for (auto _ : state) benchmark::DoNotOptimize(HX_alloc_array(&array, &capacity, is_free, sizeof(Point), 0));
}

void free_element_vector(benchmark::State& state, long long count) {
    std::vector<Point> points(static_cast<std::size_t>(count), Point{1, 1});
    points.back().x = 0;
    bool (*test)(const Point&) = [](const Point& point) { return point.x == 0; };
    benchmark::DoNotOptimize(test);
    for (auto _ : state) benchmark::DoNotOptimize(std::find_if(points.begin(), points.end(), test));
}

// Room for one element more, time after time.

void room_ours(benchmark::State& state, long long count) {
    for (auto _ : state) {
        void* points = nullptr;
        long long capacity = 0;
        for (long long i = 1; i <= count; ++i) HX_alloc_fixed_array(&points, &capacity, sizeof(Point), i);
        benchmark::DoNotOptimize(points);
        gmem_ee_free(static_cast<char*>(points));
    }
}

void room_vector(benchmark::State& state, long long count) {
    for (auto _ : state) {
        std::vector<Point> points;
        for (std::size_t i = 1; i <= static_cast<std::size_t>(count); ++i) {
            if (i > points.size()) points.resize(2 * i);
        }
        benchmark::DoNotOptimize(points.data());
    }
}

bool cases(long long count) {
    const auto measure = [&](const std::string& name, const std::string& who, auto function) {
        benchmark::RegisterBenchmark((name + "/" + std::to_string(count) + "/" + who).c_str(),
                                     [=](benchmark::State& state) { function(state, count); });
    };
    measure("append", "ours", append_ours);
    measure("append", "std_vector", append_vector);
    measure("append", "GArray", append_glib);
    measure("free_element", "ours", free_element_ours);
    measure("free_element", "std_vector", free_element_vector);
    measure("room", "ours", room_ours);
    measure("room", "std_vector", room_vector);
    return true;
}

const bool registered = cases(10) && cases(1000) && cases(100000);

}  // namespace
