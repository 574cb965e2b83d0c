// What the drawn controls put on the screen, pixel by pixel: the five border levels (display/bevel.cpp built in and
// drawn on a DIB section in colour and black, twDraw3D on a real true-colour parent), frames, 3D text and lines.

#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <cstring>
#include <vector>

// Wine keeps no count of GDI objects, so the drawing's pens are counted here.
namespace pen_count {
int live = 0;
HPEN Create(int style, int width, COLORREF colour) { ++live; return ::CreatePen(style, width, colour); }
BOOL Delete(HGDIOBJ object) { live -= GetObjectType(object) == OBJ_PEN; return ::DeleteObject(object); }
}  // namespace pen_count
#define CreatePen pen_count::Create
#define DeleteObject pen_count::Delete
#include "display/bevel.cpp"
#undef CreatePen
#undef DeleteObject
#include "include/fldkit.h"
#include "tests/support/recorder.h"
#include "tests/win/display/pixels.h"

namespace {

constexpr COLORREF kBackground = RGB(0, 128, 128), kWhite = RGB(255, 255, 255), kGrey = RGB(128, 128, 128);
constexpr RECT kWindow{10, 10, 70, 40};  // the control, right and bottom exclusive

// Roles: S shadow, H highlight, G light grey, K black, D system shadow (the drop shadow), B untouched;
// d, h, l the system's dark shadow, highlight and light.
struct Probe { int x, y; char role; };
struct LevelCase { WORD level; std::vector<Probe> probes; };
const LevelCase kLevels[] = {
    {1, {{8, 25, 'S'}, {9, 25, 'S'}, {40, 8, 'S'}, {40, 9, 'S'}, {70, 25, 'H'}, {71, 25, 'H'}, {40, 40, 'H'},
         {40, 41, 'H'}, {7, 25, 'B'}, {72, 25, 'B'}, {40, 7, 'B'}, {40, 42, 'B'}, {11, 25, 'B'}, {8, 41, 'S'},
         {71, 8, 'H'}, {72, 8, 'B'}, {9, 41, 'H'}, {71, 41, 'H'}, {9, 40, 'S'}, {10, 40, 'H'}, {70, 9, 'H'}, {8, 8, 'S'}}},
    {2, {{10, 25, 'K'}, {40, 10, 'K'}, {69, 25, 'K'}, {40, 39, 'K'}, {11, 25, 'B'}, {9, 25, 'B'}, {72, 30, 'D'},
         {40, 42, 'D'}, {72, 10, 'B'}, {0, 42, 'B'}, {70, 11, 'B'}, {10, 39, 'K'}, {11, 39, 'K'}, {69, 39, 'K'}, {69, 10, 'K'}}},
    {4, {{8, 25, 'H'}, {9, 25, 'H'}, {40, 8, 'H'}, {40, 9, 'H'}, {70, 25, 'S'}, {71, 25, 'S'}, {40, 40, 'S'},
         {40, 41, 'S'}, {7, 25, 'B'}, {72, 25, 'B'}, {11, 25, 'B'}, {72, 8, 'B'}, {9, 41, 'S'}, {71, 41, 'S'},
         {9, 40, 'H'}, {10, 40, 'S'}, {70, 9, 'S'}, {8, 8, 'H'}}},
    {8, {{8, 25, 'S'}, {9, 25, 'H'}, {40, 8, 'S'}, {40, 9, 'H'}, {71, 25, 'H'}, {70, 25, 'S'}, {40, 41, 'H'},
         {40, 40, 'S'}, {7, 25, 'B'}, {72, 25, 'B'}, {72, 8, 'B'}, {9, 41, 'H'}, {71, 41, 'H'}, {9, 40, 'H'},
         {10, 40, 'S'}, {70, 9, 'S'}, {8, 8, 'S'}}},
    {16, {{8, 25, 'B'}, {9, 25, 'S'}, {10, 25, 'K'}, {40, 8, 'B'}, {40, 9, 'S'}, {40, 10, 'K'}, {71, 25, 'H'},
          {70, 25, 'G'}, {72, 25, 'B'}, {40, 40, 'H'}, {40, 39, 'G'}, {40, 41, 'B'}, {9, 40, 'S'}, {10, 40, 'H'},
          {71, 9, 'H'}, {70, 9, 'S'}, {71, 40, 'H'}, {10, 39, 'K'}, {11, 39, 'G'}, {70, 10, 'G'}, {69, 10, 'K'}}},
};
// With the new look (Wine's) the light indent is the system's sunken edge.
const LevelCase kSunkenEdge{16, {{8, 25, 'D'}, {9, 25, 'd'}, {40, 8, 'D'}, {40, 9, 'd'}, {71, 25, 'h'},
                                 {70, 25, 'l'}, {40, 40, 'h'}, {40, 39, 'l'}, {7, 25, 'B'}, {40, 41, 'B'}}};

COLORREF Expected(char role, bool colour) {
    const char* const roles = "Ddhl";
    const int system[] = {COLOR_BTNSHADOW, COLOR_3DDKSHADOW, COLOR_BTNHIGHLIGHT, COLOR_3DLIGHT};
    if (const char* at = std::strchr(roles, role)) return GetSysColor(system[at - roles]);
    if (role == 'B') return kBackground;
    if (!colour || role == 'K') return 0;
    return role == 'S' ? GetSysColor(COLOR_BTNSHADOW) : role == 'H' ? kWhite : RGB(192, 192, 192);
}

void CheckProbes(const fktest::Canvas& pixels, const LevelCase& c, bool colour) {
    for (const Probe& p : c.probes)
        EXPECT_EQ(pixels.at(p.x, p.y), Expected(p.role, colour))
            << "level " << c.level << " at " << p.x << "," << p.y << (colour ? " colour" : " black");
}

// Both stroke sets; no pen outlives a border and an unknown level draws nothing.
TEST(Bevel, EveryLevelInColourAndInBlack) {
    for (bool colour : {true, false}) {
        for (const LevelCase& c : kLevels) {
            fktest::Canvas canvas(140, 110, kBackground);
            HGDIOBJ pen = GetCurrentObject(canvas.dc, OBJ_PEN);
            const int before = pen_count::live;
            fk::DrawBevel(canvas.dc, kWindow, c.level, colour, false);
            EXPECT_EQ(pen_count::live, before) << c.level;
            EXPECT_EQ(GetCurrentObject(canvas.dc, OBJ_PEN), pen) << c.level;
            CheckProbes(canvas, c, colour);
        }
    }
    fktest::Canvas blank(140, 110, kBackground);
    for (WORD level : {0, 3, 5, 32, 0xFFFF}) fk::DrawBevel(blank.dc, kWindow, level, true, true);
    for (int y = 0; y < 110; y += 3)
        for (int x = 0; x < 140; x += 3) ASSERT_EQ(blank.at(x, y), kBackground) << x << "," << y;
}

// twDraw3D on a parent whose true-colour screen reports -1 colours draws in black; each class picks its level in
// WM_NCPAINT (sent because of WS_BORDER).
TEST(Draw3D, TrueColourScreenDrawsInBlackAndEachClassPicksItsLevel) {
    auto parent = fktest::MakeParent(nullptr, 200, 160);
    HDC dc = GetDC(parent);
    const short colours = static_cast<short>(GetDeviceCaps(dc, NUMCOLORS));
    if (ReleaseDC(parent, dc), colours > 2) GTEST_SKIP() << "the black strokes need a screen reporting -1 colours";
    auto control = fktest::MakeChild(parent, "static", 0, 100, 60, 30);
    fktest::PaintNow(parent);
    for (const LevelCase& c : kLevels) {
        fktest::FillClient(parent, kBackground);
        EXPECT_EQ(twDraw3D(control, c.level), 0);
        CheckProbes(fktest::Capture(parent), c.level == 16 ? kSunkenEdge : c, false);
    }
    // A hidden control draws nothing; a top-level window gives 1.
    ShowWindow(control, SW_HIDE);
    fktest::FillClient(parent, kBackground);
    EXPECT_EQ(twDraw3D(control, 1), 0);
    fktest::Capture pixels(parent);
    for (int x = 0; x < 80; ++x) ASSERT_EQ(pixels.at(x, 9), kBackground) << x;
    EXPECT_EQ(twDraw3D(parent, 1), 1);
    EXPECT_EQ(twDraw3D(nullptr, 1), 0);
    const struct { const char* cls; DWORD style; int x, y; char role; } cases[] = {
        {"gxTicker32", TICK_3D1, 8, 25, 'K'},  {"gxTicker32", TICK_3D2, 72, 30, 'D'},
        {"gxTicker32", TICK_3D3 | TICK_3D1, 71, 25, 'K'},  // the first bit wins
        {"gxTicker32", 0, 8, 25, 'D'},         {"gxColor32", COLOR_3D5, 8, 25, 'K'},  // outdent, not the edge
        {"gxColor32", COLOR_3D4, 7, 25, 'B'},  // outdent, not the groove
        {"gxColor32", 0, 8, 25, 'D'},          {"gxText3D32", TEXT3D_3D4, 8, 25, 'K'},
        {"gxText3D32", 0, 8, 25, 'B'},         {"gxFrame3D32", 0, 8, 25, 'B'},
    };
    for (const auto& c : cases) {
        auto bordered = fktest::MakeChild(parent, c.cls, WS_BORDER | c.style, 100, 60, 30);
        fktest::PaintNow(parent);
        fktest::FillClient(parent, kBackground);
        RedrawWindow(bordered, nullptr, nullptr, RDW_FRAME | RDW_INVALIDATE | RDW_UPDATENOW);
        EXPECT_EQ(fktest::Capture(parent).at(c.x, c.y), Expected(c.role, false)) << c.cls << " " << c.style;
    }
}

// A parent answering WM_CTLCOLORSTATIC with a brush of the given colour and black text.
struct ColouredParent : fktest::RecordingParent {
    explicit ColouredParent(COLORREF colour) : RecordingParent(300, 200), brush(CreateSolidBrush(colour)) {
        reply = [this](UINT msg, WPARAM wp, LPARAM) -> std::optional<LRESULT> {
            if (msg != WM_CTLCOLORSTATIC) return std::nullopt;
            SetTextColor(reinterpret_cast<HDC>(wp), 0);
            return reinterpret_cast<LRESULT>(brush);
        };
    }
    ~ColouredParent() { reply = nullptr, DeleteObject(brush); }
    HBRUSH brush;
};

// The pixels of one colour in a capture: left, top, right, bottom ({1000, 1000, -1, -1} when none).
RECT Edges(const fktest::Capture& pixels, COLORREF colour, int height = 1000) {
    RECT r{1000, 1000, -1, -1};
    for (int y = 0; y < std::min(pixels.h, height); ++y)
        for (int x = 0; x < pixels.w; ++x)
            if (pixels.at(x, y) == colour)
                r = {std::min<LONG>(r.left, x), std::min<LONG>(r.top, y), std::max<LONG>(r.right, x),
                     std::max<LONG>(r.bottom, y)};
    return r;
}

// Caption at x = 8, R - w - 8 or (R - w) / 2: its ink lies exactly where the same text's ink lies drawn at that x
// on a canvas. Its gap stays hollow (no red brush).
TEST(Frame3D, CaptionSitsLeftCenterOrRight) {
    ColouredParent parent(RGB(255, 0, 0));
    for (int style : {FRAME3D_LEFT, FRAME3D_RIGHT, FRAME3D_CENTER, 0, FRAME3D_LEFT | FRAME3D_RIGHT}) {
        auto frame = fktest::MakeChild(parent, "gxFrame3D32", TEXT3D_FLAT | style, 7, 201, 100, "Caption");
        fktest::PaintNow(parent);
        fktest::Capture pixels(frame);
        fktest::Canvas alone(201, 100, kWhite);
        SelectObject(alone.dc, reinterpret_cast<HFONT>(SendMessageA(frame, WM_GETFONT, 0, 0)));
        SIZE size{};
        GetTextExtentPoint32A(alone.dc, "Caption", 7, &size);
        const int want = (style & FRAME3D_LEFT) ? 8 : (style & FRAME3D_RIGHT) ? 201 - size.cx - 8 : (201 - size.cx) / 2;
        SetBkMode(alone.dc, TRANSPARENT);
        TextOutA(alone.dc, want, 0, "Caption", 7);
        const RECT ink = Edges(pixels, 0, size.cy), wanted = Edges(alone, 0, size.cy);
        EXPECT_EQ(Edges(pixels, RGB(255, 0, 0)).right, -1) << style;
        EXPECT_EQ(ink.left, wanted.left) << style;
        EXPECT_EQ(ink.right, wanted.right) << style;
    }
    EXPECT_FALSE(parent.Of(WM_CTLCOLORSTATIC).empty());
}

// The etched lines of a 60 x 40 frame without caption, at their ends and corners: G the frame's grey, W white,
// B what lies inside the frame.
TEST(Frame3D, EtchedLinesEndWhereTheyShould) {
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
        ASSERT_TRUE(inside != kWhite && inside != kGrey);
        for (const Probe& p : c.probes)
            EXPECT_EQ(pixels.at(p.x, p.y), p.role == 'G' ? kGrey : p.role == 'W' ? kWhite : inside)
                << c.style << " at " << p.x << "," << p.y;
    }
}

// The highlight (white) and shadow (grey) copies of 3D text lie one pixel off the text: up and left of it when
// raised, down and right when inset. Compared at the copy's outer edge, which no later copy covers.
TEST(Text3D, HighlightAndShadowLieOnePixelOff) {
    const struct { DWORD style; int white, grey; } cases[] = {  // offsets from the text; 0: not drawn
        {TEXT3D_LIGHTRAISED, -1, 0}, {TEXT3D_HEAVYRAISED, -1, 1}, {TEXT3D_LIGHTINSET, 1, 0},
        {TEXT3D_HEAVYINSET, 1, -1}, {TEXT3D_FLAT, 0, 0}};
    ColouredParent parent(kBackground);
    HFONT sharp = CreateFontA(-16, 0, 0, 0, FW_BOLD, 0, 0, 0, ANSI_CHARSET, 0, 0, NONANTIALIASED_QUALITY, 0, "Tahoma");
    for (const auto& c : cases) {
        auto text = fktest::MakeChild(parent, "gxText3D32", c.style, 7, 100, 40, "Wm");
        SendMessageA(text, WM_SETFONT, reinterpret_cast<WPARAM>(sharp), 0);
        fktest::PaintNow(parent);
        fktest::Capture pixels(text);
        const RECT ink = Edges(pixels, 0);
        ASSERT_GE(ink.right, 0) << c.style;
        for (auto [colour, off] : {std::pair{kWhite, c.white}, std::pair{GetSysColor(COLOR_BTNSHADOW), c.grey}}) {
            const RECT r = Edges(pixels, colour);
            if (off == 0) EXPECT_EQ(r.right, -1) << c.style;
            else if (off < 0) EXPECT_TRUE(r.left == ink.left + off && r.top == ink.top + off) << c.style;
            else EXPECT_TRUE(r.right == ink.right + off && r.bottom == ink.bottom + off) << c.style;
        }
    }
    DeleteObject(sharp);
}

// A line's orientation comes from its style and it erases nothing; frame and line let clicks through, the 3D text
// not; 0x00C5 keeps a 16-bit word.
TEST(StaticControls, LineOrientationTransparencyAndTheSettingWord) {
    const struct { DWORD style; bool horizontal; } lines[] = {
        {GXLINE_HORIZONTAL, true}, {GXLINE_VERTICAL, false}, {0, false}, {GXLINE_VERTICAL | GXLINE_HORIZONTAL, true}};
    auto parent = fktest::MakeParent(nullptr, 300, 200);
    for (const auto& c : lines) {
        auto line = fktest::MakeChild(parent, "gxLine32", c.style, 7, 40, 40);
        fktest::PaintNow(parent);
        fktest::FillClient(parent, kBackground);
        RedrawWindow(line, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        fktest::Capture pixels(line);
        for (int i = 0; i < 40; ++i) {
            ASSERT_EQ(pixels.at(c.horizontal ? i : 2, c.horizontal ? 2 : i), GetSysColor(COLOR_BTNSHADOW)) << c.style;
            ASSERT_EQ(pixels.at(c.horizontal ? i : 3, c.horizontal ? 3 : i), kWhite) << c.style << " " << i;
        }
        EXPECT_EQ(pixels.at(20, 20), kBackground) << "no erasing, style " << c.style;
    }
    for (const char* cls : {"gxFrame3D32", "gxLine32", "gxText3D32"}) {
        auto control = fktest::MakeChild(parent, cls, 0, 7, 100, 60, "x");
        const bool line = !std::strcmp(cls, "gxLine32"), text = !std::strcmp(cls, "gxText3D32");
        EXPECT_EQ(SendMessageA(control, WM_NCHITTEST, 0, MAKELPARAM(40, 40)) == HTTRANSPARENT, !text) << cls;
        if (line) continue;
        EXPECT_EQ(SendMessageA(control, GXM_GETLIMIT, 0, 0), 0) << cls;
        EXPECT_EQ(SendMessageA(control, 0x00C5, 0x12345, 0), 0x2345) << cls;
        EXPECT_EQ(SendMessageA(control, GXM_GETLIMIT, 0, 0), 0x2345) << cls;
    }
}

}  // namespace
