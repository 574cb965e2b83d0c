// The editing core on a bare field window: caret and selection from mouse
// positions, drawing, clipboard transfer and auto-tab.

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "include/fldkit.h"
#include "tests/support/recorder.h"
#include "tests/support/window.h"

namespace {

// A window with the entry fields' word layout whose validation answer the
// test chooses; it records the keys it is sent.
LRESULT g_validateAnswer = 0;
std::vector<WPARAM> g_keys;

LRESULT CALLBACK BareFieldProc(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    if (msg == GXM_VALIDATE) return g_validateAnswer;
    if (msg == WM_KEYDOWN) {
        g_keys.push_back(wp);
        return 0;
    }
    return DefWindowProcA(h, msg, wp, lp);
}

HWND MakeBareField(HWND parent, int width = 200) {
    WNDCLASSA wc{};
    if (!GetClassInfoA(GetModuleHandleA(nullptr), "FkBareField", &wc)) {
        wc.lpfnWndProc = BareFieldProc;
        wc.cbWndExtra = 34;
        wc.hInstance = GetModuleHandleA(nullptr);
        wc.lpszClassName = "FkBareField";
        RegisterClassA(&wc);
    }
    HWND h = CreateWindowExA(0, "FkBareField", "", WS_CHILD | WS_VISIBLE, 5, 5, width, 24, parent,
                             reinterpret_cast<HMENU>(7), GetModuleHandleA(nullptr), nullptr);
    HDC dc = GetDC(h);
    TEXTMETRICA tm{};
    GetTextMetricsA(dc, &tm);
    ReleaseDC(h, dc);
    SetWindowLongA(h, 4, tm.tmAveCharWidth);
    SetWindowLongA(h, 8, tm.tmHeight);
    return h;
}

int Extent(HWND h, const char* text, int n) {
    HDC dc = GetDC(h);
    SIZE s{};
    GetTextExtentPoint32A(dc, text, n, &s);
    ReleaseDC(h, dc);
    return s.cx;
}

int Caret(HWND h) { return GetWindowLongA(h, 16); }
int Anchor(HWND h) { return LOWORD(GetWindowLongA(h, 12)); }
int MovingEnd(HWND h) { return HIWORD(GetWindowLongA(h, 12)); }

class EditCore : public ::testing::Test {
protected:
    void SetUp() override {
        field_ = MakeBareField(parent_);
        SetFocus(field_);
    }
    void TearDown() override {
        ReleaseCapture();
        DestroyWindow(field_);
    }
    fktest::RecordingParent parent_;
    HWND field_ = nullptr;
};

// A click on the left half of a character lands before it, on the right
// half (the middle included) after it.
TEST_F(EditCore, ClickPositionsPickTheNearestCharacterBoundary) {
    char text[] = "WiMx.9";
    for (int i = 1; i <= 6; ++i) {
        const int left = Extent(field_, text, i - 1);
        const int width = Extent(field_, text, i) - left;
        const int middle = left + (width - width / 2);
        MouseButtonDown(field_, middle - 1, text, nullptr, 0, 0);
        EXPECT_EQ(Caret(field_), i - 1) << "left of the middle of char " << i;
        ReleaseCapture();
        MouseButtonDown(field_, middle, text, nullptr, 0, 0);
        EXPECT_EQ(Caret(field_), i) << "middle of char " << i;
        EXPECT_EQ(Anchor(field_), i);
        EXPECT_EQ(MovingEnd(field_), i);
        EXPECT_EQ(GetCapture(), field_);
        ReleaseCapture();
    }
    MouseButtonDown(field_, 190, text, nullptr, 0, 0);
    EXPECT_EQ(Caret(field_), 6);
}

TEST_F(EditCore, RightAlignedClickLeftOfTheTextSelectsNothing) {
    char text[] = "1234";
    SetWindowLongA(field_, 16, 3);
    MouseButtonDown(field_, 10, text, nullptr, 1, 0);
    EXPECT_EQ(Caret(field_), 0);
    EXPECT_EQ(GetWindowLongA(field_, 12), 0);
    EXPECT_EQ(GetCapture(), field_);
}

TEST_F(EditCore, RightAlignedClickOnTheTextCountsFromTheRightEdge) {
    char text[] = "1234";
    RECT r;
    GetClientRect(field_, &r);
    // Right of the last digit: the caret goes to the end.
    MouseButtonDown(field_, r.right - 1, text, nullptr, 1, 0);
    EXPECT_EQ(Caret(field_), 4);
}

TEST_F(EditCore, DraggingExtendsTheSelectionFromTheAnchor) {
    char text[] = "abcdef";
    MouseButtonDown(field_, 0, text, nullptr, 0, 0);
    MouseMove(field_, Extent(field_, text, 4), text, 0);
    EXPECT_EQ(Anchor(field_), 0);
    EXPECT_EQ(MovingEnd(field_), 4);
    EXPECT_EQ(Caret(field_), 4);
    MouseMove(field_, 500, text, 0);
    EXPECT_EQ(MovingEnd(field_), 6);
}

// With a mask the caret stops at the first empty position and is stored
// as the number of "*" placeholders before it.
TEST_F(EditCore, MaskedClickStoresTheStarCountBeforeTheCaret) {
    char text[] = "1231";
    char mask[] = "**/**/****";
    MouseButtonDown(field_, 190, text, mask, 0, 0);
    EXPECT_EQ(Caret(field_), 4);
    char hashMask[] = "##/##/####";
    MouseButtonDown(field_, 190, text, hashMask, 0, 0);
    EXPECT_EQ(Caret(field_), 0) << "only stars are counted";
}

TEST_F(EditCore, DrawingClampsTheCaretAndAsksTheParentForColours) {
    SetWindowLongA(field_, 16, 40);
    parent_.clear();
    twDrawField(field_, "abc", GXDF_ANY, 0);
    EXPECT_EQ(Caret(field_), 3);
    auto colours = parent_.Of(WM_CTLCOLOREDIT);
    ASSERT_EQ(colours.size(), 1u);
    EXPECT_EQ(reinterpret_cast<HWND>(colours[0].lp), field_);
    EnableWindow(field_, FALSE);
    twDrawField(field_, "abc", GXDF_ANY | GXDF_RIGHT, 0);
    SetWindowLongA(field_, 12, MAKELONG(0, 400));  // selection beyond the text
    EnableWindow(field_, TRUE);
    twDrawField(field_, "abc", GXDF_ANY, 0);
    twDrawField(field_, nullptr, GXDF_ANY, 0);
}

void PutClipboardBytes(const std::string& bytes) {
    HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, bytes.size());
    std::memcpy(GlobalLock(block), bytes.data(), bytes.size());
    GlobalUnlock(block);
    OpenClipboard(nullptr);
    EmptyClipboard();
    SetClipboardData(CF_TEXT, block);
    CloseClipboard();
}

TEST_F(EditCore, CopyTakesAtMostMaxCharacters) {
    EXPECT_EQ(twClipboardCopyText(field_, "abcdef", 3), 1);
    EXPECT_EQ(fktest::ClipboardText(), "abc");
    EXPECT_EQ(twClipboardCopyText(field_, "xy", 10), 1);
    EXPECT_EQ(fktest::ClipboardText(), "xy");
}

TEST_F(EditCore, PasteFillsMaxCharactersWithoutTerminator) {
    twClipboardCopyText(field_, "abcdefgh", 100);
    char buffer[16];
    std::memset(buffer, '#', sizeof buffer);
    EXPECT_EQ(twClipboardPasteText(field_, buffer, 5), 1);
    EXPECT_EQ(std::string(buffer, 6), "abcde#");
    EXPECT_EQ(twClipboardPasteText(field_, buffer, 12), 1);
    EXPECT_STREQ(buffer, "abcdefgh");
}

TEST_F(EditCore, PasteOfHostileClipboardTextStaysInItsBlock) {
    PutClipboardBytes(std::string(8, 'x'));  // no terminator
    char buffer[300];
    std::memset(buffer, '#', sizeof buffer);
    EXPECT_EQ(twClipboardPasteText(field_, buffer, 256), 1);
    // The system may cut the unterminated text while converting it; either
    // way nothing past the block is read.
    EXPECT_LE(std::strlen(buffer), 8u);
    EXPECT_EQ(buffer[9], '#');

    PutClipboardBytes(std::string(10 * 1024 * 1024, 'y'));
    std::memset(buffer, '#', sizeof buffer);
    EXPECT_EQ(twClipboardPasteText(field_, buffer, 256), 1);
    EXPECT_EQ(std::string(buffer, 257), std::string(256, 'y') + "#");

    OpenClipboard(nullptr);
    EmptyClipboard();
    CloseClipboard();
    EXPECT_EQ(twClipboardPasteText(field_, buffer, 256), 0);
}

TEST_F(EditCore, AutoTabMovesOnlyWhenTheValuePasses) {
    g_keys.clear();
    g_validateAnswer = -1;
    EXPECT_EQ(twAutoTab(field_), -1);
    EXPECT_TRUE(g_keys.empty());
    g_validateAnswer = 0;
    twAutoTab(field_);
    EXPECT_EQ(g_keys, std::vector<WPARAM>{VK_TAB});
}

}  // namespace
