// What every DDE-capable control does with its links, in one place.
#pragma once

#include <windows.h>

namespace fk {

// GXM_SETMETHOD: "@CLIENT" opens the client link and, independently,
// "@SERVER" the server link (a control with both is initiated twice).
void OpenControlLinks(HWND control, const char* method);
// WM_DESTROY: ends the links of a control that has the "CLIENT" or
// "SERVER" property and removes both properties; an item atom still held
// (by a server without clients) is deleted.
void CloseControlLinks(HWND control);
// The DDE messages 0x03E0-0x03E8: handed to twProcessDDE with a copy of the
// method string (at most 256 characters). An initiate is handed over in the
// entry fields' shared scratch buffer, where the link service looks for the
// "@CLIENT" item.
LRESULT RouteControlDde(HWND control, UINT msg, WPARAM wp, LPARAM lp, const char* method);
bool IsDdeMessage(UINT msg);

}  // namespace fk
