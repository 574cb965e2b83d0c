// The editing core under the fields: where a click puts the caret, how a drag selects, what is drawn.
#include "tests/win/fields/field_test.h"

namespace {

using namespace fieldtest;

class Mouse : public Field {
protected:
    int Extent(const char* text, int n) {
        HDC dc = GetDC(field_);
        SIZE s{};
        GetTextExtentPoint32A(dc, text, n, &s);
        ReleaseDC(field_, dc);
        return s.cx;
    }
    int Width() {
        RECT r;
        GetClientRect(field_, &r);
        return r.right;
    }
    Span Words() const { return {LOWORD(GetWindowLongA(field_, 12)), HIWORD(GetWindowLongA(field_, 12))}; }
};

// A click lands on the nearer character boundary, the middle counting as the right; right-aligned clicks count from
// the right edge, anything left of the text is the start; a masked caret is stored as the count of "*" (only) before
// it. A drag extends from the anchor, counting from two pixels in when right-aligned.
TEST_F(Mouse, ClicksPickTheNearestCharacterBoundaryAndDragsSelect) {
    Make(str);
    char text[] = "WiMx.9", digits[] = "1231", stars[] = "**/**/****", hashes[] = "##/##/####";
    const int edge = Width() - Extent(text, 6), middle = Extent(text, 2) + (Extent(text, 3) - Extent(text, 2) + 1) / 2;
    const struct { int x; char* mask; int right, caret; } rows[] = {
        {230, nullptr, 0, 6},   {Width() - 1, nullptr, 1, 6}, {edge + Extent(text, 1), nullptr, 1, 1},
        {edge - 1, nullptr, 1, 0}, {230, stars, 0, 4},    {230, hashes, 0, 0}, {middle - 1, nullptr, 0, 2},
        {middle, nullptr, 0, 3}};
    for (const auto& r : rows) {
        SetWindowLongA(field_, 12, MAKELONG(3, 3));
        MouseButtonDown(field_, r.x, r.mask ? digits : text, r.mask, r.right, 0);
        const int end = r.mask ? 10 : r.caret;  // a masked field selects in its screen text
        EXPECT_EQ(std::vector<int>({Caret(), Words().first, Words().second}), std::vector<int>({r.caret, end, end}))
            << r.x << (r.right ? " right-aligned" : "");
        EXPECT_EQ(GetCapture(), field_);
        ReleaseCapture();
    }
    MouseButtonDown(field_, 0, text, nullptr, 0, 0);
    MouseMove(field_, Extent(text, 4), text, 0);
    EXPECT_EQ(Words(), Span(0, 4));
    EXPECT_EQ(Caret(), 4);
    MouseMove(field_, 500, text, 0);
    EXPECT_EQ(Words(), Span(0, 6));
    const int shift = Width() - 2 - Extent(text, 6);
    MouseButtonDown(field_, Width() - 1, text, nullptr, 1, 0);
    MouseMove(field_, shift + Extent(text, 1) + (Extent(text, 2) - Extent(text, 1)) / 2, text, 1);
    EXPECT_EQ(Words(), Span(6, 2)) << "the middle of a character counts as its right";
    ReleaseCapture();
    SetWindowLongA(field_, 16, 40);
    twDrawField(field_, "abc", GXDF_ANY, 0);
    EXPECT_EQ(Caret(), 3) << "drawing clamps the caret";
}

// Through the window: a click takes the focus, a drag selects (from the right edge when right-justified), keys wait
// for the button and the release ends the capture.
TEST_F(Mouse, FieldsSelectWithTheMouse) {
    const struct { const char* cls; DWORD style; const char* after; } cases[] = {
        {num, 0, "195"}, {num, NUM_RIGHTJUST, "195"}, {str, 0, "195"}};
    for (const auto& c : cases) {
        Make(c.cls, c.style);
        Type(field_, "12345");
        Leave();
        const int shift = c.style ? Width() - Extent("12345", 5) - 2 : 0, from = shift + Extent("12345", 1),
                  to = shift + Extent("12345", 4);
        SendMessageA(field_, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(from, 5));
        EXPECT_EQ(GetFocus(), field_);
        SendMessageA(field_, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(to, 5));
        Type(field_, "9");
        EXPECT_EQ(Text(field_), "12345") << "typing waits for the button";
        SendMessageA(field_, WM_LBUTTONUP, 0, MAKELPARAM(to, 5));
        EXPECT_EQ(GetCapture(), nullptr);
        EXPECT_EQ(Sel(field_), Span(1, 4)) << c.cls << " style " << c.style;
        Type(field_, "9");
        EXPECT_EQ(Text(field_), c.after) << c.cls << " style " << c.style;
    }
}

}  // namespace
