// Small RAII owners for device contexts, selected GDI objects, GDI objects,
// global memory locks, the clipboard, global and local blocks and global
// atoms. Every DC, selection, lock and
// clipboard open in the library goes through one of these, so that no path
// (early return included) leaks a GDI object or leaves a block locked.
#pragma once

#include <windows.h>

namespace fk {

// GetDC / ReleaseDC.
class WindowDC {
public:
    explicit WindowDC(HWND h) : h_(h), dc_(GetDC(h)) {}
    ~WindowDC() {
        if (dc_) ReleaseDC(h_, dc_);
    }
    WindowDC(const WindowDC&) = delete;
    WindowDC& operator=(const WindowDC&) = delete;
    HDC get() const { return dc_; }
    operator HDC() const { return dc_; }
    // Releases now and returns ReleaseDC's result.
    int release() {
        int r = dc_ ? ReleaseDC(h_, dc_) : 0;
        dc_ = nullptr;
        return r;
    }

private:
    HWND h_;
    HDC dc_;
};

// BeginPaint / EndPaint.
class PaintDC {
public:
    explicit PaintDC(HWND h) : h_(h) { dc_ = BeginPaint(h, &ps_); }
    ~PaintDC() {
        if (dc_) EndPaint(h_, &ps_);
    }
    PaintDC(const PaintDC&) = delete;
    PaintDC& operator=(const PaintDC&) = delete;
    HDC get() const { return dc_; }
    operator HDC() const { return dc_; }
    const PAINTSTRUCT& paint() const { return ps_; }
    // Ends painting now and returns EndPaint's result.
    int release() {
        int r = dc_ ? EndPaint(h_, &ps_) : 0;
        dc_ = nullptr;
        return r;
    }

private:
    HWND h_;
    PAINTSTRUCT ps_{};
    HDC dc_;
};

// Selects an object into a DC and puts the previous one back.
class SelectObj {
public:
    SelectObj(HDC dc, HGDIOBJ obj) : dc_(dc), old_(obj ? SelectObject(dc, obj) : nullptr) {}
    ~SelectObj() {
        if (old_) SelectObject(dc_, old_);
    }
    SelectObj(const SelectObj&) = delete;
    SelectObj& operator=(const SelectObj&) = delete;
    HGDIOBJ previous() const { return old_; }

private:
    HDC dc_;
    HGDIOBJ old_;
};

// Puts a realized palette into a device context for as long as it lives.
class RealizedPalette {
public:
    RealizedPalette(HDC dc, HPALETTE palette) : dc_(dc), old_(palette ? SelectPalette(dc, palette, FALSE) : nullptr) {
        if (old_) RealizePalette(dc);
    }
    ~RealizedPalette() {
        if (old_) SelectPalette(dc_, old_, FALSE);
    }
    RealizedPalette(const RealizedPalette&) = delete;
    RealizedPalette& operator=(const RealizedPalette&) = delete;

private:
    HDC dc_;
    HPALETTE old_;
};

// Owns a GDI object (pen, brush, font, bitmap, region) and deletes it.
template <typename T>
class GdiObject {
public:
    GdiObject() = default;
    explicit GdiObject(T obj) : obj_(obj) {}
    ~GdiObject() { reset(); }
    GdiObject(GdiObject&& o) noexcept : obj_(o.obj_) { o.obj_ = nullptr; }
    GdiObject& operator=(GdiObject&& o) noexcept {
        if (this != &o) {
            reset();
            obj_ = o.obj_;
            o.obj_ = nullptr;
        }
        return *this;
    }
    void reset(T obj = nullptr) {
        if (obj_) DeleteObject(obj_);
        obj_ = obj;
    }
    T get() const { return obj_; }
    operator T() const { return obj_; }

private:
    T obj_ = nullptr;
};
using Pen = GdiObject<HPEN>;
using Brush = GdiObject<HBRUSH>;
using Font = GdiObject<HFONT>;
using Bitmap = GdiObject<HBITMAP>;

// Owns an icon (or cursor) and destroys it.
class IconHandle {
public:
    explicit IconHandle(HICON icon = nullptr) : icon_(icon) {}
    ~IconHandle() { if (icon_) DestroyIcon(icon_); }
    IconHandle(const IconHandle&) = delete;
    IconHandle& operator=(const IconHandle&) = delete;
    HICON get() const { return icon_; }

private:
    HICON icon_;
};

// CreateCompatibleDC / DeleteDC.
class MemoryDC {
public:
    explicit MemoryDC(HDC like) : dc_(CreateCompatibleDC(like)) {}
    ~MemoryDC() { if (dc_) DeleteDC(dc_); }
    MemoryDC(const MemoryDC&) = delete;
    MemoryDC& operator=(const MemoryDC&) = delete;
    HDC get() const { return dc_; }
    operator HDC() const { return dc_; }

private:
    HDC dc_;
};


// GlobalLock / GlobalUnlock on a block the caller owns.

// GlobalLock / GlobalUnlock on a block the caller owns. A handle that names
// no block (dead, or a wild number from a partner) is not locked: GlobalLock
// would probe it as an address, and under some emulators that probe's fault
// escapes the system's own guard; GlobalSize only looks it up.
template <typename T = void>
class GlobalLocked {
public:
    explicit GlobalLocked(HGLOBAL block)
        : block_(block), p_(block && GlobalSize(block) != 0 ? static_cast<T*>(GlobalLock(block)) : nullptr) {}
    ~GlobalLocked() {
        if (p_) GlobalUnlock(block_);
    }
    GlobalLocked(const GlobalLocked&) = delete;
    GlobalLocked& operator=(const GlobalLocked&) = delete;
    T* get() const { return p_; }
    explicit operator bool() const { return p_ != nullptr; }
    // Size of the block in bytes (0 when it could not be locked).
    SIZE_T size() const { return p_ ? GlobalSize(block_) : 0; }

private:
    HGLOBAL block_;
    T* p_;
};

// OpenClipboard / CloseClipboard.
class ClipboardOpen {
public:
    explicit ClipboardOpen(HWND owner) : open_(OpenClipboard(owner) != FALSE) {}
    ~ClipboardOpen() {
        if (open_) CloseClipboard();
    }
    ClipboardOpen(const ClipboardOpen&) = delete;
    ClipboardOpen& operator=(const ClipboardOpen&) = delete;
    explicit operator bool() const { return open_; }

private:
    bool open_;
};

// One owner of a handle that one call gives back (Close). release() hands
// the handle over (posted to a partner, kept by the caller) so that the
// owner no longer gives it back.
template <typename T, auto Close>
class Owned {
public:
    Owned() = default;
    explicit Owned(T handle) : handle_(handle) {}
    ~Owned() { reset(); }
    Owned(Owned&& o) noexcept : handle_(o.release()) {}
    Owned& operator=(Owned&& o) noexcept {
        if (this != &o) reset(o.release());
        return *this;
    }
    T get() const { return handle_; }
    explicit operator bool() const { return handle_ != T{}; }
    T release() {
        const T handle = handle_;
        handle_ = T{};
        return handle;
    }
    void reset(T handle = T{}) {
        if (handle_ != T{}) Close(handle_);
        handle_ = handle;
    }

private:
    T handle_{};
};
using GlobalBlock = Owned<HGLOBAL, GlobalFree>;     // GlobalAlloc / GlobalFree
using LocalBlock = Owned<HLOCAL, LocalFree>;        // LocalAlloc / LocalFree
using GlobalAtom = Owned<ATOM, GlobalDeleteAtom>;  // GlobalAddAtom / GlobalDeleteAtom

}  // namespace fk
