// gxCBTable32: the combo table control, a "combobox" superclass. Its edit
// part holds the key; its drop-down shows the table's lines in columns
// (owner-drawn items whose string is the key and whose data is the line's
// number plus one); typing at the end of the edit part completes a key.

#include <algorithm>
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
fk::TableBase Base() { return fk::TableBase{fk::lpfnComboBoxProc, fk::kComboBoxMessages}; }
LRESULT CallBase(HWND h, UINT msg, WPARAM wp, LPARAM lp) { return Base().call(h, msg, wp, lp); }

constexpr DWORD kStyleAdded = CBS_OWNERDRAWFIXED | CBS_HASSTRINGS | CBS_AUTOHSCROLL;
constexpr DWORD kStyleRemoved = CBS_SORT | CBS_OWNERDRAWVARIABLE;
// The edit part's own procedure, kept on the edit part.
const char kEditBase[] = "FkTableEditBase";

std::string Text(HWND h) {
    char text[fk::kKeyMax + 1] = "";
    GetWindowTextA(h, text, sizeof text);
    return text;
}

void RelayOut(HWND h, TableState* s) {
    if (s == nullptr) return;
    const auto dropped = static_cast<int>(CallBase(h, CB_GETDROPPEDWIDTH, 0, 0));
    fk::LayoutTable(h, Base(), *s, std::max(dropped - GetSystemMetrics(SM_CXVSCROLL), 0));
}

// Typing at the end of the edit part completes the first key (in list
// order, without case) that starts with the text, spelt as the key is; the
// completed part is selected, so the next character typed replaces it.
void Complete(HWND combo, HWND edit) {
    const std::string text = Text(edit);
    DWORD start = 0, end = 0;
    SendMessageA(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    if (text.empty() || start != end || end != text.size()) return;
    const LRESULT at = CallBase(combo, CB_FINDSTRING, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(text.c_str()));
    if (at < 0 || fk::ItemKey(combo, Base(), at).size() < text.size()) return;
    CallBase(combo, CB_SETCURSEL, static_cast<WPARAM>(at), 0);
    SendMessageA(edit, EM_SETSEL, text.size(), -1);
    // A line chosen by typing: the parent hears of it as of a pick.
    if (HWND parent = GetParent(combo))
        SendMessageA(parent, WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(combo), CBN_SELCHANGE), reinterpret_cast<LPARAM>(combo));
}

LRESULT CALLBACK EditPartProc(HWND edit, UINT msg, WPARAM wp, LPARAM lp) {
    const auto base = reinterpret_cast<WNDPROC>(GetPropA(edit, kEditBase));
    if (base == nullptr) return DefWindowProcA(edit, msg, wp, lp);
    HWND combo = GetParent(edit);
    const fk::ValueWatch watch(combo, fk::MayChangeComboText(msg, wp), [](HWND w, const void*) { return Text(w); });
    switch (msg) {
    case WM_CHAR: {
        const LRESULT r = CallWindowProcA(base, edit, msg, wp, lp);
        if (wp >= ' ' && wp <= 0xFF) Complete(combo, edit);
        return r;
    }
    case WM_KEYDOWN:
        if (wp != VK_F1) break;
        {
            fk::MethodShort copy(Method().get(combo));
            twProcessHelp(combo, copy.get());
        }
        return 0;
    case WM_NCDESTROY:
        SetWindowLongPtrA(edit, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(base));
        RemovePropA(edit, kEditBase);
        break;
    }
    return CallWindowProcA(base, edit, msg, wp, lp);
}

// ---------------------------------------------------------------------
// Handlers

// A drop-down list without an edit part becomes a drop-down: a key can be
// typed, and completed.
LRESULT OnNcCreate(HWND h, WPARAM wp, LPARAM lp) {
    auto* cs = reinterpret_cast<CREATESTRUCTA*>(lp);
    const bool listOnly = cs != nullptr && (cs->style & 3) == CBS_DROPDOWNLIST;
    fk::CreateTableState(h, cs, kStyleAdded, kStyleRemoved | (listOnly ? CBS_SIMPLE : 0));
    return CallBase(h, WM_NCCREATE, wp, lp);
}

LRESULT OnCreate(HWND h, WPARAM wp, LPARAM lp) {
    fk::RestyleForCreate(h, reinterpret_cast<CREATESTRUCTA*>(lp));
    const LRESULT r = CallBase(h, WM_CREATE, wp, lp);
    if (r == -1) return r;
    RelayOut(h, fk::kTableState.get(h));
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    if (GetComboBoxInfo(h, &info) && info.hwndItem != nullptr && info.hwndItem != h &&
        SetPropA(info.hwndItem, kEditBase, reinterpret_cast<HANDLE>(GetWindowLongPtrA(info.hwndItem, GWLP_WNDPROC))))
        SetWindowLongPtrA(info.hwndItem, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(EditPartProc));
    const auto* cs = reinterpret_cast<const CREATESTRUCTA*>(lp);
    if (cs != nullptr && HIWORD(cs->lpszName) != 0 && *cs->lpszName == '@') SetWindowTextA(h, "");  // not a key
    fk::TakeCreationMethod(h, cs);
    return r;
}

// Over a reload the edit part keeps its text, and the line with that key
// stays selected.
fk::Restore KeepText(HWND h, TableState& s) {
    const std::string text = Text(h);
    return [h, &s, text] {
        RelayOut(h, &s);
        CallBase(h, CB_SETCURSEL, static_cast<WPARAM>(fk::FindKey(h, Base(), text.c_str())), 0);
        SetWindowTextA(h, text.c_str());
    };
}

// Selects the line whose key equals the text; the edit part shows the text
// whether or not a line has it. A DDE client asks its server instead.
LRESULT OnSetValue(HWND h, LPARAM lp) {
    if (GetPropA(h, "CLIENT") != nullptr) return twRequestDDEData(h), 0;
    const auto* text = reinterpret_cast<const char*>(lp);
    const LRESULT at = fk::FindKey(h, Base(), text);
    CallBase(h, CB_SETCURSEL, static_cast<WPARAM>(at), 0);
    if (at < 0 && text != nullptr) {
        char cut[fk::kKeyMax + 1];
        lstrcpynA(cut, text, sizeof cut);
        SetWindowTextA(h, cut);
    }
    return 0;
}

// The drop-down's items, sent here by the list the combo box owns.
LRESULT OnDrawItem(HWND h, WPARAM wp, LPARAM lp) {
    const auto* dis = reinterpret_cast<const DRAWITEMSTRUCT*>(lp);
    const TableState* s = fk::kTableState.get(h);
    if (dis == nullptr || s == nullptr) return CallBase(h, WM_DRAWITEM, wp, lp);
    HWND parent = GetParent(h);
    auto back = parent != nullptr ? reinterpret_cast<HBRUSH>(SendMessageA(parent, WM_CTLCOLORLISTBOX,
                                                                          reinterpret_cast<WPARAM>(dis->hDC),
                                                                          reinterpret_cast<LPARAM>(dis->hwndItem)))
                                  : nullptr;
    if (back == nullptr) {
        back = GetSysColorBrush(COLOR_WINDOW);
        SetTextColor(dis->hDC, GetSysColor(COLOR_WINDOWTEXT));
    }
    if (dis->itemID == static_cast<UINT>(-1)) {
        FillRect(dis->hDC, &dis->rcItem, back);
        return TRUE;
    }
    const std::string key = fk::ItemKey(h, Base(), dis->itemID);
    fk::DrawColumns(dis->hDC, dis->rcItem, fk::ItemLine(s->view, dis->itemData, key.c_str()), s->view,
                    (dis->itemState & ODS_SELECTED) != 0, back);
    if (dis->itemState & ODS_FOCUS) DrawFocusRect(dis->hDC, &dis->rcItem);
    return TRUE;
}

LRESULT OnMeasureItem(HWND h, WPARAM wp, LPARAM lp) {
    auto* mis = reinterpret_cast<MEASUREITEMSTRUCT*>(lp);
    const TableState* s = fk::kTableState.get(h);
    if (mis == nullptr || s == nullptr) return CallBase(h, WM_MEASUREITEM, wp, lp);
    mis->itemHeight = static_cast<UINT>(s->metrics.itemHeight);
    return TRUE;
}

// A server control hands every change of its edit part to its clients.
LRESULT OnCommand(HWND h, WPARAM wp, LPARAM lp) {
    const LRESULT r = CallBase(h, WM_COMMAND, wp, lp);
    if (HIWORD(wp) == EN_CHANGE) fk::RaiseValueChangeUnlessWatched(h);
    if (HIWORD(wp) == EN_CHANGE && GetPropA(h, "SERVER") != nullptr) {
        std::string text = Text(h);
        twProcessDDEData(h, text.data());
    }
    return r;
}

}  // namespace

LRESULT WINAPI gxCBTableWndFn(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    if (msg == WM_GETOBJECT) return fk::AnswerGetObject(h, wp, lp, fk::kCBTableAccess);
    const fk::ValueWatch watch(h, fk::MayChangeComboText(msg, wp), [](HWND w, const void*) { return Text(w); });
    if (fk::IsDdeMessage(msg)) return fk::RouteControlDde(h, msg, wp, lp, Method().get(h));
    switch (msg) {
    case WM_NCCREATE: return OnNcCreate(h, wp, lp);
    case WM_CREATE: return OnCreate(h, wp, lp);
    case WM_DESTROY: return fk::TableDestroy(h, Base(), wp, lp);
    case WM_NCDESTROY: return fk::TableNcDestroy(h, Base(), wp, lp);
    case WM_DRAWITEM: return OnDrawItem(h, wp, lp);
    case WM_MEASUREITEM: return OnMeasureItem(h, wp, lp);
    case WM_COMMAND: return OnCommand(h, wp, lp);
    case WM_PAINT:
    case WM_NCPAINT: return fk::PaintWithBorder(h, Base(), msg, wp, lp);
    case WM_SIZE:
    case WM_SETFONT: return fk::TableResize(h, Base(), msg, wp, lp, RelayOut);
    case GXM_SETMETHOD: return fk::SetTableMethod(h, Base(), lp, KeepText);
    case GXM_GETMETHOD: return fk::MethodCopyOut(h, Method(), reinterpret_cast<char*>(lp)), 0;
    case GXM_SETVALUE: return OnSetValue(h, lp);
    case GXM_GETVALUE: return fk::CopyKey(Text(h), lp), 0;
    case GXM_GETTYPE: return fk::AnswerType(GXT_TEXT, lp);
    case GXM_SETTABLE:
    case GXM_SETDISPLAY:
    case GXM_SETDELIMITER: return fk::EditTableMethod(h, Base(), msg, wp, lp);
    default: return CallBase(h, msg, wp, lp);
    }
}
