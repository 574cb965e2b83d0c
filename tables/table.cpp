// gxTable32: the table list control, a "listbox" superclass that shows the
// lines of a lookup table in columns. Each item's string is its key and its
// data the line's number in the table plus one; the items are owner-drawn,
// and the control paints them itself.

#include <algorithm>
#include <cstring>
#include <string>

#include "access/classes.h"
#include "frame/library.h"
#include "frame/method_text.h"
#include "frame/method_window.h"
#include "include/fldkit.h"
#include "links/control_links.h"
#include "strings/lstr.h"
#include "tables/table_control.h"

namespace {

using fk::TableState;

fk::MethodSlot Method() { return fk::TableMethod(); }
fk::TableBase Base() { return fk::TableBase{fk::lpfnListBoxProc, fk::kListBoxMessages}; }

constexpr DWORD kStyleAdded = LBS_OWNERDRAWFIXED | LBS_HASSTRINGS | LBS_NOTIFY;
constexpr DWORD kStyleRemoved = LBS_SORT | LBS_OWNERDRAWVARIABLE | LBS_NODATA | LBS_MULTICOLUMN | LBS_USETABSTOPS;
// Characters typed within this pause of each other search together.
constexpr DWORD kTypeAheadPause = 1000;
// The mouse takes a column's right edge this many pixels either side of it.
constexpr int kGrip = 3;

LRESULT CallBase(HWND h, UINT msg, WPARAM wp, LPARAM lp) { return Base().call(h, msg, wp, lp); }

bool MultipleSelection(HWND h) { return (GetWindowLongA(h, GWL_STYLE) & (LBS_MULTIPLESEL | LBS_EXTENDEDSEL)) != 0; }

// The selected item; in a list of several selections the first of them.
LRESULT Selected(HWND h) {
    if (!MultipleSelection(h)) return CallBase(h, LB_GETCURSEL, 0, 0);
    int first = -1;
    return CallBase(h, LB_GETSELITEMS, 1, reinterpret_cast<LPARAM>(&first)) == 1 ? first : LB_ERR;
}

std::string SelectedKey(HWND h) { return fk::ItemKey(h, Base(), Selected(h)); }

void Select(HWND h, LRESULT index) {
    if (!MultipleSelection(h)) {
        CallBase(h, LB_SETCURSEL, static_cast<WPARAM>(index), 0);
        return;
    }
    CallBase(h, LB_SETSEL, FALSE, -1);
    if (index >= 0) CallBase(h, LB_SETSEL, TRUE, index), CallBase(h, LB_SETCARETINDEX, static_cast<WPARAM>(index), 0);
}

// After anything that may move the selection: the items are drawn again
// and a server control hands a new key to its clients.
void SelectionMayHaveChanged(HWND h, TableState* s) {
    InvalidateRect(h, nullptr, FALSE);
    if (s == nullptr) return;
    const LRESULT now = Selected(h);
    if (now == s->shownSelection) return;
    s->shownSelection = now;
    fk::RaiseRowSelected(h, now);
    if (GetPropA(h, "SERVER") != nullptr) {
        std::string key = SelectedKey(h);
        twProcessDDEData(h, key.data());
    }
}

// A selection the user made: the parent hears of it as from a list box.
void NotifySelChange(HWND h) {
    if (HWND parent = GetParent(h))
        SendMessageA(parent, WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(h), LBN_SELCHANGE), reinterpret_cast<LPARAM>(h));
}

// The column whose right edge lies under client x, or -1.
int32_t EdgeAt(const TableState& s, int x) {
    int edge = 0;
    for (int32_t i = 0; i < s.view.count && i < fk::kMaxColumns; ++i) {
        edge += s.view.width[i];
        if (x >= edge - kGrip && x <= edge + kGrip) return i;
    }
    return -1;
}

void RelayOut(HWND h, TableState* s) {
    if (s == nullptr) return;
    RECT client;
    GetClientRect(h, &client);
    fk::LayoutTable(h, Base(), *s, client.right);
    InvalidateRect(h, nullptr, FALSE);
}

// The dragged widths become the "@COLWIDTH" of the whole method string,
// which is set again.
void CommitWidths(HWND h, TableState& s) {
    s.sizing = -1;
    int32_t units[fk::kMaxColumns];
    for (int32_t i = 0; i < s.view.count && i < fk::kMaxColumns; ++i)
        units[i] = std::min(fk::PixelsToUnits(s.view.width[i], s.metrics.baseX), fk::kMaxColumnUnits);
    char item[16 + fk::kMaxColumns * 6] = "@COLWIDTH(";
    const int32_t length = fk::FormatNumberList(units, s.view.count, item + 10, sizeof item - 12);
    std::strcpy(item + 10 + length, ")");
    char work[fk::kMethodMax + 1 + sizeof item + 2] = {};
    if (const char* method = Method().get(h)) lstrcpynA(work, method, fk::kMethodMax + 1);
    twAddMethodParam(work, item);
    SendMessageA(h, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(work));
}

// Type-ahead: the characters typed in a row, matched without case against
// the start of each line's first shown column, from the selected line on
// (from the next one for a first character; one letter typed again and again
// walks through the lines that start with it).
void TypeAhead(HWND h, TableState& s, char c) {
    const DWORD now = GetTickCount();
    if (now - s.typedAt > kTypeAheadPause || s.typedLength >= static_cast<int32_t>(sizeof s.typed) - 1)
        s.typedLength = 0;
    s.typed[s.typedLength++] = c;
    s.typed[s.typedLength] = 0;
    s.typedAt = now;
    const LRESULT count = CallBase(h, LB_GETCOUNT, 0, 0);
    if (count <= 0) return;
    const bool oneLetter = std::all_of(s.typed, s.typed + s.typedLength, [&](char t) { return t == s.typed[0]; });
    const int32_t length = oneLetter ? 1 : s.typedLength;
    const LRESULT current = std::max<LRESULT>(CallBase(h, LB_GETCARETINDEX, 0, 0), 0);
    const LRESULT start = oneLetter && Selected(h) >= 0 ? current + 1 : current;
    for (LRESULT k = 0; k < count; ++k) {
        const LRESULT i = (start + k) % count;
        const auto data = static_cast<ULONG_PTR>(CallBase(h, LB_GETITEMDATA, static_cast<WPARAM>(i), 0));
        const std::string text = data == 0 ? fk::ItemKey(h, Base(), i) : std::string();
        const std::string first = fk::ColumnText(s.view, fk::ItemLine(s.view, data, text.c_str()), 0);
        if (lstrnicmp(first.c_str(), s.typed, length) != 0) continue;
        if (i != Selected(h)) {
            Select(h, i);
            NotifySelChange(h);
        }
        SelectionMayHaveChanged(h, &s);
        return;
    }
}

// ---------------------------------------------------------------------
// Handlers

LRESULT OnNcCreate(HWND h, WPARAM wp, LPARAM lp) {
    fk::CreateTableState(h, reinterpret_cast<CREATESTRUCTA*>(lp), kStyleAdded, kStyleRemoved);
    return CallBase(h, WM_NCCREATE, wp, lp);
}

LRESULT OnCreate(HWND h, WPARAM wp, LPARAM lp) {
    fk::RestyleForCreate(h, reinterpret_cast<CREATESTRUCTA*>(lp));
    const LRESULT r = CallBase(h, WM_CREATE, wp, lp);
    if (r == -1) return r;
    RelayOut(h, fk::kTableState.get(h));
    fk::TakeCreationMethod(h, reinterpret_cast<const CREATESTRUCTA*>(lp));
    return r;
}

// Over a reload the selected key and the first line in sight stay where the
// new list still has them.
fk::Restore KeepSelection(HWND h, TableState& s) {
    const std::string key = SelectedKey(h);
    const LRESULT top = CallBase(h, LB_GETTOPINDEX, 0, 0);
    return [h, &s, key, top] {
        Select(h, fk::FindKey(h, Base(), key.c_str()));
        CallBase(h, LB_SETTOPINDEX, static_cast<WPARAM>(std::max<LRESULT>(top, 0)), 0);
        s.shownSelection = Selected(h);
    };
}

LRESULT OnSetMethod(HWND h, LPARAM lp) {
    fk::SetTableMethod(h, Base(), lp, KeepSelection);
    const char* method = Method().get(h);
    if (method != nullptr && lstristr(method, "@DROPTARG") != nullptr)
        SetPropA(h, "@WANTDROP", reinterpret_cast<HANDLE>(5));
    else
        RemovePropA(h, "@WANTDROP");
    return 0;
}

// Selects the line whose key equals the text (none: no selection). A DDE
// client asks its server instead.
LRESULT OnSetValue(HWND h, LPARAM lp) {
    if (GetPropA(h, "CLIENT") != nullptr) return twRequestDDEData(h), 0;
    Select(h, fk::FindKey(h, Base(), reinterpret_cast<const char*>(lp)));
    SelectionMayHaveChanged(h, fk::kTableState.get(h));
    return 0;
}

LRESULT OnGetText(HWND h, WPARAM wp, LPARAM lp) {
    if (wp == 0 || lp == 0) return 0;
    lstrcpynA(reinterpret_cast<char*>(lp), SelectedKey(h).c_str(), static_cast<int>(std::min<WPARAM>(wp, 0x7FFFFFFF)));
    return lstrlenA(reinterpret_cast<char*>(lp));
}

LRESULT OnSetText(HWND h, LPARAM lp) {
    Select(h, fk::FindKey(h, Base(), reinterpret_cast<const char*>(lp)));
    SelectionMayHaveChanged(h, fk::kTableState.get(h));
    return TRUE;
}

LRESULT OnPaint(HWND h) {
    if (TableState* s = fk::kTableState.get(h)) {
        fk::PaintColumnList(h, s->view);
        return 0;
    }
    return CallBase(h, WM_PAINT, 0, 0);
}

LRESULT OnKeyDown(HWND h, WPARAM wp, LPARAM lp) {
    TableState* s = fk::kTableState.get(h);
    if (wp == VK_F1) {
        fk::MethodShort copy(Method().get(h));
        twProcessHelp(h, copy.get());
        return 0;
    }
    // Moving by key starts a new search text; the key-down of a typed
    // character comes before its WM_CHAR and must leave the text alone.
    if (s != nullptr && ((wp >= VK_PRIOR && wp <= VK_DOWN) || wp == VK_ESCAPE)) s->typedLength = 0;
    const LRESULT r = CallBase(h, WM_KEYDOWN, wp, lp);
    SelectionMayHaveChanged(h, s);
    return r;
}

LRESULT OnChar(HWND h, WPARAM wp, LPARAM lp) {
    TableState* s = fk::kTableState.get(h);
    if (s == nullptr || wp < ' ' || wp > 0xFF) return CallBase(h, WM_CHAR, wp, lp);
    TypeAhead(h, *s, static_cast<char>(wp));
    return 0;
}

LRESULT OnLButtonDown(HWND h, WPARAM wp, LPARAM lp) {
    TableState* s = fk::kTableState.get(h);
    const int x = static_cast<short>(LOWORD(lp));
    if (s != nullptr && (s->sizing = EdgeAt(*s, x)) >= 0) {
        s->sizingFrom = x;
        s->sizingWidth = s->view.width[s->sizing];
        SetCapture(h);
        return 0;
    }
    twProcessDragDrop(h, WM_LBUTTONDOWN, wp, lp);
    const LRESULT r = CallBase(h, WM_LBUTTONDOWN, wp, lp);
    SelectionMayHaveChanged(h, s);
    return r;
}

LRESULT OnMouseMove(HWND h, WPARAM wp, LPARAM lp) {
    TableState* s = fk::kTableState.get(h);
    if (s != nullptr && s->sizing >= 0) {
        const int least = fk::UnitsToPixels(fk::kMinColumnUnits, s->metrics.baseX);
        s->view.width[s->sizing] = std::max(least, s->sizingWidth + static_cast<short>(LOWORD(lp)) - s->sizingFrom);
        InvalidateRect(h, nullptr, FALSE);
        return 0;
    }
    if (twProcessDragDrop(h, WM_MOUSEMOVE, wp, lp)) return 0;
    const LRESULT r = CallBase(h, WM_MOUSEMOVE, wp, lp);
    if (GetCapture() == h) SelectionMayHaveChanged(h, s);
    return r;
}

LRESULT OnLButtonUp(HWND h, WPARAM wp, LPARAM lp) {
    TableState* s = fk::kTableState.get(h);
    if (s != nullptr && s->sizing >= 0) {
        OnMouseMove(h, wp, lp);
        CommitWidths(h, *s);
        if (GetCapture() == h) ReleaseCapture();
        return 0;
    }
    if (twProcessDragDrop(h, WM_LBUTTONUP, wp, lp)) return 0;
    const LRESULT r = CallBase(h, WM_LBUTTONUP, wp, lp);
    SelectionMayHaveChanged(h, s);
    return r;
}

// Losing the mouse in the middle of a column drag keeps the width reached.
LRESULT OnCaptureChanged(HWND h, WPARAM wp, LPARAM lp) {
    TableState* s = fk::kTableState.get(h);
    if (s != nullptr && s->sizing >= 0 && reinterpret_cast<HWND>(lp) != h) CommitWidths(h, *s);
    return CallBase(h, WM_CAPTURECHANGED, wp, lp);
}

LRESULT OnSetCursor(HWND h, WPARAM wp, LPARAM lp) {
    const TableState* s = fk::kTableState.get(h);
    POINT at;
    if (s != nullptr && LOWORD(lp) == HTCLIENT && GetCursorPos(&at) && ScreenToClient(h, &at) && EdgeAt(*s, at.x) >= 0) {
        SetCursor(LoadCursorA(nullptr, IDC_SIZEWE));
        return TRUE;
    }
    return CallBase(h, WM_SETCURSOR, wp, lp);
}

LRESULT OnFocus(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    TableState* s = fk::kTableState.get(h);
    if (s != nullptr) s->typedLength = 0;
    const LRESULT r = CallBase(h, msg, wp, lp);
    InvalidateRect(h, nullptr, FALSE);
    if (msg == WM_SETFOCUS) fk::RaiseRowFocused(h);
    return r;
}

LRESULT OnDragDrop(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    const LRESULT r = twProcessDragDrop(h, msg, wp, lp);
    SelectionMayHaveChanged(h, fk::kTableState.get(h));
    return r;
}

}  // namespace

LRESULT WINAPI gxTableWndFn(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    if (fk::IsDdeMessage(msg)) return fk::RouteControlDde(h, msg, wp, lp, Method().get(h));
    switch (msg) {
    case WM_NCCREATE: return OnNcCreate(h, wp, lp);
    case WM_CREATE: return OnCreate(h, wp, lp);
    case WM_DESTROY: return fk::TableDestroy(h, Base(), wp, lp);
    case WM_NCDESTROY: return fk::TableNcDestroy(h, Base(), wp, lp);
    case WM_GETOBJECT: return fk::AnswerGetObject(h, wp, lp, fk::kTableAccess);
    case WM_PAINT: return OnPaint(h);
    case WM_ERASEBKGND: return 1;  // WM_PAINT fills every pixel
    case WM_NCPAINT: return fk::PaintWithBorder(h, Base(), msg, wp, lp);
    case WM_SIZE:
    case WM_SETFONT: return fk::TableResize(h, Base(), msg, wp, lp, RelayOut);
    case WM_KEYDOWN: return OnKeyDown(h, wp, lp);
    case WM_CHAR: return OnChar(h, wp, lp);
    case WM_LBUTTONDOWN: return OnLButtonDown(h, wp, lp);
    case WM_MOUSEMOVE: return OnMouseMove(h, wp, lp);
    case WM_LBUTTONUP: return OnLButtonUp(h, wp, lp);
    case WM_CAPTURECHANGED: return OnCaptureChanged(h, wp, lp);
    case WM_SETCURSOR: return OnSetCursor(h, wp, lp);
    case WM_SETFOCUS:
    case WM_KILLFOCUS: return OnFocus(h, msg, wp, lp);
    case WM_GETTEXT: return OnGetText(h, wp, lp);
    case WM_GETTEXTLENGTH: return static_cast<LRESULT>(SelectedKey(h).size());
    case WM_SETTEXT: return OnSetText(h, lp);
    case GXM_SETMETHOD: return OnSetMethod(h, lp);
    case GXM_GETMETHOD: return fk::MethodCopyOut(h, Method(), reinterpret_cast<char*>(lp)), 0;
    case GXM_SETVALUE: return OnSetValue(h, lp);
    case GXM_GETVALUE: return fk::CopyKey(SelectedKey(h), lp), 0;
    case GXM_GETTYPE: return fk::AnswerType(GXT_TABLE, lp);
    case GXM_SETTABLE:
    case GXM_SETDISPLAY:
    case GXM_SETDELIMITER:
    case GXM_SETTABSTOPS:
    case GXM_SETCOLWIDTHS: return fk::EditTableMethod(h, Base(), msg, wp, lp);
    case GXM_DROPDATA:
    case GXM_DRAGQUERY:
    case GXM_DRAGEND: return OnDragDrop(h, msg, wp, lp);
    default: return CallBase(h, msg, wp, lp);
    }
}
