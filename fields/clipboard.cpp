// Plain-text clipboard transfer of the entry fields, and the automatic move
// to the next control.

#include <cstring>

#include "frame/alloc.h"
#include "frame/gdi.h"
#include "include/fldkit.h"
#include "strings/lstr.h"

using namespace fk;

extern "C" int WINAPI twClipboardCopyText(HWND owner, const char* text, int max) {
    if (text == nullptr) text = "";
    if (max < 0) max = 0;
    const size_t length = strnlen(text, static_cast<size_t>(max));
    HGLOBAL block = fk::GlobalAllocate(GMEM_MOVEABLE | GMEM_ZEROINIT, length + 1);
    if (block == nullptr) return 0;
    {
        GlobalLocked<char> p(block);
        if (p) lstrncpy(p.get(), text, static_cast<int32_t>(length));
    }
    ClipboardOpen clipboard(owner);
    EmptyClipboard();
    // The clipboard owns the block once it took it.
    if (SetClipboardData(CF_TEXT, block) == nullptr) GlobalFree(block);
    return 1;
}

// At most max characters; like lstrncpy, a text of max characters or more
// arrives without a terminator. Text that the clipboard holds without a
// terminator ends with its block.
extern "C" int WINAPI twClipboardPasteText(HWND owner, char* buffer, int max) {
    if (!IsClipboardFormatAvailable(CF_TEXT)) return 0;
    ClipboardOpen clipboard(owner);
    if (!clipboard) return 0;
    HANDLE data = GetClipboardData(CF_TEXT);
    if (data == nullptr || buffer == nullptr || max <= 0) return 1;
    GlobalLocked<const char> p(data);
    if (!p) return 1;
    const size_t available = strnlen(p.get(), p.size());
    const size_t n = available < static_cast<size_t>(max) ? available : static_cast<size_t>(max);
    std::memcpy(buffer, p.get(), n);
    if (n < static_cast<size_t>(max)) buffer[n] = 0;
    return 1;
}

// Validates the field; a refused value keeps the focus in the field. A
// handle that is not a window (HWND_BROADCAST among them) is left alone:
// nothing may be sent to every top-level window in its name.
extern "C" LRESULT WINAPI twAutoTab(HWND field) {
    if (!IsWindow(field)) return 0;
    LRESULT refused = SendMessageA(field, GXM_VALIDATE, 0, 0);
    if (refused != 0) return refused;
    return SendMessageA(field, WM_KEYDOWN, VK_TAB, 0);
}
