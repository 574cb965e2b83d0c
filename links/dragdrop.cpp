// Drag and drop of text between controls of one application: edit-type
// fields, lists, and the system "edit" and "listbox" classes. The whole
// protocol lives in twProcessDragDrop; the drag itself is a modal loop with
// the mouse captured by the source.

#include <cctype>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <string>

#include "frame/alloc.h"
#include "frame/gdi.h"
#include "frame/library.h"
#include "frame/method_text.h"
#include "include/fldkit.h"
#include "links/links.h"
#include "strings/lstr.h"

namespace fk {
namespace {

constexpr UINT kGetMethod = 0x0D04;
constexpr UINT kDragStart = 0x0D11;
constexpr UINT kDrop = 0x0D12;
constexpr UINT kAcceptQuery = 0x0D13;
constexpr UINT kRemoveDragged = 0x0D14;
constexpr UINT kDragAlloc = GMEM_MOVEABLE | GMEM_ZEROINIT | GMEM_DDESHARE;
constexpr int kDragCursor = 160;
constexpr int kNoDropCursor = 161;
constexpr int kSelectionMax = 1023;
constexpr int kFilterSize = 120;

const char kArmedProp[] = "@DRAGSRC";
const char kWantDropProp[] = "@WANTDROP";

// The drag block: 64 bytes in the 32-bit build; in the 64-bit one the same
// fields in the same order, each at its natural alignment (80 bytes).
struct DragBlock {
    HWND source;
    LONG id;
    DWORD flags;      // bit 0: move
    DWORD kind;       // always 1
    char channel[30];
    BYTE unused1[2];
    HCURSOR cursor;   // 0: the library's drag cursor
    BYTE unused2[8];
    HGLOBAL data;
};
// The public record (FieldDragBlock) is the same block under the names
// applications use.
static_assert(sizeof(DragBlock) == sizeof(FieldDragBlock) && offsetof(DragBlock, id) == offsetof(FieldDragBlock, nId) &&
                  offsetof(DragBlock, channel) == offsetof(FieldDragBlock, szChannel) &&
                  offsetof(DragBlock, cursor) == offsetof(FieldDragBlock, hCursor) &&
                  offsetof(DragBlock, data) == offsetof(FieldDragBlock, hData),
              "drag block layout");
constexpr DWORD kMoveBit = 1;

// Process-wide drag state: one drag at a time.
struct DragState {
    HCURSOR dragCursor;
    HCURSOR noDropCursor;
    HCURSOR previousCursor;
    HWND lastWindow;       // under the mouse at the last move (kept between drags)
    HGLOBAL lastDrop;      // copy of the last dropped data
    DWORD lastKind;
    char lastChannel[30];
    bool dropping;         // a drop of our own loop is being delivered
    POINT dropPoint;       // where it was released, in screen coordinates
};
DragState g_drag;

bool IsEditType(const std::string& cls) {
    for (const char* name : {"edit", "gxString32", "gxReal32", "gxNumeric32", "gxDate32", "gxCurrency32"}) {
        if (lstricmp(cls.c_str(), name) == 0) return true;
    }
    return false;
}

bool IsList(const std::string& cls) {
    return lstricmp(cls.c_str(), "listbox") == 0 || lstricmp(cls.c_str(), "gxTable32") == 0;
}

// The control's method string (GXM_GETMETHOD; at most 256 characters).
std::string FetchMethod(HWND h) {
    char buffer[kMethodCopy + 1] = {};
    SendMessageA(h, kGetMethod, kMethodCopy, reinterpret_cast<LPARAM>(buffer));
    buffer[kMethodCopy] = 0;
    return buffer;
}

DWORD Hex(const std::string& text, DWORD absent) {
    if (text.empty()) return absent;
    return static_cast<DWORD>(std::strtoul(text.c_str(), nullptr, 16));
}

// A drag block that can be read: at least 64 bytes.
class LockedDrag {
public:
    explicit LockedDrag(HGLOBAL h) : lock_(h) {}
    DragBlock* get() const { return lock_ && lock_.size() >= sizeof(DragBlock) ? lock_.get() : nullptr; }

private:
    GlobalLocked<DragBlock> lock_;
};

// Text of a data block, never read beyond the block.
std::string BlockText(HGLOBAL data, bool* ok) {
    GlobalLocked<char> p(data);
    *ok = static_cast<bool>(p);
    if (!p) return {};
    return std::string(p.get(), strnlen(p.get(), p.size()));
}

void FreeDrag(HGLOBAL drag) {
    {
        LockedDrag d(drag);
        if (d.get() && d.get()->data != nullptr) {
            GlobalFree(d.get()->data);
            d.get()->data = nullptr;
        }
    }
    GlobalFree(drag);
}
// A drag block with the data block it names.
using DragOwner = Owned<HGLOBAL, FreeDrag>;

// ---- collecting the dragged data ----

HGLOBAL EditData(HWND source, bool* hasData) {
    int length = GetWindowTextLengthA(source);
    if (length < 0) length = 0;
    HGLOBAL data = fk::GlobalAllocate(kDragAlloc, length + 1);
    if (data == nullptr) return nullptr;
    GlobalLocked<char> p(data);
    if (!p) return data;
    GetWindowTextA(source, p.get(), length + 1);
    DWORD sel = static_cast<DWORD>(SendMessageA(source, EM_GETSEL, 0, 0));
    int start = LOWORD(sel), end = HIWORD(sel);
    int textLength = static_cast<int>(std::strlen(p.get()));
    if (end > textLength) end = textLength;
    if (start < end) {
        int n = end - start;
        if (n > kSelectionMax) n = kSelectionMax;
        std::memmove(p.get(), p.get() + start, n);
        p.get()[n] = 0;
    }
    *hasData = p.get()[0] != 0;
    return data;
}

HGLOBAL ListData(HWND source, bool dirList, bool* hasData) {
    SIZE_T size = 30, used = 0;
    HGLOBAL data = fk::GlobalAllocate(kDragAlloc, size);
    if (data == nullptr) return nullptr;
    LRESULT count = SendMessageA(source, LB_GETCOUNT, 0, 0);
    for (LRESULT i = 0; i < count; ++i) {
        if (SendMessageA(source, LB_GETSEL, i, 0) <= 0) continue;
        LRESULT length = SendMessageA(source, LB_GETTEXTLEN, i, 0);
        if (length < 0) continue;
        std::string text(static_cast<size_t>(length) + 1, '\0');
        SendMessageA(source, LB_GETTEXT, i, reinterpret_cast<LPARAM>(text.data()));
        text.resize(std::strlen(text.c_str()));
        size += length + 3;
        HGLOBAL grown = fk::GlobalReallocate(data, size, GMEM_MOVEABLE | GMEM_ZEROINIT);
        if (grown == nullptr) break;
        data = grown;
        if (dirList && text[0] == '[') continue;
        GlobalLocked<char> p(data);
        if (!p) break;
        std::memcpy(p.get() + used, text.data(), text.size());
        used += text.size();
        p.get()[used++] = '\n';
        p.get()[used] = 0;
        *hasData = true;
    }
    return data;
}

HCURSOR CursorNamed(HWND source, std::string name) {
    if (name.empty()) return nullptr;
    size_t dot = name.find('.');
    if (dot != std::string::npos) name.resize(dot);
    static const struct {
        const char* name;
        LPCSTR id;
    } kSystem[] = {{"ARROW", IDC_ARROW}, {"CROSS", IDC_CROSS}, {"SIZE", MAKEINTRESOURCEA(32640)},  // IDC_SIZE
         {"UPARROW", IDC_UPARROW}, {"WAIT", IDC_WAIT}};
    for (const auto& s : kSystem) {
        if (lstricmp(name.c_str(), s.name) == 0) return LoadCursorA(nullptr, s.id);
    }
    HINSTANCE owner = reinterpret_cast<HINSTANCE>(GetWindowLongPtrA(source, GWLP_HINSTANCE));
    return LoadCursorA(owner, name.c_str());
}

// Where a mouse message happened, in screen coordinates.
POINT MessagePoint(const MSG& m) {
    POINT pt = {static_cast<short>(LOWORD(m.lParam)), static_cast<short>(HIWORD(m.lParam))};
    if (m.hwnd != nullptr) {
        ClientToScreen(m.hwnd, &pt);
    } else {
        pt = m.pt;
    }
    return pt;
}

void KeepLastDrop(HGLOBAL drag) {
    LockedDrag d(drag);
    if (!d.get()) return;
    if (g_drag.lastDrop != nullptr) GlobalFree(g_drag.lastDrop);
    g_drag.lastDrop = nullptr;
    SIZE_T size = d.get()->data != nullptr ? GlobalSize(d.get()->data) : 0;
    if (size != 0) {
        g_drag.lastDrop = fk::GlobalAllocate(GMEM_MOVEABLE | GMEM_ZEROINIT, size);
        GlobalLocked<BYTE> from(d.get()->data);
        GlobalLocked<BYTE> to(g_drag.lastDrop);
        if (from && to) std::memcpy(to.get(), from.get(), size);
    }
    g_drag.lastKind = d.get()->kind;
    CopyCut(g_drag.lastChannel, sizeof g_drag.lastChannel, std::string(d.get()->channel, strnlen(d.get()->channel, 30)));
}

// ---- the drag ----

LRESULT DragLoop(HWND source, HGLOBAL drag, HCURSOR blockCursor) {
    g_drag.dragCursor = blockCursor != nullptr ? blockCursor : LoadCursorA(hInstLib, MAKEINTRESOURCEA(kDragCursor));
    g_drag.noDropCursor = LoadCursorA(hInstLib, MAKEINTRESOURCEA(kNoDropCursor));
    g_drag.previousCursor = SetCursor(g_drag.dragCursor);
    SetCapture(source);

    MSG m;
    POINT releasedAt{};
    GetCursorPos(&releasedAt);
    for (;;) {
        // Asked before waiting: a source that is gone (its parent may destroy
        // it on the drag notice, or a dispatched message later) holds no
        // capture, and no message may ever come to end the wait.
        if (GetCapture() != source) {
            FreeDrag(drag);
            return 1;
        }
        BOOL got = GetMessageA(&m, nullptr, 0, 0);
        if (got == 0) {
            PostQuitMessage(static_cast<int>(m.wParam));  // leave the quit for the application's loop
            FreeDrag(drag);
            return 1;
        }
        if (got < 0) {
            FreeDrag(drag);
            return 1;
        }
        if (m.message == WM_KEYDOWN) {
            if (m.wParam == VK_ESCAPE) return 1;  // nothing dropped, freed or restored
            continue;
        }
        if (m.message == WM_MOUSEMOVE) {
            HWND under = WindowFromPoint(MessagePoint(m));
            if (under == nullptr) {
                if (GetCursor() != g_drag.previousCursor) SetCursor(g_drag.previousCursor);
            } else if (under != g_drag.lastWindow) {
                if (g_drag.lastWindow == nullptr || under == source) {
                    SetCursor(g_drag.dragCursor);
                } else {
                    bool accepts = SendMessageA(under, kAcceptQuery, 0, reinterpret_cast<LPARAM>(drag)) != 0;
                    SetCursor(accepts ? g_drag.dragCursor : g_drag.noDropCursor);
                }
            }
            g_drag.lastWindow = under;
            continue;
        }
        if (m.message == WM_LBUTTONUP) {
            releasedAt = MessagePoint(m);
            break;
        }
        DispatchMessageA(&m);
    }

    ReleaseCapture();
    HWND target = WindowFromPoint(releasedAt);
    if (target != nullptr && SendMessageA(target, kAcceptQuery, 0, reinterpret_cast<LPARAM>(drag)) != 0) {
        KeepLastDrop(drag);
        g_drag.dropping = true;
        g_drag.dropPoint = releasedAt;
        if (SendMessageA(GetParent(target), kDrop, 0, reinterpret_cast<LPARAM>(drag)) == 0) {
            SendMessageA(target, kDrop, 0, reinterpret_cast<LPARAM>(drag));
        }
        g_drag.dropping = false;
    }
    FreeDrag(drag);

    SetCursor(g_drag.previousCursor);
    DestroyCursor(g_drag.dragCursor);
    DestroyCursor(g_drag.noDropCursor);
    g_drag.dragCursor = g_drag.noDropCursor = nullptr;
    return 1;
}

// The name of a picture control's picture, as the dragged text.
HGLOBAL TextData(const char* text, bool* hasData) {
    const size_t length = std::strlen(text);
    HGLOBAL data = fk::GlobalAllocate(kDragAlloc, length + 1);
    GlobalLocked<char> p(data);
    if (p) std::memcpy(p.get(), text, length + 1), *hasData = length != 0;
    return data;
}

// picture: the picture controls' text to drag; null for every other class,
// whose data is collected by class.
LRESULT StartDrag(HWND source, const char* picture = nullptr) {
    RemovePropA(source, kArmedProp);
    MethodFull method(FetchMethod(source).c_str());
    std::string channel = method.param("DRAGCHANNEL");
    std::string argument = method.param("DRAGSRC");
    if (!method.found()) return 0;
    auto tokens = SplitTokens(argument, 2);
    DWORD flags = Hex(tokens.size() > 0 ? tokens[0] : "", 0);
    std::string cursorName = tokens.size() > 1 ? tokens[1] : "";

    DragOwner drag(fk::GlobalAllocate(kDragAlloc, sizeof(DragBlock)));
    if (!drag) return 0;
    bool hasData = false;
    {
        LockedDrag d(drag.get());
        if (!d.get()) return 0;
        DragBlock* b = d.get();
        b->source = source;
        b->id = GetWindowLongA(source, GWL_ID);
        b->flags = flags;
        b->kind = 1;
        lstrncpy(b->channel, channel.c_str(), 30);
        b->channel[29] = 0;

        std::string cls = ClassOf(source);
        HGLOBAL data = nullptr;
        if (picture != nullptr) {
            data = TextData(picture, &hasData);
        } else if (IsEditType(cls)) {
            data = EditData(source, &hasData);
        } else if (IsList(cls)) {
            data = ListData(source, method.has("DIRLST"), &hasData);
        }
        b->cursor = CursorNamed(source, cursorName);
        b->data = data;
    }
    ReleaseCapture();
    if (!hasData) return 0;
    if (SendMessageA(GetParent(source), kDragStart, reinterpret_cast<WPARAM>(source),
                     reinterpret_cast<LPARAM>(drag.get())) != 0)
        return 1;
    HCURSOR cursor = nullptr;
    {
        LockedDrag d(drag.get());
        if (d.get()) cursor = d.get()->cursor;
    }
    return DragLoop(source, drag.release(), cursor);
}

// ---- at the target ----

LRESULT OnAcceptQuery(HWND target, LPARAM lp) {
    if (GetPropA(target, kWantDropProp) == nullptr || lp == 0) return 0;
    LockedDrag d(reinterpret_cast<HGLOBAL>(lp));
    if (!d.get()) return 0;
    MethodFull method(FetchMethod(target).c_str());
    std::string mine = method.param("DROPCHANNEL");
    std::string theirs(d.get()->channel, strnlen(d.get()->channel, sizeof d.get()->channel));
    if (mine.empty()) return theirs.empty() ? 1 : 0;
    return mine == theirs ? 1 : 0;
}

// Numeric-type fields take the text up to the first white space (and, for
// real fields, the first punctuation other than "."); letters are dropped
// but leave their place empty, so the text ends before the first letter.
std::string FilterNumber(const std::string& cls, const std::string& text) {
    char out[kFilterSize + 1] = {};
    bool real = lstricmp(cls.c_str(), "gxReal32") == 0;
    // These two never equal a registered class name; kept as they are.
    bool date = lstricmp(cls.c_str(), "gxdate") == 0;
    bool numeric = lstricmp(cls.c_str(), "gxnumeric") == 0;
    for (size_t i = 0; i < text.size() && i < kFilterSize; ++i) {
        unsigned char c = static_cast<unsigned char>(text[i]);
        if (std::isalpha(c)) continue;
        if (std::isspace(c)) break;
        if (real && std::ispunct(c) && c != '.') break;
        if (date && std::ispunct(c) && c != '/' && c != '-' && c != '.') break;
        if (numeric && std::ispunct(c)) break;
        out[i] = static_cast<char>(c);
    }
    return out;
}

// The source named by a block is asked to delete what was dragged only when it
// is a window: HWND_BROADCAST would ask every top-level window.
void RemoveAtSource(HWND source) {
    if (IsWindow(source)) SendMessageA(source, kRemoveDragged, 0, 0);
}

void DropOnEdit(HWND target, const std::string& cls, std::string text, DWORD mode) {
    if (lstricmp(cls.c_str(), "edit") == 0) {
        if ((GetWindowLongA(target, GWL_STYLE) & ES_MULTILINE) == 0) {
            for (char& c : text) {
                if (c == '\n') c = ' ';
            }
        }
        if (mode & 4) {
            SetWindowTextA(target, text.c_str());
        } else {
            SendMessageA(target, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text.c_str()));
        }
        return;
    }
    std::vector<char> work(text.begin(), text.end());
    work.push_back(0);
    lstrremove(work.data(), "\n");
    if (lstricmp(cls.c_str(), "gxString32") == 0) {
        if (SendMessageA(target, EM_GETSEL, 0, 0) != 0) {
            SendMessageA(target, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(work.data()));
        } else {
            SetWindowTextA(target, work.data());
        }
        return;
    }
    if (work[0] == 0) {
        MessageBeep(0);
        return;
    }
    SetWindowTextA(target, FilterNumber(cls, work.data()).c_str());
}

void DropOnList(HWND target, HWND source, const std::string& text, DWORD mode, DWORD flags) {
    LRESULT top = SendMessageA(target, LB_GETTOPINDEX, 0, 0);
    auto pieces = [&] {
        std::vector<std::string> v;
        size_t start = 0;
        while (start < text.size()) {
            size_t lf = text.find('\n', start);
            if (lf == std::string::npos) lf = text.size();
            if (lf > start) v.push_back(text.substr(start, lf - start));
            start = lf + 1;
        }
        return v;
    }();
    if (!pieces.empty()) {
        if (flags & kMoveBit) RemoveAtSource(source);
        if ((mode & 4) == 0) {
            POINT pt;
            if (g_drag.dropping) {
                pt = g_drag.dropPoint;
            } else {
                GetCursorPos(&pt);
            }
            ScreenToClient(target, &pt);
            LRESULT height = SendMessageA(target, LB_GETITEMHEIGHT, 0, 0);
            LRESULT count = SendMessageA(target, LB_GETCOUNT, 0, 0);
            LRESULT index = top + (height > 0 && pt.y > 0 ? pt.y / height : 0);
            if (index > count) index = count;
            for (const auto& piece : pieces) {
                SendMessageA(target, LB_INSERTSTRING, index++, reinterpret_cast<LPARAM>(piece.c_str()));
            }
        } else {
            for (const auto& piece : pieces) SendMessageA(target, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(piece.c_str()));
        }
    }
    SendMessageA(target, LB_SETTOPINDEX, top, 0);
}

LRESULT OnDrop(HWND target, LPARAM lp) {
    if (GetPropA(target, kWantDropProp) == nullptr || lp == 0) return 0;
    MethodFull method(FetchMethod(target).c_str());
    std::string argument = method.param("DROPTARG");
    if (!method.found()) return 0;
    auto tokens = SplitTokens(argument, 1);
    DWORD mode = Hex(tokens.empty() ? "" : tokens[0], 4);

    LockedDrag d(reinterpret_cast<HGLOBAL>(lp));
    DragBlock* b = d.get();
    if (b == nullptr) return 0;
    if ((SendMessageA(target, WM_GETDLGCODE, 0, 0) & (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON)) != 0 &&
        IsWindowEnabled(target)) {
        SetFocus(target);
        return SendMessageA(GetParent(target), WM_COMMAND, GetWindowLongA(target, GWL_ID), reinterpret_cast<LPARAM>(target));
    }
    // A data handle that is the drag block itself would be freed under our lock.
    bool ok = false;
    HGLOBAL dragHandle = reinterpret_cast<HGLOBAL>(lp);
    std::string text = b->kind == 1 && b->data != dragHandle ? BlockText(b->data, &ok) : std::string();
    if (!ok) return 0;

    std::string cls = ClassOf(target);
    if (IsEditType(cls)) {
        DropOnEdit(target, cls, text, mode);
        if ((b->flags & kMoveBit) && b->source != target) RemoveAtSource(b->source);
    } else if (IsList(cls)) {
        DropOnList(target, b->source, text, mode, b->flags);
    }
    GlobalFree(b->data);
    b->data = nullptr;
    return 0;
}

// ---- at the source: a move removes what was dragged ----

LRESULT OnRemoveDragged(HWND source) {
    std::string cls = ClassOf(source);
    if (IsList(cls)) {
        SendMessageA(source, WM_SETREDRAW, FALSE, 0);
        bool deleted = false;
        for (LRESULT i = SendMessageA(source, LB_GETCOUNT, 0, 0) - 1; i >= 0; --i) {
            if (SendMessageA(source, LB_GETSEL, i, 0) > 0) {
                SendMessageA(source, LB_DELETESTRING, i, 0);
                deleted = true;
            }
        }
        SendMessageA(source, WM_SETREDRAW, TRUE, 0);
        if (deleted) InvalidateRect(source, nullptr, TRUE);
    } else if (IsEditType(cls)) {
        DWORD sel = static_cast<DWORD>(SendMessageA(source, EM_GETSEL, 0, 0));
        if (LOWORD(sel) != HIWORD(sel)) {
            SendMessageA(source, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(""));
        } else {
            SetWindowTextA(source, "");
        }
    }
    return 0;
}

}  // namespace

LRESULT DragPictureName(HWND source, const char* name) {
    if (GetPropA(source, kArmedProp) == nullptr || name == nullptr) return 0;
    return StartDrag(source, name);
}

bool TakeDroppedText(HWND target, LPARAM lp, std::string* text) {
    if (GetPropA(target, kWantDropProp) == nullptr || lp == 0) return false;
    MethodFull method(FetchMethod(target).c_str());
    method.param("DROPTARG");
    if (!method.found()) return false;
    HGLOBAL dragHandle = reinterpret_cast<HGLOBAL>(lp);
    LockedDrag d(dragHandle);
    DragBlock* b = d.get();
    if (b == nullptr || b->kind != 1 || b->data == dragHandle) return false;
    bool ok = false;
    std::string dropped = BlockText(b->data, &ok);
    if (!ok) return false;
    GlobalFree(b->data);
    b->data = nullptr;
    if ((b->flags & kMoveBit) && b->source != target) RemoveAtSource(b->source);
    *text = dropped.substr(0, dropped.find('\n'));
    return true;
}

}  // namespace fk

using namespace fk;

LRESULT WINAPI twProcessDragDrop(HWND hWnd, UINT msg, WPARAM, LPARAM lParam) {
    switch (msg) {
    case WM_LBUTTONDOWN: {
        MethodFull method(FetchMethod(hWnd).c_str());
        if (method.has("@DRAGSRC")) {
            SetPropA(hWnd, kArmedProp, reinterpret_cast<HANDLE>(5));
            SetFocus(hWnd);
        }
        return 0;
    }
    case WM_LBUTTONUP:
        RemovePropA(hWnd, kArmedProp);
        return 0;
    case WM_MOUSEMOVE:
        return GetPropA(hWnd, kArmedProp) != nullptr ? StartDrag(hWnd) : 0;
    case kDrop:
        return OnDrop(hWnd, lParam);
    case kAcceptQuery:
        return OnAcceptQuery(hWnd, lParam);
    case kRemoveDragged:
        return OnRemoveDragged(hWnd);
    }
    return 0;
}
