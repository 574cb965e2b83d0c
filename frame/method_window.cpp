#include "frame/alloc.h"
#include "frame/method_text.h"
#include "frame/method_window.h"

#include <cstring>

#include "frame/buffers.h"
#include "frame/gdi.h"
#include "include/fldkit.h"
#include "strings/lstr.h"

namespace fk {

bool MethodSlot::set(HWND h, char* block) const {
    SetLastError(0);
    SetWindowLongPtrA(h, offset, reinterpret_cast<LONG_PTR>(block));
    return GetLastError() == 0;
}

void MethodFree(HWND h, MethodSlot slot) {
    if (char* old = slot.get(h)) {
        slot.set(h, nullptr);
        LocalFree(reinterpret_cast<HLOCAL>(old));
    }
}

char* MethodReplace(HWND h, MethodSlot slot, const char* text) {
    if (text == nullptr) {
        MethodFree(h, slot);
        return nullptr;
    }
    // The new copy is made before the old block goes: text may be the old
    // block itself.
    size_t len = strnlen(text, kMethodMax);
    LocalBlock block(fk::LocalAllocate(LMEM_ZEROINIT, len + 1));
    if (block) std::memcpy(block.get(), text, len);
    MethodFree(h, slot);
    if (!block || !slot.set(h, static_cast<char*>(block.get()))) return nullptr;
    return static_cast<char*>(block.release());
}

void MethodCopyOut(HWND h, MethodSlot slot, char* buffer) {
    if (buffer == nullptr) return;
    const char* method = slot.get(h);
    if (method == nullptr) {
        buffer[0] = '\0';
        return;
    }
    lstrncpy(buffer, method, kMethodCopy);
}

std::string MethodArgument(HWND h, MethodSlot slot, const char* keyword) {
    const char* method = slot.get(h);
    if (method == nullptr) return {};
    MethodFull copy(method);
    const char* argument = copy.param(keyword);
    return copy.found() ? argument : "";
}

LRESULT MethodWindowProc(HWND h, UINT msg, WPARAM wp, LPARAM lp, MethodSlot slot, WNDPROC base) {
    switch (msg) {
    case GXM_SETMETHOD:
        MethodReplace(h, slot, reinterpret_cast<const char*>(lp));
        return 0;
    case GXM_GETMETHOD:
        MethodCopyOut(h, slot, reinterpret_cast<char*>(lp));
        return 0;
    case WM_DESTROY:
        MethodFree(h, slot);
        break;
    }
    return base ? CallWindowProcA(base, h, msg, wp, lp) : DefWindowProcA(h, msg, wp, lp);
}

}  // namespace fk
