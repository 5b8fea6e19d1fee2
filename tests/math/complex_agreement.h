// Holds the complex functions of one precision against the model, on special values and on random ones.
#pragma once

#include "support/math_arguments.h"
#include "support/real_functions_model.h"

#include <orvix/gsl/real_functions.h>

#include <gtest/gtest.h>

#include <iomanip>
#include <ostream>
#include <string>
#include <vector>

namespace orvix::test {

template <class Real>
struct OneOperand {
    const char* name;
    void (*library)(Real, Real, Real*, Real*);
    void (*model)(Real, Real, Real*, Real*);
};

template <class Real>
struct TwoOperands {
    const char* name;
    void (*library)(Real, Real, Real, Real, Real*, Real*);
    void (*model)(Real, Real, Real, Real, Real*, Real*);
};

template <class Real>
void PrintTo(const OneOperand<Real>& functions, std::ostream* out) {
    *out << functions.name;
}

template <class Real>
void PrintTo(const TwoOperands<Real>& functions, std::ostream* out) {
    *out << functions.name;
}

// What a call leaves behind.
template <class Real>
struct Outcome {
    Real re = 47;
    Real im = 47;
    bool flag = false;

    bool operator==(const Outcome& other) const {
        return same(re, other.re) && same(im, other.im) && flag == other.flag;
    }
    friend void PrintTo(const Outcome& outcome, std::ostream* out) {
        *out << std::hexfloat << '(' << outcome.re << ", " << outcome.im << ") flag " << outcome.flag;
    }
};

template <class Real, class Function, class... Operands>
Outcome<Real> library_outcome(Function function, Operands... operands) {
    Outcome<Real> outcome;
    gmath_clr_ematherr();
    function(operands..., &outcome.re, &outcome.im);
    outcome.flag = gmath_ematherr();
    return outcome;
}

template <class Real, class Function, class... Operands>
Outcome<Real> model_outcome(Function function, Operands... operands) {
    Outcome<Real> outcome;
    model::flag = false;
    function(operands..., &outcome.re, &outcome.im);
    outcome.flag = model::flag;
    return outcome;
}

template <class Real, class Functions, class... Operands>
void expect_agreement(const Functions& functions, Operands... operands) {
    const auto library = library_outcome<Real>(functions.library, operands...);
    const auto expected = model_outcome<Real>(functions.model, operands...);
    if (library == expected) return;
    std::ostringstream text;
    text << std::hexfloat;
    ((text << operands << ' '), ...);
    EXPECT_EQ(library, expected) << "for " << text.str();
}

template <class Real>
void expect_agreement_everywhere(const OneOperand<Real>& functions) {
    const std::vector<Real> values = special_values<Real>();
    for (const Real x : values)
        for (const Real y : values) expect_agreement<Real>(functions, x, y);

    const std::uint64_t seed = std::random_device{}();
    SCOPED_TRACE(seed);
    RandomReals<Real> random(seed);
    for (int i = 0; i < 200'000 && !testing::Test::HasFailure(); ++i) {
        const Real x = random.next();
        expect_agreement<Real>(functions, x, random.next());
    }
}

template <class Real>
void expect_agreement_everywhere(const TwoOperands<Real>& functions) {
    const std::vector<Real> values = few_special_values<Real>();
    for (const Real x : values)
        for (const Real y : values)
            for (const Real u : values)
                for (const Real v : values) expect_agreement<Real>(functions, x, y, u, v);

    const std::uint64_t seed = std::random_device{}();
    SCOPED_TRACE(seed);
    RandomReals<Real> random(seed);
    for (int i = 0; i < 200'000 && !testing::Test::HasFailure(); ++i) {
        const Real x = random.next();
        const Real y = random.next();
        const Real u = random.next();
        expect_agreement<Real>(functions, x, y, u, random.next());
    }
}

// Names a parameterised test after its function.
inline constexpr auto function_name = [](const auto& info) { return std::string(info.param.name); };

}  // namespace orvix::test
