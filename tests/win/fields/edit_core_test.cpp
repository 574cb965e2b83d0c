// The editing core called on a string field's window words: caret and selection from the mouse, drawing, auto-tab.
#include "tests/win/fields/number_test.h"

namespace {

using namespace numtest;

class EditCore : public NumberField {
protected:
    EditCore() : NumberField("gxString32") {}
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

// A click lands on the nearer character boundary, the middle counting as the right; a drag extends from the anchor.
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

// Right-aligned clicks count from the right edge; a masked caret is stored as the count of "*" (only) before it.
TEST_F(EditCore, RightAlignedAndMaskedClicks) {
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
    char digits[] = "1231", stars[] = "**/**/****", hashes[] = "##/##/####";
    MouseButtonDown(field_, 230, digits, stars, 0, 0);
    EXPECT_EQ(Caret(), 4);
    MouseButtonDown(field_, 230, digits, hashes, 0, 0);
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

// The string field hands button and move messages to the core; the release ends the capture.
TEST_F(EditCore, StringFieldSelectsWithTheMouse) {
    Type(field_, "abcdef");
    SendMessageA(field_, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(Extent("abcdef", 2), 5));
    SendMessageA(field_, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(Extent("abcdef", 5), 5));
    SendMessageA(field_, WM_LBUTTONUP, 0, MAKELPARAM(Extent("abcdef", 5), 5));
    EXPECT_EQ(Sel(field_), std::make_pair(2, 5));
    EXPECT_NE(GetCapture(), field_);
    Type(field_, "Z");
    EXPECT_EQ(Text(field_), "abZf");
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
