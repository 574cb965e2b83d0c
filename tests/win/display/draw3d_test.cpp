// The five border levels pixel by pixel: display/bevel.cpp built in and drawn on
// a DIB section in colour and black, and twDraw3D on a real (true-colour) parent.

#include <gtest/gtest.h>
#include <windows.h>

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
constexpr RECT kWindow{40, 40, 100, 70};  // the control, right and bottom exclusive

// Roles: S shadow, H highlight, G light grey, K black, D system shadow (the drop
// shadow), B untouched; d, h, l the system's dark shadow, highlight and light.
struct Probe { int x, y; char role; };
struct LevelCase { WORD level; std::vector<Probe> probes; };
const LevelCase kLevels[] = {
    {1, {{38, 55, 'S'}, {39, 55, 'S'}, {70, 38, 'S'}, {70, 39, 'S'}, {100, 55, 'H'}, {101, 55, 'H'}, {70, 70, 'H'},
         {70, 71, 'H'}, {37, 55, 'B'}, {102, 55, 'B'}, {70, 37, 'B'}, {70, 72, 'B'}, {41, 55, 'B'}, {38, 71, 'S'},
         {101, 38, 'H'}}},
    {2, {{40, 55, 'K'}, {70, 40, 'K'}, {99, 55, 'K'}, {70, 69, 'K'}, {41, 55, 'B'}, {39, 55, 'B'}, {102, 60, 'D'},
         {70, 72, 'D'}, {102, 40, 'B'}, {30, 72, 'B'}, {100, 41, 'B'}}},
    {4, {{38, 55, 'H'}, {39, 55, 'H'}, {70, 38, 'H'}, {70, 39, 'H'}, {100, 55, 'S'}, {101, 55, 'S'}, {70, 70, 'S'},
         {70, 71, 'S'}, {37, 55, 'B'}, {102, 55, 'B'}, {41, 55, 'B'}}},
    {8, {{38, 55, 'S'}, {39, 55, 'H'}, {70, 38, 'S'}, {70, 39, 'H'}, {101, 55, 'H'}, {100, 55, 'S'}, {70, 71, 'H'},
         {70, 70, 'S'}, {37, 55, 'B'}, {102, 55, 'B'}}},
    {16, {{38, 55, 'B'}, {39, 55, 'S'}, {40, 55, 'K'}, {70, 38, 'B'}, {70, 39, 'S'}, {70, 40, 'K'}, {101, 55, 'H'},
          {100, 55, 'G'}, {102, 55, 'B'}, {70, 70, 'H'}, {70, 69, 'G'}, {70, 71, 'B'}}},
};
// With the new look (Wine's) the light indent is the system's sunken edge.
const LevelCase kSunkenEdge{16, {{38, 55, 'D'}, {39, 55, 'd'}, {70, 38, 'D'}, {70, 39, 'd'}, {101, 55, 'h'},
                                 {100, 55, 'l'}, {70, 70, 'h'}, {70, 69, 'l'}, {37, 55, 'B'}, {70, 71, 'B'}}};

COLORREF Expected(char role, bool colour) {
    switch (role) {
    case 'S': return colour ? GetSysColor(COLOR_BTNSHADOW) : 0;
    case 'H': return colour ? RGB(255, 255, 255) : 0;
    case 'G': return colour ? RGB(192, 192, 192) : 0;
    case 'K': return 0;
    case 'D': return GetSysColor(COLOR_BTNSHADOW);
    case 'd': return GetSysColor(COLOR_3DDKSHADOW);
    case 'h': return GetSysColor(COLOR_BTNHIGHLIGHT);
    case 'l': return GetSysColor(COLOR_3DLIGHT);
    default: return kBackground;
    }
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
            HGDIOBJ pen = GetCurrentObject(canvas.dc(), OBJ_PEN);
            const int before = pen_count::live;
            fk::DrawBevel(canvas.dc(), kWindow, c.level, colour, false);
            EXPECT_EQ(pen_count::live, before) << c.level;
            EXPECT_EQ(GetCurrentObject(canvas.dc(), OBJ_PEN), pen) << c.level;
            CheckProbes(canvas, c, colour);
        }
    }
    fktest::Canvas blank(140, 110, kBackground);
    for (WORD level : {0, 3, 5, 32, 0xFFFF}) fk::DrawBevel(blank.dc(), kWindow, level, true, true);
    for (int y = 0; y < 110; y += 3)
        for (int x = 0; x < 140; x += 3) ASSERT_EQ(blank.at(x, y), kBackground) << x << "," << y;
}

// twDraw3D on a parent whose true-colour screen reports -1 colours.
class Draw3D : public ::testing::Test {
protected:
    void SetUp() override {
        HDC dc = GetDC(parent_);
        const bool colour = static_cast<short>(GetDeviceCaps(dc, NUMCOLORS)) > 2;
        ReleaseDC(parent_, dc);
        if (colour) GTEST_SKIP() << "the black strokes need a screen reporting -1 colours";
    }
    fktest::UniqueWindow parent_ = fktest::MakeParent(nullptr, 200, 160);
};

TEST_F(Draw3D, TrueColourScreenDrawsInBlack) {
    auto control = fktest::Child(parent_, "static", 0, 40, 40, 60, 30);
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
    for (int x = 30; x < 110; ++x) ASSERT_EQ(pixels.at(x, 39), kBackground) << x;
    EXPECT_EQ(twDraw3D(parent_, 1), 1);
    EXPECT_EQ(twDraw3D(nullptr, 1), 0);
}

// Each class picks its level in WM_NCPAINT (sent because of WS_BORDER).
TEST_F(Draw3D, ControlsPickTheirBorderInNcPaint) {
    const struct { const char* cls; DWORD style; int x, y; char role; } cases[] = {
        {"gxTicker32", TICK_3D1, 38, 55, 'K'},  {"gxTicker32", TICK_3D2, 102, 60, 'D'},
        {"gxTicker32", TICK_3D3 | TICK_3D1, 101, 55, 'K'},  // the first bit wins
        {"gxTicker32", 0, 38, 55, 'D'},         {"gxColor32", COLOR_3D5, 38, 55, 'K'},  // outdent, not the edge
        {"gxColor32", COLOR_3D4, 37, 55, 'B'},  // outdent, not the groove
        {"gxColor32", 0, 38, 55, 'D'},          {"gxText3D32", TEXT3D_3D4, 38, 55, 'K'},
        {"gxText3D32", 0, 38, 55, 'B'},         {"gxFrame3D32", 0, 38, 55, 'B'},
    };
    for (const auto& c : cases) {
        auto control = fktest::Child(parent_, c.cls, WS_BORDER | c.style, 40, 40, 60, 30);
        fktest::PaintNow(parent_);
        fktest::FillClient(parent_, kBackground);
        RedrawWindow(control, nullptr, nullptr, RDW_FRAME | RDW_INVALIDATE | RDW_UPDATENOW);
        EXPECT_EQ(fktest::Capture(parent_).at(c.x, c.y), Expected(c.role, false)) << c.cls << " " << c.style;
    }
}

}  // namespace
