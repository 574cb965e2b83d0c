// Pixel capture for the display tests: a window's client area copied into
// a 32-bit DIB section, read back as COLORREF values.
#pragma once

#include <windows.h>

#include <cstdint>
#include <vector>

namespace fktest {

// A 32-bit DIB section selected into a memory DC, for drawing code that
// takes a device context.
class Canvas {
public:
    Canvas(int width, int height, COLORREF fill) : width_(width), height_(height) {
        BITMAPINFO bi{};
        bi.bmiHeader.biSize = sizeof bi.bmiHeader;
        bi.bmiHeader.biWidth = width;
        bi.bmiHeader.biHeight = -height;
        bi.bmiHeader.biPlanes = 1;
        bi.bmiHeader.biBitCount = 32;
        bi.bmiHeader.biCompression = BI_RGB;
        dc_ = CreateCompatibleDC(nullptr);
        dib_ = CreateDIBSection(dc_, &bi, DIB_RGB_COLORS, &bits_, nullptr, 0);
        old_ = SelectObject(dc_, dib_);
        HBRUSH brush = CreateSolidBrush(fill);
        RECT r{0, 0, width, height};
        FillRect(dc_, &r, brush);
        DeleteObject(brush);
    }
    ~Canvas() {
        SelectObject(dc_, old_);
        DeleteObject(dib_);
        DeleteDC(dc_);
    }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;
    HDC dc() const { return dc_; }
    HBITMAP bitmap() const { return dib_; }
    const uint32_t* bits() const { return static_cast<const uint32_t*>(bits_); }
    COLORREF at(int x, int y) const {
        GdiFlush();
        if (x < 0 || y < 0 || x >= width_ || y >= height_) return CLR_INVALID;
        uint32_t p = bits()[static_cast<size_t>(y) * width_ + x];
        return RGB((p >> 16) & 0xFF, (p >> 8) & 0xFF, p & 0xFF);
    }

private:
    int width_, height_;
    HDC dc_;
    HBITMAP dib_;
    HGDIOBJ old_;
    void* bits_ = nullptr;
};

class Capture {
public:
    // Copies the client area of h (through its own device context).
    explicit Capture(HWND h) {
        RECT rc;
        GetClientRect(h, &rc);
        HDC dc = GetDC(h);
        Take(dc, rc.right, rc.bottom);
        ReleaseDC(h, dc);
    }
    // Copies width x height pixels of a device context.
    Capture(HDC dc, int width, int height) { Take(dc, width, height); }

    COLORREF at(int x, int y) const {
        if (x < 0 || y < 0 || x >= width_ || y >= height_) return CLR_INVALID;
        uint32_t p = pixels_[static_cast<size_t>(y) * width_ + x];
        return RGB((p >> 16) & 0xFF, (p >> 8) & 0xFF, p & 0xFF);
    }
    int width() const { return width_; }
    int height() const { return height_; }

private:
    void Take(HDC src, int width, int height) {
        width_ = width;
        height_ = height;
        Canvas copy(width, height, 0);
        BitBlt(copy.dc(), 0, 0, width, height, src, 0, 0, SRCCOPY);
        GdiFlush();
        pixels_.assign(copy.bits(), copy.bits() + static_cast<size_t>(width) * height);
    }
    int width_ = 0;
    int height_ = 0;
    std::vector<uint32_t> pixels_;
};

// Fills a window's client area with one colour through its own DC.
inline void FillClient(HWND h, COLORREF colour) {
    RECT rc;
    GetClientRect(h, &rc);
    HDC dc = GetDC(h);
    HBRUSH brush = CreateSolidBrush(colour);
    FillRect(dc, &rc, brush);
    DeleteObject(brush);
    ReleaseDC(h, dc);
}

// Paints everything pending now.
inline void PaintNow(HWND top) {
    RedrawWindow(top, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
    MSG msg;
    while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) {
        if (msg.message == WM_TIMER) continue;  // tickers advance only when a test says so
        TranslateMessage(&msg);
        DispatchMessageA(&msg);
    }
}

}  // namespace fktest
