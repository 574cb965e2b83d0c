// gxTicker32: scrolls its window text from right to left on a timer, like a
// news ticker. All drawing happens on the timer; WM_PAINT only validates.

#include <cstring>

#include <dde.h>

#include "access/classes.h"
#include "display/border.h"
#include "display/paint_util.h"
#include "frame/buffers.h"
#include "frame/control.h"
#include "frame/extra_bytes.h"
#include "frame/gdi.h"
#include "frame/method_text.h"
#include "frame/method_window.h"
#include "frame/window_words.h"
#include "include/fldkit.h"
#include "links/control_links.h"

namespace {

using fk::SelectObj;

// Window words.
using Font = fk::HandleWord<HFONT, 0>;  // WM_SETFONT handle; 0 is the system font
using CharWidth = fk::ShortWord<4>;   // average character width of the font
using CharHeight = fk::ShortWord<6>;  // character height of the font
using Interval = fk::LongWord<8>;     // restart interval in ms, 0 until set by 0x0402
using Limit = fk::ShortWord<12>;      // "@LIMIT" argument, 0 when absent
using Position = fk::ShortWord<14>;   // scroll position, a character index into the line
using Method = fk::PtrWord<char, 16, 22>;
using Spare = fk::SpareBytes<20, 2>;
static_assert(fk::EndsAt<Spare, Method>(fk::kTickerExtra.bits32, fk::kTickerExtra.bits64));
const fk::MethodSlot kMethod{Method::kOffset};

constexpr UINT_PTR kTimerId = 99;
constexpr UINT kFirstInterval = 75;
constexpr LRESULT kDlgCode = 0x8100;
constexpr int kDefaultLimit = 80;

// Blanks in front of the text, the text and the trailing blanks that wipe
// what the previous step drew.
constexpr int kMaxLeadIn = 4096;
constexpr int kTrailing = 10;

// Slow tickers (long intervals) take bigger steps, and their lead-in grows
// in bigger pieces.
int StepFor(UINT interval) {
    if (interval > 200) return 3;
    if (interval < 71) return 1;
    return 2;
}

void RecordMetrics(HWND h, HFONT font) {
    const fk::FontMetrics m = fk::ReadFontMetrics(h, font);
    CharWidth::set(h, static_cast<WORD>(m.avgWidth));
    CharHeight::set(h, static_cast<WORD>(m.height));
}

// Blanks as wide as the client area: one, then `step` more at a time.
int BuildLeadIn(HDC dc, int clientWidth, int step, char* line) {
    int n = 1;
    line[0] = ' ';
    SIZE size{};
    for (;;) {
        GetTextExtentPoint32A(dc, line, n, &size);
        if (size.cx >= clientWidth || n + step > kMaxLeadIn) break;
        for (int i = 0; i < step; ++i) line[n++] = ' ';
    }
    return n;
}

void TimerStep(HWND h) {
    const UINT interval = static_cast<UINT>(Interval::get(h));
    const int step = StepFor(interval);
    RECT rc;
    GetClientRect(h, &rc);
    fk::WindowDC dc(h);
    if (dc.get() == nullptr) return;
    SelectObj font(dc, Font::get(h));

    char line[kMaxLeadIn + 160 + kTrailing + 1];
    int len = BuildLeadIn(dc, rc.right, step, line);
    char text[160];
    const int textLen = fk::ReadWindowText(h, text);
    std::memcpy(line + len, text, textLen);
    len += textLen;
    int position = Position::get(h);
    if (len <= position) position = 0;
    std::memset(line + len, ' ', kTrailing);
    len += kTrailing;
    line[len] = '\0';

    fk::ParentColours(h, dc, WM_CTLCOLOREDIT);
    const int charHeight = CharHeight::get(h);
    const int y = rc.bottom > charHeight ? (rc.bottom - charHeight) / 2 : 0;
    TextOutA(dc, 2, y, line + position, len - position);
    Position::set(h, static_cast<WORD>(position + step));
}

LRESULT OnCreate(HWND h) {
    RecordMetrics(h, Font::get(h));
    SetTimer(h, kTimerId, kFirstInterval, nullptr);
    Position::set(h, 0);
    return 0;
}

void OnDestroy(HWND h) {
    fk::CloseControlLinks(h);
    KillTimer(h, kTimerId);
}

LRESULT OnTimer(HWND h, WPARAM wp, LPARAM lp) {
    if (wp != kTimerId) return DefWindowProcA(h, WM_TIMER, wp, lp);
    TimerStep(h);
    return 0;
}

// Nothing is drawn here; the paint pair validates the window. It also lets
// the system deliver a pending WM_NCPAINT and WM_ERASEBKGND, which some
// systems (Wine among them) hold back until BeginPaint, so the border and
// background still appear.
LRESULT OnPaint(HWND h) {
    fk::PaintDC dc(h);
    return 0;
}

LRESULT OnSetFont(HWND h, WPARAM wp, LPARAM lp) {
    Font::set(h, reinterpret_cast<HFONT>(wp));
    RecordMetrics(h, reinterpret_cast<HFONT>(wp));
    if (lp) InvalidateRect(h, nullptr, TRUE);
    return 0;
}

// Only the low 16 bits of the handle come back; callers of the 16-bit
// library saw the whole handle that way.
LRESULT OnGetFont(HWND h) { return static_cast<WORD>(HandleToLong(Font::get(h))); }

LRESULT OnStop(HWND h, WPARAM wp) {
    KillTimer(h, kTimerId);
    if (wp == 0) SetTimer(h, kTimerId, static_cast<UINT>(Interval::get(h)), nullptr);
    return 0;
}

LRESULT OnSetInterval(HWND h, WPARAM wp) {
    Interval::set(h, static_cast<LONG>(wp));
    KillTimer(h, kTimerId);
    SetTimer(h, kTimerId, static_cast<UINT>(wp), nullptr);
    return 0;
}

LRESULT OnSetMethod(HWND h, LPARAM lp) {
    char* method = fk::MethodReplace(h, kMethod, reinterpret_cast<const char*>(lp));
    Limit::set(h, static_cast<WORD>(fk::MethodFull(method).intParam("@LIMIT", 0)));
    fk::OpenControlLinks(h, method);
    return 0;
}

// Sets the text from lParam. A ticker linked as a DDE client ("CLIENT"
// property) asks its server instead, for lParam 0 as well.
LRESULT OnSetValue(HWND h, LPARAM lp) {
    if (GetPropA(h, "CLIENT") != nullptr) return twRequestDDEData(h), 0;
    if (lp != 0) SetWindowTextA(h, reinterpret_cast<const char*>(lp));
    return 0;
}

LRESULT OnGetValue(HWND h, LPARAM lp) {
    if (lp == 0) return 0;
    char text[160];
    fk::ReadWindowText(h, text);
    std::strcpy(reinterpret_cast<char*>(lp), text);
    return 0;
}

LRESULT OnGetType(HWND h, LPARAM lp) {
    if (lp != 0) {
        const int limit = Limit::get(h);
        *reinterpret_cast<LONG*>(lp) = limit ? limit : kDefaultLimit;
    }
    return 4;
}

}  // namespace

LRESULT WINAPI gxTickerWndFn(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    const fk::ValueWatch watch(h, fk::MayChangeTickerText(msg), [](HWND w, const void*) { return fk::WindowTextOf(w); });
    switch (msg) {
    case WM_CREATE:
        return OnCreate(h);
    case WM_DESTROY:
        fk::ForgetAccessible(h);
        OnDestroy(h);
        break;  // the method string goes below
    case WM_GETOBJECT:
        return fk::AnswerGetObject(h, wp, lp, fk::kTickerAccess);
    case WM_TIMER:
        return OnTimer(h, wp, lp);
    case WM_PAINT:
        return OnPaint(h);
    case WM_SETTEXT:
        return fk::SetTextAndRepaint(h, wp, lp);
    case WM_ENABLE:
        InvalidateRect(h, nullptr, TRUE);
        return 0;
    case WM_ERASEBKGND:
        return fk::EraseWithParentBrush(h, wp, lp, WM_CTLCOLOREDIT);
    case WM_SHOWWINDOW:
        return fk::ShowWindowWipingBorder(h, wp, lp, fk::kAny3DBits);
    case WM_NCPAINT:
        return fk::PaintBorder(h, wp, lp, fk::kTickerBorder);
    case WM_SETFONT:
        return OnSetFont(h, wp, lp);
    case WM_GETFONT:
        return OnGetFont(h);
    case WM_GETDLGCODE:
        return kDlgCode;
    case WM_LBUTTONDOWN:
        return 0;
    case GXM_TICKER_STOP:
        return OnStop(h, wp);
    case GXM_TICKER_SETINTERVAL:
        return OnSetInterval(h, wp);
    case GXM_TICKER_GETINTERVAL:
        return Interval::get(h);
    case GXM_SETMETHOD:
        return OnSetMethod(h, lp);
    case GXM_SETVALUE:
        return OnSetValue(h, lp);
    case GXM_GETVALUE:
        return OnGetValue(h, lp);
    case GXM_GETTYPE:
        return OnGetType(h, lp);
    case WM_DDE_INITIATE:
    case WM_DDE_ADVISE:
    case WM_DDE_UNADVISE:
    case WM_DDE_ACK:
    case WM_DDE_DATA:
    case WM_DDE_REQUEST:
        return fk::RouteControlDde(h, msg, wp, lp, kMethod.get(h));
    }
    return fk::MethodWindowProc(h, msg, wp, lp, kMethod, nullptr);
}
