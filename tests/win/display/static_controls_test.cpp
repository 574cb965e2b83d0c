// Frame captions, line orientation, transparency to the mouse and the setting word.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <vector>

#include "include/fldkit.h"
#include "tests/support/recorder.h"
#include "tests/win/display/pixels.h"

namespace {

constexpr COLORREF kRed = RGB(255, 0, 0), kWhite = RGB(255, 255, 255);

// Caption at x = 8, R - w - 8 or (R - w) / 2; its gap stays hollow (no red brush).
TEST(Frame3D, CaptionSitsLeftCenterOrRight) {
    fktest::RecordingParent parent(300, 200);
    HBRUSH red = CreateSolidBrush(kRed);
    parent.reply = [&](UINT msg, WPARAM, LPARAM) -> std::optional<LRESULT> {
        return msg == WM_CTLCOLORSTATIC ? std::optional(reinterpret_cast<LRESULT>(red)) : std::nullopt;
    };
    for (int style : {FRAME3D_LEFT, FRAME3D_RIGHT, FRAME3D_CENTER, 0, FRAME3D_LEFT | FRAME3D_RIGHT}) {
        auto frame = fktest::MakeChild(parent, "gxFrame3D32", TEXT3D_FLAT | style, 7, 201, 100, "Caption");
        fktest::PaintNow(parent);
        fktest::Capture pixels(frame);
        HDC dc = GetDC(frame);
        HGDIOBJ old = SelectObject(dc, reinterpret_cast<HFONT>(SendMessageA(frame, WM_GETFONT, 0, 0)));
        SIZE size{};
        GetTextExtentPoint32A(dc, "Caption", 7, &size);
        ReleaseDC(frame, (SelectObject(dc, old), dc));
        const int want = (style & FRAME3D_LEFT) ? 8 : (style & FRAME3D_RIGHT) ? 201 - size.cx - 8 : (201 - size.cx) / 2;
        int first = -1, last = -1;
        for (int x = 0; x < 201; ++x)
            for (int y = 0; y < 100; ++y) {
                ASSERT_NE(pixels.at(x, y), kRed) << x << "," << y;
                if (y < size.cy && pixels.at(x, y) == 0) last = x, first = first < 0 ? x : first;
            }
        EXPECT_TRUE(first >= want && first <= want + 3) << style << ": " << first << " for " << want;
        EXPECT_TRUE(last < want + size.cx && last >= want + size.cx - 4) << style << ": " << last << " for " << want;
    }
    EXPECT_FALSE(parent.Of(WM_CTLCOLORSTATIC).empty());
    parent.reply = nullptr;
    DeleteObject(red);
}

// The etched lines of a 60 x 40 frame without caption, at their ends and corners: G the frame's grey, W white,
// B what lies inside the frame.
TEST(Frame3D, EtchedLinesEndWhereTheyShould) {
    struct Probe { int x, y; char role; };
    const struct { DWORD style; std::vector<Probe> probes; } cases[] = {
        {0, {{0, 39, 'G'}, {58, 39, 'G'}, {59, 39, 'G'}, {59, 4, 'G'}, {59, 3, 'B'}, {1, 37, 'G'}, {1, 38, 'W'},
             {1, 6, 'G'}, {1, 5, 'G'}, {57, 5, 'G'}, {58, 5, 'W'}, {0, 4, 'W'}, {58, 4, 'W'}, {58, 38, 'W'},
             {0, 38, 'W'}, {0, 3, 'B'}, {2, 36, 'B'}}},
        {FRAME3D_INSET, {{0, 39, 'G'}, {0, 5, 'G'}, {0, 4, 'G'}, {59, 4, 'G'}, {1, 5, 'W'}, {59, 5, 'W'}, {59, 39, 'W'},
                         {1, 39, 'W'}, {2, 38, 'G'}, {57, 38, 'G'}, {58, 38, 'G'}, {58, 6, 'G'}, {58, 5, 'W'},
                         {1, 38, 'W'}, {0, 3, 'B'}, {1, 4, 'G'}, {3, 37, 'B'}}},
    };
    auto parent = fktest::MakeParent(nullptr, 200, 120);
    for (const auto& c : cases) {
        auto frame = fktest::MakeChild(parent, "gxFrame3D32", c.style, 7, 60, 40);
        fktest::PaintNow(parent);
        fktest::Capture pixels(frame);
        const COLORREF inside = pixels.at(30, 20);
        ASSERT_TRUE(inside != kWhite && inside != RGB(128, 128, 128));
        for (const Probe& p : c.probes)
            EXPECT_EQ(pixels.at(p.x, p.y), p.role == 'G' ? RGB(128, 128, 128) : p.role == 'W' ? kWhite : inside)
                << c.style << " at " << p.x << "," << p.y;
    }
}

// The highlight (white) and shadow (grey) copies of 3D text lie one pixel off the text: up and left of it when
// raised, down and right when inset. Compared at the copy's outer edge, which no later copy covers.
TEST(Text3D, HighlightAndShadowLieOnePixelOff) {
    const struct { DWORD style; int white, grey; } cases[] = {  // offsets from the text; 0: not drawn
        {TEXT3D_LIGHTRAISED, -1, 0}, {TEXT3D_HEAVYRAISED, -1, 1}, {TEXT3D_LIGHTINSET, 1, 0},
        {TEXT3D_HEAVYINSET, 1, -1}, {TEXT3D_FLAT, 0, 0}};
    fktest::RecordingParent parent(300, 200);
    HBRUSH teal = CreateSolidBrush(RGB(0, 128, 128));
    parent.reply = [&](UINT msg, WPARAM wp, LPARAM) -> std::optional<LRESULT> {
        if (msg != WM_CTLCOLORSTATIC) return std::nullopt;
        SetTextColor(reinterpret_cast<HDC>(wp), 0);
        return reinterpret_cast<LRESULT>(teal);
    };
    HFONT sharp = CreateFontA(-16, 0, 0, 0, FW_BOLD, 0, 0, 0, ANSI_CHARSET, 0, 0, NONANTIALIASED_QUALITY, 0, "Tahoma");
    const COLORREF grey = GetSysColor(COLOR_BTNSHADOW);
    for (const auto& c : cases) {
        auto text = fktest::MakeChild(parent, "gxText3D32", c.style, 7, 100, 40, "Wm");
        SendMessageA(text, WM_SETFONT, reinterpret_cast<WPARAM>(sharp), 0);
        fktest::PaintNow(parent);
        fktest::Capture pixels(text);
        auto edges = [&](COLORREF colour) {  // left, top, right, bottom of the pixels of that colour
            RECT r{1000, 1000, -1, -1};
            for (int y = 0; y < pixels.h; ++y)
                for (int x = 0; x < pixels.w; ++x)
                    if (pixels.at(x, y) == colour)
                        r = {std::min<LONG>(r.left, x), std::min<LONG>(r.top, y), std::max<LONG>(r.right, x),
                             std::max<LONG>(r.bottom, y)};
            return r;
        };
        const RECT ink = edges(0);
        ASSERT_GE(ink.right, 0) << c.style;
        for (auto [colour, off] : {std::pair{kWhite, c.white}, std::pair{grey, c.grey}}) {
            const RECT r = edges(colour);
            if (off == 0) EXPECT_EQ(r.right, -1) << c.style;
            else if (off < 0) EXPECT_TRUE(r.left == ink.left + off && r.top == ink.top + off) << c.style;
            else EXPECT_TRUE(r.right == ink.right + off && r.bottom == ink.bottom + off) << c.style;
        }
    }
    parent.reply = nullptr;
    DeleteObject(teal), DeleteObject(sharp);
}

TEST(Line, OrientationFromTheStyle) {
    const struct { DWORD style; bool horizontal; } cases[] = {
        {GXLINE_HORIZONTAL, true}, {GXLINE_VERTICAL, false}, {0, false}, {GXLINE_VERTICAL | GXLINE_HORIZONTAL, true}};
    auto parent = fktest::MakeParent(nullptr, 300, 200);
    for (const auto& c : cases) {
        auto line = fktest::MakeChild(parent, "gxLine32", c.style, 7, 40, 40);
        fktest::PaintNow(parent);
        fktest::FillClient(parent, RGB(0, 128, 128));
        RedrawWindow(line, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        fktest::Capture pixels(line);
        for (int i = 0; i < 40; ++i) {
            ASSERT_EQ(pixels.at(c.horizontal ? i : 2, c.horizontal ? 2 : i), GetSysColor(COLOR_BTNSHADOW)) << c.style;
            ASSERT_EQ(pixels.at(c.horizontal ? i : 3, c.horizontal ? 3 : i), kWhite) << c.style << " " << i;
        }
        EXPECT_EQ(pixels.at(20, 20), RGB(0, 128, 128)) << "no erasing, style " << c.style;
    }
}

// Frame and line let clicks through, the 3D text not; 0x00C5 keeps a 16-bit word.
TEST(StaticControls, TransparencyAndTheSettingWord) {
    auto parent = fktest::MakeParent(nullptr, 300, 200);
    for (const char* cls : {"gxFrame3D32", "gxLine32", "gxText3D32"}) {
        auto control = fktest::MakeChild(parent, cls, 0, 7, 100, 60, "x");
        const bool transparent = std::strcmp(cls, "gxText3D32") != 0;
        EXPECT_EQ(SendMessageA(control, WM_NCHITTEST, 0, MAKELPARAM(40, 40)) == HTTRANSPARENT, transparent) << cls;
        if (!std::strcmp(cls, "gxLine32")) continue;
        EXPECT_EQ(SendMessageA(control, GXM_GETLIMIT, 0, 0), 0) << cls;
        EXPECT_EQ(SendMessageA(control, 0x00C5, 0x12345, 0), 0x2345) << cls;
        EXPECT_EQ(SendMessageA(control, GXM_GETLIMIT, 0, 0), 0x2345) << cls;
    }
}

}  // namespace
