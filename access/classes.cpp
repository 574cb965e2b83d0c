// What a screen reader learns of the classes that are not entry fields:
// the table list and its rows, the combo table and its parts, the button,
// the pictures, the 3D text, frame and line, the ticker and the colour
// control with its three components.

#include "access/classes.h"

#include <oleacc.h>

#include <cstdio>
#include <cstdlib>

#include "frame/library.h"
#include "frame/method_text.h"
#include "include/fldkit.h"
#include "links/control_links.h"
#include "tables/table_control.h"

namespace fk {

namespace {

bool Focused(HWND h) { return GetFocus() == h; }

std::string WithoutAmpersand(const std::string& text) {
    std::string out;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '&' && i + 1 < text.size()) ++i;
        out += text[i];
    }
    return out;
}

bool ToScreen(HWND h, RECT& r) {
    MapWindowPoints(h, nullptr, reinterpret_cast<POINT*>(&r), 2);
    return true;
}

// ---- gxTable32: a list whose rows are its children ----

LRESULT ListCall(HWND h, UINT msg, WPARAM wp = 0, LPARAM lp = 0) {
    return lpfnListBoxProc ? CallWindowProcA(lpfnListBoxProc, h, msg, wp, lp) : 0;
}
TableBase ListBase() { return TableBase{lpfnListBoxProc, kListBoxMessages}; }

LONG RowCount(HWND h) { return static_cast<LONG>(std::max<LRESULT>(ListCall(h, LB_GETCOUNT), 0)); }
LONG RowRole(HWND, LONG) { return ROLE_SYSTEM_LISTITEM; }

// A row reads as its columns do on the screen, one after the other.
std::string RowName(HWND h, LONG child) {
    const LRESULT index = child - 1;
    const std::string key = ItemKey(h, ListBase(), index);
    const TableState* s = kTableState.get(h);
    if (s == nullptr) return key;
    const auto data = static_cast<ULONG_PTR>(ListCall(h, LB_GETITEMDATA, static_cast<WPARAM>(index)));
    const char* line = ItemLine(s->view, data, key.c_str());
    std::string out;
    for (int32_t c = 0; c < s->view.count && c < kMaxColumns; ++c) {
        const std::string column = ColumnText(s->view, line, c);
        if (column.empty()) continue;
        if (!out.empty()) out += ", ";
        out += column;
    }
    return out.empty() ? key : out;
}

bool MultipleSelection(HWND h) { return (GetWindowLongA(h, GWL_STYLE) & (LBS_MULTIPLESEL | LBS_EXTENDEDSEL)) != 0; }

bool RowSelected(HWND h, LONG child) {
    if (MultipleSelection(h)) return ListCall(h, LB_GETSEL, static_cast<WPARAM>(child - 1)) > 0;
    return ListCall(h, LB_GETCURSEL) == child - 1;
}

LONG FocusedRow(HWND h) {
    const LRESULT caret = MultipleSelection(h) ? ListCall(h, LB_GETCARETINDEX) : ListCall(h, LB_GETCURSEL);
    return caret >= 0 ? static_cast<LONG>(caret + 1) : 0;
}

LONG SelectedRow(HWND h) {
    if (!MultipleSelection(h)) {
        const LRESULT sel = ListCall(h, LB_GETCURSEL);
        return sel >= 0 ? static_cast<LONG>(sel + 1) : 0;
    }
    int first = -1;
    return ListCall(h, LB_GETSELITEMS, 1, reinterpret_cast<LPARAM>(&first)) == 1 ? first + 1 : 0;
}

bool RowRect(HWND h, LONG child, RECT& r) {
    if (ListCall(h, LB_GETITEMRECT, static_cast<WPARAM>(child - 1), reinterpret_cast<LPARAM>(&r)) == LB_ERR) return false;
    return ToScreen(h, r);
}

LONG RowState(HWND h, LONG child) {
    LONG state = STATE_SYSTEM_SELECTABLE | STATE_SYSTEM_FOCUSABLE;
    if (RowSelected(h, child)) state |= STATE_SYSTEM_SELECTED;
    if (Focused(h) && FocusedRow(h) == child) state |= STATE_SYSTEM_FOCUSED;
    RECT row{}, client{};
    GetClientRect(h, &client);
    ListCall(h, LB_GETITEMRECT, static_cast<WPARAM>(child - 1), reinterpret_cast<LPARAM>(&row));
    if (row.bottom <= client.top || row.top >= client.bottom) state |= STATE_SYSTEM_INVISIBLE | STATE_SYSTEM_OFFSCREEN;
    return state;
}

// Choosing a row is choosing its key, as the application does; the list
// tells what it tells of every choice.
bool SelectRow(HWND h, LONG child, LONG flags) {
    if (flags & SELFLAG_TAKEFOCUS) SetFocus(h);
    if (flags & SELFLAG_TAKESELECTION) {
        const std::string key = ItemKey(h, ListBase(), child - 1);
        SendMessageA(h, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>(key.c_str()));
        if (ListCall(h, LB_GETCURSEL) != child - 1) ListCall(h, LB_SETCURSEL, static_cast<WPARAM>(child - 1));
    }
    return (flags & ~(SELFLAG_TAKEFOCUS | SELFLAG_TAKESELECTION)) == 0;
}

const AccessChildren kRows{
    .count = RowCount,
    .role = RowRole,
    .name = RowName,
    .state = RowState,
    .location = RowRect,
    .focused = FocusedRow,
    .selected = SelectedRow,
    .select = SelectRow,
};

// ---- gxCBTable32: the key as value; the item, the button and the list ----

COMBOBOXINFO ComboInfo(HWND h) {
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    GetComboBoxInfo(h, &info);
    return info;
}

bool HasButton(HWND h) { return (GetWindowLongA(h, GWL_STYLE) & 3) != CBS_SIMPLE; }
bool Dropped(HWND h) { return lpfnComboBoxProc && CallWindowProcA(lpfnComboBoxProc, h, CB_GETDROPPEDSTATE, 0, 0) != 0; }

std::string ComboValue(HWND h, const void*) { return WindowTextOf(h); }

LONG ComboPartCount(HWND) { return 3; }
LONG ComboPartRole(HWND h, LONG child) {
    if (child == 1) return ComboInfo(h).hwndItem && ComboInfo(h).hwndItem != h ? ROLE_SYSTEM_TEXT : ROLE_SYSTEM_STATICTEXT;
    return child == 2 ? ROLE_SYSTEM_PUSHBUTTON : ROLE_SYSTEM_LIST;
}
std::string ComboPartName(HWND h, LONG child) {
    if (child == 2) return Dropped(h) ? "Close" : "Open";
    return LabelBefore(h);
}
std::string ComboPartValue(HWND h, LONG child) { return child == 1 ? WindowTextOf(h) : std::string(); }
HWND ComboPartWindow(HWND h, LONG child) {
    const COMBOBOXINFO info = ComboInfo(h);
    if (child == 1) return info.hwndItem != h ? info.hwndItem : nullptr;
    return child == 3 ? info.hwndList : nullptr;
}
LONG ComboPartState(HWND h, LONG child) {
    if (child == 2) {
        if (!HasButton(h)) return STATE_SYSTEM_INVISIBLE;
        return Dropped(h) ? STATE_SYSTEM_PRESSED : 0;
    }
    return Focused(h) ? STATE_SYSTEM_FOCUSED : 0;
}
bool ComboPartRect(HWND h, LONG child, RECT& r) {
    const COMBOBOXINFO info = ComboInfo(h);
    r = child == 2 ? info.rcButton : info.rcItem;
    return ToScreen(h, r);
}
bool ComboButtonPress(HWND h, LONG child) {
    if (child != 2 || !HasButton(h)) return false;
    PostMessageA(h, CB_SHOWDROPDOWN, Dropped(h) ? FALSE : TRUE, 0);
    return true;
}
bool ComboPut(HWND h, const char* text) {
    if (!IsWindowEnabled(h)) return false;
    SendMessageA(h, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>(text));
    return true;
}

const AccessChildren kComboParts{
    .count = ComboPartCount,
    .role = ComboPartRole,
    .name = ComboPartName,
    .value = ComboPartValue,
    .state = ComboPartState,
    .location = ComboPartRect,
    .window = ComboPartWindow,
    .defaultAction = "Open",
    .doDefault = ComboButtonPress,
};

// ---- gxButton32 ----

std::string ButtonName(HWND h, const void*) {
    if ((GetWindowLongA(h, GWL_STYLE) & BTN_KINDMASK) == BTN_TEXT) return WithoutAmpersand(WindowTextOf(h));
    // A picture button's text names its pictures; a label before it, if
    // any, says more.
    const std::string label = LabelBefore(h);
    return label.empty() ? WindowTextOf(h) : label;
}
// A text button's own "&" key; a picture button's is its label's.
char ButtonShortcut(HWND h) {
    if ((GetWindowLongA(h, GWL_STYLE) & BTN_KINDMASK) == BTN_TEXT) return MnemonicIn(WindowTextOf(h));
    return LabelMnemonic(h);
}
LONG ButtonState(HWND h) {
    LONG state = 0;
    const LRESULT s = SendMessageA(h, BM_GETSTATE, 0, 0);
    if (s & BST_PUSHED) state |= STATE_SYSTEM_PRESSED;
    if (SendMessageA(h, BM_GETCHECK, 0, 0) == BST_CHECKED) state |= STATE_SYSTEM_PRESSED | STATE_SYSTEM_CHECKED;
    if ((GetWindowLongA(h, GWL_STYLE) & BTN_KINDMASK) == BTN_DEFPUSH) state |= STATE_SYSTEM_DEFAULT;
    return state;
}
// The press is posted, as the system's buttons do: the caller is not held
// while the dialog answers the click.
bool ButtonPress(HWND h) {
    if (!IsWindowEnabled(h)) return false;
    return PostMessageA(h, BM_CLICK, 0, 0) != FALSE;
}

// ---- pictures, 3D text, frame, line, ticker ----

std::string PictureName(HWND h, const void*) {
    const std::string label = LabelBefore(h);
    return label.empty() ? WindowTextOf(h) : label;
}
// A picture that starts a program opens it, as a double click does: the
// key goes the way of the keyboard's Enter.
bool StartsProgram(HWND h) {
    char method[kMethodMax + 1] = "";
    SendMessageA(h, GXM_GETMETHOD, 256, reinterpret_cast<LPARAM>(method));
    return MethodShort(method).has("@PROG");
}
bool OpenProgram(HWND h) { return IsWindowEnabled(h) && PostMessageA(h, WM_KEYDOWN, VK_RETURN, 0) != FALSE; }

std::string OwnText(HWND h, const void*) { return WithoutAmpersand(WindowTextOf(h)); }
LONG ReadOnly(HWND) { return STATE_SYSTEM_READONLY; }

// The whole text, not the slice that is scrolling past.
std::string TickerText(HWND h, const void*) {
    std::string text = WindowTextOf(h);
    while (!text.empty() && text.back() == ' ') text.pop_back();
    return text;
}
LONG TickerState(HWND) { return STATE_SYSTEM_READONLY | STATE_SYSTEM_MARQUEED; }

// ---- gxColor32: three sliders, red, green and blue ----

DWORD Colour(HWND h) {
    DWORD colour = 0;
    SendMessageA(h, GXM_GETVALUE, 0, reinterpret_cast<LPARAM>(&colour));
    return colour;
}
int ComponentOf(DWORD colour, LONG child) { return static_cast<int>((colour >> (8 * (child - 1))) & 0xFF); }

const char* const kComponentNames[] = {"Red", "Green", "Blue"};

// The bar of component child (1-3): the colour control's child windows 0-2.
HWND Bar(HWND h, LONG child) { return GetDlgItem(h, static_cast<int>(child - 1)); }

std::string ColourValue(HWND h, const void*) {
    const DWORD colour = Colour(h);
    char text[64];
    std::snprintf(text, sizeof text, "red %d, green %d, blue %d", ComponentOf(colour, 1), ComponentOf(colour, 2),
                  ComponentOf(colour, 3));
    return text;
}
std::string ColourDescription(HWND, const void*) { return "colour picker: red, green and blue from 0 to 255"; }

LONG ComponentCount(HWND) { return 3; }
LONG ComponentRole(HWND, LONG) { return ROLE_SYSTEM_SLIDER; }
std::string ComponentName(HWND, LONG child) { return kComponentNames[child - 1]; }
std::string ComponentValue(HWND h, LONG child) { return std::to_string(ComponentOf(Colour(h), child)); }
LONG ComponentState(HWND h, LONG child) {
    LONG state = STATE_SYSTEM_FOCUSABLE;
    if (GetFocus() != nullptr && GetFocus() == Bar(h, child)) state |= STATE_SYSTEM_FOCUSED;
    return state;
}
bool ComponentRect(HWND h, LONG child, RECT& r) {
    HWND bar = Bar(h, child);
    return bar != nullptr && GetWindowRect(bar, &r);
}
LONG FocusedComponent(HWND h) {
    for (LONG i = 1; i <= 3; ++i)
        if (GetFocus() != nullptr && GetFocus() == Bar(h, i)) return i;
    return 0;
}
bool SelectComponent(HWND h, LONG child, LONG flags) {
    if (flags != SELFLAG_TAKEFOCUS) return false;
    SetFocus(Bar(h, child));
    return true;
}
// A value set by a reader moves the bar as the user would: the control
// stores it, shows it and tells its parent.
bool PutComponent(HWND h, LONG child, const char* text) {
    char* end = nullptr;
    const long v = std::strtol(text, &end, 10);
    if (end == text || *end != 0 || v < 0 || v > 255 || !IsWindowEnabled(h)) return false;
    HWND bar = Bar(h, child);
    if (bar == nullptr) return false;
    SendMessageA(h, WM_VSCROLL, MAKEWPARAM(SB_THUMBPOSITION, static_cast<WORD>(v)), reinterpret_cast<LPARAM>(bar));
    return true;
}

const AccessChildren kComponents{
    .count = ComponentCount,
    .role = ComponentRole,
    .name = ComponentName,
    .value = ComponentValue,
    .state = ComponentState,
    .location = ComponentRect,
    .focused = FocusedComponent,
    .select = SelectComponent,
    .putValue = PutComponent,
};

}  // namespace

std::string GivenName(HWND h) {
    char method[kMethodMax + 1] = "";
    SendMessageA(h, GXM_GETMETHOD, 256, reinterpret_cast<LPARAM>(method));
    MethodShort copy(method);
    const char* name = copy.param("@ACCNAME");
    return copy.found() ? std::string(name) : std::string();
}

bool MayChangeComboText(UINT msg, WPARAM wp) {
    switch (msg) {
    case WM_COMMAND:
        return HIWORD(wp) != EN_CHANGE;
    case WM_SETTEXT:
    case WM_PASTE:
    case WM_CUT:
    case WM_CLEAR:
    case WM_UNDO:
    case WM_KEYDOWN:
    case WM_CHAR:
    case WM_LBUTTONUP:
    case CB_SETCURSEL:
    case CB_SELECTSTRING:
    case GXM_SETMETHOD:
    case GXM_SETVALUE:
        return true;
    default:
        return IsDdeMessage(msg);
    }
}

bool MayChangeTickerText(UINT msg) {
    return msg == WM_SETTEXT || msg == GXM_SETVALUE || IsDdeMessage(msg);
}

void RaiseRowSelected(HWND h, LRESULT index) {
    if (index < 0) return;
    const LONG child = static_cast<LONG>(index + 1);
    RaiseEvent(h, EVENT_OBJECT_SELECTION, child);
    if (Focused(h)) RaiseEvent(h, EVENT_OBJECT_FOCUS, child);
}

void RaiseRowFocused(HWND h) {
    if (const LONG row = FocusedRow(h); row > 0) RaiseEvent(h, EVENT_OBJECT_FOCUS, row);
}

void RaiseColourChanged(HWND h, int component) {
    RaiseEvent(h, EVENT_OBJECT_VALUECHANGE, component + 1);
    RaiseEvent(h, EVENT_OBJECT_VALUECHANGE);
}

void RaiseColoursChanged(HWND h, const bool changed[3]) {
    bool any = false;
    for (int i = 0; i < 3; ++i) {
        if (!changed[i]) continue;
        RaiseEvent(h, EVENT_OBJECT_VALUECHANGE, i + 1);
        any = true;
    }
    if (any) RaiseEvent(h, EVENT_OBJECT_VALUECHANGE);
}

const AccessClass kTableAccess{.role = ROLE_SYSTEM_LIST, .children = &kRows};
const AccessClass kCBTableAccess{
    .role = ROLE_SYSTEM_COMBOBOX, .value = ComboValue, .putValue = ComboPut, .children = &kComboParts};
const AccessClass kButtonAccess{
    .role = ROLE_SYSTEM_PUSHBUTTON,
    .name = ButtonName,
    .state = ButtonState,
    .shortcut = ButtonShortcut,
    .defaultAction = "Press",
    .doDefault = ButtonPress};
const AccessClass kPictureAccess{.role = ROLE_SYSTEM_GRAPHIC,
                                  .name = PictureName,
                                  .state = ReadOnly,
                                  .focusable = false,
                                  .defaultAction = "Open",
                                  .doDefault = OpenProgram,
                                  .hasDefault = StartsProgram};
const AccessClass kText3DAccess{.role = ROLE_SYSTEM_STATICTEXT, .name = OwnText, .state = ReadOnly, .focusable = false};
const AccessClass kFrame3DAccess{.role = ROLE_SYSTEM_GROUPING, .name = OwnText, .focusable = false};
const AccessClass kLineAccess{.role = ROLE_SYSTEM_SEPARATOR, .name = [](HWND, const void*) { return std::string(); }, .focusable = false};
const AccessClass kTickerAccess{
    .role = ROLE_SYSTEM_STATICTEXT, .name = TickerText, .state = TickerState, .focusable = false};
const AccessClass kColorAccess{
    .role = ROLE_SYSTEM_GROUPING, .value = ColourValue, .description = ColourDescription, .children = &kComponents};

}  // namespace fk
