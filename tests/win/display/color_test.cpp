// The colour control: children and their layout, the scroll arithmetic
// (with the 16-bit page-up wrap), the value messages, moving between bars
// with the arrow keys, the channel brushes and "@PRT".

#include <gtest/gtest.h>

#include <string>

#include "include/fldkit.h"
#include "tests/support/recorder.h"
#include "tests/support/window.h"
#include "tests/win/display/pixels.h"

namespace {

constexpr int kW = 280;
constexpr int kH = 168;

class Color : public ::testing::Test {
protected:
    void SetUp() override {
        color_ = fktest::UniqueWindow(CreateWindowExA(0, "gxColor32", "", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 10, 10,
                                                      kW, kH, parent_, reinterpret_cast<HMENU>(21),
                                                      GetModuleHandleA(nullptr), nullptr));
        ASSERT_NE(color_.get(), nullptr);
        parent_.clear();
    }
    HWND Bar(int i) { return GetDlgItem(color_, i); }
    std::string Label(int id) {
        char text[32] = "";
        GetWindowTextA(GetDlgItem(color_, id), text, sizeof text);
        return text;
    }
    void SetColour(DWORD rgb) { SendMessageA(color_, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>(&rgb)); }
    DWORD Colour() {
        DWORD rgb = 0xDEADBEEF;
        SendMessageA(color_, GXM_GETVALUE, 0, reinterpret_cast<LPARAM>(&rgb));
        return rgb;
    }
    void Scroll(int bar, WORD code, WORD pos = 0) {
        SendMessageA(color_, WM_VSCROLL, MAKEWPARAM(code, pos), reinterpret_cast<LPARAM>(Bar(bar)));
    }
    RECT ChildRect(int id) {
        RECT r;
        GetWindowRect(GetDlgItem(color_, id), &r);
        MapWindowPoints(nullptr, color_, reinterpret_cast<POINT*>(&r), 2);
        return r;
    }
    fktest::RecordingParent parent_{400, 260};
    fktest::UniqueWindow color_;
};

TEST_F(Color, ChildrenAndLayout) {
    HDC dc = GetDC(color_);
    TEXTMETRICA tm{};
    GetTextMetricsA(dc, &tm);
    ReleaseDC(color_, dc);
    const int c = tm.tmHeight;

    char cls[32];
    GetClassNameA(GetDlgItem(color_, 9), cls, sizeof cls);
    EXPECT_STREQ(cls, "Static");
    EXPECT_EQ(static_cast<DWORD>(GetWindowLongA(GetDlgItem(color_, 9), GWL_STYLE)), 0x50000006u);
    RECT panel = ChildRect(9);
    EXPECT_EQ(panel.left, 0);
    EXPECT_EQ(panel.right, kW / 2);
    EXPECT_EQ(panel.bottom, kH);
    for (int i = 0; i < 3; ++i) {
        GetClassNameA(Bar(i), cls, sizeof cls);
        EXPECT_STREQ(cls, "ScrollBar");
        EXPECT_EQ(static_cast<DWORD>(GetWindowLongA(Bar(i), GWL_STYLE)) & 0xFFFF000Fu, 0x50010001u);
        RECT bar = ChildRect(i);
        EXPECT_EQ(bar.left, (2 * i + 1) * kW / 14) << i;
        EXPECT_EQ(bar.top, 2 * c) << i;
        EXPECT_EQ(bar.right - bar.left, kW / 14) << i;
        EXPECT_EQ(bar.bottom - bar.top, kH - 4 * c) << i;
        RECT letter = ChildRect(i + 3);
        EXPECT_EQ(letter.left, (4 * i + 1) * kW / 28) << i;
        EXPECT_EQ(letter.top, c / 2) << i;
        EXPECT_EQ(letter.right - letter.left, kW / 7) << i;
        RECT value = ChildRect(i + 6);
        EXPECT_EQ(value.left, (4 * i + 1) * kW / 28) << i;
        EXPECT_EQ(value.top, kH - 3 * c / 2) << i;
        EXPECT_EQ(value.bottom - value.top, c) << i;
        EXPECT_EQ(Label(i + 3), std::string(1, "RGB"[i]));
        EXPECT_EQ(Label(i + 6), "0");
        int low = -1, high = -1;
        GetScrollRange(Bar(i), SB_CTL, &low, &high);
        EXPECT_EQ(low, 0);
        EXPECT_EQ(high, 255);
    }
}

struct ScrollCase {
    WORD start;
    WORD code;
    WORD thumb;
    unsigned result;
};

TEST_F(Color, ScrollArithmetic) {
    const ScrollCase cases[] = {
        {10, SB_LINEUP, 0, 9},          {0, SB_LINEUP, 0, 0},           {254, SB_LINEDOWN, 0, 255},
        {255, SB_LINEDOWN, 0, 255},     {100, SB_PAGEUP, 0, 84},        {16, SB_PAGEUP, 0, 0},
        {15, SB_PAGEUP, 0, 0},          {10, SB_PAGEUP, 0, 65530},      {5, SB_PAGEUP, 0, 65525},
        {0, SB_PAGEDOWN, 0, 16},        {240, SB_PAGEDOWN, 0, 255},     {7, SB_THUMBTRACK, 200, 200},
        {7, SB_THUMBPOSITION, 33, 33},  {90, SB_TOP, 0, 0},             {90, SB_BOTTOM, 0, 255},
        {90, SB_ENDSCROLL, 0, 90},
    };
    for (int bar = 0; bar < 3; ++bar) {
        for (const ScrollCase& c : cases) {
            SetColour(static_cast<DWORD>(c.start) << (8 * bar));
            parent_.clear();
            Scroll(bar, c.code, c.thumb);
            // GXM_GETVALUE adds the components unmasked, so a wrapped value
            // spills into the next component.
            EXPECT_EQ(Colour(), static_cast<DWORD>(c.result) << (8 * bar))
                << "bar " << bar << " from " << c.start << " code " << c.code;
            EXPECT_EQ(Label(bar + 6), std::to_string(c.result)) << "bar " << bar << " code " << c.code;
            const bool changes = c.code != SB_ENDSCROLL;
            ASSERT_EQ(parent_.Of(WM_COMMAND).size(), changes ? 1u : 0u);
            if (changes) {
                const fktest::Msg m = parent_.Of(WM_COMMAND)[0];
                EXPECT_EQ(HIWORD(m.wp), GXN_COLORCHANGED);
                EXPECT_EQ(LOWORD(m.wp), 21);
                EXPECT_EQ(m.lp, reinterpret_cast<LPARAM>(color_.get()));
            }
        }
    }
}

// Scroll messages from anything but the control's own bars change nothing.
TEST_F(Color, ForeignScrollMessagesAreIgnored) {
    SetColour(0x00102030);
    fktest::UniqueWindow stranger(CreateWindowExA(0, "scrollbar", "", WS_CHILD | SBS_VERT, 0, 0, 10, 50, parent_,
                                                  nullptr, GetModuleHandleA(nullptr), nullptr));
    SendMessageA(color_, WM_VSCROLL, SB_TOP, reinterpret_cast<LPARAM>(stranger.get()));
    SendMessageA(color_, WM_VSCROLL, SB_TOP, 0);
    EXPECT_EQ(Colour(), 0x00102030u);
    EXPECT_TRUE(parent_.Of(WM_COMMAND).empty());
}

TEST_F(Color, SetValueSetsComponentsLabelsAndBars) {
    SetColour(0x00FF8001);  // blue 255, green 128, red 1
    EXPECT_EQ(Colour(), 0x00FF8001u);
    EXPECT_EQ(Label(6), "1");
    EXPECT_EQ(Label(7), "128");
    EXPECT_EQ(Label(8), "255");
    EXPECT_EQ(GetScrollPos(Bar(0), SB_CTL), 1);
    EXPECT_EQ(GetScrollPos(Bar(1), SB_CTL), 128);
    EXPECT_EQ(GetScrollPos(Bar(2), SB_CTL), 255);
    SetColour(0xAB000000);  // the high byte is not a component
    EXPECT_EQ(Colour(), 0u);
    EXPECT_EQ(SendMessageA(color_, GXM_SETVALUE, 0, 0), 0);
    EXPECT_EQ(SendMessageA(color_, GXM_GETVALUE, 0, 0), 0);
    EXPECT_EQ(SendMessageA(color_, GXM_GETTYPE, 0, 0), 2);
    EXPECT_EQ(SendMessageA(color_, WM_GETDLGCODE, 0, 0), 0x8001);
}

TEST_F(Color, SwatchShowsTheColour) {
    SetColour(RGB(200, 30, 90));
    fktest::PaintNow(parent_);
    fktest::Capture pixels(color_);
    EXPECT_EQ(pixels.at(kW - 5, kH / 2), RGB(200, 30, 90));
    EXPECT_EQ(pixels.at(kW - kW / 2, 3), RGB(200, 30, 90));
    Scroll(1, SB_BOTTOM);
    fktest::Capture after(color_);
    EXPECT_EQ(after.at(kW - 5, kH / 2), RGB(200, 255, 90));
}

// Left and right arrows move between the bars (wrapping), focus on the
// control goes to the bar that had it last, and the parent hears of it.
TEST_F(Color, ArrowKeysMoveBetweenBars) {
    SetFocus(Bar(0));
    ASSERT_EQ(GetFocus(), Bar(0));
    SendMessageA(Bar(0), WM_KEYDOWN, VK_LEFT, 0);
    EXPECT_EQ(GetFocus(), Bar(2));
    SendMessageA(Bar(2), WM_KEYDOWN, VK_RIGHT, 0);
    EXPECT_EQ(GetFocus(), Bar(0));
    SendMessageA(Bar(0), WM_KEYDOWN, VK_RIGHT, 0);
    EXPECT_EQ(GetFocus(), Bar(1));

    // Up and down reach the scroll bar itself, which scrolls its component.
    SetColour(0x00001000);
    SendMessageA(Bar(1), WM_KEYDOWN, VK_DOWN, 0);
    EXPECT_EQ(Colour(), 0x00001100u);

    SetFocus(parent_);
    parent_.clear();
    SetFocus(color_);
    EXPECT_EQ(GetFocus(), Bar(1));
    const std::vector<WORD> codes = parent_.CommandCodes();
    ASSERT_FALSE(codes.empty());
    EXPECT_EQ(codes[0], GXN_SETFOCUS);
}

TEST_F(Color, ChannelBrushesForTheBars) {
    HDC dc = CreateCompatibleDC(nullptr);
    const COLORREF want[3] = {RGB(255, 0, 0), RGB(0, 255, 0), RGB(0, 0, 255)};
    for (int i = 0; i < 3; ++i) {
        auto brush = reinterpret_cast<HBRUSH>(
            SendMessageA(color_, WM_CTLCOLORSCROLLBAR, reinterpret_cast<WPARAM>(dc), reinterpret_cast<LPARAM>(Bar(i))));
        ASSERT_NE(brush, nullptr) << i;
        LOGBRUSH lb{};
        ASSERT_EQ(GetObjectA(brush, sizeof lb, &lb), static_cast<int>(sizeof lb));
        EXPECT_EQ(lb.lbColor, want[i]) << i;
        EXPECT_EQ(GetBkColor(dc), GetSysColor(COLOR_CAPTIONTEXT));
        EXPECT_EQ(GetTextColor(dc), GetSysColor(COLOR_WINDOWFRAME));
    }
    DeleteDC(dc);
}

TEST_F(Color, PrtInTheMethodStringDisablesTheControl) {
    SendMessageA(color_, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>("@LIMIT(3)@prt"));
    EXPECT_TRUE(IsWindowEnabled(color_)) << "the keyword is matched case-sensitively";
    SendMessageA(color_, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>("@LIMIT(3)@PRT"));
    EXPECT_FALSE(IsWindowEnabled(color_));
}

}  // namespace
