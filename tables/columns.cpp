#include "tables/columns.h"

#include <cstring>
#include <string>

#include "frame/gdi.h"

namespace fk {

const char* ItemLine(const ColumnView& view, ULONG_PTR data, const char* text) {
    if (view.lines && data >= 1 && data <= view.lines->size()) return (*view.lines)[data - 1].c_str();
    return text != nullptr ? text : "";
}

namespace {

// Field of a line as a column shows it: clipped of blanks at both ends.
std::string ShownField(const char* line, char delimiter, int32_t field) {
    if (field == 0) return line;
    char text[kTableLineMax + 1];
    if (!LineField(line, delimiter, field, text, sizeof text)) return std::string();
    std::string s = text;
    const size_t first = s.find_first_not_of(' ');
    if (first == std::string::npos) return std::string();
    return s.substr(first, s.find_last_not_of(' ') - first + 1);
}

}  // namespace

std::string ColumnText(const ColumnView& view, const char* line, int32_t column) {
    if (view.count < 1 || column < 0 || column >= view.count || column >= kMaxColumns) return ShownField(line, 0, 0);
    return ShownField(line, view.delimiter, view.field[column]);
}

void DrawColumns(HDC dc, const RECT& item, const char* line, const ColumnView& view, bool selected, HBRUSH back) {
    const COLORREF oldText = selected ? SetTextColor(dc, GetSysColor(COLOR_HIGHLIGHTTEXT)) : CLR_INVALID;
    FillRect(dc, &item, selected ? GetSysColorBrush(COLOR_HIGHLIGHT) : back);
    const int oldMode = SetBkMode(dc, TRANSPARENT);
    int x = item.left;
    const int count = view.count < 1 ? 1 : (view.count > kMaxColumns ? kMaxColumns : view.count);
    for (int i = 0; i < count; ++i) {
        const int width = view.count < 1 ? item.right - item.left : view.width[i];
        const std::string text = ColumnText(view, line, i);
        RECT cell{x + kColumnPad, item.top, x + width - kColumnPad, item.bottom};
        if (cell.right > cell.left)
            DrawTextA(dc, text.c_str(), static_cast<int>(text.size()), &cell,
                      DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_LEFT);
        x += width;
        RECT rule{x - 1, item.top, x, item.bottom};
        if (count > 1) FillRect(dc, &rule, GetSysColorBrush(COLOR_BTNFACE));
    }
    SetBkMode(dc, oldMode);
    if (oldText != CLR_INVALID) SetTextColor(dc, oldText);
}

void PaintColumnList(HWND list, const ColumnView& view) {
    PaintDC dc(list);
    if (dc.get() == nullptr) return;
    RECT client;
    GetClientRect(list, &client);
    SelectObj font(dc, reinterpret_cast<HFONT>(SendMessageA(list, WM_GETFONT, 0, 0)));
    HWND parent = GetParent(list);
    HBRUSH back = parent != nullptr ? reinterpret_cast<HBRUSH>(SendMessageA(
                                          parent, WM_CTLCOLORLISTBOX, reinterpret_cast<WPARAM>(dc.get()),
                                          reinterpret_cast<LPARAM>(list)))
                                    : nullptr;
    if (back == nullptr) {
        back = GetSysColorBrush(COLOR_WINDOW);
        SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
    }
    if (!IsWindowEnabled(list)) SetTextColor(dc, GetSysColor(COLOR_GRAYTEXT));
    const LRESULT count = SendMessageA(list, LB_GETCOUNT, 0, 0);
    const LRESULT caret = GetFocus() == list ? SendMessageA(list, LB_GETCARETINDEX, 0, 0) : LB_ERR;
    int bottom = client.top;
    std::string text;
    for (LRESULT i = SendMessageA(list, LB_GETTOPINDEX, 0, 0); i >= 0 && i < count; ++i) {
        RECT r;
        if (SendMessageA(list, LB_GETITEMRECT, i, reinterpret_cast<LPARAM>(&r)) == LB_ERR || r.top >= client.bottom)
            break;
        bottom = r.bottom;
        RECT overlap;
        if (!IntersectRect(&overlap, &r, &dc.paint().rcPaint)) continue;
        const LRESULT length = SendMessageA(list, LB_GETTEXTLEN, i, 0);
        text.assign(length > 0 && length < 4096 ? static_cast<size_t>(length) + 1 : 1, '\0');
        if (length > 0 && length < 4096) SendMessageA(list, LB_GETTEXT, i, reinterpret_cast<LPARAM>(text.data()));
        const auto data = static_cast<ULONG_PTR>(SendMessageA(list, LB_GETITEMDATA, i, 0));
        DrawColumns(dc, r, ItemLine(view, data, text.c_str()), view, SendMessageA(list, LB_GETSEL, i, 0) > 0, back);
        if (i == caret) DrawFocusRect(dc, &r);
    }
    RECT below{client.left, bottom, client.right, client.bottom};
    if (below.bottom > below.top) FillRect(dc, &below, back);
}

ListMetrics MeasureListFont(HWND h, HFONT font) {
    WindowDC dc(h);
    ListMetrics m{8, 16};
    if (dc.get() == nullptr) return m;
    SelectObj chosen(dc, font != nullptr ? font : GetStockObject(SYSTEM_FONT));
    static const char kLetters[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    SIZE size{};
    TEXTMETRICA tm{};
    if (GetTextExtentPoint32A(dc, kLetters, 52, &size) && size.cx > 0) m.baseX = (size.cx / 26 + 1) / 2;
    if (GetTextMetricsA(dc, &tm) && tm.tmHeight > 0) m.itemHeight = tm.tmHeight + 2;
    if (m.itemHeight > 255) m.itemHeight = 255;
    return m;
}

}  // namespace fk
