// Pixels for the display and table tests: 32-bit DIB sections read back as COLORREF values; a control's text.
#pragma once

#include <windows.h>

#include <algorithm>
#include <cstdint>

#include "include/fldkit.h"
#include "tests/support/window.h"

namespace fktest {

inline RECT Client(HWND h) { RECT r{}; GetClientRect(h, &r); return r; }

struct Canvas {
    Canvas(int width, int height, COLORREF fill) : w(width), h(height) {
        BITMAPINFO bi{{sizeof(BITMAPINFOHEADER), width, -height, 1, 32, BI_RGB}};
        dib = CreateDIBSection(dc, &bi, DIB_RGB_COLORS, &bits, nullptr, 0);
        old = SelectObject(dc, dib);
        const uint32_t pixel = GetRValue(fill) << 16 | GetGValue(fill) << 8 | GetBValue(fill);
        std::fill_n(static_cast<uint32_t*>(bits), width * height, pixel);
    }
    // A copy of a window's client area, taken through its own device context.
    explicit Canvas(HWND window) : Canvas(Client(window).right, Client(window).bottom, 0) {
        HDC src = GetDC(window);
        BitBlt(dc, 0, 0, w, h, src, 0, 0, SRCCOPY);
        ReleaseDC(window, src);
    }
    ~Canvas() { SelectObject(dc, old), DeleteObject(dib), DeleteDC(dc); }
    Canvas(const Canvas&) = delete;
    COLORREF at(int x, int y) const {
        GdiFlush();
        if (x < 0 || y < 0 || x >= w || y >= h) return CLR_INVALID;
        uint32_t p = static_cast<const uint32_t*>(bits)[y * w + x];
        return RGB((p >> 16) & 0xFF, (p >> 8) & 0xFF, p & 0xFF);
    }
    int w, h;
    HDC dc = CreateCompatibleDC(nullptr);
    HBITMAP dib;
    HGDIOBJ old;
    void* bits = nullptr;
};

// Paints everything pending now; tickers advance only when a test says so.
inline void PaintNow(HWND top) {
    RedrawWindow(top, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
    MSG msg;
    while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE))
        if (msg.message != WM_TIMER) DispatchMessageA(&msg);
}

// The text a GXM_GETVALUE or GXM_GETMETHOD fills in.
inline std::string Ask(HWND h, UINT msg = GXM_GETVALUE) {
    char text[300] = {};
    SendMessageA(h, msg, 256, reinterpret_cast<LPARAM>(text));
    return text;
}

}  // namespace fktest
