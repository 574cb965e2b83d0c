// What the drawn controls put on the screen, compared by sampled pixels: the five border levels (display/bevel.cpp
// built in and drawn on a DIB section in colour and black), frames, 3D text and lines.

#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <string>
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
#include "tests/win/display/pixels.h"

namespace {

constexpr COLORREF kBackground = RGB(0, 128, 128), kWhite = RGB(255, 255, 255);
constexpr RECT kWindow{10, 10, 70, 40};  // the bordered control, right and bottom exclusive

// Each sampled pixel as a letter: B background, H white, S the system shadow, G light grey, K black, g mid grey,
// '.' anything else.
std::string Sample(const fktest::Canvas& pixels, const std::vector<POINT>& points) {
    const COLORREF shadow = GetSysColor(COLOR_BTNSHADOW);
    const COLORREF known[] = {kBackground, kWhite, shadow, RGB(192, 192, 192), 0, RGB(128, 128, 128)};
    std::string out;
    for (POINT p : points) {
        const COLORREF* at = std::find(std::begin(known), std::end(known), pixels.at(p.x, p.y));
        out += at == std::end(known) ? '.' : "BHSGKg"[at - known];
    }
    return out;
}

// The ends, corners and widths of every level's strokes around kWindow.
const std::vector<POINT> kBevelPoints = {
    {8, 25},  {9, 25},  {40, 8},  {40, 9},  {70, 25}, {71, 25}, {40, 40}, {40, 41}, {7, 25},  {72, 25},
    {40, 7},  {40, 42}, {11, 25}, {8, 41},  {71, 8},  {72, 8},  {9, 41},  {71, 41}, {9, 40},  {10, 40},
    {70, 9},  {8, 8},   {10, 25}, {40, 10}, {69, 25}, {40, 39}, {72, 30}, {0, 42},  {72, 10}, {70, 11},
    {10, 39}, {11, 39}, {69, 39}, {69, 10}, {71, 9},  {71, 40}, {70, 10}};
const struct { WORD level; const char* colour; const char* black; } kLevels[] = {
    {1, "SSSSHHHHBBBBBSHBHHSHHSBBBBBBBHBBBBHHH", "KKKKKKKKBBBBBKKBKKKKKKBBBBBBBKBBBBKKK"},
    {2, "BBBBSSSSBSBSBBBBBSBBBBKKKKSBBBKKKKBSB", "BBBBSSSSBSBSBBBBBSBBBBKKKKSBBBKKKKBSB"},
    {4, "HHHHSSSSBBBBBHSBSSHSSHBBBBBBBSBBBBSSS", "KKKKKKKKBBBBBKKBKKKKKKBBBBBBBKBBBBKKK"},
    {8, "SHSHSHSHBBBBBSHBHHHSSSBBBBBBBSBBBBHHS", "KKKKKKKKBBBBBKKBKKKKKKBBBBBBBKBBBBKKK"},
    {16, "BSBSGHHBBBBBBBBBBBSHSBKKBGBBBGKGGKHHG", "BKBKKKKBBBBBBBBBBBKKKBKKBKBBBKKKKKKKK"},
};
// With the new look (Wine's) twDraw3D draws the light indent as the system's sunken edge.
// Both stroke sets of every level; no pen outlives a border and an unknown level draws nothing.
TEST(Bevel, EveryLevelInColourAndInBlack) {
    for (const auto& c : kLevels)
        for (bool colour : {true, false}) {
            fktest::Canvas canvas(140, 110, kBackground);
            HGDIOBJ pen = GetCurrentObject(canvas.dc, OBJ_PEN);
            const int before = pen_count::live;
            fk::DrawBevel(canvas.dc, kWindow, c.level, colour, false);
            EXPECT_TRUE(pen_count::live == before && GetCurrentObject(canvas.dc, OBJ_PEN) == pen) << c.level;
            EXPECT_EQ(Sample(canvas, kBevelPoints), colour ? c.colour : c.black) << c.level << " " << colour;
        }
    fktest::Canvas blank(140, 110, kBackground);
    for (WORD level : {0, 3, 5, 32, 0xFFFF}) fk::DrawBevel(blank.dc, kWindow, level, true, true);
    EXPECT_EQ(Sample(blank, kBevelPoints), std::string(kBevelPoints.size(), 'B'));
}

// The bounds of one colour's pixels in a capture, above row `height` ({1000, 1000, -1, -1} when none).
RECT Edges(const fktest::Canvas& pixels, COLORREF colour, int height = 1000) {
    RECT r{1000, 1000, -1, -1};
    for (int y = 0; y < std::min(pixels.h, height); ++y)
        for (int x = 0; x < pixels.w; ++x)
            if (pixels.at(x, y) == colour)
                r = {std::min<LONG>(r.left, x), std::min<LONG>(r.top, y), std::max<LONG>(r.right, x),
                     std::max<LONG>(r.bottom, y)};
    return r;
}

// A 60 x 40 frame's etched lines at their ends and corners (g its grey, H white, '.' what lies inside); a caption
// at x = 8, R - w - 8 or (R - w) / 2 has its ink exactly where the same text drawn at that x has it.
TEST(Frame3D, EtchedLinesEndAndCaptionsSitWhereTheyShould) {
    const std::vector<POINT> points = {
        {0, 39}, {58, 39}, {59, 39}, {59, 4},  {59, 3},  {1, 37},  {1, 38}, {1, 6},  {1, 5},  {57, 5},  {58, 5},
        {0, 4},  {58, 4},  {58, 38}, {0, 38},  {0, 3},   {2, 36},  {0, 5},  {59, 5}, {1, 39}, {2, 38},  {57, 38},
        {58, 6}, {1, 4},   {3, 37}};
    auto parent = fktest::MakeParent(nullptr, 300, 200);
    for (auto [style, want] :
         {std::pair{DWORD(0), "gggg.gHgggHHHHH..HggHHHH."}, {FRAME3D_INSET, "gHHg.HHHHHHgggg..gHHgggg."}}) {
        auto frame = fktest::MakeChild(parent, "gxFrame3D32", style, 7, 60, 40);
        fktest::PaintNow(parent);
        EXPECT_EQ(Sample(fktest::Canvas(frame), points), want) << style;
    }
    for (DWORD style : {FRAME3D_RIGHT, FRAME3D_CENTER, FRAME3D_LEFT | FRAME3D_RIGHT}) {
        auto frame = fktest::MakeChild(parent, "gxFrame3D32", TEXT3D_FLAT | style, 7, 201, 100, "Caption");
        fktest::PaintNow(parent);
        fktest::Canvas alone(201, 100, kWhite);
        SelectObject(alone.dc, reinterpret_cast<HFONT>(SendMessageA(frame, WM_GETFONT, 0, 0)));
        SIZE size{};
        GetTextExtentPoint32A(alone.dc, "Caption", 7, &size);
        const int x = (style & FRAME3D_LEFT) ? 8 : (style & FRAME3D_RIGHT) ? 201 - size.cx - 8 : (201 - size.cx) / 2;
        TextOutA(alone.dc, x, 0, "Caption", 7);
        const RECT ink = Edges(fktest::Canvas(frame), 0, size.cy), wanted = Edges(alone, 0, size.cy);
        EXPECT_EQ(ink.left * 1000 + ink.right, wanted.left * 1000 + wanted.right) << style;
    }
}

// The highlight (white) and shadow copies of 3D text lie one pixel off the text: up and left of it when raised,
// down and right when inset. Compared at the copy's outer edge, which no later copy covers.
TEST(Text3D, HighlightAndShadowLieOnePixelOff) {
    const struct { DWORD style; int white, grey; } cases[] = {  // offsets from the text; 0: not drawn
        {TEXT3D_LIGHTRAISED, -1, 0}, {TEXT3D_HEAVYRAISED, -1, 1}, {TEXT3D_HEAVYINSET, 1, -1}, {TEXT3D_FLAT, 0, 0}};
    auto parent = fktest::MakeParent(nullptr, 300, 200);
    HFONT sharp = CreateFontA(-16, 0, 0, 0, FW_BOLD, 0, 0, 0, ANSI_CHARSET, 0, 0, NONANTIALIASED_QUALITY, 0, "Tahoma");
    for (const auto& c : cases) {
        auto text = fktest::MakeChild(parent, "gxText3D32", c.style, 7, 100, 40, "Wm");
        SendMessageA(text, WM_SETFONT, reinterpret_cast<WPARAM>(sharp), 0);
        fktest::PaintNow(parent);
        fktest::Canvas pixels(text);
        const RECT ink = Edges(pixels, 0);
        for (auto [colour, off] : {std::pair{kWhite, c.white}, std::pair{GetSysColor(COLOR_BTNSHADOW), c.grey}}) {
            const RECT r = Edges(pixels, colour);
            const LONG dx = off < 0 ? r.left - ink.left : r.right - ink.right;
            const LONG dy = off < 0 ? r.top - ink.top : r.bottom - ink.bottom;
            EXPECT_TRUE(off == 0 ? r.right == -1 : ink.right >= 0 && dx == off && dy == off) << c.style << " " << off;
        }
    }
    DeleteObject(sharp);
}

// A line is horizontal with its horizontal bit, whatever else is set, else vertical: shadow at 2, white at 3.
// Frame and line let clicks through, the 3D text not; 0x00C5 keeps a 16-bit word.
TEST(StaticControls, LineOrientationTransparencyAndTheSettingWord) {
    auto parent = fktest::MakeParent(nullptr, 300, 200);
    for (DWORD style : {GXLINE_HORIZONTAL, 0, GXLINE_VERTICAL | GXLINE_HORIZONTAL}) {
        auto line = fktest::MakeChild(parent, "gxLine32", style, 7, 40, 40);
        fktest::PaintNow(parent);
        const std::string got = Sample(fktest::Canvas(line), {{0, 2}, {39, 2}, {0, 3}, {39, 3}, {2, 39}, {3, 39}});
        EXPECT_EQ(got, style & GXLINE_HORIZONTAL ? "SSHH.." : "....SH") << style;
    }
    for (const char* cls : {"gxFrame3D32", "gxLine32", "gxText3D32"}) {
        auto control = fktest::MakeChild(parent, cls, 0, 7, 100, 60, "x");
        EXPECT_EQ(SendMessageA(control, WM_NCHITTEST, 0, MAKELPARAM(40, 40)) == HTTRANSPARENT, cls[2] != 'T') << cls;
        if (cls[2] == 'L') continue;
        EXPECT_EQ(SendMessageA(control, 0x00C5, 0x12345, 0), 0x2345) << cls;
        EXPECT_EQ(SendMessageA(control, GXM_GETLIMIT, 0, 0), 0x2345) << cls;
    }
}

}  // namespace
