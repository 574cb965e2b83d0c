// The editing core called directly on a string field's window words: caret and selection from mouse positions,
// drawing, clipboard transfer and auto-tab.
#include "tests/win/fields/number_test.h"

namespace {

using namespace numtest;

class EditCore : public NumberField {
protected:
    EditCore() : NumberField("gxString32") {}
    void TearDown() override {
        ReleaseCapture();
        NumberField::TearDown();
    }
    int Extent(const char* text, int n) {
        HDC dc = GetDC(field_);
        SIZE s{};
        GetTextExtentPoint32A(dc, text, n, &s);
        ReleaseDC(field_, dc);
        return s.cx;
    }
    int Caret() const { return GetWindowLongA(field_, 16); }
    int Anchor() const { return LOWORD(GetWindowLongA(field_, 12)); }
    int MovingEnd() const { return HIWORD(GetWindowLongA(field_, 12)); }
};

// A click on the left half of a character lands before it, on the right half (the middle included) after it;
// a drag extends the selection from the anchor, at most to the end of the text.
TEST_F(EditCore, ClicksPickTheNearestCharacterBoundaryAndDragsSelect) {
    char text[] = "WiMx.9";
    for (int i = 1; i <= 6; ++i) {
        const int left = Extent(text, i - 1), width = Extent(text, i) - left, middle = left + (width - width / 2);
        MouseButtonDown(field_, middle - 1, text, nullptr, 0, 0);
        EXPECT_EQ(Caret(), i - 1) << "left of the middle of char " << i;
        ReleaseCapture();
        MouseButtonDown(field_, middle, text, nullptr, 0, 0);
        EXPECT_EQ(Caret(), i) << "middle of char " << i;
        EXPECT_EQ(Anchor(), i);
        EXPECT_EQ(MovingEnd(), i);
        EXPECT_EQ(GetCapture(), field_);
        ReleaseCapture();
    }
    MouseButtonDown(field_, 230, text, nullptr, 0, 0);
    EXPECT_EQ(Caret(), 6);
    ReleaseCapture();
    MouseButtonDown(field_, 0, text, nullptr, 0, 0);
    MouseMove(field_, Extent(text, 4), text, 0);
    EXPECT_EQ(Anchor(), 0);
    EXPECT_EQ(MovingEnd(), 4);
    EXPECT_EQ(Caret(), 4);
    MouseMove(field_, 500, text, 0);
    EXPECT_EQ(MovingEnd(), 6);
}

// Right-aligned, positions count from the right edge; left of the text nothing is selected.
TEST_F(EditCore, RightAlignedClicks) {
    char text[] = "1234";
    RECT r;
    GetClientRect(field_, &r);
    MouseButtonDown(field_, r.right - 1, text, nullptr, 1, 0);
    EXPECT_EQ(Caret(), 4);
    ReleaseCapture();
    MouseButtonDown(field_, 10, text, nullptr, 1, 0);
    EXPECT_EQ(Caret(), 0);
    EXPECT_EQ(GetWindowLongA(field_, 12), 0);
    EXPECT_EQ(GetCapture(), field_);
}

// With a mask the caret stops at the first empty position and is stored as the number of "*" placeholders
// before it; only stars are counted.
TEST_F(EditCore, MaskedClickStoresTheStarCountBeforeTheCaret) {
    char text[] = "1231", stars[] = "**/**/****", hashes[] = "##/##/####";
    MouseButtonDown(field_, 230, text, stars, 0, 0);
    EXPECT_EQ(Caret(), 4);
    MouseButtonDown(field_, 230, text, hashes, 0, 0);
    EXPECT_EQ(Caret(), 0);
}

TEST_F(EditCore, DrawingClampsTheCaretAndAsksTheParentForColours) {
    SetWindowLongA(field_, 16, 40);
    parent_.clear();
    twDrawField(field_, "abc", GXDF_ANY, 0);
    EXPECT_EQ(Caret(), 3);
    auto colours = parent_.Of(WM_CTLCOLOREDIT);
    ASSERT_EQ(colours.size(), 1u);
    EXPECT_EQ(reinterpret_cast<HWND>(colours[0].lp), field_);
}

// Copy takes at most max characters; paste fills at most max bytes, with no terminator when it is full.
TEST_F(EditCore, ClipboardTransferKeepsToMax) {
    EXPECT_EQ(twClipboardCopyText(field_, "xy", 10), 1);
    EXPECT_EQ(fktest::ClipboardText(), "xy");
    EXPECT_EQ(twClipboardCopyText(field_, "abcdefgh", 3), 1);
    EXPECT_EQ(fktest::ClipboardText(), "abc");
    twClipboardCopyText(field_, "abcdefgh", 100);
    char buffer[16];
    std::memset(buffer, '#', sizeof buffer);
    EXPECT_EQ(twClipboardPasteText(field_, buffer, 5), 1);
    EXPECT_EQ(std::string(buffer, 6), "abcde#");
    EXPECT_EQ(twClipboardPasteText(field_, buffer, 12), 1);
    EXPECT_STREQ(buffer, "abcdefgh");
}

// A value that fails keeps the focus and the answer comes back; one that passes is tabbed away from.
TEST_F(EditCore, AutoTabMovesOnlyWhenTheValuePasses) {
    parent_.reply = [](UINT msg, WPARAM, LPARAM) -> std::optional<LRESULT> {  // no message box to move the focus
        return msg == GXN_ERROR ? std::optional<LRESULT>(GXR_HANDLED) : std::nullopt;
    };
    SetMethod("@MND");
    EXPECT_EQ(twAutoTab(field_), -1);
    EXPECT_EQ(GetFocus(), field_);
    SetWindowTextA(field_, "x");
    EXPECT_EQ(twAutoTab(field_), 0);
    EXPECT_EQ(GetFocus(), other_);
}

}  // namespace
