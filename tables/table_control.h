// What the table list (gxTable32) and the combo table (gxCBTable32) share:
// the table keywords of the method string, filling the list, keys and
// values, and the table messages that edit the method string.
#pragma once

#include <windows.h>

#include <functional>
#include <string>

#include "frame/buffers.h"
#include "frame/library.h"
#include "frame/method_window.h"
#include "frame/window_words.h"
#include "tables/columns.h"

namespace fk {

// The list messages of the base class (list box or combo box).
struct ListMessages {
    UINT reset, initStorage, add, setData, getData, getCount, getCurSel, setCurSel, getText, getTextLen,
        findExact, setItemHeight;
};
inline constexpr ListMessages kListBoxMessages{
    LB_RESETCONTENT, LB_INITSTORAGE, LB_ADDSTRING, LB_SETITEMDATA,  LB_GETITEMDATA,     LB_GETCOUNT,
    LB_GETCURSEL,    LB_SETCURSEL,   LB_GETTEXT,   LB_GETTEXTLEN,   LB_FINDSTRINGEXACT, LB_SETITEMHEIGHT};
inline constexpr ListMessages kComboBoxMessages{
    CB_RESETCONTENT, CB_INITSTORAGE, CB_ADDSTRING,  CB_SETITEMDATA,    CB_GETITEMDATA,     CB_GETCOUNT,
    CB_GETCURSEL,    CB_SETCURSEL,   CB_GETLBTEXT,  CB_GETLBTEXTLEN,   CB_FINDSTRINGEXACT, CB_SETITEMHEIGHT};

// A table control: its base class's procedure and list messages.
struct TableBase {
    WNDPROC proc;
    const ListMessages& list;
    HWND window = nullptr;  // set only where the list is another window than the control
    LRESULT call(HWND h, UINT msg, WPARAM wp = 0, LPARAM lp = 0) const { return CallWindowProcA(proc, h, msg, wp, lp); }
};

// State of one table control, kept behind the property kTableState from
// WM_NCCREATE to WM_NCDESTROY.
struct TableState {
    ColumnView view;
    int32_t keyColumn = 1;
    int32_t widthUnits[kMaxColumns] = {};  // "@COLWIDTH", dialog units
    int32_t widthCount = 0;
    int32_t stopUnits[kMaxColumns] = {};   // "@TABSTOP", dialog units
    int32_t stopCount = 0;
    ListMetrics metrics{8, 16};
    uint16_t border = 0;                   // twDraw3D level of "@3D1".."@3D5"; 0: none
    std::string filledBy;                  // what the list was filled from: table, key, delimiter, range
    // gxTable32: the characters typed in a row and when the last came.
    char typed[32] = {};
    int32_t typedLength = 0;
    DWORD typedAt = 0;
    // gxTable32: the column whose right edge the mouse drags, or -1.
    int32_t sizing = -1;
    int32_t sizingFrom = 0;                // client x where the drag began
    int32_t sizingWidth = 0;               // the column's width then
    LRESULT shownSelection = LB_ERR;       // the selection last drawn and published
    DWORD styleAdded = 0;                  // the style bits the class adds at creation
    DWORD styleRemoved = 0;                // and those it removes
};
inline constexpr PropPtr<TableState> kTableState{"FkTableState"};

// Longest key a control hands out (GXM_GETVALUE writes at most this many
// characters and a terminator; GXM_GETTYPE states the size).
inline constexpr int kKeyMax = kTableLineMax;

// WM_NCCREATE: the state, and the style both bases need: owner-drawn items
// of fixed height that keep their strings (the key), in table order.
void CreateTableState(HWND h, CREATESTRUCTA* cs, DWORD add, DWORD remove);
// WM_CREATE, before the base: the same style bits once more in the
// creation record the base reads (the system hands each message its own
// copy of it).
void RestyleForCreate(HWND h, CREATESTRUCTA* cs);
void DestroyTableState(HWND h);

// Reads the table keywords of method and fills the list with the table's
// lines whose key passes "@RNG"/"@RNGI"; without a readable table the list
// is empty. The font is measured and the columns laid out again.
void LoadTable(HWND h, const TableBase& base, TableState& s, const char* method);

// The font's metrics and the columns' pixel widths for a client width.
void LayoutTable(HWND h, const TableBase& base, TableState& s, int clientWidth);

// The key of item index: its string ("" for none).
std::string ItemKey(HWND h, const TableBase& base, LRESULT index);
// The first item whose key equals key exactly, or -1.
LRESULT FindKey(HWND h, const TableBase& base, const char* key);

// GXM_GETVALUE: key into lp (at most kKeyMax characters), when lp is set.
void CopyKey(const std::string& key, LPARAM lp);
// GXM_GETTYPE: the size a key needs into the 32-bit variable lp points to.
LRESULT AnswerType(LRESULT type, LPARAM lp);

// The table messages: the method string (at most 256 characters of it)
// gets "@TBL(%s)", "@DISPLAY(%s)" ... for a text, loses the item for an
// empty or null one, and is sent back with GXM_SETMETHOD; then the base
// answers the message.
LRESULT EditTableMethod(HWND h, const TableBase& base, UINT msg, WPARAM wp, LPARAM lp);

// The method-string word of both classes sits behind the base class's
// extra bytes, at the position both superclasses share (the combo box's
// count).
inline MethodSlot TableMethod() { return MethodSlot{nBaseWndExtra}; }

// WM_CREATE, after the base: a creation text (a dialog template's text)
// that starts with "@" is the method string. With "@INIT" the table is
// loaded at once, otherwise when a method string is next set.
void TakeCreationMethod(HWND h, const CREATESTRUCTA* cs);

// WM_DESTROY: the links end, the drag marks go, the method string is freed.
LRESULT TableDestroy(HWND h, const TableBase& base, WPARAM wp, LPARAM lp);
// WM_NCDESTROY: the state goes after the base.
LRESULT TableNcDestroy(HWND h, const TableBase& base, WPARAM wp, LPARAM lp);
// WM_NCPAINT (and the combo box's WM_PAINT): the base, then the border of
// "@3D1".."@3D5" around the control.
LRESULT PaintWithBorder(HWND h, const TableBase& base, UINT msg, WPARAM wp, LPARAM lp);
// WM_SIZE and WM_SETFONT: the base, then the columns laid out again by the
// class's relayOut for the new width or font.
LRESULT TableResize(HWND h, const TableBase& base, UINT msg, WPARAM wp, LPARAM lp, void (*relayOut)(HWND, TableState*));
// GXM_SETMETHOD of both classes: the new method string is kept, the table
// loaded again, the border redrawn when it changed and the DDE links opened.
// What a control keeps over the reload is its own: keep notes it before
// and returns what puts it back afterwards.
using Restore = std::function<void()>;
LRESULT SetTableMethod(HWND h, const TableBase& base, LPARAM lp, Restore (*keep)(HWND h, TableState& s));

}  // namespace fk
