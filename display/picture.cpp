#include "display/picture.h"

#include <shellapi.h>

#include <cstring>
#include <string>

#include "access/classes.h"
#include "display/border.h"
#include "display/dib.h"
#include "display/paint_util.h"
#include "frame/buffers.h"
#include "frame/gdi.h"
#include "frame/method_text.h"
#include "include/fldkit.h"
#include "links/links.h"
#include "strings/lstr.h"

namespace fk {
namespace {

namespace words = picture_words;

constexpr WORD kPressed = 1;   // the button is down over the picture
constexpr WORD kTracking = 2;  // the mouse is captured since the button went down
constexpr LONG kNameSize = MAX_PATH;  // GXM_GETVALUE hands out at most 259 characters

SIZE ClientSize(HWND h) {
    RECT rc{};
    GetClientRect(h, &rc);
    return {rc.right, rc.bottom};
}

// Where the picture goes in the client area: stretched over it, centred at
// its own size, or at its own size in the top left corner.
RECT Place(HWND h, SIZE picture) {
    RECT rc{};
    GetClientRect(h, &rc);
    const LONG style = GetWindowLongA(h, GWL_STYLE);
    if (style & BMP_STRETCH) return rc;
    LONG x = 0, y = 0;
    if (style & BMP_CENTER) x = (rc.right - picture.cx) / 2, y = (rc.bottom - picture.cy) / 2;
    return {x, y, x + picture.cx, y + picture.cy};
}

// The window takes the picture's size; its top left corner stays.
void SizeToPicture(HWND h, SIZE picture) {
    RECT frame{0, 0, picture.cx, picture.cy};
    AdjustWindowRectEx(&frame, GetWindowLongA(h, GWL_STYLE), FALSE, GetWindowLongA(h, GWL_EXSTYLE));
    SetWindowPos(h, nullptr, 0, 0, frame.right - frame.left, frame.bottom - frame.top,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

// The control's picture is replaced (the old one is deleted here) and the
// name it came from kept for GXM_GETVALUE and for drags.
void Install(HWND h, std::unique_ptr<Picture> picture, const char* name) {
    std::unique_ptr<Picture> old(words::Image::get(h));
    words::Image::set(h, picture.get());
    const Picture* now = picture.release();
    MethodReplace(h, words::kName, now != nullptr ? name : nullptr);
    if (now != nullptr && (GetWindowLongA(h, GWL_STYLE) & BMP_SIZETOFIT)) SizeToPicture(h, now->size());
    InvalidateRect(h, nullptr, TRUE);
}

void SetState(HWND h, WORD state) {
    if (words::State::get(h) == state) return;
    words::State::set(h, state);
    InvalidateRect(h, nullptr, TRUE);
}

void Launch(HWND h, const PictureClass& cls) {
    MethodFull copy(cls.method.get(h));
    if (copy.has("@PROG")) twExecProgram(h, copy.get());
}

// A dropped file becomes the picture through the method string, so that
// GXM_GETMETHOD tells where it came from. A name that does not load, or
// that cannot stand in a method string item, is refused with a beep.
bool UsePictureFile(HWND h, const PictureClass& cls, std::string path) {
    const size_t first = path.find_first_not_of(" \t\r"), last = path.find_last_not_of(" \t\r");
    path = first == std::string::npos ? "" : path.substr(first, last - first + 1);
    const std::string item = std::string(cls.keyword) + "(" + path + ")";
    const char* method = cls.method.get(h);
    const size_t length = method != nullptr ? std::strlen(method) : 0;
    if (path.empty() || path.find_first_of("()") != std::string::npos || length + item.size() > kMethodMax ||
        cls.fromFile(path.c_str(), ClientSize(h)) == nullptr) {
        MessageBeep(0);
        return false;
    }
    char work[kMethodMax + 1 + 2] = {};
    if (method != nullptr) std::memcpy(work, method, length);
    twAddMethodParam(work, item.c_str());
    SendMessageA(h, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(work));
    return true;
}

// ---- handlers ----

// The window text names a picture resource of the application: of the
// module that made the window, else of the program.
void LoadNamedPicture(HWND h, HINSTANCE module, const PictureClass& cls) {
    char text[160];
    if (ReadWindowText(h, text) == 0) return;
    std::unique_ptr<Picture> picture = cls.fromResource(module, ResourceName(text), ClientSize(h));
    if (picture == nullptr) picture = cls.fromResource(GetModuleHandleA(nullptr), ResourceName(text), ClientSize(h));
    if (picture != nullptr) Install(h, std::move(picture), text);
}

LRESULT OnCreate(HWND h, LPARAM lp, const PictureClass& cls) {
    LoadNamedPicture(h, reinterpret_cast<const CREATESTRUCTA*>(lp)->hInstance, cls);
    return 0;
}

LRESULT OnSetText(HWND h, WPARAM wp, LPARAM lp, const PictureClass& cls) {
    const LRESULT r = DefWindowProcA(h, WM_SETTEXT, wp, lp);
    LoadNamedPicture(h, reinterpret_cast<HINSTANCE>(GetWindowLongPtrA(h, GWLP_HINSTANCE)), cls);
    return r;
}

LRESULT OnDestroy(HWND h, const PictureClass& cls) {
    ForgetAccessible(h);
    std::unique_ptr<Picture> picture(words::Image::get(h));
    words::Image::set(h, nullptr);
    MethodFree(h, words::kName);
    MethodFree(h, cls.method);
    RemovePropA(h, "@WANTDROP");
    RemovePropA(h, "@DRAGSRC");
    return 0;
}

LRESULT OnSetMethod(HWND h, LPARAM lp, const PictureClass& cls) {
    MethodReplace(h, cls.method, reinterpret_cast<const char*>(lp));
    const std::string file = MethodArgument(h, cls.method, cls.keyword);
    if (!file.empty()) Install(h, cls.fromFile(file.c_str(), ClientSize(h)), file.c_str());
    if (MethodFull(cls.method.get(h)).has("@PRT")) EnableWindow(h, FALSE);
    const bool target = MethodFull(cls.method.get(h)).has("@DROPTARG");
    if (target) {
        SetPropA(h, "@WANTDROP", reinterpret_cast<HANDLE>(5));
    } else {
        RemovePropA(h, "@WANTDROP");
    }
    DragAcceptFiles(h, target);
    return 0;
}

LRESULT OnPaint(HWND h, const PictureClass& cls) {
    PaintDC dc(h);
    const Picture* picture = words::Image::get(h);
    if (dc.get() == nullptr || picture == nullptr) return 0;
    const RECT place = Place(h, picture->size());
    picture->draw(dc, place);
    if ((words::State::get(h) & kPressed) && MethodFull(cls.method.get(h)).has("@INVERT")) InvertRect(dc, &place);
    return 0;
}

LRESULT OnLButtonDown(HWND h, WPARAM wp, LPARAM lp) {
    twProcessDragDrop(h, WM_LBUTTONDOWN, wp, lp);
    SetCapture(h);
    SetState(h, kPressed | kTracking);
    return 0;
}

// A double click starts the program, unless "@ONECLICK" makes every click
// do so; either way it presses the picture like a click.
LRESULT OnLButtonDblClk(HWND h, WPARAM wp, LPARAM lp, const PictureClass& cls) {
    OnLButtonDown(h, wp, lp);
    if (!MethodFull(cls.method.get(h)).has("@ONECLICK")) Launch(h, cls);
    return 0;
}

LRESULT OnMouseMove(HWND h, LPARAM lp) {
    if (DragPictureName(h, words::kName.get(h)) != 0) {
        SetState(h, 0);
        return 0;
    }
    if ((words::State::get(h) & kTracking) == 0) return 0;
    const POINT pt{static_cast<short>(LOWORD(lp)), static_cast<short>(HIWORD(lp))};
    RECT rc{};
    GetClientRect(h, &rc);
    SetState(h, kTracking | (PtInRect(&rc, pt) ? kPressed : 0));
    return 0;
}

LRESULT OnLButtonUp(HWND h, WPARAM wp, LPARAM lp, const PictureClass& cls) {
    twProcessDragDrop(h, WM_LBUTTONUP, wp, lp);
    const WORD state = words::State::get(h);
    if ((state & kTracking) == 0) return 0;
    SetState(h, 0);
    ReleaseCapture();
    if ((state & kPressed) && MethodFull(cls.method.get(h)).has("@ONECLICK")) Launch(h, cls);
    return 0;
}

// From the keyboard (a picture the application made a tab stop): Enter or
// the space bar starts the program, as the mouse does.
LRESULT OnKeyDown(HWND h, WPARAM wp, LPARAM lp, const PictureClass& cls) {
    if (wp != VK_RETURN && wp != VK_SPACE) return DefWindowProcA(h, WM_KEYDOWN, wp, lp);
    Launch(h, cls);
    return 0;
}

// A picture that starts a program wants Enter, which a dialog would
// otherwise give its default button.
LRESULT OnGetDlgCode(HWND h, LPARAM lp, const PictureClass& cls) {
    const auto* msg = reinterpret_cast<const MSG*>(lp);
    if (msg != nullptr && msg->message == WM_KEYDOWN && msg->wParam == VK_RETURN && MethodFull(cls.method.get(h)).has("@PROG"))
        return DLGC_WANTMESSAGE;
    return 0;
}

LRESULT OnCaptureChanged(HWND h, LPARAM lp) {
    if (reinterpret_cast<HWND>(lp) != h) SetState(h, 0);
    return 0;
}

LRESULT OnDropData(HWND h, LPARAM lp, const PictureClass& cls) {
    std::string text;
    return TakeDroppedText(h, lp, &text) && UsePictureFile(h, cls, text) ? 1 : 0;
}

LRESULT OnDropFiles(HWND h, WPARAM wp, const PictureClass& cls) {
    auto drop = reinterpret_cast<HDROP>(wp);
    char path[MAX_PATH] = {};
    const UINT length = DragQueryFileA(drop, 0, path, sizeof path);
    DragFinish(drop);
    if (length > 0 && length < sizeof path) UsePictureFile(h, cls, path);
    return 0;
}

LRESULT OnGetValue(HWND h, LPARAM lp) {
    if (lp == 0) return 0;
    const char* name = words::kName.get(h);
    lstrncpy(reinterpret_cast<char*>(lp), name != nullptr ? name : "", kNameSize);
    reinterpret_cast<char*>(lp)[kNameSize - 1] = '\0';
    return 0;
}

LRESULT OnGetType(LPARAM lp) {
    if (lp != 0) *reinterpret_cast<LONG*>(lp) = kNameSize;
    return GXT_TEXT;
}

}  // namespace

LRESULT PictureProc(HWND h, UINT msg, WPARAM wp, LPARAM lp, const PictureClass& cls) {
    switch (msg) {
    case WM_CREATE:
        return OnCreate(h, lp, cls);
    case WM_DESTROY:
        return OnDestroy(h, cls);
    case WM_GETOBJECT:
        return AnswerGetObject(h, wp, lp, kPictureAccess);
    case WM_SETTEXT:
        return OnSetText(h, wp, lp, cls);
    case WM_PAINT:
        return OnPaint(h, cls);
    case WM_ERASEBKGND:
        return EraseWithParentBrush(h, wp, lp, WM_CTLCOLORSTATIC);
    case WM_NCPAINT:
        return PaintBorder(h, wp, lp, kPictureBorder);
    case WM_SIZE:
    case WM_ENABLE:
        InvalidateRect(h, nullptr, TRUE);
        return 0;
    case WM_LBUTTONDOWN:
        return OnLButtonDown(h, wp, lp);
    case WM_LBUTTONDBLCLK:
        return OnLButtonDblClk(h, wp, lp, cls);
    case WM_MOUSEMOVE:
        return OnMouseMove(h, lp);
    case WM_LBUTTONUP:
        return OnLButtonUp(h, wp, lp, cls);
    case WM_CAPTURECHANGED:
        return OnCaptureChanged(h, lp);
    case WM_KEYDOWN:
        return OnKeyDown(h, wp, lp, cls);
    case WM_GETDLGCODE:
        return OnGetDlgCode(h, lp, cls);
    case WM_DROPFILES:
        return OnDropFiles(h, wp, cls);
    case GXM_SETMETHOD:
        return OnSetMethod(h, lp, cls);
    case GXM_GETMETHOD:
        MethodCopyOut(h, cls.method, reinterpret_cast<char*>(lp));
        return 0;
    case GXM_GETVALUE:
        return OnGetValue(h, lp);
    case GXM_GETTYPE:
        return OnGetType(lp);
    case GXM_DROPDATA:
        return OnDropData(h, lp, cls);
    case GXM_DRAGQUERY:
    case GXM_DRAGEND:
        return twProcessDragDrop(h, msg, wp, lp);
    default:
        return DefWindowProcA(h, msg, wp, lp);
    }
}

}  // namespace fk
