#include "store/Bits.h"

namespace hv {

bool Apply_Bit(long& mask, long flag, bool on) {
    // 2 to the power 31, minus 1: the clearing mask never holds bit 31.
    constexpr long kLow31 = (1L << 31) - 1;
    if (on)
        mask = mask | flag;
    else
        mask = mask & (kLow31 ^ flag);
    return true;
}

} // namespace hv
