// Every function agrees with its model bit for bit, the flag included, on special values and on random ones.

#include "support/math_twins.h"

#include <gtest/gtest.h>

#include <iomanip>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace orvix::test {

template <class Result, class... Arguments>
void PrintTo(const Twins<Result, Arguments...>& twins, std::ostream* out) {
    *out << twins.name;
}

}  // namespace orvix::test

namespace {

using namespace orvix::test;

constexpr int random_count = 200'000;

template <class AnyTwins, class... Operands>
void expect_agreement(const AnyTwins& twins, Operands... operands) {
    const auto library = library_outcome(twins, operands...);
    const auto expected = model_outcome(twins, operands...);
    if (library == expected) return;
    std::ostringstream text;
    text << std::hexfloat;
    ((text << operands << ' '), ...);
    EXPECT_EQ(library, expected) << "for " << text.str();
}

// Calls `check` with a source of random numbers, until something fails.
template <class Real, class Check>
void with_random_numbers(Check check) {
    const std::uint64_t seed = std::random_device{}();
    SCOPED_TRACE(seed);
    RandomReals<Real> random(seed);
    for (int i = 0; i < random_count && !testing::Test::HasFailure(); ++i) check(random);
}

template <class Real, class AnyTwins>
void expect_agreement_on_numbers(const AnyTwins& twins) {
    for (const Real x : special_values<Real>()) expect_agreement(twins, x);
    with_random_numbers<Real>([&](auto& random) { expect_agreement(twins, random.next()); });
}

template <class Real, class AnyTwins>
void expect_agreement_on_pairs(const AnyTwins& twins) {
    const std::vector<Real> values = special_values<Real>();
    for (const Real x : values)
        for (const Real y : values) expect_agreement(twins, x, y);
    with_random_numbers<Real>([&](auto& random) {
        const Real x = random.next();
        expect_agreement(twins, x, random.next());
    });
}

template <class Real, class AnyTwins>
void expect_agreement_on_fours(const AnyTwins& twins) {
    const std::vector<Real> values = few_special_values<Real>();
    for (const Real x : values)
        for (const Real y : values)
            for (const Real u : values)
                for (const Real v : values) expect_agreement(twins, x, y, u, v);
    with_random_numbers<Real>([&](auto& random) {
        const Real x = random.next();
        const Real y = random.next();
        const Real u = random.next();
        expect_agreement(twins, x, y, u, random.next());
    });
}

constexpr auto function_name = [](const auto& info) { return std::string(info.param.name); };

class ComplexDoubleOfOne : public testing::TestWithParam<ComplexOfOne<double>> {};
class ComplexDoubleOfTwo : public testing::TestWithParam<ComplexOfTwo<double>> {};
class ComplexSingleOfOne : public testing::TestWithParam<ComplexOfOne<float>> {};
class ComplexSingleOfTwo : public testing::TestWithParam<ComplexOfTwo<float>> {};
class RealSingle : public testing::TestWithParam<Twins<float, float>> {};
class RealSingleOfTwo : public testing::TestWithParam<Twins<float, float, float>> {};
class RealDouble : public testing::TestWithParam<Twins<double, double>> {};
class RealDoubleOfTwo : public testing::TestWithParam<Twins<double, double, double>> {};
class Integers : public testing::TestWithParam<Twins<std::int32_t, double>> {};

}  // namespace

TEST_P(ComplexDoubleOfOne, AgreesWithTheModel) { expect_agreement_on_pairs<double>(GetParam()); }
TEST_P(ComplexDoubleOfTwo, AgreesWithTheModel) { expect_agreement_on_fours<double>(GetParam()); }
TEST_P(ComplexSingleOfOne, AgreesWithTheModel) { expect_agreement_on_pairs<float>(GetParam()); }
TEST_P(ComplexSingleOfTwo, AgreesWithTheModel) { expect_agreement_on_fours<float>(GetParam()); }
TEST_P(RealSingle, AgreesWithTheModel) { expect_agreement_on_numbers<float>(GetParam()); }
TEST_P(RealSingleOfTwo, AgreesWithTheModel) { expect_agreement_on_pairs<float>(GetParam()); }
TEST_P(RealDouble, AgreesWithTheModel) { expect_agreement_on_numbers<double>(GetParam()); }
TEST_P(RealDoubleOfTwo, AgreesWithTheModel) { expect_agreement_on_pairs<double>(GetParam()); }
TEST_P(Integers, AgreesWithTheModel) { expect_agreement_on_numbers<double>(GetParam()); }

INSTANTIATE_TEST_SUITE_P(Functions, ComplexDoubleOfOne, testing::ValuesIn(complex_double_of_one), function_name);
INSTANTIATE_TEST_SUITE_P(Functions, ComplexDoubleOfTwo, testing::ValuesIn(complex_double_of_two), function_name);
INSTANTIATE_TEST_SUITE_P(Functions, ComplexSingleOfOne, testing::ValuesIn(complex_single_of_one), function_name);
INSTANTIATE_TEST_SUITE_P(Functions, ComplexSingleOfTwo, testing::ValuesIn(complex_single_of_two), function_name);
INSTANTIATE_TEST_SUITE_P(Functions, RealSingle, testing::ValuesIn(real_single), function_name);
INSTANTIATE_TEST_SUITE_P(Functions, RealSingleOfTwo, testing::ValuesIn(real_single_of_two), function_name);
INSTANTIATE_TEST_SUITE_P(Functions, RealDouble, testing::ValuesIn(real_double), function_name);
INSTANTIATE_TEST_SUITE_P(Functions, RealDoubleOfTwo, testing::ValuesIn(real_double_of_two), function_name);
INSTANTIATE_TEST_SUITE_P(Functions, Integers, testing::ValuesIn(integers), function_name);
