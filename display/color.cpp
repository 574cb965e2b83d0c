// gxColor32: picks a colour with three vertical scroll bars (red, green and
// blue, 0 to 255 each) and shows it in a swatch on its right half.

#include <cstring>

#include "access/classes.h"
#include "display/border.h"
#include "display/paint_util.h"
#include "frame/control.h"
#include "frame/extra_bytes.h"
#include "frame/gdi.h"
#include "frame/library.h"
#include "frame/method_window.h"
#include "frame/registry.h"
#include "frame/window_words.h"
#include "include/fldkit.h"

namespace fk {
// The channel brushes live until WEP.
void CreateColorBrushes() {
    hbrColorRed = CreateSolidBrush(RGB(255, 0, 0));
    hbrColorGreen = CreateSolidBrush(RGB(0, 255, 0));
    hbrColorBlue = CreateSolidBrush(RGB(0, 0, 255));
}
}  // namespace fk

namespace {

using fk::SelectObj;

// Three consecutive 16-bit window words.
template <int Base>
struct ShortTriple {
    static WORD get(HWND h, int i) { return GetWindowWord(h, Base + 2 * i); }
    static void set(HWND h, int i, WORD v) { SetWindowWord(h, Base + 2 * i, v); }
};

// Window words. The children are kept by their
// identifiers, not their handles: the words are 16 bits wide, and a window
// handle of 32-bit Windows does not fit in one (its high word is not zero),
// so each child is found again with GetDlgItem.
using FocusBar = fk::ShortWord<0>;    // 0-2: the bar that last had the focus
using BarId = ShortTriple<2>;         // the three scroll bars
using LetterId = ShortTriple<8>;      // "R", "G", "B"
using ValueId = ShortTriple<14>;      // the values in decimal
using Component = ShortTriple<20>;    // red, green, blue (a page up below 15 wraps: keep 16 bits)
using SwatchLeft = fk::ShortWord<26>;
using SwatchTop = fk::ShortWord<28>;
using SwatchRight = fk::ShortWord<30>;
using SwatchBottom = fk::ShortWord<32>;
using PanelId = fk::ShortWord<34>;    // the white panel behind the bars
using Method = fk::PtrWord<char, 36, 40>;
static_assert(fk::EndsAt<Method, Method>(fk::kColorExtra.bits32, fk::kColorExtra.bits64));
const fk::MethodSlot kMethod{Method::kOffset};

constexpr int kPanelId = 9;
constexpr DWORD kPanelStyle = 0x50000006;   // child, visible, white rectangle
constexpr DWORD kBarStyle = 0x50010001;     // child, visible, tab stop, vertical
constexpr DWORD kLabelStyle = 0x50000001;   // child, visible, centered
constexpr LRESULT kDlgCode = 0x8001;
constexpr WORD kMaxComponent = 255;
constexpr WORD kPage = 15;
const char* const kLetters[3] = {"R", "G", "B"};

// The scroll bars' own procedure, saved when the first bar is subclassed.
WNDPROC lpfnScrollBarProc = nullptr;

// Working copy of one control's words; reloaded from the window whenever
// the control handles a message that uses it.
struct ColorWork {
    WORD focus;
    WORD bar[3];
    WORD letter[3];
    WORD value[3];
    WORD rgb[3];
    RECT swatch;
    WORD panel;
};
ColorWork g_colorWork;

void LoadWork(HWND h) {
    ColorWork& w = g_colorWork;
    w.focus = FocusBar::get(h);
    for (int i = 0; i < 3; ++i) {
        w.bar[i] = BarId::get(h, i);
        w.letter[i] = LetterId::get(h, i);
        w.value[i] = ValueId::get(h, i);
        w.rgb[i] = Component::get(h, i);
    }
    w.swatch = {SwatchLeft::get(h), SwatchTop::get(h), SwatchRight::get(h), SwatchBottom::get(h)};
    w.panel = PanelId::get(h);
}

void StoreWork(HWND h) {
    const ColorWork& w = g_colorWork;
    FocusBar::set(h, w.focus);
    for (int i = 0; i < 3; ++i) {
        BarId::set(h, i, w.bar[i]);
        LetterId::set(h, i, w.letter[i]);
        ValueId::set(h, i, w.value[i]);
        Component::set(h, i, w.rgb[i]);
    }
    SwatchLeft::set(h, static_cast<WORD>(w.swatch.left));
    SwatchTop::set(h, static_cast<WORD>(w.swatch.top));
    SwatchRight::set(h, static_cast<WORD>(w.swatch.right));
    SwatchBottom::set(h, static_cast<WORD>(w.swatch.bottom));
    PanelId::set(h, w.panel);
}

HWND Child(HWND h, WORD id) { return GetDlgItem(h, id); }

// red + green * 256 + blue * 65536, wrapped values included.
COLORREF CurrentColour() {
    const ColorWork& w = g_colorWork;
    return static_cast<COLORREF>(w.rgb[0] + w.rgb[1] * 256u + w.rgb[2] * 65536u);
}

HBRUSH ChannelBrush(int i) {
    const HBRUSH brushes[3] = {fk::hbrColorRed, fk::hbrColorGreen, fk::hbrColorBlue};
    return brushes[i];
}

void FillSwatch(HWND h) {
    fk::WindowDC dc(h);
    if (dc.get() == nullptr) return;
    fk::Brush brush(CreateSolidBrush(CurrentColour()));
    FillRect(dc, &g_colorWork.swatch, brush);
}

void ShowComponent(HWND h, int i) {
    char number[8];
    wsprintfA(number, "%u", static_cast<unsigned>(g_colorWork.rgb[i]));
    SetWindowTextA(Child(h, g_colorWork.value[i]), number);
    SetScrollPos(Child(h, g_colorWork.bar[i]), SB_CTL, g_colorWork.rgb[i], TRUE);
}

bool IsColorControl(HWND h) {
    char name[16];
    return h != nullptr && GetClassNameA(h, name, sizeof name) > 0 && lstrcmpiA(name, FK_CLASS_COLOR) == 0;
}

// The bar index (0-2) of a scroll bar of this control, or -1.
int BarIndex(HWND h, HWND bar) {
    if (bar == nullptr || GetParent(bar) != h) return -1;
    const int id = GetDlgCtrlID(bar);
    for (int i = 0; i < 3; ++i)
        if (g_colorWork.bar[i] == id) return i;
    return -1;
}

LRESULT OnCreate(HWND h) {
    auto inst = reinterpret_cast<HINSTANCE>(GetWindowLongPtrA(h, GWLP_HINSTANCE));
    auto make = [&](const char* cls, const char* text, DWORD style, int id) {
        return CreateWindowExA(0, cls, text, style, 0, 0, 0, 0, h,
                               reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), inst, nullptr);
    };
    ColorWork& w = g_colorWork;
    w = {};
    make("static", "", kPanelStyle, kPanelId);
    w.panel = kPanelId;
    for (int i = 0; i < 3; ++i) {
        HWND bar = make("scrollbar", "", kBarStyle, i);
        SetScrollRange(bar, SB_CTL, 0, kMaxComponent, FALSE);
        SetScrollPos(bar, SB_CTL, 0, FALSE);
        auto previous = reinterpret_cast<WNDPROC>(
            SetWindowLongPtrA(bar, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(ColorScrollProc)));
        if (lpfnScrollBarProc == nullptr && previous != ColorScrollProc) lpfnScrollBarProc = previous;
        make("static", kLetters[i], kLabelStyle, i + 3);
        make("static", "0", kLabelStyle, i + 6);
        w.bar[i] = static_cast<WORD>(i);
        w.letter[i] = static_cast<WORD>(i + 3);
        w.value[i] = static_cast<WORD>(i + 6);
    }
    StoreWork(h);
    return 0;
}

LRESULT OnSize(HWND h, LPARAM lp) {
    LoadWork(h);
    const int W = LOWORD(lp), H = HIWORD(lp);
    const int c = fk::ReadFontMetrics(h, reinterpret_cast<HFONT>(SendMessageA(h, WM_GETFONT, 0, 0))).height;
    ColorWork& w = g_colorWork;
    MoveWindow(Child(h, w.panel), 0, 0, W / 2, H, TRUE);
    for (int i = 0; i < 3; ++i) {
        MoveWindow(Child(h, w.bar[i]), (2 * i + 1) * W / 14, 2 * c, W / 14, H - 4 * c, TRUE);
        const int x = (4 * i + 1) * W / 28;
        MoveWindow(Child(h, w.letter[i]), x, c / 2, W / 7, c, TRUE);
        MoveWindow(Child(h, w.value[i]), x, H - 3 * c / 2, W / 7, c, TRUE);
    }
    w.swatch = {W - W / 2, 0, W, H};
    StoreWork(h);
    return 0;
}

LRESULT OnPaint(HWND h) {
    fk::PaintDC dc(h);
    if (dc.get() == nullptr) return 0;
    LoadWork(h);
    fk::Brush brush(CreateSolidBrush(CurrentColour()));
    FillRect(dc, &g_colorWork.swatch, brush);
    return 0;
}

WORD LineUp(WORD v) { return v == 0 ? 0 : static_cast<WORD>(v - 1); }
WORD AtMost255(unsigned v) { return static_cast<WORD>(v > kMaxComponent ? kMaxComponent : v); }

LRESULT OnVScroll(HWND h, WPARAM wp, LPARAM lp) {
    LoadWork(h);
    HWND bar = reinterpret_cast<HWND>(lp);
    const int i = BarIndex(h, bar);
    if (i < 0) return DefWindowProcA(h, WM_VSCROLL, wp, lp);
    WORD v = g_colorWork.rgb[i];
    switch (LOWORD(wp)) {
    case SB_LINEUP:
        v = LineUp(v);
        break;
    case SB_LINEDOWN:
        v = AtMost255(v + 1u);
        break;
    case SB_PAGEUP:
        // 16-bit unsigned: below 15 this wraps (5 becomes 65525). Keep it.
        v = LineUp(static_cast<WORD>(v - kPage));
        break;
    case SB_PAGEDOWN:
        v = AtMost255(v + kPage + 1u);
        break;
    case SB_THUMBPOSITION:
    case SB_THUMBTRACK:
        v = HIWORD(wp);
        break;
    case SB_TOP:
        v = 0;
        break;
    case SB_BOTTOM:
        v = kMaxComponent;
        break;
    default:  // SB_ENDSCROLL: nothing changed
        return 0;
    }
    const bool changed = g_colorWork.rgb[i] != v;
    g_colorWork.rgb[i] = v;
    StoreWork(h);  // before the bar moves: its repaint reloads the working copy
    ShowComponent(h, i);
    FillSwatch(h);
    if (changed) fk::RaiseColourChanged(h, i);
    fk::NotifyParent(h, GXN_COLORCHANGED);
    return 0;
}

LRESULT OnCtlColorScrollBar(HWND h, WPARAM wp, LPARAM lp) {
    LoadWork(h);
    const int i = BarIndex(h, reinterpret_cast<HWND>(lp));
    if (i < 0) return DefWindowProcA(h, WM_CTLCOLORSCROLLBAR, wp, lp);
    HDC dc = reinterpret_cast<HDC>(wp);
    SetBkColor(dc, GetSysColor(COLOR_CAPTIONTEXT));
    SetTextColor(dc, GetSysColor(COLOR_WINDOWFRAME));
    POINT origin{0, 0};
    ClientToScreen(h, &origin);
    SetBrushOrgEx(dc, origin.x, origin.y, nullptr);
    return reinterpret_cast<LRESULT>(ChannelBrush(i));
}

LRESULT OnSetFocus(HWND h) {
    LoadWork(h);
    fk::NotifyParent(h, GXN_SETFOCUS);
    const WORD focus = g_colorWork.focus < 3 ? g_colorWork.focus : 0;
    SetFocus(Child(h, g_colorWork.bar[focus]));
    return 0;
}

// "@PRT" (exactly so) makes the control read-only for printing.
LRESULT OnSetMethod(HWND h, LPARAM lp) {
    const char* method = fk::MethodReplace(h, kMethod, reinterpret_cast<const char*>(lp));
    if (method != nullptr && std::strstr(method, "@PRT") != nullptr) EnableWindow(h, FALSE);
    return 0;
}

LRESULT OnSetValue(HWND h, LPARAM lp) {
    if (lp == 0) return 0;
    LoadWork(h);
    const DWORD colour = *reinterpret_cast<const DWORD*>(lp);
    bool changed[3] = {};
    for (int i = 0; i < 3; ++i) {
        const auto v = static_cast<WORD>((colour >> (8 * i)) & 0xFF);
        changed[i] = g_colorWork.rgb[i] != v;
        g_colorWork.rgb[i] = v;
    }
    // Stored first: moving a bar repaints it, and its WM_CTLCOLORSCROLLBAR
    // reloads the working copy from the window.
    StoreWork(h);
    for (int i = 0; i < 3; ++i) ShowComponent(h, i);
    InvalidateRect(h, &g_colorWork.swatch, FALSE);
    fk::RaiseColoursChanged(h, changed);
    return 0;
}

LRESULT OnGetValue(HWND h, LPARAM lp) {
    LoadWork(h);
    if (lp != 0) *reinterpret_cast<DWORD*>(lp) = CurrentColour();
    return 0;
}

}  // namespace

LRESULT WINAPI gxColorWndFn(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    switch (msg) {
    case WM_CREATE:
        return OnCreate(h);
    case WM_DESTROY:
        fk::ForgetAccessible(h);
        LoadWork(h);
        break;  // the method string goes below
    case WM_GETOBJECT:
        return fk::AnswerGetObject(h, wp, lp, fk::kColorAccess);
    case WM_SIZE:
        return OnSize(h, lp);
    case WM_PAINT:
        return OnPaint(h);
    case WM_VSCROLL:
        return OnVScroll(h, wp, lp);
    case WM_CTLCOLORSCROLLBAR:
        return OnCtlColorScrollBar(h, wp, lp);
    case WM_SETFOCUS:
        return OnSetFocus(h);
    case WM_ERASEBKGND:
        return fk::EraseWithParentBrush(h, wp, lp, WM_CTLCOLORSTATIC);
    case WM_SHOWWINDOW:
        return fk::ShowWindowWipingBorder(h, wp, lp, fk::kAny3DBits);
    case WM_NCPAINT:
        return fk::PaintBorder(h, wp, lp, fk::kColorBorder);
    case WM_GETDLGCODE:
        return kDlgCode;
    case GXM_SETMETHOD:
        return OnSetMethod(h, lp);
    case GXM_SETVALUE:
        return OnSetValue(h, lp);
    case GXM_GETVALUE:
        return OnGetValue(h, lp);
    case GXM_GETTYPE:
        return 2;
    }
    return fk::MethodWindowProc(h, msg, wp, lp, kMethod, nullptr);
}

// Subclass procedure of the three scroll bars: remembers the bar that has
// the focus, moves between bars with the left and right arrows, and hands
// the other keys to the colour control too.
LRESULT WINAPI ColorScrollProc(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    HWND parent = GetParent(h);
    const int id = GetDlgCtrlID(h);
    const bool ours = id >= 0 && id <= 2 && IsColorControl(parent);
    switch (msg) {
    case WM_SETFOCUS:
        if (ours) FocusBar::set(parent, static_cast<WORD>(id));
        break;
    case WM_KEYDOWN:
        if (ours && (wp == VK_LEFT || wp == VK_RIGHT)) {
            const int next = wp == VK_LEFT ? (id + 2) % 3 : (id + 1) % 3;
            SetFocus(GetDlgItem(parent, BarId::get(parent, next)));
            return 0;
        }
        if (parent) SendMessageA(parent, msg, wp, lp);
        break;
    case WM_CHAR:
    case WM_SYSCHAR:
        if (parent) SendMessageA(parent, msg, wp, lp);
        break;
    default:
        break;
    }
    return lpfnScrollBarProc ? CallWindowProcA(lpfnScrollBarProc, h, msg, wp, lp) : DefWindowProcA(h, msg, wp, lp);
}
