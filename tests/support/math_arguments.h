// Arguments on which mathematics is tried out, and the comparison of results bit by bit.
#pragma once

#include <bit>
#include <cmath>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <random>
#include <type_traits>
#include <vector>

namespace orvix::test {

template <class Real>
using BitsOf = std::conditional_t<sizeof(Real) == sizeof(std::uint64_t), std::uint64_t, std::uint32_t>;

// True for the same bits. NaN is one value: which of many comes out of an operation is the processor's choice.
template <class Real>
bool same(Real a, Real b) {
    if (std::isnan(a) || std::isnan(b)) return std::isnan(a) && std::isnan(b);
    return std::bit_cast<BitsOf<Real>>(a) == std::bit_cast<BitsOf<Real>>(b);
}

// Places where functions change their ways, of both signs: zeros, subnormal numbers, the ends of the ranges, numbers
// whose squares or exponentials lie there, 1 and its neighbours, fractions of pi, infinity; and NaN.
template <class Real>
std::vector<Real> special_values() {
    using Limits = std::numeric_limits<Real>;
    const Real one = 1;
    std::vector<Real> all = {0,
                             Limits::denorm_min(),
                             Limits::min(),
                             Limits::max(),
                             std::nextafter(Limits::min(), Real{0}),
                             one,
                             std::nextafter(one, Real{0}),
                             std::nextafter(one, Real{2}),
                             Limits::infinity()};
    for (const double value : {1e-310,
                               1e-300,
                               1e-200,
                               1.4e-154,
                               1.5e-154,
                               1e-100,
                               9.9e-38,
                               1e-37,
                               1.1e-37,
                               3.1e-19,
                               3.2e-19,
                               1e-10,
                               1e-4,
                               0.1,
                               0.5,
                               0.78539816339744831,
                               1.5707963267948966,
                               2.0,
                               2.5,
                               3.1415926535897931,
                               10.0,
                               43.6,
                               85.1,
                               85.3,
                               87.4,
                               87.6,
                               100.0,
                               354.9,
                               355.0,
                               708.3,
                               708.5,
                               709.7,
                               709.8,
                               745.2,
                               1000.0,
                               1e6,
                               1e10,
                               1e18,
                               1e19,
                               9.9e37,
                               1e38,
                               1.1e38,
                               3e38,
                               1e100,
                               1.3e154,
                               1.4e154,
                               1e200,
                               1e300}) {
        const Real narrowed = static_cast<Real>(value);
        if (!std::isinf(narrowed)) all.push_back(narrowed);
    }
    const std::size_t count = all.size();
    for (std::size_t i = 0; i < count; ++i) all.push_back(-all[i]);
    all.push_back(Limits::quiet_NaN());
    return all;
}

// The few of them that matter most, for functions of four arguments.
template <class Real>
std::vector<Real> few_special_values() {
    using Limits = std::numeric_limits<Real>;
    std::vector<Real> all = {0,
                             Limits::denorm_min(),
                             static_cast<Real>(1e-30),
                             1,
                             static_cast<Real>(2.5),
                             static_cast<Real>(1e30),
                             Limits::max(),
                             Limits::infinity()};
    const std::size_t count = all.size();
    for (std::size_t i = 0; i < count; ++i) all.push_back(-all[i]);
    all.push_back(Limits::quiet_NaN());
    return all;
}

// Random numbers of every kind: any bits, any magnitude, and mostly those that programs compute with.
template <class Real>
class RandomReals {
public:
    explicit RandomReals(std::uint64_t seed) : random_(seed) {}

    Real next() {
        switch (random_() % 8) {
            case 0:
                return std::bit_cast<Real>(static_cast<BitsOf<Real>>(random_()));
            case 1:
                return uniform(-1000, 1000);
            case 2: {
                const double exponent = std::uniform_real_distribution<double>(-40, 40)(random_);
                return static_cast<Real>(std::pow(10.0, exponent)) * uniform(-1, 1);
            }
            case 3:
                return 0;
            default:
                return uniform(-3, 3);
        }
    }

private:
    Real uniform(Real low, Real high) { return std::uniform_real_distribution<Real>(low, high)(random_); }

    std::mt19937_64 random_;
};

}  // namespace orvix::test
