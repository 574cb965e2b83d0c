// Pixels for the display tests: 32-bit DIB sections read back as COLORREF values.
#pragma once

#include <windows.h>

#include <cstdint>

#include "tests/support/window.h"

namespace fktest {

inline void FillDC(HDC dc, RECT r, COLORREF colour) {
    HBRUSH brush = CreateSolidBrush(colour);
    FillRect(dc, &r, brush);
    DeleteObject(brush);
}

class Canvas {
public:
    Canvas(int width, int height, COLORREF fill) : w_(width), h_(height) {
        BITMAPINFO bi{{sizeof(BITMAPINFOHEADER), width, -height, 1, 32, BI_RGB}};
        dc_ = CreateCompatibleDC(nullptr);
        dib_ = CreateDIBSection(dc_, &bi, DIB_RGB_COLORS, &bits_, nullptr, 0);
        old_ = SelectObject(dc_, dib_);
        FillDC(dc_, {0, 0, width, height}, fill);
    }
    ~Canvas() { SelectObject(dc_, old_); DeleteObject(dib_); DeleteDC(dc_); }
    Canvas(const Canvas&) = delete;
    HDC dc() const { return dc_; }
    int width() const { return w_; }
    int height() const { return h_; }
    COLORREF at(int x, int y) const {
        GdiFlush();
        if (x < 0 || y < 0 || x >= w_ || y >= h_) return CLR_INVALID;
        uint32_t p = static_cast<const uint32_t*>(bits_)[y * w_ + x];
        return RGB((p >> 16) & 0xFF, (p >> 8) & 0xFF, p & 0xFF);
    }

private:
    int w_, h_;
    HDC dc_;
    HBITMAP dib_;
    HGDIOBJ old_;
    void* bits_ = nullptr;
};

inline RECT Client(HWND h) { RECT r{}; GetClientRect(h, &r); return r; }

// A copy of a window's client area, taken through its own device context.
struct Capture : Canvas {
    explicit Capture(HWND h) : Canvas(Client(h).right, Client(h).bottom, 0) {
        HDC src = GetDC(h);
        BitBlt(dc(), 0, 0, width(), height(), src, 0, 0, SRCCOPY);
        ReleaseDC(h, src);
    }
};

inline void FillClient(HWND h, COLORREF colour) {
    HDC dc = GetDC(h);
    FillDC(dc, Client(h), colour);
    ReleaseDC(h, dc);
}

// Paints everything pending now; tickers advance only when a test says so.
inline void PaintNow(HWND top) {
    RedrawWindow(top, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
    MSG msg;
    while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE))
        if (msg.message != WM_TIMER) DispatchMessageA(&msg);
}

inline UniqueWindow Child(HWND parent, const char* cls, DWORD style, int x, int y, int w, int h,
                          const char* text = "", int id = 7) {
    return UniqueWindow(CreateWindowExA(0, cls, text, WS_CHILD | WS_VISIBLE | style, x, y, w, h, parent,
                                        reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleA(nullptr),
                                        nullptr));
}

}  // namespace fktest
