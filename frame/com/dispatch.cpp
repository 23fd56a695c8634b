#include "frame/com/dispatch.h"

namespace morvane {

namespace {
constexpr LONGLONG kLargestExactInDouble = LONGLONG{1} << 53;
} // namespace

void makeReadableByScripts(VARIANT& result) noexcept
{
    if (V_VT(&result) != VT_I8)
        return;
    const LONGLONG number = V_I8(&result);
    if (number == static_cast<LONG>(number)) {
        V_VT(&result) = VT_I4;
        V_I4(&result) = static_cast<LONG>(number);
    } else if (number >= -kLargestExactInDouble && number <= kLargestExactInDouble) {
        V_VT(&result) = VT_R8;
        V_R8(&result) = static_cast<DOUBLE>(number);
    }
}

} // namespace morvane
