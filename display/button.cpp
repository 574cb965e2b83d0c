// gxButton32: a push button drawn from bitmaps. Its kind (push, default
// push, toolbar, text) is in the low four style bits, BTN_TOGGLE makes it
// stay down when clicked. It answers the push-button messages of the system
// (BM_GETSTATE, BM_SETSTATE, BM_GETCHECK, BM_SETCHECK, BM_SETSTYLE, BM_CLICK)
// and tells its parent BN_CLICKED through WM_COMMAND, exactly as often as a
// system push button would: dialogs treat it as one. The class has no
// CS_DBLCLKS, so a fast second click is a second click.

#include <algorithm>
#include <memory>
#include <string>

#include "access/classes.h"
#include "display/dib.h"
#include "display/paint_util.h"
#include "frame/buffers.h"
#include "frame/extra_bytes.h"
#include "frame/gdi.h"
#include "frame/method_window.h"
#include "frame/window_words.h"
#include "include/fldkit.h"
#include "links/links.h"
#include "strings/lstr.h"

namespace {

using fk::SelectObj;

enum ImageIndex { kUp, kDown, kFocused, kDisabled, kImageCount };

// The four images of a bitmap button, owned by the button.
struct ButtonImages {
    fk::Bitmap image[kImageCount];
    SIZE size{};
};

// Window words.
using Images = fk::PtrWord<ButtonImages, 0, 18>;  // null for a text button
using Font = fk::HandleWord<HFONT, 4>;            // WM_SETFONT handle; 0 is the system font
using State = fk::ShortWord<8>;                  // BST_CHECKED, BST_PUSHED, BST_FOCUS and the two below
using Spare = fk::SpareBytes<State::kEnd, 4>;
using Method = fk::PtrWord<char, Spare::kEnd, Images::kEnd64>;
static_assert(fk::EndsAt<Method, Method>(fk::kButtonExtra.bits32, fk::kButtonExtra.bits64));
const fk::MethodSlot kMethod{Method::kOffset};

constexpr WORD kTracking = 0x0100;  // the mouse is captured since the button went down on it
constexpr WORD kSpaceDown = 0x0200; // the space bar holds the button down
constexpr WORD kReported = BST_CHECKED | BST_PUSHED | BST_FOCUS;

LONG Style(HWND h) { return GetWindowLongA(h, GWL_STYLE); }
int Kind(HWND h) { return Style(h) & BTN_KINDMASK; }
bool IsToggle(HWND h) { return (Style(h) & BTN_TOGGLE) != 0; }

void SetState(HWND h, WORD state) {
    const WORD was = State::get(h);
    if (was == state) return;
    State::set(h, state);
    InvalidateRect(h, nullptr, FALSE);
    if ((was ^ state) & BST_CHECKED) fk::RaiseEvent(h, EVENT_OBJECT_STATECHANGE);
}

// ---- images ----

SIZE BitmapSize(HBITMAP bitmap) {
    BITMAP info{};
    GetObjectA(bitmap, sizeof info, &info);
    return {info.bmWidth, info.bmHeight};
}

// A strip of square images side by side: up, down, focused, disabled (the
// first two, three or four of them). A bitmap that is not at least twice as
// wide as it is high, or whose width is not a multiple of its height, is the
// up image alone.
std::unique_ptr<ButtonImages> CutStrip(HBITMAP stripHandle) {
    fk::Bitmap strip(stripHandle);
    if (strip.get() == nullptr) return nullptr;
    auto images = std::make_unique<ButtonImages>();
    const SIZE whole = BitmapSize(strip);
    const bool isStrip = whole.cy > 0 && whole.cx >= 2 * whole.cy && whole.cx % whole.cy == 0;
    if (!isStrip) {
        images->size = whole;
        images->image[kUp] = std::move(strip);
        return images;
    }
    const int count = std::min<int>(kImageCount, whole.cx / whole.cy);
    images->size = {whole.cy, whole.cy};
    fk::WindowDC screen(nullptr);
    fk::MemoryDC from(screen), to(screen);
    SelectObj source(from, strip.get());
    for (int i = 0; i < count; ++i) {
        images->image[i].reset(CreateCompatibleBitmap(screen, whole.cy, whole.cy));
        SelectObj target(to, images->image[i].get());
        BitBlt(to, 0, 0, whole.cy, whole.cy, from, i * whole.cy, 0, SRCCOPY);
    }
    return images;
}

HBITMAP ResourceBitmap(HWND h, LPCSTR name) {
    auto module = reinterpret_cast<HINSTANCE>(GetWindowLongPtrA(h, GWLP_HINSTANCE));
    if (HBITMAP b = fk::BitmapFromResource(module, name)) return b;
    return fk::BitmapFromResource(GetModuleHandleA(nullptr), name);
}

// Images named after the window text: a strip of that name, else one
// resource per image, "NAMEU", "NAMED", "NAMEF", "NAMEX" ("#n": the numbers
// n to n + 3). Only the up image must be there.
std::unique_ptr<ButtonImages> ImagesNamed(HWND h, const char* base) {
    if (auto strip = CutStrip(ResourceBitmap(h, fk::ResourceName(base)))) return strip;
    auto images = std::make_unique<ButtonImages>();
    const bool numbered = fk::ResourceName(base) != base;
    static const char kSuffix[kImageCount] = {'U', 'D', 'F', 'X'};
    for (int i = 0; i < kImageCount; ++i) {
        const std::string name = std::string(base) + kSuffix[i];
        LPCSTR id = numbered ? MAKEINTRESOURCEA(LOWORD(reinterpret_cast<UINT_PTR>(fk::ResourceName(base))) + i) : name.c_str();
        images->image[i].reset(ResourceBitmap(h, id));
    }
    if (images->image[kUp].get() == nullptr) return nullptr;
    images->size = BitmapSize(images->image[kUp]);
    return images;
}

// "@BITMAP(file)" names a strip file; without it the window text names
// resources. Text buttons have no images.
void LoadImages(HWND h) {
    std::unique_ptr<ButtonImages> images;
    if (Kind(h) != BTN_TEXT) {
        const std::string file = fk::MethodArgument(h, kMethod, "@BITMAP");
        if (!file.empty()) {
            const std::vector<uint8_t> bytes = fk::ReadPictureFile(file.c_str());
            images = CutStrip(fk::BitmapFromBytes(bytes.data(), bytes.size(), nullptr));
        } else {
            char text[160];
            if (fk::ReadWindowText(h, text) > 0) images = ImagesNamed(h, text);
        }
    }
    std::unique_ptr<ButtonImages> old(Images::get(h));
    Images::set(h, images.release());
    InvalidateRect(h, nullptr, FALSE);
}

// ---- drawing ----

ImageIndex ImageFor(HWND h, WORD state) {
    if (!IsWindowEnabled(h)) return kDisabled;
    if ((state & BST_PUSHED) || (IsToggle(h) && (state & BST_CHECKED))) return kDown;
    if ((state & BST_FOCUS) && Kind(h) != BTN_TOOLBAR) return kFocused;
    return kUp;
}

void Blit(HDC dc, HBITMAP bitmap, SIZE size, int x, int y) {
    fk::MemoryDC memory(dc);
    SelectObj selected(memory, bitmap);
    BitBlt(dc, x, y, size.cx, size.cy, memory, 0, 0, SRCCOPY);
}

// An image the button was not given is made from the up image: pressed, it
// moves one pixel right and down; focused, it gets the dotted focus frame;
// disabled, the system embosses it in grey.
void DrawImage(HDC dc, const ButtonImages& images, ImageIndex index, const RECT& rc) {
    const int x = (rc.right - images.size.cx) / 2, y = (rc.bottom - images.size.cy) / 2;
    if (HBITMAP own = images.image[index].get()) return Blit(dc, own, images.size, x, y);
    HBITMAP up = images.image[kUp].get();
    switch (index) {
    case kDown:
        Blit(dc, up, images.size, x + 1, y + 1);
        break;
    case kFocused: {
        Blit(dc, up, images.size, x, y);
        RECT focus{x + 3, y + 3, x + images.size.cx - 3, y + images.size.cy - 3};
        DrawFocusRect(dc, &focus);
        break;
    }
    default:
        DrawStateA(dc, nullptr, nullptr, reinterpret_cast<LPARAM>(up), 0, x, y, images.size.cx, images.size.cy,
                   DST_BITMAP | DSS_DISABLED);
    }
}

// The system's look: a push-button frame, the window text in the middle.
void DrawTextFace(HWND h, HDC dc, ImageIndex index, RECT rc) {
    UINT frame = DFCS_BUTTONPUSH;
    if (index == kDown) frame |= DFCS_PUSHED;
    if (index == kDisabled) frame |= DFCS_INACTIVE;
    DrawFrameControl(dc, &rc, DFC_BUTTON, frame);
    char text[160];
    const int len = fk::ReadWindowText(h, text);
    SelectObj font(dc, Font::get(h));
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, GetSysColor(index == kDisabled ? COLOR_GRAYTEXT : COLOR_BTNTEXT));
    if (index == kDown) OffsetRect(&rc, 1, 1);
    DrawTextA(dc, text, len, &rc, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
    if (index == kFocused) {
        InflateRect(&rc, -3, -3);
        DrawFocusRect(dc, &rc);
    }
}

// ---- actions ----

// One click: a toggle changes its check, the parent hears BN_CLICKED.
void Clicked(HWND h) {
    if (IsToggle(h)) SetState(h, State::get(h) ^ BST_CHECKED);
    SendMessageA(GetParent(h), WM_COMMAND, MAKEWPARAM(GetWindowLongA(h, GWL_ID), BN_CLICKED), reinterpret_cast<LPARAM>(h));
}

// Ends a press of mouse or space bar; true when the button was down.
bool Release(HWND h, WORD how) {
    const WORD state = State::get(h);
    if ((state & how) == 0) return false;
    SetState(h, state & ~(how | BST_PUSHED));
    if (GetCapture() == h) ReleaseCapture();
    return (state & BST_PUSHED) != 0;
}

// ---- handlers ----

LRESULT OnCreate(HWND h) {
    LoadImages(h);
    return 0;
}

LRESULT OnDestroy(HWND h) {
    fk::ForgetAccessible(h);
    std::unique_ptr<ButtonImages> images(Images::get(h));
    Images::set(h, nullptr);
    fk::MethodFree(h, kMethod);
    RemovePropA(h, "@WANTDROP");
    return 0;
}

LRESULT OnPaint(HWND h) {
    fk::PaintDC dc(h);
    if (dc.get() == nullptr) return 0;
    RECT rc{};
    GetClientRect(h, &rc);
    const ImageIndex index = ImageFor(h, State::get(h));
    const ButtonImages* images = Images::get(h);
    if (Kind(h) == BTN_DEFPUSH) {
        FrameRect(dc, &rc, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
        InflateRect(&rc, -1, -1);
    }
    if (images == nullptr) {
        DrawTextFace(h, dc, index, rc);
        return 0;
    }
    FillRect(dc, &rc, GetSysColorBrush(COLOR_BTNFACE));
    DrawImage(dc, *images, index, rc);
    return 0;
}

LRESULT OnSetText(HWND h, WPARAM wp, LPARAM lp) {
    const LRESULT r = DefWindowProcA(h, WM_SETTEXT, wp, lp);
    LoadImages(h);
    return r;
}

LRESULT OnSetFont(HWND h, WPARAM wp, LPARAM lp) {
    Font::set(h, reinterpret_cast<HFONT>(wp));
    if (lp) InvalidateRect(h, nullptr, FALSE);
    return 0;
}

// Push buttons answer as the system's do, so that a dialog moves the
// default with the focus and Enter presses the default one. Toggles and
// toolbar buttons never become the default.
LRESULT OnGetDlgCode(HWND h) {
    if (IsToggle(h) || Kind(h) == BTN_TOOLBAR) return DLGC_BUTTON;
    return DLGC_BUTTON | (Kind(h) == BTN_DEFPUSH ? DLGC_DEFPUSHBUTTON : DLGC_UNDEFPUSHBUTTON);
}

// BM_SETSTYLE: the dialog's move of the default between push kinds.
LRESULT OnSetStyle(HWND h, WPARAM wp, LPARAM lp) {
    const int kind = Kind(h);
    if ((kind == BTN_PUSH || kind == BTN_DEFPUSH) && (wp & BTN_KINDMASK) <= BTN_DEFPUSH) {
        SetWindowLongA(h, GWL_STYLE, (Style(h) & ~BTN_KINDMASK) | (wp & BTN_DEFPUSH));
        if (lp) InvalidateRect(h, nullptr, FALSE);
    }
    return 0;
}

LRESULT OnSetCheck(HWND h, WPARAM wp) {
    if (IsToggle(h)) SetState(h, wp == BST_CHECKED ? State::get(h) | BST_CHECKED : State::get(h) & ~BST_CHECKED);
    return 0;
}

LRESULT OnSetButtonState(HWND h, WPARAM wp) {
    SetState(h, wp ? State::get(h) | BST_PUSHED : State::get(h) & ~BST_PUSHED);
    return 0;
}

LRESULT OnSetFocus(HWND h) {
    SetState(h, State::get(h) | BST_FOCUS);
    return 0;
}

LRESULT OnKillFocus(HWND h) {
    Release(h, kSpaceDown);
    SetState(h, State::get(h) & ~BST_FOCUS);
    return 0;
}

LRESULT OnLButtonDown(HWND h) {
    if (Kind(h) != BTN_TOOLBAR) SetFocus(h);
    SetCapture(h);
    SetState(h, State::get(h) | BST_PUSHED | kTracking);
    return 0;
}

// While the button is held, it shows down only with the mouse over it.
LRESULT OnMouseMove(HWND h, LPARAM lp) {
    const WORD state = State::get(h);
    if ((state & kTracking) == 0) return 0;
    const POINT pt{static_cast<short>(LOWORD(lp)), static_cast<short>(HIWORD(lp))};
    RECT rc{};
    GetClientRect(h, &rc);
    SetState(h, PtInRect(&rc, pt) ? state | BST_PUSHED : state & ~BST_PUSHED);
    return 0;
}

LRESULT OnLButtonUp(HWND h) {
    if (Release(h, kTracking)) Clicked(h);
    return 0;
}

LRESULT OnCaptureChanged(HWND h, LPARAM lp) {
    if (reinterpret_cast<HWND>(lp) != h) SetState(h, State::get(h) & ~(kTracking | kSpaceDown | BST_PUSHED));
    return 0;
}

LRESULT OnKeyDown(HWND h, WPARAM wp, LPARAM lp) {
    const bool repeat = (lp & 0x40000000) != 0;
    if (wp == VK_SPACE && !repeat && (State::get(h) & kTracking) == 0) {
        SetCapture(h);
        SetState(h, State::get(h) | BST_PUSHED | kSpaceDown);
    } else if (wp == VK_RETURN && !repeat && Kind(h) == BTN_DEFPUSH) {
        Clicked(h);  // outside a dialog; a dialog presses its default button itself
    } else if (wp == VK_F1) {
        char copy[fk::kMethodCopy + 1 + 2] = {};
        if (const char* method = kMethod.get(h)) lstrncpy(copy, method, fk::kMethodCopy);
        twProcessHelp(h, copy);
    }
    return 0;
}

LRESULT OnKeyUp(HWND h, WPARAM wp) {
    if (wp == VK_SPACE && Release(h, kSpaceDown)) Clicked(h);
    return 0;
}

LRESULT OnSetMethod(HWND h, LPARAM lp) {
    const char* method = fk::MethodReplace(h, kMethod, reinterpret_cast<const char*>(lp));
    LoadImages(h);
    if (method != nullptr && lstristr(method, "@PRT") != nullptr) EnableWindow(h, FALSE);
    if (method != nullptr && lstristr(method, "@DROPTARG") != nullptr) {
        SetPropA(h, "@WANTDROP", reinterpret_cast<HANDLE>(5));
    } else {
        RemovePropA(h, "@WANTDROP");
    }
    return 0;
}

}  // namespace

LRESULT WINAPI gxButtonWndFn(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    switch (msg) {
    case WM_CREATE:
        return OnCreate(h);
    case WM_DESTROY:
        return OnDestroy(h);
    case WM_GETOBJECT:
        return fk::AnswerGetObject(h, wp, lp, fk::kButtonAccess);
    case WM_PAINT:
        return OnPaint(h);
    case WM_ERASEBKGND:
        return 1;  // painting covers the whole client area
    case WM_ENABLE:
        InvalidateRect(h, nullptr, FALSE);
        return 0;
    case WM_SETTEXT:
        return OnSetText(h, wp, lp);
    case WM_SETFONT:
        return OnSetFont(h, wp, lp);
    case WM_GETFONT:
        return reinterpret_cast<LRESULT>(Font::get(h));
    case WM_GETDLGCODE:
        return OnGetDlgCode(h);
    case WM_SETFOCUS:
        return OnSetFocus(h);
    case WM_KILLFOCUS:
        return OnKillFocus(h);
    case WM_LBUTTONDOWN:
        return OnLButtonDown(h);
    case WM_MOUSEMOVE:
        return OnMouseMove(h, lp);
    case WM_LBUTTONUP:
        return OnLButtonUp(h);
    case WM_CAPTURECHANGED:
        return OnCaptureChanged(h, lp);
    case WM_KEYDOWN:
        return OnKeyDown(h, wp, lp);
    case WM_KEYUP:
        return OnKeyUp(h, wp);
    case BM_GETCHECK:
        return IsToggle(h) ? State::get(h) & BST_CHECKED : 0;
    case BM_SETCHECK:
        return OnSetCheck(h, wp);
    case BM_GETSTATE:
        return State::get(h) & kReported;
    case BM_SETSTATE:
        return OnSetButtonState(h, wp);
    case BM_SETSTYLE:
        return OnSetStyle(h, wp, lp);
    case BM_CLICK:
        Clicked(h);
        return 0;
    case GXM_SETMETHOD:
        return OnSetMethod(h, lp);
    case GXM_GETMETHOD:
        fk::MethodCopyOut(h, kMethod, reinterpret_cast<char*>(lp));
        return 0;
    case GXM_DROPDATA:
    case GXM_DRAGQUERY:
    case GXM_DRAGEND:
        return twProcessDragDrop(h, msg, wp, lp);
    default:
        return DefWindowProcA(h, msg, wp, lp);
    }
}
