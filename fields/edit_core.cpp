// Drawing, caret placement and mouse selection of the entry fields.

#include "fields/edit_core.h"

#include <algorithm>
#include <cstring>

#include "fields/field_words.h"
#include "fields/text/mask.h"
#include "frame/gdi.h"
#include "frame/trace.h"
#include "include/fldkit.h"

namespace fk {

EditState g_edit;

namespace {

// Longest text the core measures or draws: field text and a mask's screen
// text with its literals.
constexpr int kScreenText = 512;

int Length(const char* text) { return text ? static_cast<int>(strnlen(text, kScreenText)) : 0; }

SIZE ClientSize(HWND h) {
    RECT r;
    GetClientRect(h, &r);
    return {r.right - r.left, r.bottom - r.top};
}

int CharWidth(HDC dc, char c) {
    SIZE s{};
    GetTextExtentPoint32A(dc, &c, 1, &s);
    return s.cx;
}

// A bold face other than the system font draws its selection one pixel to
// the left so that it lines up with the overhang of the normal text.
bool IsBoldFont(HDC dc) {
    char face[LF_FACESIZE] = "";
    GetTextFaceA(dc, sizeof face, face);
    TEXTMETRICA tm{};
    GetTextMetricsA(dc, &tm);
    return lstrcmpiA(face, "system") != 0 && tm.tmWeight >= 601;
}

int ClampCaret(HWND field, int length) {
    int caret = FieldWords::Caret::get(field);
    if (caret > length || caret < 0) {
        caret = caret < 0 ? 0 : length;
        FieldWords::Caret::set(field, caret);
    }
    return caret;
}

}  // namespace

int TextExtent(HDC dc, const char* text, int n) {
    if (text == nullptr || n <= 0) return 0;
    SIZE s{};
    GetTextExtentPoint32A(dc, text, n, &s);
    return s.cx;
}

void FieldPlaceCaret(HWND field, const char* text, bool recreate) {
    if (recreate) DestroyCaret();
    WindowDC dc(field);
    SelectObj font(dc, FieldWords::font(field));
    const int charHeight = FieldWords::CharHeight::get(field);
    const SIZE client = ClientSize(field);
    const int y = (client.cy - charHeight) / 2;
    CreateCaret(field, nullptr, 2, charHeight);
    const int caret = ClampCaret(field, Length(text));
    SetCaretPos(TextExtent(dc, text, caret) + 2, y);
}

}  // namespace fk

using namespace fk;

namespace {

// The device context of one twDrawField call: BeginPaint inside WM_PAINT,
// GetDC otherwise.
class FieldDC {
public:
    FieldDC(HWND h, bool painting) : h_(h), painting_(painting) {
        dc_ = painting ? BeginPaint(h, &ps_) : GetDC(h);
    }
    ~FieldDC() { release(); }
    FieldDC(const FieldDC&) = delete;
    FieldDC& operator=(const FieldDC&) = delete;
    operator HDC() const { return dc_; }
    int release() {
        if (dc_ == nullptr) return 0;
        int r = painting_ ? EndPaint(h_, &ps_) : ReleaseDC(h_, dc_);
        dc_ = nullptr;
        return r;
    }

private:
    HWND h_;
    bool painting_;
    PAINTSTRUCT ps_{};
    HDC dc_;
};

}  // namespace

extern "C" int WINAPI twDrawField(HWND field, const char* text, UINT flags, int /*reserved*/) {
    if (!IsWindow(field)) return 0;
    const int length = Length(text);
    const bool right = (flags & GXDF_RIGHT) != 0;
    const bool focused = GetFocus() == field;
    FieldDC dc(field, (flags & GXDF_PAINT) != 0);
    int result;
    {
        SelectObj font(dc, FieldWords::font(field));
        const bool bold = IsBoldFont(dc);
        const int charHeight = FieldWords::CharHeight::get(field);
        const SIZE client = ClientSize(field);
        const int extent = TextExtent(dc, text, length);
        const int rightOffset = right ? client.cx - extent - 2 : 0;
        const int top = charHeight < client.cy ? (client.cy - charHeight) / 2 : 0;

        if ((flags & GXDF_NOCARET) == 0 && focused) {
            // One pixel below the text on purpose.
            const int caretY = charHeight < client.cy ? top + 1 : 0;
            CreateCaret(field, nullptr, 2, charHeight);
            const int caret = ClampCaret(field, length);
            SetCaretPos(TextExtent(dc, text, caret) + rightOffset, caretY);
        }

        HWND parent = GetParent(field);
        if (parent) SendMessageA(parent, WM_CTLCOLOREDIT, reinterpret_cast<WPARAM>(HDC(dc)), reinterpret_cast<LPARAM>(field));

        RECT clientRect{0, 0, client.cx, client.cy};
        if (length > 0) {
            if (IsWindowEnabled(field)) {
                ExtTextOutA(dc, rightOffset, top, ETO_OPAQUE | ETO_CLIPPED, &clientRect, text, length, nullptr);
            } else {
                GrayStringA(dc, static_cast<HBRUSH>(GetStockObject(GRAY_BRUSH)), nullptr,
                            reinterpret_cast<LPARAM>(text), length, rightOffset + 2, top, 0, 0);
            }
        }

        int start = FieldWords::anchor(field);
        int end = FieldWords::movingEnd(field);
        if (start > end) std::swap(start, end);
        end = std::min(end, length);
        if (length > 0 && focused && start < end) {
            int x = TextExtent(dc, text, start) + rightOffset;
            if (bold && start >= 1) x -= 1;
            const COLORREF oldText = SetTextColor(dc, GetSysColor(COLOR_HIGHLIGHTTEXT));
            const COLORREF oldBack = SetBkColor(dc, GetSysColor(COLOR_HIGHLIGHT));
            ExtTextOutA(dc, x, top, ETO_CLIPPED, &clientRect, text + start, end - start, nullptr);
            SetTextColor(dc, oldText);
            SetBkColor(dc, oldBack);
        }
        ShowCaret(field);
    }
    result = dc.release();
    return result;
}

extern "C" void WINAPI MouseButtonDown(HWND field, int x, char* text, char* mask, int rightAligned, UINT flags) {
    if (!IsWindow(field)) return;
    const bool masked = mask != nullptr && *mask != 0;
    g_edit.masked = masked;
    // A masked field works on its screen text.
    char screen[kScreenText * 2 + 1];
    const char* shown = text ? text : "";
    int firstEmpty = 0;
    if (masked) {
        char app[kScreenText + 1];
        lstrcpynA(app, shown, sizeof app);
        char cutMask[kScreenText + 1];
        lstrcpynA(cutMask, mask, sizeof cutMask);
        firstEmpty = twAppToScrMask(screen, app, cutMask, Length(app), (flags & 0x100) != 0);
        shown = screen;
    }
    const int length = Length(shown);
    const SIZE client = ClientSize(field);
    const UINT drawFlags = rightAligned ? (GXDF_ANY | GXDF_RIGHT) : GXDF_ANY;
    int caret;
    {
        WindowDC dc(field);
        SelectObj font(dc, FieldWords::font(field));
        const int width = TextExtent(dc, shown, length);
        if (rightAligned) {
            if (client.cx - width >= x) {
                // Left of right-aligned text: nothing is selected.
                FieldWords::Caret::set(field, 0);
                FieldWords::setSelection(field, 0, 0);
                g_edit.anchor = g_edit.movingEnd = 0;
                g_edit.selecting = true;
                g_edit.changed = false;
                SetCapture(field);
                dc.release();
                twDrawField(field, shown, drawFlags, 0);
                return;
            }
            Trace("First point.x = %d\r\n", x);
            x = x - client.cx + width;
        }
        int ends;
        if (x < width) {
            // The left half of a character lands before it, the right half after.
            caret = length + 1;
            ends = length;
            for (int i = 1; i <= length; ++i) {
                if (TextExtent(dc, shown, i) - CharWidth(dc, shown[i - 1]) / 2 > x) {
                    caret = ends = i - 1;
                    break;
                }
            }
        } else {
            caret = ends = length;
        }
        FieldWords::Caret::set(field, caret);
        g_edit.anchor = g_edit.movingEnd = ends;
        FieldWords::setSelection(field, ends, ends);
    }
    g_edit.selecting = true;
    g_edit.changed = false;
    SetCapture(field);
    if (!masked) {
        twDrawField(field, shown, drawFlags, 0);
        return;
    }
    // Masked: the caret goes no further than the first empty position.
    int place = std::max(0, std::min(caret, firstEmpty) - 1);
    FieldWords::Caret::set(field, place);
    twDrawField(field, shown, drawFlags, 0);
    // Only "*" placeholders are counted here; the masked string field
    // accounts for this when it moves the caret afterwards.
    int stars = 0;
    for (int i = 0; i < place && mask[i] != 0; ++i)
        if (mask[i] == '*') ++stars;
    FieldWords::Caret::set(field, stars);
}

extern "C" void WINAPI MouseMove(HWND field, int x, char* text, int rightAligned) {
    if (!IsWindow(field)) return;
    const char* shown = text ? text : "";
    const int length = Length(shown);
    const SIZE client = ClientSize(field);
    {
        WindowDC dc(field);
        SelectObj font(dc, FieldWords::font(field));
        const int width = TextExtent(dc, shown, length);
        if (rightAligned) x += width - client.cx + 2;
        if (x <= width) {
            for (int i = 0; i < length; ++i) {
                if (TextExtent(dc, shown, i) + CharWidth(dc, shown[i]) / 2 > x) {
                    g_edit.movingEnd = i;
                    break;
                }
            }
        } else {
            g_edit.movingEnd = length;
        }
    }
    const int start = std::min(g_edit.anchor, g_edit.movingEnd);
    const int end = std::max(g_edit.anchor, g_edit.movingEnd);
    if (start != g_edit.drawnStart || end != g_edit.drawnEnd) {
        g_edit.drawnStart = start;
        g_edit.drawnEnd = end;
        g_edit.changed = true;
    }
    FieldWords::setSelection(field, g_edit.anchor, g_edit.movingEnd);
    FieldWords::Caret::set(field, g_edit.movingEnd);
    if (!g_edit.changed) return;
    if (rightAligned) {
        twDrawField(field, shown, GXDF_ANY | GXDF_RIGHT, 0);
    } else {
        // Three blanks overwrite the pixels of a shrinking selection.
        char padded[kScreenText + 4];
        lstrcpynA(padded, shown, kScreenText + 1);
        lstrcatA(padded, "   ");
        twDrawField(field, padded, GXDF_ANY, 0);
    }
}
