// The angle of a vector.
#pragma once

#include <cmath>
#include <numbers>

namespace orvix::gsl::math {

// The angle of the vector (x, y), -pi to pi. On the axes it is exact, pi on the negative one, whatever the sign of
// zeros; without a direction it is 0.
inline double angle(double y, double x) {
    if (std::fabs(x) > 0 && std::fabs(y) > 0) [[likely]]
        return std::atan2(y, x);
    if (x == 0) {
        if (y > 0) return std::numbers::pi / 2;
        if (y < 0) return -std::numbers::pi / 2;
        if (y == 0) return 0;
    } else if (y == 0) {
        if (x > 0) return 0;
        if (x < 0) return std::numbers::pi;
    }
    return std::atan2(y, x);  // NaN
}

}  // namespace orvix::gsl::math
