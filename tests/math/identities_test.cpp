// What the functions mean: identities between them hold within a few roundings, where no formula cancels.

#include <orvix/gsl/complex_functions.h>
#include <orvix/gsl/complex_functions_single.h>

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <random>

namespace {

template <class Real>
using OneOperand = void (*)(Real, Real, Real*, Real*);

// The functions of one precision, on complex numbers.
template <class Real>
struct Functions;

template <class Real>
std::complex<Real> call(OneOperand<Real> function, std::complex<Real> z) {
    Real re;
    Real im;
    function(z.real(), z.imag(), &re, &im);
    return {re, im};
}

template <>
struct Functions<double> {
    using Real = double;
    static constexpr OneOperand<Real> exp = gmath_cdnoexp, log = gmath_cdnolog, sqrt = gmath_cdnosqrt,
                                      sqr = gmath_cdnosqr, sin = gmath_cdnosin, cos = gmath_cdnocos,
                                      tan = gmath_cdnotan, asin = gmath_cdnoasin, acos = gmath_cdnoacos,
                                      atan = gmath_cdnoatan, sinh = gmath_cdnosinh, cosh = gmath_cdnocosh,
                                      tanh = gmath_cdnotanh, asinh = gmath_cdnoasinh, acosh = gmath_cdnoacosh,
                                      atanh = gmath_cdnoatanh;
    static constexpr Real rounding = 0x1p-53;
};

template <>
struct Functions<float> {
    using Real = float;
    static constexpr OneOperand<Real> exp = gmath_csnoexp, log = gmath_csnolog, sqrt = gmath_csnosqrt,
                                      sqr = gmath_csnosqr, sin = gmath_csnosin, cos = gmath_csnocos,
                                      tan = gmath_csnotan, asin = gmath_csnoasin, acos = gmath_csnoacos,
                                      atan = gmath_csnoatan, sinh = gmath_csnosinh, cosh = gmath_csnocosh,
                                      tanh = gmath_csnotanh, asinh = gmath_csnoasinh, acosh = gmath_csnoacosh,
                                      atanh = gmath_csnoatanh;
    static constexpr Real rounding = 0x1p-24F;
};

template <class F>
class Identities : public testing::Test {
protected:
    using Real = typename F::Real;
    using Number = std::complex<Real>;

    // Expects two sides of an identity to differ by no more than some roundings of numbers of magnitude 1, or of the
    // sides themselves if they are larger. Over random numbers with parts between two limits.
    template <class Left, class Right>
    static void expect_identity(double low, double high, int roundings, Left left, Right right) {
        const unsigned seed = std::random_device{}();
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        std::uniform_real_distribution<Real> part(static_cast<Real>(low), static_cast<Real>(high));
        const Real tolerance = static_cast<Real>(roundings) * F::rounding;
        for (int i = 0; i < 10'000; ++i) {
            const Number z(part(random), part(random));
            const Number a = left(z);
            const Number b = right(z);
            ASSERT_LE(std::abs(a - b), tolerance * std::max(Real{1}, std::abs(b))) << "for " << z;
        }
    }
};

using Precisions = testing::Types<Functions<double>, Functions<float>>;

}  // namespace

TYPED_TEST_SUITE(Identities, Precisions);

TYPED_TEST(Identities, ExponentialOfLogarithmIsTheNumber) {
    using F = TypeParam;
    this->expect_identity(
        -3, 3, 16, [](auto z) { return call(F::exp, call(F::log, z)); }, [](auto z) { return z; });
}

TYPED_TEST(Identities, LogarithmOfExponentialIsTheNumber) {
    using F = TypeParam;
    this->expect_identity(
        -3, 3, 16, [](auto z) { return call(F::log, call(F::exp, z)); }, [](auto z) { return z; });
}

TYPED_TEST(Identities, SquareOfRootIsTheNumber) {
    using F = TypeParam;
    this->expect_identity(
        -3, 3, 32, [](auto z) { return call(F::sqr, call(F::sqrt, z)); }, [](auto z) { return z; });
}

TYPED_TEST(Identities, SquaresOfSineAndCosineAddUpToOne) {
    using F = TypeParam;
    this->expect_identity(
        -1, 1, 64,
        [](auto z) {
            const auto s = call(F::sin, z);
            const auto c = call(F::cos, z);
            return s * s + c * c;
        },
        [](auto z) { return z / z; });
}

TYPED_TEST(Identities, SquaresOfHyperbolicCosineAndSineDifferByOne) {
    using F = TypeParam;
    this->expect_identity(
        -1, 1, 64,
        [](auto z) {
            const auto s = call(F::sinh, z);
            const auto c = call(F::cosh, z);
            return c * c - s * s;
        },
        [](auto z) { return z / z; });
}

TYPED_TEST(Identities, TangentIsSineOverCosine) {
    using F = TypeParam;
    this->expect_identity(
        -1, 1, 64, [](auto z) { return call(F::tan, z); }, [](auto z) { return call(F::sin, z) / call(F::cos, z); });
}

TYPED_TEST(Identities, HyperbolicTangentIsThatOfTheTurnedNumber) {
    using F = TypeParam;
    this->expect_identity(
        -1, 1, 64, [](auto z) { return call(F::tanh, z); },
        [](auto z) {
            const auto t = call(F::tan, decltype(z){-z.imag(), z.real()});
            return decltype(z){t.imag(), -t.real()};
        });
}

TYPED_TEST(Identities, InverseSineTurnsSineBack) {
    using F = TypeParam;
    this->expect_identity(
        -1, 1, 64, [](auto z) { return call(F::asin, call(F::sin, z)); }, [](auto z) { return z; });
}

// Not the other way round: of the two angles between -pi and pi with one cosine, the formula's cut chooses.
TYPED_TEST(Identities, CosineTurnsInverseCosineBack) {
    using F = TypeParam;
    this->expect_identity(
        -2, 2, 256, [](auto z) { return call(F::cos, call(F::acos, z)); }, [](auto z) { return z; });
}

TYPED_TEST(Identities, InverseTangentTurnsTangentBack) {
    using F = TypeParam;
    this->expect_identity(
        -1, 1, 64, [](auto z) { return call(F::atan, call(F::tan, z)); }, [](auto z) { return z; });
}

TYPED_TEST(Identities, InverseHyperbolicSineTurnsHyperbolicSineBack) {
    using F = TypeParam;
    this->expect_identity(
        -1, 1, 64, [](auto z) { return call(F::asinh, call(F::sinh, z)); }, [](auto z) { return z; });
}

TYPED_TEST(Identities, InverseHyperbolicCosineTurnsHyperbolicCosineBack) {
    using F = TypeParam;
    this->expect_identity(
        0.5, 1, 128, [](auto z) { return call(F::acosh, call(F::cosh, z)); }, [](auto z) { return z; });
}

TYPED_TEST(Identities, InverseHyperbolicTangentTurnsHyperbolicTangentBack) {
    using F = TypeParam;
    this->expect_identity(
        -1, 1, 64, [](auto z) { return call(F::atanh, call(F::tanh, z)); }, [](auto z) { return z; });
}
