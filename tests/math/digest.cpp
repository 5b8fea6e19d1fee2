// Prints a digest of each function's results on fixed arguments, one line a function: "name digest". Builds that
// compute alike print the same lines, whatever compiler and options made them.
//
// NaN counts as one value, since which of many comes out is the processor's choice.

#include "support/math_arguments.h"

#include <orvix/gsl/complex_functions.h>
#include <orvix/gsl/complex_functions_single.h>
#include <orvix/gsl/real_functions.h>

#include <bit>
#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <vector>

namespace {

using orvix::test::BitsOf;
using orvix::test::few_special_values;
using orvix::test::RandomReals;
using orvix::test::special_values;

// FNV-1a over the bytes of results and flags.
class Digest {
public:
    void add(double r) { add_bits(std::isnan(r) ? UINT64_MAX : std::bit_cast<std::uint64_t>(r)); }
    void add(float r) { add_bits(std::isnan(r) ? UINT64_MAX : std::bit_cast<std::uint32_t>(r)); }
    void add(std::int32_t i) { add_bits(static_cast<std::uint32_t>(i)); }
    void add_flag() {
        add_bits(gmath_ematherr() ? 1 : 0);
        gmath_clr_ematherr();
    }
    std::uint64_t value() const { return value_; }

private:
    void add_bits(std::uint64_t bits) {
        for (int shift = 0; shift < 64; shift += 8) value_ = (value_ ^ (bits >> shift & 0xFF)) * 0x100000001B3;
    }

    std::uint64_t value_ = 0xCBF29CE484222325;
};

constexpr int random_count = 20'000;

// Calls `use` with pairs of arguments.
template <class Real, class Use>
void for_pairs(Use use) {
    const std::vector<Real> values = special_values<Real>();
    for (const Real x : values)
        for (const Real y : values) use(x, y);
    RandomReals<Real> random(1);
    for (int i = 0; i < random_count; ++i) {
        const Real x = random.next();
        use(x, random.next());
    }
}

// Calls `use` with four arguments.
template <class Real, class Use>
void for_fours(Use use) {
    const std::vector<Real> values = few_special_values<Real>();
    for (const Real x : values)
        for (const Real y : values)
            for (const Real u : values)
                for (const Real v : values) use(x, y, u, v);
    RandomReals<Real> random(1);
    for (int i = 0; i < random_count; ++i) {
        const Real x = random.next();
        const Real y = random.next();
        const Real u = random.next();
        use(x, y, u, random.next());
    }
}

void print(const char* name, const Digest& digest) { std::printf("%s %016" PRIx64 "\n", name, digest.value()); }

template <class Real>
void print(const char* name, void (*function)(Real, Real, Real*, Real*)) {
    Digest digest;
    for_pairs<Real>([&](Real x, Real y) {
        Real re;
        Real im;
        function(x, y, &re, &im);
        digest.add(re);
        digest.add(im);
        digest.add_flag();
    });
    print(name, digest);
}

template <class Real>
void print(const char* name, void (*function)(Real, Real, Real, Real, Real*, Real*)) {
    Digest digest;
    for_fours<Real>([&](Real x, Real y, Real u, Real v) {
        Real re;
        Real im;
        function(x, y, u, v, &re, &im);
        digest.add(re);
        digest.add(im);
        digest.add_flag();
    });
    print(name, digest);
}

template <class Result, class Real>
void print(const char* name, Result (*function)(Real, Real)) {
    Digest digest;
    for_pairs<Real>([&](Real x, Real y) {
        digest.add(function(x, y));
        digest.add_flag();
    });
    print(name, digest);
}

template <class Result, class Real>
void print(const char* name, Result (*function)(Real)) {
    Digest digest;
    for_pairs<Real>([&](Real x, Real y) {
        digest.add(function(x));
        digest.add(function(y));
        digest.add_flag();
    });
    print(name, digest);
}

void print_double() {
    print("gmath_cdnoadd", gmath_cdnoadd);
    print("gmath_cdnosub", gmath_cdnosub);
    print("gmath_cdnomlt", gmath_cdnomlt);
    print("gmath_cdnodiv", gmath_cdnodiv);
    print("gmath_cdnopwr", gmath_cdnopwr);
    print("gmath_cdno10x", gmath_cdno10x);
    print("gmath_cdnoacos", gmath_cdnoacos);
    print("gmath_cdnoacosh", gmath_cdnoacosh);
    print("gmath_cdnoasin", gmath_cdnoasin);
    print("gmath_cdnoasinh", gmath_cdnoasinh);
    print("gmath_cdnoatan", gmath_cdnoatan);
    print("gmath_cdnoatanh", gmath_cdnoatanh);
    print("gmath_cdnocos", gmath_cdnocos);
    print("gmath_cdnocosh", gmath_cdnocosh);
    print("gmath_cdnoexp", gmath_cdnoexp);
    print("gmath_cdnolog", gmath_cdnolog);
    print("gmath_cdnolog10", gmath_cdnolog10);
    print("gmath_cdnosin", gmath_cdnosin);
    print("gmath_cdnosinh", gmath_cdnosinh);
    print("gmath_cdnosqr", gmath_cdnosqr);
    print("gmath_cdnosqrt", gmath_cdnosqrt);
    print("gmath_cdnotan", gmath_cdnotan);
    print("gmath_cdnotanh", gmath_cdnotanh);
}

void print_single() {
    print("gmath_csnoadd", gmath_csnoadd);
    print("gmath_csnosub", gmath_csnosub);
    print("gmath_csnomlt", gmath_csnomlt);
    print("gmath_csnodiv", gmath_csnodiv);
    print("gmath_csnopwr", gmath_csnopwr);
    print("gmath_csno10x", gmath_csno10x);
    print("gmath_csnoacos", gmath_csnoacos);
    print("gmath_csnoacosh", gmath_csnoacosh);
    print("gmath_csnoasin", gmath_csnoasin);
    print("gmath_csnoasinh", gmath_csnoasinh);
    print("gmath_csnoatan", gmath_csnoatan);
    print("gmath_csnoatanh", gmath_csnoatanh);
    print("gmath_csnocos", gmath_csnocos);
    print("gmath_csnocosh", gmath_csnocosh);
    print("gmath_csnoexp", gmath_csnoexp);
    print("gmath_csnolog", gmath_csnolog);
    print("gmath_csnolog10", gmath_csnolog10);
    print("gmath_csnosin", gmath_csnosin);
    print("gmath_csnosinh", gmath_csnosinh);
    print("gmath_csnosqr", gmath_csnosqr);
    print("gmath_csnosqrt", gmath_csnosqrt);
    print("gmath_csnotan", gmath_csnotan);
    print("gmath_csnotanh", gmath_csnotanh);
}

void print_real() {
    print("gmath_magxy", gmath_magxy);
    print("gmath_snolog", gmath_snolog);
    print("gmath_snolog10", gmath_snolog10);
    print("gmath_snoacos", gmath_snoacos);
    print("gmath_snoasin", gmath_snoasin);
    print("gmath_snoatan", gmath_snoatan);
    print("gmath_snocos", gmath_snocos);
    print("gmath_snosin", gmath_snosin);
    print("gmath_snotan", gmath_snotan);
    print("gmath_snocosh", gmath_snocosh);
    print("gmath_snosinh", gmath_snosinh);
    print("gmath_snotanh", gmath_snotanh);
    print("gmath_snoexp", gmath_snoexp);
    print("gmath_sno10x", gmath_sno10x);
    print("gmath_snosqr", gmath_snosqr);
    print("gmath_snosqrt", gmath_snosqrt);
    print("gmath_snoasinh", gmath_snoasinh);
    print("gmath_snoacosh", gmath_snoacosh);
    print("gmath_snoatanh", gmath_snoatanh);
    print("gmath_snopwr", gmath_snopwr);
    print("gmath_snoatan2", gmath_snoatan2);
    print("gmath_dnoerf", gmath_dnoerf);
    print("gmath_dnoerfc", gmath_dnoerfc);
    print("gmath_dnoasinh", gmath_dnoasinh);
    print("gmath_dnoacosh", gmath_dnoacosh);
    print("gmath_dnoatanh", gmath_dnoatanh);
    print("gmath_dnoatan2", gmath_dnoatan2);
    print("gmath_eefabs", gmath_eefabs);
    print("gmath_eetrunc", gmath_eetrunc);
    print("gmath_eedtrunc", gmath_eedtrunc);
    print("gmath_eeround", gmath_eeround);
    print("gmath_eelround", gmath_eelround);
    print("gmath_eedround", gmath_eedround);
    print("square", square);
}

}  // namespace

int main() {
    print_double();
    print_single();
    print_real();
}
