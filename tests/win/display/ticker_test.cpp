// The ticker: steps by interval, the blank lead-in, the wrap, the timer
// messages and the value messages. The timer is stopped and WM_TIMER is sent
// by hand, so nothing here waits on real time.

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "include/fldkit.h"
#include "tests/support/window.h"
#include "tests/win/display/pixels.h"

namespace {

constexpr int kWidth = 100;
constexpr int kPositionWord = 14;  // the scroll position (16 bits)

class Ticker : public ::testing::Test {
protected:
    void SetUp() override {
        parent_ = fktest::MakeParent(nullptr, 300, 200);
        ticker_ = fktest::UniqueWindow(CreateWindowExA(0, "gxTicker32", "", WS_CHILD | WS_VISIBLE, 10, 10, kWidth, 24,
                                                       parent_, reinterpret_cast<HMENU>(5),
                                                       GetModuleHandleA(nullptr), nullptr));
        ASSERT_NE(ticker_.get(), nullptr);
    }
    void SetInterval(UINT ms) {
        SendMessageA(ticker_, GXM_TICKER_SETINTERVAL, ms, 0);
        SendMessageA(ticker_, GXM_TICKER_STOP, 1, 0);
    }
    int Tick() {
        SendMessageA(ticker_, WM_TIMER, 99, 0);
        return GetWindowWord(ticker_, kPositionWord);
    }
    int BlankWidth() {
        HDC dc = GetDC(ticker_);
        SIZE size{};
        GetTextExtentPoint32A(dc, " ", 1, &size);
        ReleaseDC(ticker_, dc);
        return size.cx;
    }
    fktest::UniqueWindow parent_;
    fktest::UniqueWindow ticker_;
};

struct StepCase {
    UINT interval;
    int step;
};

// The lead-in grows from one blank by the step until it is as wide as the
// client; the position advances by the step and returns to 0 once it has
// passed the end of lead-in and text.
TEST_F(Ticker, StepsAndWrapsByInterval) {
    const StepCase cases[] = {{0, 1}, {70, 1}, {71, 2}, {200, 2}, {201, 3}, {5000, 3}};
    const int blank = BlankWidth();
    ASSERT_GT(blank, 0);
    for (const StepCase& c : cases) {
        for (const char* text : {"", "News!"}) {
            SetWindowTextA(ticker_, text);
            SetWindowWord(ticker_, kPositionWord, 0);
            SetInterval(c.interval);
            int leadIn = 1;
            while (leadIn * blank < kWidth) leadIn += c.step;
            const int length = leadIn + static_cast<int>(std::strlen(text));
            int expected = 0;
            for (int i = 0; i < 3 * length; ++i) {
                if (length <= expected) expected = 0;
                expected += c.step;
                ASSERT_EQ(Tick(), expected) << "interval " << c.interval << " text '" << text << "' tick " << i;
            }
        }
    }
}

// Timer 99 runs from creation; 0x0401 stops it and, with wParam 0, starts it
// again with the stored interval (0 until set); 0x0402 stores and restarts.
TEST_F(Ticker, TimerMessages) {
    EXPECT_TRUE(KillTimer(ticker_, 99));  // running since WM_CREATE
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

// The text enters from the right: while the lead-in fills the client nothing
// of it shows; once the lead-in has scrolled away it is drawn at x = 2.
TEST_F(Ticker, TextEntersFromTheRight) {
    SetWindowTextA(ticker_, "WWWWWWWWWW");
    SetInterval(0);
    fktest::PaintNow(parent_);
    auto inkColumns = [&] {
        fktest::Capture pixels(ticker_);
        int first = -1;
        for (int x = 0; x < pixels.width() && first < 0; ++x)
            for (int y = 0; y < pixels.height(); ++y)
                if (pixels.at(x, y) == RGB(0, 0, 0)) {
                    first = x;
                    break;
                }
        return first;
    };
    Tick();  // drawn from position 0: blanks only
    EXPECT_EQ(inkColumns(), -1);
    const int blank = BlankWidth();
    int leadIn = 1;
    while (leadIn * blank < kWidth) ++leadIn;
    SetWindowWord(ticker_, kPositionWord, static_cast<WORD>(leadIn));
    Tick();
    const int first = inkColumns();
    EXPECT_GE(first, 2);
    EXPECT_LE(first, 5);
}

TEST_F(Ticker, ValueAndTypeMessages) {
    SendMessageA(ticker_, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>("Markets up"));
    char buffer[200];
    std::memset(buffer, 0x55, sizeof buffer);
    SendMessageA(ticker_, GXM_GETVALUE, 0, reinterpret_cast<LPARAM>(buffer));
    EXPECT_STREQ(buffer, "Markets up");

    // Long texts come back cut to 159 characters.
    std::string longText(400, 'x');
    SendMessageA(ticker_, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>(longText.c_str()));
    std::memset(buffer, 0x55, sizeof buffer);
    SendMessageA(ticker_, GXM_GETVALUE, 0, reinterpret_cast<LPARAM>(buffer));
    EXPECT_EQ(std::strlen(buffer), 159u);
    EXPECT_EQ(SendMessageA(ticker_, GXM_SETVALUE, 0, 0), 0);
    EXPECT_EQ(SendMessageA(ticker_, GXM_GETVALUE, 0, 0), 0);

    // Linked as a DDE client, the text comes from the server only.
    SetPropA(ticker_, "CLIENT", reinterpret_cast<HANDLE>(1));
    SendMessageA(ticker_, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>("ignored"));
    RemovePropA(ticker_, "CLIENT");
    SendMessageA(ticker_, GXM_GETVALUE, 0, reinterpret_cast<LPARAM>(buffer));
    EXPECT_EQ(std::strlen(buffer), 159u);

    LONG limit = 0;
    EXPECT_EQ(SendMessageA(ticker_, GXM_GETTYPE, 0, reinterpret_cast<LPARAM>(&limit)), 4);
    EXPECT_EQ(limit, 80);
    SendMessageA(ticker_, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>("@AUTOTAB@LIMIT(12)"));
    EXPECT_EQ(SendMessageA(ticker_, GXM_GETTYPE, 0, reinterpret_cast<LPARAM>(&limit)), 4);
    EXPECT_EQ(limit, 12);
    SendMessageA(ticker_, GXM_SETMETHOD, 0, 0);
    SendMessageA(ticker_, GXM_GETTYPE, 0, reinterpret_cast<LPARAM>(&limit));
    EXPECT_EQ(limit, 80);
    EXPECT_EQ(SendMessageA(ticker_, GXM_GETTYPE, 0, 0), 4);
}

TEST_F(Ticker, FontComesBackAsSixteenBits) {
    // Only the low 16 bits of the font handle come back.
    HFONT font = static_cast<HFONT>(GetStockObject(ANSI_VAR_FONT));
    SendMessageA(ticker_, WM_SETFONT, reinterpret_cast<WPARAM>(font), 0);
    EXPECT_EQ(SendMessageA(ticker_, WM_GETFONT, 0, 0), static_cast<LRESULT>(reinterpret_cast<UINT_PTR>(font) & 0xFFFF));
}

}  // namespace
