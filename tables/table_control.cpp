#include "tables/table_control.h"

#include "access/accessible.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "frame/method_text.h"
#include "include/fldkit.h"
#include "links/control_links.h"
#include "links/links.h"
#include "links/refresh.h"
#include "strings/lstr.h"

namespace fk {

void CreateTableState(HWND h, CREATESTRUCTA* cs, DWORD add, DWORD remove) {
    auto* s = new TableState;
    s->styleAdded = add;
    s->styleRemoved = remove;
    if (!kTableState.set(h, s)) delete s;
    if (cs == nullptr) return;
    cs->style = (cs->style | add) & ~remove;
    SetWindowLongA(h, GWL_STYLE, cs->style);
}

void RestyleForCreate(HWND h, CREATESTRUCTA* cs) {
    const TableState* s = kTableState.get(h);
    if (s != nullptr && cs != nullptr) cs->style = (cs->style | s->styleAdded) & ~s->styleRemoved;
}

void DestroyTableState(HWND h) { delete kTableState.take(h); }

void TakeCreationMethod(HWND h, const CREATESTRUCTA* cs) {
    const char* text = cs != nullptr && HIWORD(cs->lpszName) != 0 ? cs->lpszName : nullptr;
    if (text == nullptr || *text != '@') return;
    if (lstristr(text, "@INIT") != nullptr)
        SendMessageA(h, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(text));
    else
        MethodReplace(h, TableMethod(), text);
}

LRESULT TableDestroy(HWND h, const TableBase& base, WPARAM wp, LPARAM lp) {
    ForgetAccessible(h);
    CloseControlLinks(h);
    RemovePropA(h, "@DRAGSRC");
    RemovePropA(h, "@WANTDROP");
    MethodFree(h, TableMethod());
    return base.call(h, WM_DESTROY, wp, lp);
}

LRESULT TableNcDestroy(HWND h, const TableBase& base, WPARAM wp, LPARAM lp) {
    const LRESULT r = base.call(h, WM_NCDESTROY, wp, lp);
    DestroyTableState(h);
    return r;
}

LRESULT TableResize(HWND h, const TableBase& base, UINT msg, WPARAM wp, LPARAM lp, void (*relayOut)(HWND, TableState*)) {
    const LRESULT r = base.call(h, msg, wp, lp);
    relayOut(h, kTableState.get(h));
    return r;
}

LRESULT PaintWithBorder(HWND h, const TableBase& base, UINT msg, WPARAM wp, LPARAM lp) {
    const LRESULT r = base.call(h, msg, wp, lp);
    const TableState* s = kTableState.get(h);
    if (s != nullptr && s->border != 0) twDraw3D(h, s->border);
    return r;
}

LRESULT SetTableMethod(HWND h, const TableBase& base, LPARAM lp, Restore (*keep)(HWND h, TableState& s)) {
    const char* method = MethodReplace(h, TableMethod(), reinterpret_cast<const char*>(lp));
    TableState* s = kTableState.get(h);
    if (s == nullptr) return 0;
    const Restore restore = keep(h, *s);
    const uint16_t border = s->border;
    LoadTable(h, base, *s, method != nullptr ? method : "");
    restore();
    if (border != s->border) {
        RefreshBorder(h);
        RedrawWindow(h, nullptr, nullptr, RDW_FRAME | RDW_INVALIDATE);
    }
    OpenControlLinks(h, method);
    return 0;
}

namespace {

// The key of a line: its key column clipped of blanks at both ends.
std::string LineKey(const char* line, char delimiter, int32_t column) {
    char field[kTableLineMax + 1];
    if (!LineField(line, delimiter, column, field, sizeof field)) return std::string();
    return lstrpreclip(lstrclip(field));
}

// The table a method string names: "@TBL(name)", read as a resource with
// "@TBL(@RES(name))" or with a separate "@RES"; "" for none.
std::string TableName(MethodFull& m) {
    std::string name = m.param("@TBL");
    if (name.empty() || lstrnicmp(name.c_str(), "@RES", 4) == 0) return name;
    // "@RES" inside a "@TBL(@RES(...))" argument was handled above; here
    // only a flag of its own turns the name into a resource.
    m.param("@RES");
    if (m.found()) name = "@RES(" + name + ")";
    return name;
}

// Where the lines go: the list box itself, or a combo box's list (straight,
// not through the combo box, which would hand every line on).
TableBase FillTarget(HWND h, const TableBase& base) {
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    if (&base.list == &kComboBoxMessages && GetComboBoxInfo(h, &info) && info.hwndList != nullptr) {
        const auto proc = reinterpret_cast<WNDPROC>(GetWindowLongPtrA(info.hwndList, GWLP_WNDPROC));
        if (proc != nullptr) return TableBase{proc, kListBoxMessages, info.hwndList};
    }
    return TableBase{base.proc, base.list, h};
}

uint16_t BorderLevel(const char* method) {
    static const char* const kKeywords[] = {"@3D1", "@3D2", "@3D3", "@3D4", "@3D5"};
    for (int i = 0; i < 5; ++i)
        if (lstristr(method, kKeywords[i]) != nullptr) return static_cast<uint16_t>(1u << i);
    return 0;
}

}  // namespace

void LayoutTable(HWND h, const TableBase& base, TableState& s, int clientWidth) {
    s.metrics = MeasureListFont(h, reinterpret_cast<HFONT>(base.call(h, WM_GETFONT)));
    base.call(h, base.list.setItemHeight, 0, s.metrics.itemHeight);
    const ColumnUnits units{s.widthUnits, s.widthCount, s.stopUnits, s.stopCount};
    LayoutColumns(s.view.count, units, s.metrics.baseX, clientWidth, s.view.width);
}

void LoadTable(HWND h, const TableBase& base, TableState& s, const char* method) {
    MethodFull m(method);
    const std::string name = TableName(m);
    const int key = std::atoi(m.param("@KEY"));
    s.keyColumn = key < 1 ? 1 : (key > 1000 ? 1000 : key);
    s.view.delimiter = *m.param("@DLM") != 0 ? *m.param("@DLM") : ',';
    s.view.count = ColumnList(m.param("@DISPLAY"), s.view.field, kMaxColumns);
    const bool allColumns = s.view.count == 0;
    s.widthCount = NumberList(m.param("@COLWIDTH"), s.widthUnits, kMaxColumns);
    s.stopCount = NumberList(m.param("@TABSTOP"), s.stopUnits, kMaxColumns);
    s.border = BorderLevel(m.get());
    // The range is read from the method string's own copy: twValidateRange
    // reads from the keyword on.
    char* range = lstristr(m.get(), "@RNG");

    const auto instance = reinterpret_cast<HINSTANCE>(GetWindowLongPtrA(h, GWLP_HINSTANCE));
    const SharedLines before = s.view.lines;
    s.view.lines = name.empty() ? nullptr : SharedTableLines(name.c_str(), instance);
    // The same lines, key, delimiter and range fill the list the same way:
    // it is left as it is (a method string that changes only the columns
    // costs no refill of a long table).
    char filledBy[kMethodMax + 64];
    wsprintfA(filledBy, "%p|%d|%c|%s", static_cast<const void*>(s.view.lines.get()), s.keyColumn, s.view.delimiter,
              range != nullptr ? range : "");
    const bool same = s.view.lines && s.view.lines == before && s.filledBy == filledBy;
    s.filledBy = filledBy;
    int32_t fields = 1;
    if (same && allColumns) {
        for (const std::string& line : *s.view.lines) fields = std::max(fields, FieldCount(line.c_str(), s.view.delimiter));
    } else if (!same) {
        base.call(h, base.list.reset);
    }
    if (s.view.lines && !same) {
        const auto& lines = *s.view.lines;
        const TableBase list = FillTarget(h, base);
        list.call(list.window, list.list.initStorage, lines.size(), lines.size() * 8);
        list.call(list.window, WM_SETREDRAW, FALSE);
        for (size_t i = 0; i < lines.size(); ++i) {
            const char* line = lines[i].c_str();
            std::string k = LineKey(line, s.view.delimiter, s.keyColumn);
            if (range != nullptr && !twValidateRange(GXT_TEXT, k.data(), range)) continue;
            const LRESULT at = list.call(list.window, list.list.add, 0, reinterpret_cast<LPARAM>(k.c_str()));
            if (at < 0) break;  // out of memory: the list keeps what it has
            list.call(list.window, list.list.setData, static_cast<WPARAM>(at), static_cast<LPARAM>(i + 1));
            if (allColumns && fields < kMaxColumns) {
                const int32_t n = FieldCount(line, s.view.delimiter);
                if (n > fields) fields = n;
            }
        }
        list.call(list.window, WM_SETREDRAW, TRUE);
    }
    if (allColumns) {
        s.view.count = fields;
        for (int32_t i = 0; i < fields; ++i) s.view.field[i] = i + 1;
    }
    s.shownSelection = LB_ERR;
    RECT client;
    GetClientRect(h, &client);
    LayoutTable(h, base, s, client.right);
    InvalidateRect(h, nullptr, TRUE);
}

std::string ItemKey(HWND h, const TableBase& base, LRESULT index) {
    if (index < 0) return std::string();
    const LRESULT length = base.call(h, base.list.getTextLen, static_cast<WPARAM>(index));
    if (length <= 0 || length > 4096) return std::string();
    std::string text(static_cast<size_t>(length) + 1, '\0');
    base.call(h, base.list.getText, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text.data()));
    text.resize(std::strlen(text.c_str()));
    return text;
}

LRESULT FindKey(HWND h, const TableBase& base, const char* key) {
    if (key == nullptr || *key == 0) return -1;
    // The base finds texts without case; the first that also matches in
    // case is the one.
    LRESULT from = -1;
    for (;;) {
        const LRESULT at = base.call(h, base.list.findExact, static_cast<WPARAM>(from), reinterpret_cast<LPARAM>(key));
        if (at < 0 || at <= from) return -1;
        if (ItemKey(h, base, at) == key) return at;
        from = at;
    }
}

void CopyKey(const std::string& key, LPARAM lp) {
    if (lp != 0) lstrcpynA(reinterpret_cast<char*>(lp), key.c_str(), kKeyMax + 1);
}

LRESULT AnswerType(LRESULT type, LPARAM lp) {
    if (lp != 0) *reinterpret_cast<LONG*>(lp) = kKeyMax + 1;
    return type;
}

LRESULT EditTableMethod(HWND h, const TableBase& base, UINT msg, WPARAM wp, LPARAM lp) {
    const char* keyword = msg == GXM_SETTABLE       ? "@TBL"
                          : msg == GXM_SETDISPLAY   ? "@DISPLAY"
                          : msg == GXM_SETDELIMITER ? "@DLM"
                          : msg == GXM_SETTABSTOPS  ? "@TABSTOP"
                                                    : "@COLWIDTH";
    // The method copy, the new item (argument cut to a table line) and the
    // spare bytes behind.
    char work[kMethodCopy + 1 + kTableLineMax + 16 + 2] = {};
    SendMessageA(h, GXM_GETMETHOD, kMethodCopy, reinterpret_cast<LPARAM>(work));
    const char* text = reinterpret_cast<const char*>(lp);
    char item[kTableLineMax + 16];
    if (text != nullptr && *text != 0) {
        wsprintfA(item, "%s(%.255s)", keyword, text);
        twAddMethodParam(work, item);
    } else {
        wsprintfA(item, "%s()", keyword);
        twRemoveMethodParam(work, item);
    }
    SendMessageA(h, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(work));
    return base.call(h, msg, wp, lp);
}

}  // namespace fk
