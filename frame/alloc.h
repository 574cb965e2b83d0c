// Every global and local allocation of the library goes through here, so
// that tests can make the nth one fail (fkFailAllocation) and check that
// each caller ends its step quietly, leaking nothing.
#pragma once

#include <windows.h>

namespace fk {
HGLOBAL GlobalAllocate(UINT flags, SIZE_T size);
HGLOBAL GlobalReallocate(HGLOBAL block, SIZE_T size, UINT flags);
HLOCAL LocalAllocate(UINT flags, SIZE_T size);
}  // namespace fk

// Test seam, exported but not part of the public header: the nth
// allocation from now fails once (0 disarms). Returns the previous setting.
extern "C" int WINAPI fkFailAllocation(int nth);
