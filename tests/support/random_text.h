// Random texts for tests that compare the library with a simple model. Short texts over few letters make coincidences
// (equal beginnings, repeats, matches) common.
#pragma once

#include <cstddef>
#include <random>
#include <string>
#include <string_view>

namespace orvix::test {

class RandomText {
public:
    explicit RandomText(unsigned seed) : engine_(seed) {}

    // 0 up to and including `most`.
    std::size_t number(std::size_t most) { return std::uniform_int_distribution<std::size_t>(0, most)(engine_); }

    bool coin() { return number(1) == 1; }

    // Up to `most` letters of the alphabet.
    std::string text(std::string_view alphabet, std::size_t most) {
        std::string result(number(most), '\0');
        for (char& c : result) c = alphabet[number(alphabet.size() - 1)];
        return result;
    }

private:
    std::mt19937 engine_;
};

}  // namespace orvix::test
