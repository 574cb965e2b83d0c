// The five border levels, pixel by pixel: drawn on a 32-bit canvas for the
// colour-device strokes, and by twDraw3D on a real parent, whose screen here
// (true colour) reports -1 colours and so takes the black strokes.
//
// twDraw3D takes its device context from the control's parent, so the
// colour-device strokes cannot be reached through it on a true-colour
// screen. The drawing itself (display/bevel.cpp) is built into this test
// and run with the colour decision given, on a DIB section; the decision
// (NUMCOLORS read as a signed 16-bit number) is tested natively.

#include <gtest/gtest.h>
#include <windows.h>

#include <cstdio>

// Wine keeps no count of a process's GDI objects (GetGuiResources answers
// 0), so the pens of the border drawing are counted here instead: the
// drawing is built into this test with CreatePen and DeleteObject routed
// through these two.
namespace pen_count {
int live = 0;
HPEN Create(int style, int width, COLORREF colour) {
    HPEN pen = ::CreatePen(style, width, colour);
    if (pen) ++live;
    return pen;
}
BOOL Delete(HGDIOBJ object) {
    if (object && GetObjectType(object) == OBJ_PEN) --live;
    return ::DeleteObject(object);
}
}  // namespace pen_count
#define CreatePen pen_count::Create
#define DeleteObject pen_count::Delete
#include "display/bevel.cpp"
#undef CreatePen
#undef DeleteObject
#include "include/fldkit.h"
#include "tests/support/window.h"
#include "tests/win/display/pixels.h"

namespace {

constexpr COLORREF kBackground = RGB(0, 128, 128);
constexpr COLORREF kBlack = RGB(0, 0, 0);
constexpr COLORREF kWhite = RGB(255, 255, 255);
constexpr COLORREF kGrey = RGB(192, 192, 192);
// The control: (40, 40) to (100, 70), right and bottom exclusive.
constexpr RECT kWindow{40, 40, 100, 70};

// S shadow, H highlight, G light grey, K black, D the four-pixel shadow
// (always the system colour), B untouched.
struct Probe {
    int x, y;
    char role;
};

struct LevelCase {
    WORD level;
    const char* name;
    std::vector<Probe> probes;
};

const std::vector<LevelCase>& Levels() {
    static const std::vector<LevelCase> cases = {
        {1, "heavy indent",
         {{38, 55, 'S'}, {39, 55, 'S'}, {70, 38, 'S'}, {70, 39, 'S'}, {100, 55, 'H'}, {101, 55, 'H'},
          {70, 70, 'H'}, {70, 71, 'H'}, {37, 55, 'B'}, {102, 55, 'B'}, {70, 37, 'B'}, {70, 72, 'B'},
          {41, 55, 'B'}, {38, 71, 'S'}, {101, 38, 'H'}}},
        {2, "shadow",
         {{40, 55, 'K'}, {70, 40, 'K'}, {99, 55, 'K'}, {70, 69, 'K'}, {41, 55, 'B'}, {39, 55, 'B'},
          {102, 60, 'D'}, {70, 72, 'D'}, {102, 40, 'B'}, {30, 72, 'B'}, {100, 41, 'B'}}},
        {4, "outdent",
         {{38, 55, 'H'}, {39, 55, 'H'}, {70, 38, 'H'}, {70, 39, 'H'}, {100, 55, 'S'}, {101, 55, 'S'},
          {70, 70, 'S'}, {70, 71, 'S'}, {37, 55, 'B'}, {102, 55, 'B'}, {41, 55, 'B'}}},
        {8, "indent frame",
         {{38, 55, 'S'}, {39, 55, 'H'}, {70, 38, 'S'}, {70, 39, 'H'}, {101, 55, 'H'}, {100, 55, 'S'},
          {70, 71, 'H'}, {70, 70, 'S'}, {37, 55, 'B'}, {102, 55, 'B'}}},
        {16, "light indent (drawn by hand)",
         {{38, 55, 'B'}, {39, 55, 'S'}, {40, 55, 'K'}, {70, 38, 'B'}, {70, 39, 'S'}, {70, 40, 'K'},
          {101, 55, 'H'}, {100, 55, 'G'}, {102, 55, 'B'}, {70, 70, 'H'}, {70, 69, 'G'}, {70, 71, 'B'}}},
    };
    return cases;
}

COLORREF Expected(char role, bool colour) {
    switch (role) {
    case 'S': return colour ? GetSysColor(COLOR_BTNSHADOW) : kBlack;
    case 'H': return colour ? kWhite : kBlack;
    case 'G': return colour ? kGrey : kBlack;
    case 'K': return kBlack;
    case 'D': return GetSysColor(COLOR_BTNSHADOW);
    default: return kBackground;
    }
}

std::string Hex(COLORREF c) {
    char text[16];
    std::snprintf(text, sizeof text, "%06lX", static_cast<unsigned long>(c));
    return text;
}

template <typename Pixels>
void CheckProbes(const Pixels& pixels, const LevelCase& c, bool colour) {
    for (const Probe& p : c.probes) {
        EXPECT_EQ(Hex(pixels.at(p.x, p.y)), Hex(Expected(p.role, colour)))
            << c.name << " (" << c.level << ") at " << p.x << "," << p.y << " role " << p.role
            << (colour ? " colour" : " black");
    }
}

TEST(Bevel, EveryLevelOnAColourDevice) {
    for (const LevelCase& c : Levels()) {
        fktest::Canvas canvas(140, 110, kBackground);
        fk::DrawBevel(canvas.dc(), kWindow, c.level, true, false);
        CheckProbes(canvas, c, true);
    }
}

TEST(Bevel, EveryLevelInBlackOnAMonochromeDecision) {
    for (const LevelCase& c : Levels()) {
        fktest::Canvas canvas(140, 110, kBackground);
        fk::DrawBevel(canvas.dc(), kWindow, c.level, false, false);
        CheckProbes(canvas, c, false);
    }
}

// Pens are made per stroke, deleted and put back: none outlives a border,
// the canvas keeps its own pen and brush, and an unknown level draws
// nothing.
TEST(Bevel, LeavesNoPenBehind) {
    fktest::Canvas canvas(140, 110, kBackground);
    HGDIOBJ pen = GetCurrentObject(canvas.dc(), OBJ_PEN);
    HGDIOBJ brush = GetCurrentObject(canvas.dc(), OBJ_BRUSH);
    for (int i = 0; i < 12; ++i) {
        for (WORD level : {1, 2, 4, 8, 16}) {
            const int before = pen_count::live;
            fk::DrawBevel(canvas.dc(), kWindow, level, i % 2 == 0, i % 3 == 0);
            ASSERT_EQ(pen_count::live, before) << "level " << level;
        }
    }
    EXPECT_EQ(GetCurrentObject(canvas.dc(), OBJ_PEN), pen);
    EXPECT_EQ(GetCurrentObject(canvas.dc(), OBJ_BRUSH), brush);

    fktest::Canvas blank(140, 110, kBackground);
    for (WORD level : {0, 3, 5, 32, 0xFFFF}) fk::DrawBevel(blank.dc(), kWindow, level, true, true);
    for (int y = 0; y < 110; y += 3)
        for (int x = 0; x < 140; x += 3) ASSERT_EQ(blank.at(x, y), kBackground) << x << "," << y;
}

// twDraw3D on a real parent.
class Draw3D : public ::testing::Test {
protected:
    void SetUp() override {
        parent_ = fktest::MakeParent(nullptr, 200, 160);
        control_ = fktest::UniqueWindow(CreateWindowExA(0, "static", "", WS_CHILD | WS_VISIBLE, kWindow.left,
                                                        kWindow.top, kWindow.right - kWindow.left,
                                                        kWindow.bottom - kWindow.top, parent_, nullptr,
                                                        GetModuleHandleA(nullptr), nullptr));
        ASSERT_NE(control_.get(), nullptr);
        fktest::PaintNow(parent_);
    }
    fktest::Capture DrawAndCapture(WORD level, int* result = nullptr) {
        fktest::FillClient(parent_, kBackground);
        int r = twDraw3D(control_, level);
        if (result) *result = r;
        return fktest::Capture(parent_);
    }
    bool ScreenReportsColour() {
        HDC dc = GetDC(parent_);
        int n = GetDeviceCaps(dc, NUMCOLORS);
        ReleaseDC(parent_, dc);
        return static_cast<short>(n) > 2;
    }
    fktest::UniqueWindow parent_;
    fktest::UniqueWindow control_;
};

TEST_F(Draw3D, TrueColourScreenDrawsInBlack) {
    if (ScreenReportsColour()) GTEST_SKIP() << "this screen reports a colour count; the black strokes need -1";
    for (const LevelCase& c : Levels()) {
        if (c.level == 16) continue;  // the new look draws the system's edge instead
        int result = -1;
        fktest::Capture pixels = DrawAndCapture(c.level, &result);
        EXPECT_EQ(result, 0);
        CheckProbes(pixels, c, false);
    }
}

// With the new look (Windows 4 and later, as Wine reports) the light indent
// is the system's sunken edge around the grown rectangle (38,38)-(102,71).
TEST_F(Draw3D, LightIndentIsTheSystemSunkenEdge) {
    fktest::Capture pixels = DrawAndCapture(16);
    const struct {
        int x, y, sysColor;
    } probes[] = {{38, 55, COLOR_BTNSHADOW},    {39, 55, COLOR_3DDKSHADOW}, {70, 38, COLOR_BTNSHADOW},
                  {70, 39, COLOR_3DDKSHADOW},   {101, 55, COLOR_BTNHIGHLIGHT}, {100, 55, COLOR_3DLIGHT},
                  {70, 70, COLOR_BTNHIGHLIGHT}, {70, 69, COLOR_3DLIGHT}};
    for (const auto& p : probes)
        EXPECT_EQ(Hex(pixels.at(p.x, p.y)), Hex(GetSysColor(p.sysColor))) << p.x << "," << p.y;
    EXPECT_EQ(pixels.at(37, 55), kBackground);
    EXPECT_EQ(pixels.at(70, 71), kBackground);
}

TEST_F(Draw3D, HiddenControlDrawsNothingAndTopLevelWindowReturnsOne) {
    ShowWindow(control_, SW_HIDE);
    int result = -1;
    fktest::Capture pixels = DrawAndCapture(1, &result);
    EXPECT_EQ(result, 0);
    for (int x = 30; x < 110; ++x) ASSERT_EQ(pixels.at(x, 39), kBackground) << x;
    EXPECT_EQ(twDraw3D(parent_, 1), 1);
    EXPECT_EQ(twDraw3D(nullptr, 1), 0);
}

// Each class picks its level from its own bits in WM_NCPAINT. The controls
// carry WS_BORDER: the system sends WM_NCPAINT only to windows with a
// non-client area.
struct ClassCase {
    const char* cls;
    DWORD style;
    const char* what;
    int x, y;
    char role;  // as above; 'E' the system's sunken edge (outer shadow)
};

const ClassCase kClassCases[] = {
    {"gxTicker32", TICK_3D1, "ticker heavy indent", 38, 55, 'K'},
    {"gxTicker32", TICK_3D2, "ticker shadow", 102, 60, 'D'},
    {"gxTicker32", TICK_3D3 | TICK_3D1, "ticker first bit wins", 101, 55, 'K'},
    {"gxTicker32", 0, "ticker without bits: system edge", 38, 55, 'E'},
    {"gxColor32", COLOR_3D5, "colour 3D5 is the outdent, not the edge", 38, 55, 'K'},
    {"gxColor32", COLOR_3D4, "colour 3D4 is the outdent, not the groove", 37, 55, 'B'},
    {"gxColor32", 0, "colour without bits: system edge", 38, 55, 'E'},
    {"gxText3D32", TEXT3D_3D4, "3D text groove", 38, 55, 'K'},
    {"gxText3D32", 0, "3D text without bits: nothing of ours", 38, 55, 'B'},
    {"gxFrame3D32", 0, "frame draws no border", 38, 55, 'B'},
};

TEST_F(Draw3D, ControlsPickTheirBorderInNcPaint) {
    const bool colour = ScreenReportsColour();
    if (colour) GTEST_SKIP() << "expects the black strokes of a true-colour screen";
    for (const ClassCase& c : kClassCases) {
        fktest::UniqueWindow control(CreateWindowExA(0, c.cls, "", WS_CHILD | WS_VISIBLE | WS_BORDER | c.style, 40,
                                                     40, 60, 30, parent_, nullptr, GetModuleHandleA(nullptr),
                                                     nullptr));
        ASSERT_NE(control.get(), nullptr) << c.cls;
        ShowWindow(control_, SW_HIDE);
        fktest::PaintNow(parent_);
        fktest::FillClient(parent_, kBackground);
        RedrawWindow(control, nullptr, nullptr, RDW_FRAME | RDW_INVALIDATE | RDW_UPDATENOW);
        fktest::Capture pixels(parent_);
        COLORREF want = c.role == 'E' ? GetSysColor(COLOR_BTNSHADOW) : Expected(c.role, false);
        EXPECT_EQ(Hex(pixels.at(c.x, c.y)), Hex(want)) << c.what;
    }
}

// Hiding a bordered ticker wipes the border it drew on the parent: the
// parent's area under the client grown by 6 on each side is invalidated.
TEST_F(Draw3D, HidingABorderedTickerRefreshesItsParent) {
    fktest::UniqueWindow ticker(CreateWindowExA(0, "gxTicker32", "", WS_CHILD | WS_VISIBLE | WS_BORDER | TICK_3D1,
                                                40, 40, 60, 30, parent_, nullptr, GetModuleHandleA(nullptr),
                                                nullptr));
    ShowWindow(control_, SW_HIDE);
    fktest::PaintNow(parent_);
    ValidateRect(parent_, nullptr);
    ShowWindow(ticker, SW_HIDE);
    RECT update{};
    ASSERT_TRUE(GetUpdateRect(parent_, &update, FALSE));
    EXPECT_EQ(update.left, 41 - 6);
    EXPECT_EQ(update.top, 41 - 6);
    EXPECT_EQ(update.right, 99 + 6);
    EXPECT_EQ(update.bottom, 69 + 6);

    // Without a border bit only what the system uncovers is repainted.
    fktest::UniqueWindow plain(CreateWindowExA(0, "gxTicker32", "", WS_CHILD | WS_VISIBLE, 120, 40, 60, 30, parent_,
                                               nullptr, GetModuleHandleA(nullptr), nullptr));
    fktest::PaintNow(parent_);
    ValidateRect(parent_, nullptr);
    ShowWindow(plain, SW_HIDE);
    ASSERT_TRUE(GetUpdateRect(parent_, &update, FALSE));
    EXPECT_EQ(update.left, 120);
    EXPECT_EQ(update.top, 40);
    EXPECT_EQ(update.right, 180);
    EXPECT_EQ(update.bottom, 70);
}

}  // namespace
