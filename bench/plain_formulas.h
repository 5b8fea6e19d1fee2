// The formulas of the complex functions with nothing in them but their C library calls and the arithmetic that feeds
// one call from another: no clamp, no domain test, no flag. What the library costs above them is the price of those.
//
// A formula asks `Calls` for what it needs of the C library, so that one text serves two measures: Direct makes the
// calls as the formula comes to them, each waiting for the one that feeds it; Replay makes the same calls with
// arguments written down by Recorder before, none waiting for another.
#pragma once

#include <benchmark/benchmark.h>

#include <cmath>
#include <vector>

namespace orvix::bench {

template <class Real>
struct Pair {
    Real re;
    Real im;
};

// Has a value computed, and forgets it.
template <class Value>
void keep(Value value) {
    benchmark::DoNotOptimize(value);
}

// The C library computes in double for both precisions.
template <class Real>
class Direct {
public:
    Real modulus(Real x, Real y) { return narrow(std::hypot(widen(x), widen(y))); }
    Real angle(Real y, Real x) { return narrow(std::atan2(widen(y), widen(x))); }
    Real log(Real x) { return narrow(std::log(widen(x))); }
    Real exp(Real x) { return narrow(std::exp(widen(x))); }
    // The compiler computes them together, here as in the library.
    Pair<Real> cos_and_sin(Real x) { return {narrow(std::cos(widen(x))), narrow(std::sin(widen(x)))}; }

private:
    static double widen(Real x) { return static_cast<double>(x); }
    static Real narrow(double x) { return static_cast<Real>(x); }
};

// Makes the calls of Direct, and writes their arguments down behind those of earlier formulas.
template <class Real>
class Recorder : public Direct<Real> {
public:
    explicit Recorder(std::vector<double>& arguments) : arguments_(arguments) {}

    Real modulus(Real x, Real y) { return write(x), write(y), Direct<Real>::modulus(x, y); }
    Real angle(Real y, Real x) { return write(y), write(x), Direct<Real>::angle(y, x); }
    Real log(Real x) { return write(x), Direct<Real>::log(x); }
    Real exp(Real x) { return write(x), Direct<Real>::exp(x); }
    Pair<Real> cos_and_sin(Real x) { return write(x), Direct<Real>::cos_and_sin(x); }

private:
    void write(Real x) { arguments_.push_back(static_cast<double>(x)); }

    std::vector<double>& arguments_;
};

// Makes the calls with the arguments of a Recorder, one formula behind the other. The formulas get constants, so that
// their own arithmetic vanishes.
template <class Real>
class Replay {
public:
    explicit Replay(const std::vector<double>& arguments) : next_(arguments.data()) {}

    Real modulus(Real, Real) {
        next_ += 2;
        return keep(std::hypot(next_[-2], next_[-1])), Real{1};
    }
    Real angle(Real, Real) {
        next_ += 2;
        return keep(std::atan2(next_[-2], next_[-1])), Real{1};
    }
    Real log(Real) { return keep(std::log(*next_++)), Real{1}; }
    Real exp(Real) { return keep(std::exp(*next_++)), Real{1}; }
    Pair<Real> cos_and_sin(Real) {
        const double x = *next_++;
        keep(std::cos(x));
        keep(std::sin(x));
        return {1, 1};
    }

private:
    const double* next_;
};

// ---------------------------------------------------------------------------------------------------------------------
// The formulas

template <class Real>
Pair<Real> product(Pair<Real> a, Pair<Real> b) {
    return {a.re * b.re - a.im * b.im, a.im * b.re + a.re * b.im};
}

template <class Real>
Pair<Real> quotient(Pair<Real> a, Pair<Real> b) {
    const Real norm = b.re * b.re + b.im * b.im;
    return product(a, {b.re / norm, -b.im / norm});
}

// Each call operator takes the calls to make, the operand and, for powers, the exponent.
struct Log {
    template <class Calls, class Real>
    auto operator()(Calls& calls, Pair<Real> z, Pair<Real> = {}) const {
        const Real h = calls.modulus(z.re, z.im);
        const Real re = calls.log(h);
        return Pair<Real>{re, calls.angle(z.im, z.re)};
    }
};

struct Exp {
    template <class Calls, class Real>
    auto operator()(Calls& calls, Pair<Real> z, Pair<Real> = {}) const {
        const Real e = calls.exp(z.re);
        const auto [c, s] = calls.cos_and_sin(z.im);
        return Pair<Real>{e * c, e * s};
    }
};

struct Power {
    template <class Calls, class Real>
    auto operator()(Calls& calls, Pair<Real> z, Pair<Real> exponent) const {
        return Exp{}(calls, product(Log{}(calls, z), exponent));
    }
};

struct Square {
    template <class Calls, class Real>
    auto operator()(Calls& calls, Pair<Real> z, Pair<Real> = {}) const {
        return Power{}(calls, z, Pair<Real>{2, 0});
    }
};

struct Sqrt {
    template <class Calls, class Real>
    auto operator()(Calls& calls, Pair<Real> z, Pair<Real> = {}) const {
        return Power{}(calls, z, Pair<Real>{Real{0.5}, 0});
    }
};

struct PowerOfTen {
    template <class Calls, class Real>
    auto operator()(Calls& calls, Pair<Real> z, Pair<Real> = {}) const {
        return Power{}(calls, Pair<Real>{10, 0}, z);
    }
};

// exp(z) and exp(-z), whose difference and sum make up all circular and hyperbolic functions.
struct Hyperbolic {
    template <class Calls, class Real>
    auto operator()(Calls& calls, Pair<Real> z, Pair<Real> = {}) const {
        const auto [c, s] = calls.cos_and_sin(z.im);
        const Real up = calls.exp(z.re);
        const Real down = calls.exp(-z.re);
        return Pair<Real>{up * c - down * c, up * s + down * s};
    }
};

struct Circular {
    template <class Calls, class Real>
    auto operator()(Calls& calls, Pair<Real> z, Pair<Real> = {}) const {
        return Hyperbolic{}(calls, Pair<Real>{-z.im, z.re});
    }
};

struct Acos {
    template <class Calls, class Real>
    auto operator()(Calls& calls, Pair<Real> z, Pair<Real> = {}) const {
        const Pair<Real> square = product(z, z);
        const Pair<Real> root = Sqrt{}(calls, Pair<Real>{square.re - 1, square.im});
        return Log{}(calls, Pair<Real>{root.re + z.re, root.im + z.im});
    }
};

struct Asin {
    template <class Calls, class Real>
    auto operator()(Calls& calls, Pair<Real> z, Pair<Real> = {}) const {
        const Pair<Real> square = product(z, z);
        const Pair<Real> root = Sqrt{}(calls, Pair<Real>{1 - square.re, -square.im});
        return Log{}(calls, Pair<Real>{root.re - z.im, root.im + z.re});
    }
};

struct Asinh {
    template <class Calls, class Real>
    auto operator()(Calls& calls, Pair<Real> z, Pair<Real> = {}) const {
        const Pair<Real> square = product(z, z);
        const Pair<Real> root = Sqrt{}(calls, Pair<Real>{square.re + 1, square.im});
        return Log{}(calls, Pair<Real>{root.re + z.re, root.im + z.im});
    }
};

struct AcoshOfTwoRoots {
    template <class Calls, class Real>
    auto operator()(Calls& calls, Pair<Real> z, Pair<Real> = {}) const {
        const Pair<Real> upper = Sqrt{}(calls, Pair<Real>{z.re + 1, z.im});
        const Pair<Real> lower = Sqrt{}(calls, Pair<Real>{z.re - 1, z.im});
        const Pair<Real> both = product(lower, upper);
        return Log{}(calls, Pair<Real>{both.re + z.re, both.im + z.im});
    }
};

struct Atan {
    template <class Calls, class Real>
    auto operator()(Calls& calls, Pair<Real> z, Pair<Real> = {}) const {
        return Log{}(calls, quotient(Pair<Real>{z.re, 1 + z.im}, Pair<Real>{-z.re, 1 - z.im}));
    }
};

struct Atanh {
    template <class Calls, class Real>
    auto operator()(Calls& calls, Pair<Real> z, Pair<Real> = {}) const {
        return Log{}(calls, quotient(Pair<Real>{1 + z.re, z.im}, Pair<Real>{1 - z.re, -z.im}));
    }
};

}  // namespace orvix::bench
