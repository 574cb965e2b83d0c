// The colour control: scroll arithmetic, value messages, arrow keys and "@PRT".

#include <gtest/gtest.h>

#include <string>
#include <tuple>

#include "include/fldkit.h"
#include "tests/support/recorder.h"
#include "tests/win/display/pixels.h"

namespace {

constexpr int kW = 280, kH = 168;

class Color : public ::testing::Test {
protected:
    HWND Bar(int i) { return GetDlgItem(color_, i); }
    std::string Label(int id) {
        char text[32] = "";
        GetWindowTextA(GetDlgItem(color_, id), text, sizeof text);
        return text;
    }
    void SetColour(DWORD rgb) { SendMessageA(color_, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>(&rgb)); }
    DWORD Colour() {
        DWORD rgb = 0xDEADBEEF;
        return SendMessageA(color_, GXM_GETVALUE, 0, reinterpret_cast<LPARAM>(&rgb)), rgb;
    }
    fktest::RecordingParent parent_{400, 260};
    fktest::UniqueWindow color_ = fktest::MakeChild(parent_, "gxColor32", WS_TABSTOP, 21, kW, kH);
};

// Every bar; a page-up wrap spills into the next component. Foreign scrolls are ignored.
TEST_F(Color, ScrollArithmetic) {
    const struct { WORD start, code, thumb; unsigned result; } cases[] = {
        {10, SB_LINEUP, 0, 9},      {0, SB_LINEUP, 0, 0},     {254, SB_LINEDOWN, 0, 255}, {255, SB_LINEDOWN, 0, 255},
        {100, SB_PAGEUP, 0, 84},    {16, SB_PAGEUP, 0, 0},    {15, SB_PAGEUP, 0, 0},      {10, SB_PAGEUP, 0, 65530},
        {5, SB_PAGEUP, 0, 65525},   {0, SB_PAGEDOWN, 0, 16},  {240, SB_PAGEDOWN, 0, 255}, {7, SB_THUMBTRACK, 200, 200},
        {7, SB_THUMBPOSITION, 33, 33}, {90, SB_TOP, 0, 0},    {90, SB_BOTTOM, 0, 255},    {90, SB_ENDSCROLL, 0, 90},
    };
    for (int bar = 0; bar < 3; ++bar) {
        for (const auto& c : cases) {
            SetColour(static_cast<DWORD>(c.start) << (8 * bar));
            parent_.clear();
            SendMessageA(color_, WM_VSCROLL, MAKEWPARAM(c.code, c.thumb), reinterpret_cast<LPARAM>(Bar(bar)));
            EXPECT_EQ(Colour(), static_cast<DWORD>(c.result) << (8 * bar)) << bar << " " << c.start << " " << c.code;
            EXPECT_EQ(Label(bar + 6), std::to_string(c.result)) << "bar " << bar << " code " << c.code;
            const auto sent = parent_.Of(WM_COMMAND);
            ASSERT_EQ(sent.size(), c.code != SB_ENDSCROLL ? 1u : 0u);
            for (const fktest::Msg& m : sent)
                EXPECT_TRUE(m.wp == MAKEWPARAM(21, GXN_COLORCHANGED) && m.lp == LPARAM(color_.get())) << m.wp;
        }
    }
    auto stranger = fktest::MakeChild(parent_, "scrollbar", SBS_VERT, 100, 10, 50);
    SendMessageA(color_, WM_VSCROLL, SB_TOP, reinterpret_cast<LPARAM>(stranger.get()));
    SendMessageA(color_, WM_VSCROLL, SB_TOP, 0);
    EXPECT_EQ(Colour(), 90u << 16);
    EXPECT_TRUE(parent_.Of(WM_COMMAND).empty());
}

TEST_F(Color, ValueMessagesAndSwatch) {
    SetColour(0xABFF8001);  // the high byte is not a component
    EXPECT_EQ(Colour(), 0x00FF8001u);
    EXPECT_EQ(Label(6) + " " + Label(7) + " " + Label(8), "1 128 255");
    EXPECT_EQ(GetScrollPos(Bar(1), SB_CTL), 128);
    fktest::PaintNow(parent_);
    EXPECT_EQ(fktest::Capture(color_).at(kW - 5, kH / 2), RGB(1, 128, 255));
    SendMessageA(color_, WM_VSCROLL, SB_BOTTOM, reinterpret_cast<LPARAM>(Bar(0)));
    EXPECT_EQ(fktest::Capture(color_).at(kW - 5, kH / 2), RGB(255, 128, 255));
    EXPECT_EQ(SendMessageA(color_, GXM_SETVALUE, 0, 0), 0);
    EXPECT_EQ(SendMessageA(color_, GXM_GETVALUE, 0, 0), 0);
    EXPECT_EQ(SendMessageA(color_, GXM_GETTYPE, 0, 0), 2);
    EXPECT_EQ(SendMessageA(color_, WM_GETDLGCODE, 0, 0), 0x8001);
    // Each bar is painted with a brush of its own channel; a stranger's scroll bar gets the default one.
    HDC dc = GetDC(color_);
    auto brush = [&](HWND bar) { return SendMessageA(color_, WM_CTLCOLORSCROLLBAR, WPARAM(dc), LPARAM(bar)); };
    const LRESULT plain = DefWindowProcA(color_, WM_CTLCOLORSCROLLBAR, WPARAM(dc), LPARAM(color_.get()));
    auto stranger = fktest::MakeChild(parent_, "scrollbar", SBS_VERT, 100, 10, 50);
    EXPECT_EQ(brush(stranger), plain);
    for (int i = 0; i < 3; ++i) EXPECT_TRUE(brush(Bar(i)) != plain && brush(Bar(i)) != brush(Bar((i + 1) % 3))) << i;
    ReleaseDC(color_, dc);
}

// Left/right move between bars (wrapping); focus returns to the bar that had it last; "@PRT" disables.
TEST_F(Color, ArrowKeysFocusAndPrt) {
    SetFocus(Bar(0));
    for (auto [from, key, to] : {std::tuple{0, VK_LEFT, 2}, {2, VK_RIGHT, 0}, {0, VK_RIGHT, 1}}) {
        SendMessageA(Bar(from), WM_KEYDOWN, key, 0);
        EXPECT_EQ(GetFocus(), Bar(to)) << from << " " << key;
    }
    SetColour(0x00001000);
    SendMessageA(Bar(1), WM_KEYDOWN, VK_DOWN, 0);
    EXPECT_EQ(Colour(), 0x00001100u);
    SetFocus(parent_);
    parent_.clear();
    SetFocus(color_);
    EXPECT_EQ(GetFocus(), Bar(1));
    ASSERT_FALSE(parent_.CommandCodes().empty());
    EXPECT_EQ(parent_.CommandCodes()[0], GXN_SETFOCUS);
    SendMessageA(color_, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>("@LIMIT(3)@prt"));
    EXPECT_TRUE(IsWindowEnabled(color_)) << "the keyword is matched case-sensitively";
    SendMessageA(color_, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>("@LIMIT(3)@PRT"));
    EXPECT_FALSE(IsWindowEnabled(color_));
}

}  // namespace
