// twShowTable: a table shown in a popup list below a field, from which the
// user picks a line with Enter or a double click (Escape cancels).
#include <windows.h>

#include <string>
#include <vector>

#include "frame/library.h"
#include "include/fldkit.h"
#include "tables/columns.h"
#include "tables/store.h"
#include "tables/table_text.h"

namespace {

// The popup's state, kept in a window property of the list while the popup
// runs its modal loop.
const char kStateProp[] = "FkTablePopup";

struct PopupState {
    WNDPROC base = nullptr;  // the list box's own procedure
    bool done = false;
    int chosen = -1;  // the line picked; -1 when cancelled
    fk::ColumnView view;  // the lines and their columns, drawn as the table list draws them
};

PopupState* StateOf(HWND h) {
    return static_cast<PopupState*>(GetPropA(h, kStateProp));
}

void Finish(PopupState* s, int chosen) {
    if (!s->done) {
        s->done = true;
        s->chosen = chosen;
    }
}

int SelectedLine(HWND h) {
    const LRESULT sel = CallWindowProcA(StateOf(h)->base, h, LB_GETCURSEL, 0, 0);
    if (sel == LB_ERR) {
        return -1;
    }
    return static_cast<int>(CallWindowProcA(StateOf(h)->base, h, LB_GETITEMDATA, static_cast<WPARAM>(sel), 0)) - 1;
}

// What the list does with the keys and the mouse may move the selection:
// the items are drawn again.
LRESULT PassAndRedraw(HWND h, PopupState* s, UINT msg, WPARAM wp, LPARAM lp) {
    const LRESULT r = CallWindowProcA(s->base, h, msg, wp, lp);
    InvalidateRect(h, nullptr, FALSE);
    return r;
}

LRESULT OnKeyDown(HWND h, PopupState* s, WPARAM key, LPARAM lp) {
    if (key == VK_RETURN) {
        Finish(s, SelectedLine(h));
        return 0;
    }
    if (key == VK_ESCAPE) {
        Finish(s, -1);
        return 0;
    }
    return PassAndRedraw(h, s, WM_KEYDOWN, key, lp);
}

LRESULT OnLButtonDblClk(HWND h, PopupState* s, WPARAM wp, LPARAM lp) {
    const LRESULT hit = CallWindowProcA(s->base, h, LB_ITEMFROMPOINT, 0, lp);
    // The high word is set when the point lies below the last item.
    if (HIWORD(hit) == 0) {
        CallWindowProcA(s->base, h, LB_SETCURSEL, LOWORD(hit), 0);
        Finish(s, SelectedLine(h));
        return 0;
    }
    return CallWindowProcA(s->base, h, WM_LBUTTONDBLCLK, wp, lp);
}

// Focus moving to another window closes the popup as a cancel.
LRESULT OnKillFocus(HWND h, PopupState* s, WPARAM next, LPARAM lp) {
    if (next != 0 && reinterpret_cast<HWND>(next) != h) {
        Finish(s, -1);
    }
    return CallWindowProcA(s->base, h, WM_KILLFOCUS, next, lp);
}

LRESULT OnNcDestroy(HWND h, PopupState* s, WPARAM wp, LPARAM lp) {
    Finish(s, -1);
    RemovePropA(h, kStateProp);
    const WNDPROC base = s->base;
    SetWindowLongPtrA(h, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(base));
    return CallWindowProcA(base, h, WM_NCDESTROY, wp, lp);
}

// The popup's columns: those of the mask in their order, or the whole line,
// sharing the list's width alike.
void LayOut(HWND list, fk::ColumnView& view, DWORD mask, char delimiter) {
    view.delimiter = delimiter;
    view.count = 0;
    for (int32_t column = 1; column <= fk::kMaxColumns; ++column)
        if (mask & (1u << (column - 1))) view.field[view.count++] = column;
    if (view.count == 0) view.field[view.count++] = 0;
    const fk::ListMetrics m = fk::MeasureListFont(list, reinterpret_cast<HFONT>(SendMessageA(list, WM_GETFONT, 0, 0)));
    SendMessageA(list, LB_SETITEMHEIGHT, 0, m.itemHeight);
    RECT client;
    GetClientRect(list, &client);
    fk::LayoutColumns(view.count, fk::ColumnUnits{nullptr, 0, nullptr, 0}, m.baseX, client.right, view.width);
}

// Dialog units to pixels with the system's dialog base units.
int ToPixelsX(int v, int base) {
    return MulDiv(v, base, 4);
}
int ToPixelsY(int v, int base) {
    return MulDiv(v, base, 8);
}

HWND CreatePopup(HWND parent, const char* name, int x, int y, int cx, int cy) {
    const LONG units = GetDialogBaseUnits();
    const int bx = LOWORD(units) > 0 ? LOWORD(units) : 8;
    const int by = HIWORD(units) > 0 ? HIWORD(units) : 16;
    POINT at{ToPixelsX(x, bx), ToPixelsY(y, by)};
    if (parent != nullptr) {
        ClientToScreen(parent, &at);
    }
    int w = ToPixelsX(cx, bx);
    int h = ToPixelsY(cy, by);
    if (w < 16) w = 16;
    if (h < 16) h = 16;
    return CreateWindowExA(WS_EX_TOOLWINDOW, "LISTBOX", name,
                           WS_POPUP | WS_BORDER | WS_VSCROLL | LBS_OWNERDRAWFIXED | LBS_HASSTRINGS | LBS_NOINTEGRALHEIGHT,
                           at.x, at.y, w, h, parent, nullptr, fk::hInstLib, nullptr);
}

// Runs the popup's messages until a line is picked or the popup cancelled.
// A WM_QUIT met on the way is put back for the application's own loop.
void ModalLoop(HWND list, const PopupState& s) {
    MSG msg;
    while (!s.done && IsWindow(list)) {
        const BOOL got = GetMessageA(&msg, nullptr, 0, 0);
        if (got == 0) {
            PostQuitMessage(static_cast<int>(msg.wParam));
            break;
        }
        if (got == -1) {
            break;
        }
        TranslateMessage(&msg);
        DispatchMessageA(&msg);
    }
}

}  // namespace

LRESULT WINAPI TableListBoxProc(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    PopupState* s = StateOf(h);
    if (s == nullptr) {
        // Not one of our popups (or already torn down).
        return fk::lpfnListBoxProc != nullptr ? CallWindowProcA(fk::lpfnListBoxProc, h, msg, wp, lp)
                                              : DefWindowProcA(h, msg, wp, lp);
    }
    switch (msg) {
        case WM_GETDLGCODE: return DLGC_WANTALLKEYS;
        case WM_KEYDOWN: return OnKeyDown(h, s, wp, lp);
        case WM_LBUTTONDBLCLK: return OnLButtonDblClk(h, s, wp, lp);
        case WM_KILLFOCUS: return OnKillFocus(h, s, wp, lp);
        case WM_NCDESTROY: return OnNcDestroy(h, s, wp, lp);
        case WM_PAINT: return fk::PaintColumnList(h, s->view), 0;
        case WM_ERASEBKGND: return 1;  // WM_PAINT fills every pixel
        case WM_LBUTTONDOWN:
        case WM_LBUTTONUP:
        case WM_MOUSEMOVE:
        case WM_MOUSEWHEEL:
        case WM_SETFOCUS: return PassAndRedraw(h, s, msg, wp, lp);
        default: return CallWindowProcA(s->base, h, msg, wp, lp);
    }
}

HGLOBAL WINAPI twShowTable(HWND hParent, const char* lpName, DWORD dwColumns, int x, int y, int cx, int cy,
                           char cDelimiter, int nLineMax, int, int, int, void*, int) {
    const HINSTANCE instance =
        hParent != nullptr ? reinterpret_cast<HINSTANCE>(GetWindowLongPtrA(hParent, GWLP_HINSTANCE)) : nullptr;
    // Shared with the store: the lines stay while the popup runs, even when
    // the table is freed meanwhile.
    const fk::SharedLines kept = fk::SharedTableLines(lpName, instance);
    if (!kept || kept->empty()) {
        return nullptr;
    }
    const std::vector<std::string>& lines = *kept;

    HWND list = CreatePopup(hParent, lpName, x, y, cx, cy);
    if (list == nullptr) {
        return nullptr;
    }
    for (size_t i = 0; i < lines.size(); ++i) {
        const std::string shown = fk::DisplayColumns(lines[i].c_str(), cDelimiter, dwColumns);
        const LRESULT at = SendMessageA(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(shown.c_str()));
        if (at >= 0) {
            SendMessageA(list, LB_SETITEMDATA, static_cast<WPARAM>(at), static_cast<LPARAM>(i + 1));
        }
    }
    SendMessageA(list, LB_SETCURSEL, 0, 0);

    PopupState state;
    state.view.lines = kept;
    LayOut(list, state.view, dwColumns, cDelimiter);
    SetPropA(list, kStateProp, &state);
    state.base = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrA(list, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(TableListBoxProc)));
    ShowWindow(list, SW_SHOW);
    SetFocus(list);

    ModalLoop(list, state);

    const int chosen = state.chosen;
    if (IsWindow(list)) {
        DestroyWindow(list);
    }
    if (chosen < 0 || static_cast<size_t>(chosen) >= lines.size()) {
        return nullptr;
    }
    return fk::CopyLine(lines[static_cast<size_t>(chosen)], nLineMax);
}
