#include <orvix/core/floating_point.h>

#include <cfenv>

namespace orvix::core {

// Holding exceptions masks all of them, also the processor's own beyond the standard's five, such as that of x86 for
// subnormal operands. It clears the status as well, which is put back.
void mask_floating_point_traps() {
    std::fexcept_t raised;
    std::fegetexceptflag(&raised, FE_ALL_EXCEPT);
    std::fenv_t before;
    std::feholdexcept(&before);
    std::fesetexceptflag(&raised, FE_ALL_EXCEPT);
}

}  // namespace orvix::core
