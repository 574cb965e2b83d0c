// gxLine32: the etched separator line.
#pragma once

#include <windows.h>

namespace fk {
// Not exported under a name of its own; only the class registration uses it.
LRESULT WINAPI gxLineWndFn(HWND h, UINT msg, WPARAM wp, LPARAM lp);
}
