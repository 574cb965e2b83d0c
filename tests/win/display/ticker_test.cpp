// The ticker's steps, timer and value messages; WM_TIMER is sent by hand.

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "include/fldkit.h"
#include "tests/win/display/pixels.h"

namespace {

constexpr int kWidth = 100, kPositionWord = 14;

class Ticker : public ::testing::Test {
protected:
    fktest::UniqueWindow parent_ = fktest::MakeParent(nullptr, 300, 200);
    fktest::UniqueWindow ticker_ = fktest::MakeChild(parent_, "gxTicker32", 0, 5, kWidth, 24);
};

// The blank lead-in grows by the step to the client width; past lead-in and text, back to 0.
TEST_F(Ticker, StepsAndWrapsByInterval) {
    const struct { UINT interval; int step; } cases[] = {{0, 1}, {70, 1}, {71, 2}, {200, 2}, {201, 3}, {5000, 3}};
    HDC dc = GetDC(ticker_);
    SIZE blank{};
    ReleaseDC(ticker_, (GetTextExtentPoint32A(dc, " ", 1, &blank), dc));
    ASSERT_GT(blank.cx, 0);
    for (const auto& c : cases) {
        for (const char* text : {"", "News!"}) {
            SetWindowTextA(ticker_, text);
            SetWindowWord(ticker_, kPositionWord, 0);
            SendMessageA(ticker_, GXM_TICKER_SETINTERVAL, c.interval, 0);
            SendMessageA(ticker_, GXM_TICKER_STOP, 1, 0);
            int leadIn = 1;
            while (leadIn * blank.cx < kWidth) leadIn += c.step;
            const int length = leadIn + static_cast<int>(std::strlen(text));
            for (int i = 0, expected = 0; i < 3 * length; ++i) {
                expected = (length <= expected ? 0 : expected) + c.step;
                SendMessageA(ticker_, WM_TIMER, 99, 0);
                ASSERT_EQ(GetWindowWord(ticker_, kPositionWord), expected) << c.interval << " '" << text << "' " << i;
            }
        }
    }
}

// Timer 99 runs from creation; STOP(0) restarts it, STOP(1) stops, SETINTERVAL restarts.
TEST_F(Ticker, TimerMessages) {
    EXPECT_TRUE(KillTimer(ticker_, 99));
    EXPECT_EQ(SendMessageA(ticker_, GXM_TICKER_GETINTERVAL, 0, 0), 0);
    SendMessageA(ticker_, GXM_TICKER_STOP, 0, 0);
    EXPECT_TRUE(KillTimer(ticker_, 99));
    SendMessageA(ticker_, GXM_TICKER_SETINTERVAL, 150, 0);
    EXPECT_EQ(SendMessageA(ticker_, GXM_TICKER_GETINTERVAL, 0, 0), 150);
    EXPECT_TRUE(KillTimer(ticker_, 99));
    SendMessageA(ticker_, GXM_TICKER_SETINTERVAL, 150, 0);
    SendMessageA(ticker_, GXM_TICKER_STOP, 1, 0);
    EXPECT_FALSE(KillTimer(ticker_, 99));
}

// Texts are cut to 159 characters, a DDE client ignores GXM_SETVALUE, fonts come back 16-bit.
TEST_F(Ticker, ValueTypeAndFontMessages) {
    char buffer[200];
    for (const std::string& text : {std::string("Markets up"), std::string(400, 'x')}) {
        SendMessageA(ticker_, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>(text.c_str()));
        std::memset(buffer, 0x55, sizeof buffer);
        SendMessageA(ticker_, GXM_GETVALUE, 0, reinterpret_cast<LPARAM>(buffer));
        EXPECT_EQ(buffer, text.substr(0, 159));
    }
    EXPECT_EQ(SendMessageA(ticker_, GXM_SETVALUE, 0, 0), 0);
    EXPECT_EQ(SendMessageA(ticker_, GXM_GETVALUE, 0, 0), 0);
    SetPropA(ticker_, "CLIENT", reinterpret_cast<HANDLE>(1));
    SendMessageA(ticker_, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>("ignored"));
    RemovePropA(ticker_, "CLIENT");
    SendMessageA(ticker_, GXM_GETVALUE, 0, reinterpret_cast<LPARAM>(buffer));
    EXPECT_EQ(std::strlen(buffer), 159u);
    LONG limit = 0;
    EXPECT_EQ(SendMessageA(ticker_, GXM_GETTYPE, 0, reinterpret_cast<LPARAM>(&limit)), 4);
    EXPECT_EQ(limit, 80);
    SendMessageA(ticker_, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>("@AUTOTAB@LIMIT(12)"));
    SendMessageA(ticker_, GXM_GETTYPE, 0, reinterpret_cast<LPARAM>(&limit));
    EXPECT_EQ(limit, 12);
    EXPECT_EQ(SendMessageA(ticker_, GXM_GETTYPE, 0, 0), 4);
    HFONT font = static_cast<HFONT>(GetStockObject(ANSI_VAR_FONT));
    SendMessageA(ticker_, WM_SETFONT, reinterpret_cast<WPARAM>(font), 0);
    EXPECT_EQ(SendMessageA(ticker_, WM_GETFONT, 0, 0), static_cast<LRESULT>(reinterpret_cast<UINT_PTR>(font) & 0xFFFF));
}

}  // namespace
