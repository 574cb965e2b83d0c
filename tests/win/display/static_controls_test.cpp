// The frame, 3D text and line controls: caption placement, the caption gap
// that paints nothing, line orientation, transparency to the mouse and the
// small messages.

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "include/fldkit.h"
#include "tests/support/recorder.h"
#include "tests/support/window.h"
#include "tests/win/display/pixels.h"

namespace {

constexpr COLORREF kBlack = RGB(0, 0, 0);
constexpr COLORREF kWhite = RGB(255, 255, 255);

HWND Make(HWND parent, const char* cls, DWORD style, const char* text, int x, int y, int w, int h) {
    return CreateWindowExA(0, cls, text, WS_CHILD | WS_VISIBLE | style, x, y, w, h, parent,
                           reinterpret_cast<HMENU>(7), GetModuleHandleA(nullptr), nullptr);
}

SIZE TextSize(HWND control, const char* text) {
    HDC dc = GetDC(control);
    HGDIOBJ old = SelectObject(dc, reinterpret_cast<HFONT>(SendMessageA(control, WM_GETFONT, 0, 0)));
    SIZE size{};
    GetTextExtentPoint32A(dc, text, static_cast<int>(std::strlen(text)), &size);
    if (old) SelectObject(dc, old);
    ReleaseDC(control, dc);
    return size;
}

// Leftmost and rightmost column with a pixel of `colour` in rows [top, bottom).
std::pair<int, int> ColumnsOf(const fktest::Capture& pixels, COLORREF colour, int top, int bottom) {
    int first = -1, last = -1;
    for (int x = 0; x < pixels.width(); ++x)
        for (int y = top; y < bottom; ++y)
            if (pixels.at(x, y) == colour) {
                if (first < 0) first = x;
                last = x;
                break;
            }
    return {first, last};
}

struct CaptionCase {
    DWORD style;
    const char* what;
};

// The flat caption is drawn in the parent's static colours (black text) at
// x = 8, R - w - 8 or (R - w) / 2.
TEST(Frame3D, CaptionSitsLeftCenterOrRight) {
    const CaptionCase cases[] = {{FRAME3D_LEFT, "left"},
                                 {FRAME3D_RIGHT, "right"},
                                 {FRAME3D_CENTER, "center"},
                                 {0, "no position bit: centre"},
                                 {FRAME3D_LEFT | FRAME3D_RIGHT, "left wins"}};
    auto parent = fktest::MakeParent(nullptr, 300, 200);
    const char* caption = "Caption";
    for (const CaptionCase& c : cases) {
        fktest::UniqueWindow frame(Make(parent, "gxFrame3D32", TEXT3D_FLAT | c.style, caption, 0, 0, 201, 100));
        fktest::PaintNow(parent);
        fktest::Capture pixels(frame);
        const SIZE size = TextSize(frame, caption);
        const int want = (c.style & FRAME3D_LEFT) ? 8 : (c.style & FRAME3D_RIGHT) ? 201 - size.cx - 8
                                                                                   : (201 - size.cx) / 2;
        auto [first, last] = ColumnsOf(pixels, kBlack, 0, size.cy);
        EXPECT_GE(first, want) << c.what;
        EXPECT_LE(first, want + 3) << c.what;
        EXPECT_LT(last, want + size.cx) << c.what;
        EXPECT_GE(last, want + size.cx - 4) << c.what;
    }
}

// Raised and inset frames draw their dark grey lines where the look says;
// "FRAME3D_BLACK" makes them black.
TEST(Frame3D, RaisedAndInsetLines) {
    auto parent = fktest::MakeParent(nullptr, 300, 200);
    const COLORREF grey = RGB(128, 128, 128);
    const struct {
        DWORD style;
        int x, y;
        COLORREF colour;
    } probes[] = {
        {0, 50, 99, grey},                 // raised: bottom line at B-1
        {0, 199, 50, grey},                // right line at R-1
        {0, 1, 50, grey},                  // inner line at L+1
        {0, 0, 50, kWhite},                // white outline at L
        {0, 50, 4, kWhite},                // white outline at T+4
        {0, 50, 5, grey},                  // inner line at T+5
        {FRAME3D_INSET, 0, 50, grey},      // inset: left line at L
        {FRAME3D_INSET, 50, 4, grey},      // top line at T+4
        {FRAME3D_INSET, 1, 50, kWhite},    // white outline from L+1
        {FRAME3D_INSET, 50, 98, grey},     // inner line at B-2
        {FRAME3D_INSET, 198, 50, grey},    // inner line at R-2
        {FRAME3D_INSET, 199, 50, kWhite},  // white outline to R
        {FRAME3D_BLACK, 50, 99, kBlack},
        {FRAME3D_BLACK | FRAME3D_INSET, 0, 50, kBlack},
    };
    for (const auto& p : probes) {
        fktest::UniqueWindow frame(Make(parent, "gxFrame3D32", p.style, "", 0, 0, 200, 100));
        fktest::PaintNow(parent);
        fktest::Capture pixels(frame);
        EXPECT_EQ(pixels.at(p.x, p.y), p.colour) << std::hex << p.style << std::dec << " at " << p.x << "," << p.y;
    }
}

// The caption's gap is filled with the hollow brush, so the parent's static
// brush never shows; only the lettering's own background covers the line.
TEST(Frame3D, CaptionGapPaintsNothing) {
    fktest::RecordingParent parent(300, 200);
    HBRUSH red = CreateSolidBrush(RGB(255, 0, 0));
    parent.reply = [&](UINT msg, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (msg == WM_CTLCOLORSTATIC) return reinterpret_cast<LRESULT>(red);
        return std::nullopt;
    };
    for (DWORD style : {DWORD{TEXT3D_FLAT}, DWORD{TEXT3D_HEAVYRAISED}, DWORD{TEXT3D_LIGHTINSET}}) {
        fktest::UniqueWindow frame(Make(parent, "gxFrame3D32", style, "Group", 0, 0, 200, 100));
        fktest::PaintNow(parent);
        fktest::Capture pixels(frame);
        for (int y = 0; y < 100; ++y)
            for (int x = 0; x < 200; ++x) ASSERT_NE(pixels.at(x, y), RGB(255, 0, 0)) << x << "," << y;
        EXPECT_FALSE(parent.Of(WM_CTLCOLORSTATIC).empty());
    }
    parent.reply = nullptr;
    DeleteObject(red);
}

// An empty caption leaves the top line whole.
TEST(Frame3D, EmptyCaptionLeavesNoGap) {
    auto parent = fktest::MakeParent(nullptr, 300, 200);
    fktest::UniqueWindow frame(Make(parent, "gxFrame3D32", FRAME3D_INSET, "", 0, 0, 200, 100));
    fktest::PaintNow(parent);
    fktest::Capture pixels(frame);
    for (int x = 0; x < 200; ++x) ASSERT_EQ(pixels.at(x, 4), RGB(128, 128, 128)) << x;
}

struct LineCase {
    DWORD style;
    const char* what;
    bool horizontal;
};

TEST(Line, OrientationFromTheStyle) {
    const LineCase cases[] = {{GXLINE_HORIZONTAL, "horizontal", true},
                              {GXLINE_VERTICAL, "vertical", false},
                              {0, "neither bit: vertical", false},
                              {GXLINE_VERTICAL | GXLINE_HORIZONTAL, "both: horizontal paints", true}};
    auto parent = fktest::MakeParent(nullptr, 300, 200);
    const COLORREF shadow = GetSysColor(COLOR_BTNSHADOW);
    for (const LineCase& c : cases) {
        fktest::UniqueWindow line(Make(parent, "gxLine32", c.style, "", 20, 20, 40, 40));
        fktest::PaintNow(parent);
        fktest::FillClient(parent, RGB(0, 128, 128));
        RedrawWindow(line, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        fktest::Capture pixels(line);
        for (int i = 0; i < 40; ++i) {
            const int x2 = c.horizontal ? i : 2, y2 = c.horizontal ? 2 : i;
            const int x3 = c.horizontal ? i : 3, y3 = c.horizontal ? 3 : i;
            ASSERT_EQ(pixels.at(x2, y2), shadow) << c.what << " " << i;
            ASSERT_EQ(pixels.at(x3, y3), kWhite) << c.what << " " << i;
        }
        // No erasing: the rest keeps what lay beneath.
        EXPECT_EQ(pixels.at(20, 20), RGB(0, 128, 128)) << c.what;
    }
}

// Clicks on a frame or a line reach the window beneath; the 3D text keeps
// the default hit test.
TEST(StaticControls, FrameAndLineAreTransparentToTheMouse) {
    auto parent = fktest::MakeParent(nullptr, 300, 200);
    for (const char* cls : {"gxFrame3D32", "gxLine32"}) {
        fktest::UniqueWindow control(Make(parent, cls, 0, "", 10, 10, 100, 60));
        EXPECT_EQ(SendMessageA(control, WM_NCHITTEST, 0, MAKELPARAM(40, 40)), HTTRANSPARENT) << cls;
        POINT inside{50, 50};
        ClientToScreen(parent, &inside);
        EXPECT_NE(WindowFromPoint(inside), control.get()) << cls;
    }
    fktest::UniqueWindow text(Make(parent, "gxText3D32", 0, "x", 10, 10, 100, 60));
    POINT inside{50, 50};
    ClientToScreen(parent, &inside);
    EXPECT_EQ(WindowFromPoint(inside), text.get());
}

// 0x00C5 keeps a 16-bit word that GXM_GETLIMIT reads back.
TEST(StaticControls, SettingWordIsSixteenBits) {
    auto parent = fktest::MakeParent();
    for (const char* cls : {"gxFrame3D32", "gxText3D32"}) {
        fktest::UniqueWindow control(Make(parent, cls, 0, "", 10, 10, 100, 60));
        EXPECT_EQ(SendMessageA(control, GXM_GETLIMIT, 0, 0), 0) << cls;
        EXPECT_EQ(SendMessageA(control, 0x00C5, 0x12345, 0), 0x2345) << cls;
        EXPECT_EQ(SendMessageA(control, GXM_GETLIMIT, 0, 0), 0x2345) << cls;
    }
}

// The 3D text erases with the parent's static brush and draws its text in
// the parent's colours, centred when asked; grayed when disabled.
TEST(Text3D, ErasesWithTheParentBrushAndCentresItsText) {
    fktest::RecordingParent parent(300, 200);
    HBRUSH yellow = CreateSolidBrush(RGB(255, 255, 0));
    parent.reply = [&](UINT msg, WPARAM wp, LPARAM) -> std::optional<LRESULT> {
        if (msg != WM_CTLCOLORSTATIC) return std::nullopt;
        SetTextColor(reinterpret_cast<HDC>(wp), RGB(0, 0, 255));
        return reinterpret_cast<LRESULT>(yellow);
    };
    fktest::UniqueWindow text(Make(parent, "gxText3D32", TEXT3D_FLAT | TEXT3D_CENTER, "Hello", 10, 10, 200, 40));
    fktest::PaintNow(parent);
    fktest::Capture pixels(text);
    EXPECT_EQ(pixels.at(1, 1), RGB(255, 255, 0));
    const SIZE size = TextSize(text, "Hello");
    auto [first, last] = ColumnsOf(pixels, RGB(0, 0, 255), 0, 40);
    const int x = (200 - size.cx) / 2 + 1;
    EXPECT_GE(first, x);
    EXPECT_LE(first, x + 3);
    EXPECT_LT(last, x + size.cx);

    EnableWindow(text, FALSE);
    fktest::PaintNow(parent);
    fktest::Capture grayed(text);
    EXPECT_EQ(ColumnsOf(grayed, RGB(0, 0, 255), 0, 40).first, -1);
    parent.reply = nullptr;
    DeleteObject(yellow);
}

}  // namespace
