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
// it. A drag extends from the anchor.
TEST_F(Mouse, ClicksPickTheNearestCharacterBoundaryAndDragsSelect) {
    Make(str);
    char text[] = "WiMx.9", digits[] = "1231", stars[] = "**/**/****", hashes[] = "##/##/####";
    const int edge = Width() - Extent(text, 6);
    struct Row { int x; char* mask; int right, caret; };
    std::vector<Row> rows = {{230, nullptr, 0, 6},  {Width() - 1, nullptr, 1, 6}, {10, nullptr, 1, 0},
                             {edge, nullptr, 1, 0}, {edge + Extent(text, 1), nullptr, 1, 1}, {edge - 1, nullptr, 1, 0},
                             {230, stars, 0, 4},    {230, hashes, 0, 0}};
    for (int i = 1; i <= 6; ++i) {
        const int left = Extent(text, i - 1), middle = left + (Extent(text, i) - left + 1) / 2;
        rows.push_back({middle - 1, nullptr, 0, i - 1});
        rows.push_back({middle, nullptr, 0, i});
    }
    for (const Row& r : rows) {
        SetWindowLongA(field_, 12, MAKELONG(3, 3));
        MouseButtonDown(field_, r.x, r.mask ? digits : text, r.mask, r.right, 0);
        EXPECT_EQ(Caret(), r.caret) << r.x << (r.right ? " right-aligned" : "");
        const int end = r.mask ? 10 : r.caret;  // a masked field selects in its screen text
        EXPECT_EQ(Words(), Span(end, end)) << r.x << (r.right ? " right-aligned" : "");
        EXPECT_EQ(GetCapture(), field_);
        ReleaseCapture();
    }
    MouseButtonDown(field_, 0, text, nullptr, 0, 0);
    MouseMove(field_, Extent(text, 4), text, 0);
    EXPECT_EQ(Words(), Span(0, 4));
    EXPECT_EQ(Caret(), 4);
    MouseMove(field_, 500, text, 0);
    EXPECT_EQ(Words(), Span(0, 6));
    const int shift = Width() - 2 - Extent(text, 6);  // a right-aligned drag counts from two pixels in
    MouseButtonDown(field_, Width() - 1, text, nullptr, 1, 0);
    MouseMove(field_, shift + Extent(text, 1) + (Extent(text, 2) - Extent(text, 1)) / 2, text, 1);
    EXPECT_EQ(Words(), Span(6, 2)) << "the middle of a character counts as its right";
    ReleaseCapture();
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

std::vector<COLORREF> Pixels(HWND h) {
    RECT r;
    GetClientRect(h, &r);
    HDC dc = GetDC(h);
    std::vector<COLORREF> out;
    for (int y = 0; y < r.bottom; ++y)
        for (int x = 0; x < r.right; ++x) out.push_back(GetPixel(dc, x, y));
    ReleaseDC(h, dc);
    return out;
}

// The date field paints its raw text through the mask: the pixels the core draws for the screen text on a twin
// window; drawing clamps the caret and asks the parent for colours.
TEST_F(Mouse, DrawingThroughTheMask) {
    Make(date, DATE_YYYYMMDD, "@DOT");
    EXPECT_EQ(Send(GXM_DATE_GETFORMAT), MAKELONG('.', 7));
    Type(field_, "19991231");
    Leave();
    RedrawWindow(field_, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    WNDCLASSA wc{0, DefWindowProcA, 0, 28, GetModuleHandleA(nullptr), nullptr, nullptr, nullptr, nullptr, "FkDateRef"};
    RegisterClassA(&wc);
    fktest::UniqueWindow ref(CreateWindowExA(0, "FkDateRef", "", WS_CHILD | WS_VISIBLE, 10, 100, 240, 24, parent_,
                                             nullptr, wc.hInstance, nullptr));
    SetWindowLongA(ref, 8, GetWindowLongA(field_, 8));
    UpdateWindow(ref);
    auto drawn = [&](const char* screen) {
        twDrawField(ref, screen, GXDF_ANY | GXDF_NOCARET, 0);
        return Pixels(ref);
    };
    const std::vector<COLORREF> field = Pixels(field_);
    EXPECT_EQ(field, drawn("1999.12.31"));
    EXPECT_NE(field, drawn("1999/12/31")) << "the comparison sees a different separator";
    Make(str);
    SetWindowLongA(field_, 16, 40);
    parent_.clear();
    twDrawField(field_, "abc", GXDF_ANY, 0);
    EXPECT_EQ(Caret(), 3);
    auto colours = parent_.Of(WM_CTLCOLOREDIT);
    ASSERT_EQ(colours.size(), 1u);
    EXPECT_EQ(reinterpret_cast<HWND>(colours[0].lp), field_);
}

}  // namespace
