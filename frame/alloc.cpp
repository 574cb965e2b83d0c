#include "frame/alloc.h"

namespace fk {

namespace {
int g_failCountdown = 0;  // allocations left before the one that fails; 0: none

bool FailThisOne() {
    if (g_failCountdown <= 0) return false;
    if (--g_failCountdown > 0) return false;
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return true;
}
}  // namespace

HGLOBAL GlobalAllocate(UINT flags, SIZE_T size) { return FailThisOne() ? nullptr : GlobalAlloc(flags, size); }

HGLOBAL GlobalReallocate(HGLOBAL block, SIZE_T size, UINT flags) {
    return FailThisOne() ? nullptr : GlobalReAlloc(block, size, flags);
}

HLOCAL LocalAllocate(UINT flags, SIZE_T size) { return FailThisOne() ? nullptr : LocalAlloc(flags, size); }

}  // namespace fk

extern "C" int WINAPI fkFailAllocation(int nth) {
    const int previous = fk::g_failCountdown;
    fk::g_failCountdown = nth > 0 ? nth : 0;
    return previous;
}
