// Every function of the mathematics, on raw bits: results are those of the model bit for bit, with the flag, and no
// clamped one is infinite. 32 bytes are four doubles; their first 16 bytes are four floats.
#include "../tests/support/math_twins.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace {

using namespace orvix::test;

template <class AnyTwins, class... Operands>
void expect_agreement(const AnyTwins& twins, Operands... operands) {
    if (!(library_outcome(twins, operands...) == model_outcome(twins, operands...))) std::abort();
}

template <class Real>
struct Operands {
    Real x, y, u, v;
};

template <class Real>
Operands<Real> operands_at(const std::uint8_t* data) {
    Operands<Real> operands;
    std::memcpy(&operands, data, sizeof operands);
    return operands;
}

void try_double(const Operands<double>& z) {
    for (const auto& twins : complex_double_of_one) expect_agreement(twins, z.x, z.y);
    for (const auto& twins : complex_double_of_two) expect_agreement(twins, z.x, z.y, z.u, z.v);
    for (const auto& twins : real_double) expect_agreement(twins, z.x);
    for (const auto& twins : real_double_of_two) expect_agreement(twins, z.x, z.y);
    for (const auto& twins : integers) expect_agreement(twins, z.x);
}

void try_single(const Operands<float>& z) {
    for (const auto& twins : complex_single_of_one) {
        expect_agreement(twins, z.x, z.y);
        const auto outcome = library_outcome(twins, z.x, z.y);
        if (std::isinf(outcome.re) || std::isinf(outcome.im)) std::abort();
    }
    for (const auto& twins : complex_single_of_two) expect_agreement(twins, z.x, z.y, z.u, z.v);
    for (const auto& twins : real_single) expect_agreement(twins, z.x);
    for (const auto& twins : real_single_of_two) expect_agreement(twins, z.x, z.y);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t step = sizeof(Operands<double>);
    for (; size >= step; data += step, size -= step) {
        try_double(operands_at<double>(data));
        try_single(operands_at<float>(data));
    }
    return 0;
}
