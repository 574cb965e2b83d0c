// The colour control (scroll arithmetic, value messages, arrow keys, "@PRT") and the ticker (steps, timer and value
// messages; WM_TIMER is sent by hand).

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <tuple>
#include <vector>

#include "include/fldkit.h"
#include "tests/support/pump.h"
#include "tests/support/recorder.h"
#include "tests/win/display/pixels.h"

namespace {

constexpr int kW = 280, kH = 168;

class Color : public ::testing::Test {
protected:
    HWND Bar(int i) { return GetDlgItem(color_, i); }
    void SetColour(DWORD rgb) { SendMessageA(color_, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>(&rgb)); }
    // The value, then the three labels.
    std::string Shown() {
        DWORD rgb = 0xDEADBEEF;
        SendMessageA(color_, GXM_GETVALUE, 0, reinterpret_cast<LPARAM>(&rgb));
        std::string out = std::to_string(rgb);
        for (int id : {6, 7, 8}) out += " " + fktest::WindowText(GetDlgItem(color_, id));
        return out;
    }
    fktest::RecordingParent parent_{400, 260};
    fktest::UniqueWindow color_ = fktest::MakeChild(parent_, "gxColor32", WS_TABSTOP, 21, kW, kH);
};

// Every bar; a page-up wrap spills into the next component; the thumb codes take the result as the position.
// Each change is told to the parent.
TEST_F(Color, ScrollArithmetic) {
    const struct { WORD start, code; unsigned result; } cases[] = {
        {10, SB_LINEUP, 9},      {0, SB_LINEUP, 0},         {254, SB_LINEDOWN, 255},  {255, SB_LINEDOWN, 255},
        {100, SB_PAGEUP, 84},    {16, SB_PAGEUP, 0},        {10, SB_PAGEUP, 65530},   {0, SB_PAGEDOWN, 16},
        {240, SB_PAGEDOWN, 255}, {7, SB_THUMBTRACK, 200},   {7, SB_THUMBPOSITION, 33}, {90, SB_TOP, 0},
        {90, SB_BOTTOM, 255},    {90, SB_ENDSCROLL, 90},
    };
    for (int bar = 0; bar < 3; ++bar)
        for (const auto& c : cases) {
            SetColour(static_cast<DWORD>(c.start) << (8 * bar));
            parent_.clear();
            SendMessageA(color_, WM_VSCROLL, MAKEWPARAM(c.code, c.result), reinterpret_cast<LPARAM>(Bar(bar)));
            const DWORD value = static_cast<DWORD>(c.result) << (8 * bar);
            std::string want = std::to_string(value);
            for (int i = 0; i < 3; ++i) want += " " + std::to_string(i == bar ? c.result : 0);
            const auto sent = parent_.Of(WM_COMMAND);
            EXPECT_EQ(Shown(), want) << bar << " " << c.code;
            EXPECT_EQ(sent.size(), c.code != SB_ENDSCROLL ? 1u : 0u) << bar << " " << c.code;
            for (const fktest::Msg& m : sent)
                EXPECT_TRUE(m.wp == MAKEWPARAM(21, GXN_COLORCHANGED) && m.lp == LPARAM(color_.get())) << m.wp;
        }
}

// The value (the high byte is not a component), its labels, bars and swatch; each bar is painted with a brush of
// its own channel, a stranger's scroll bar with the default one. Left/right move between bars (wrapping); focus
// returns to the bar that had it last; "@PRT" disables.
TEST_F(Color, ValueSwatchKeysFocusAndPrt) {
    SetColour(0xABFF8001);
    EXPECT_EQ(Shown(), std::to_string(0x00FF8001u) + " 1 128 255");
    EXPECT_EQ(GetScrollPos(Bar(1), SB_CTL), 128);
    fktest::PaintNow(parent_);
    EXPECT_EQ(fktest::Canvas(color_).at(kW - 5, kH / 2), RGB(1, 128, 255));
    EXPECT_EQ(SendMessageA(color_, GXM_SETVALUE, 0, 0) + SendMessageA(color_, GXM_GETVALUE, 0, 0), 0);
    EXPECT_EQ(SendMessageA(color_, GXM_GETTYPE, 0, 0) * 0x10000 + SendMessageA(color_, WM_GETDLGCODE, 0, 0), 0x28001);
    HDC dc = GetDC(color_);
    auto brush = [&](HWND bar) { return SendMessageA(color_, WM_CTLCOLORSCROLLBAR, WPARAM(dc), LPARAM(bar)); };
    const LRESULT plain = DefWindowProcA(color_, WM_CTLCOLORSCROLLBAR, WPARAM(dc), LPARAM(color_.get()));
    auto stranger = fktest::MakeChild(parent_, "scrollbar", SBS_VERT, 100, 10, 50);
    EXPECT_EQ(brush(stranger), plain);
    for (int i = 0; i < 3; ++i) EXPECT_TRUE(brush(Bar(i)) != plain && brush(Bar(i)) != brush(Bar((i + 1) % 3))) << i;
    ReleaseDC(color_, dc);
    SetFocus(Bar(0));
    for (auto [from, key, to] : {std::tuple{0, VK_LEFT, 2}, {2, VK_RIGHT, 0}, {0, VK_RIGHT, 1}}) {
        SendMessageA(Bar(from), WM_KEYDOWN, key, 0);
        EXPECT_EQ(GetFocus(), Bar(to)) << from << " " << key;
    }
    SetFocus(parent_);
    parent_.clear();
    SetFocus(color_);
    EXPECT_TRUE(GetFocus() == Bar(1) && parent_.CommandCodes() == std::vector<WORD>{GXN_SETFOCUS});
    for (auto [method, enabled] : {std::pair{"@LIMIT(3)@prt", true}, {"@LIMIT(3)@PRT", false}}) {  // case-sensitive
        SendMessageA(color_, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(method));
        EXPECT_EQ(IsWindowEnabled(color_) != FALSE, enabled) << method;
    }
}

constexpr int kTickerWidth = 100, kPositionWord = 14;

// Timer 99 runs from creation; STOP(0) restarts it, SETINTERVAL restarts it, STOP(1) stops it (each row's messages
// go to a ticker whose timer was killed after the row before). The step grows with the interval: one tick from 0
// moves by it. With no text, the line is the blank lead-in that fills the width; a tick at its end starts again
// from 0. Texts are cut to 159 characters, a DDE client ignores GXM_SETVALUE, the limit comes from the method,
// fonts come back 16-bit.
TEST(Ticker, StepsByIntervalWrapsAndAnswersItsMessages) {
    auto parent = fktest::MakeParent(nullptr, 300, 200);
    auto ticker = fktest::MakeChild(parent, "gxTicker32", 0, 5, kTickerWidth, 24);
    const struct { std::vector<std::pair<UINT, WPARAM>> sent; bool running; LRESULT interval; } timers[] = {
        {{}, true, 0}, {{{GXM_TICKER_STOP, 0}}, true, 0}, {{{GXM_TICKER_SETINTERVAL, 150}}, true, 150},
        {{{GXM_TICKER_SETINTERVAL, 150}, {GXM_TICKER_STOP, 1}}, false, 150}};
    for (const auto& r : timers) {
        for (auto [msg, wp] : r.sent) SendMessageA(ticker, msg, wp, 0);
        EXPECT_EQ(KillTimer(ticker, 99) != FALSE, r.running) << r.sent.size();
        EXPECT_EQ(SendMessageA(ticker, GXM_TICKER_GETINTERVAL, 0, 0), r.interval);
    }
    HDC dc = GetDC(ticker);
    SIZE blank{};
    GetTextExtentPoint32A(dc, " ", 1, &blank);
    ReleaseDC(ticker, dc);
    const int end = (kTickerWidth + blank.cx - 1) / blank.cx;  // the lead-in's length at step 1
    const struct { UINT interval; int from, to; } steps[] = {
        {0, 0, 1}, {70, 0, 1}, {71, 0, 2}, {200, 0, 2}, {201, 0, 3}, {5000, 0, 3}, {0, end - 1, end}, {0, end, 1}};
    for (const auto& r : steps) {
        SendMessageA(ticker, GXM_TICKER_SETINTERVAL, r.interval, 0);
        SetWindowWord(ticker, kPositionWord, static_cast<WORD>(r.from));
        SendMessageA(ticker, WM_TIMER, 99, 0);
        EXPECT_EQ(GetWindowWord(ticker, kPositionWord), r.to) << r.interval << " from " << r.from;
    }
    const std::string text(400, 'x');
    char buffer[200];
    SendMessageA(ticker, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>(text.c_str()));
    SetPropA(ticker, "CLIENT", reinterpret_cast<HANDLE>(1));
    SendMessageA(ticker, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>("ignored"));
    RemovePropA(ticker, "CLIENT");
    std::memset(buffer, 0x55, sizeof buffer);
    SendMessageA(ticker, GXM_GETVALUE, 0, reinterpret_cast<LPARAM>(buffer));
    EXPECT_EQ(buffer, text.substr(0, 159));
    for (auto [method, limit] : {std::pair{"", 80}, {"@AUTOTAB@LIMIT(12)", 12}}) {
        LONG got = 0;
        if (*method) SendMessageA(ticker, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(method));
        const LRESULT type = SendMessageA(ticker, GXM_GETTYPE, 0, reinterpret_cast<LPARAM>(&got));
        EXPECT_EQ(type * 1000 + got, 4000 + limit);
    }
    HFONT font = static_cast<HFONT>(GetStockObject(ANSI_VAR_FONT));
    SendMessageA(ticker, WM_SETFONT, reinterpret_cast<WPARAM>(font), 0);
    EXPECT_EQ(SendMessageA(ticker, WM_GETFONT, 0, 0), static_cast<LRESULT>(reinterpret_cast<UINT_PTR>(font) & 0xFFFF));
}

}  // namespace
