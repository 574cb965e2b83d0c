// The five border levels pixel by pixel: display/bevel.cpp built in and drawn on
// a DIB section in colour and black, and twDraw3D on a real (true-colour) parent.

#include <gtest/gtest.h>
#include <windows.h>

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
#include "tests/win/display/pixels.h"

namespace {

constexpr COLORREF kBackground = RGB(0, 128, 128);
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
    return role == 'S' ? GetSysColor(COLOR_BTNSHADOW) : role == 'H' ? RGB(255, 255, 255) : RGB(192, 192, 192);
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

// twDraw3D on a parent whose true-colour screen reports -1 colours.
class Draw3D : public ::testing::Test {
protected:
    void SetUp() override {
        HDC dc = GetDC(parent_);
        const short colours = static_cast<short>(GetDeviceCaps(dc, NUMCOLORS));
        if (ReleaseDC(parent_, dc), colours > 2) GTEST_SKIP() << "the black strokes need a screen reporting -1 colours";
    }
    fktest::UniqueWindow parent_ = fktest::MakeParent(nullptr, 200, 160);
};

TEST_F(Draw3D, TrueColourScreenDrawsInBlack) {
    auto control = fktest::MakeChild(parent_, "static", 0, 100, 60, 30);
    fktest::PaintNow(parent_);
    for (const LevelCase& c : kLevels) {
        fktest::FillClient(parent_, kBackground);
        EXPECT_EQ(twDraw3D(control, c.level), 0);
        CheckProbes(fktest::Capture(parent_), c.level == 16 ? kSunkenEdge : c, false);
    }
    // A hidden control draws nothing; a top-level window gives 1.
    ShowWindow(control, SW_HIDE);
    fktest::FillClient(parent_, kBackground);
    EXPECT_EQ(twDraw3D(control, 1), 0);
    fktest::Capture pixels(parent_);
    for (int x = 0; x < 80; ++x) ASSERT_EQ(pixels.at(x, 9), kBackground) << x;
    EXPECT_EQ(twDraw3D(parent_, 1), 1);
    EXPECT_EQ(twDraw3D(nullptr, 1), 0);
}

// Each class picks its level in WM_NCPAINT (sent because of WS_BORDER).
TEST_F(Draw3D, ControlsPickTheirBorderInNcPaint) {
    const struct { const char* cls; DWORD style; int x, y; char role; } cases[] = {
        {"gxTicker32", TICK_3D1, 8, 25, 'K'},  {"gxTicker32", TICK_3D2, 72, 30, 'D'},
        {"gxTicker32", TICK_3D3 | TICK_3D1, 71, 25, 'K'},  // the first bit wins
        {"gxTicker32", 0, 8, 25, 'D'},         {"gxColor32", COLOR_3D5, 8, 25, 'K'},  // outdent, not the edge
        {"gxColor32", COLOR_3D4, 7, 25, 'B'},  // outdent, not the groove
        {"gxColor32", 0, 8, 25, 'D'},          {"gxText3D32", TEXT3D_3D4, 8, 25, 'K'},
        {"gxText3D32", 0, 8, 25, 'B'},         {"gxFrame3D32", 0, 8, 25, 'B'},
    };
    for (const auto& c : cases) {
        auto control = fktest::MakeChild(parent_, c.cls, WS_BORDER | c.style, 100, 60, 30);
        fktest::PaintNow(parent_);
        fktest::FillClient(parent_, kBackground);
        RedrawWindow(control, nullptr, nullptr, RDW_FRAME | RDW_INVALIDATE | RDW_UPDATENOW);
        EXPECT_EQ(fktest::Capture(parent_).at(c.x, c.y), Expected(c.role, false)) << c.cls << " " << c.style;
    }
}

}  // namespace
