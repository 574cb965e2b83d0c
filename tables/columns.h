// Table lines drawn in columns: the one piece of drawing that the table
// list, the combo table's drop-down and twShowTable's popup share.
#pragma once

#include <windows.h>

#include <string>

#include "tables/store.h"
#include "tables/table_text.h"

namespace fk {

// Which fields of a line stand in which column, and how wide the columns
// are. A list item's data is its line's number in lines plus one; an item
// with data 0 (one dropped in from elsewhere) is drawn from its own text.
struct ColumnView {
    SharedLines lines;
    char delimiter = ',';
    int32_t count = 1;                // columns shown
    int32_t field[kMaxColumns] = {};  // field number (from 1) of each column; 0: the whole line
    int32_t width[kMaxColumns] = {};  // pixels
};

// Space between a column's edge and its text, in pixels.
inline constexpr int kColumnPad = 2;

// The line an item stands for: lines[data - 1], or text.
const char* ItemLine(const ColumnView& view, ULONG_PTR data, const char* text);

// The text column `column` (from 0) shows for line: its field clipped of
// blanks at both ends.
std::string ColumnText(const ColumnView& view, const char* line, int32_t column);

// One item: the background (the highlight when selected, else back), each
// field clipped to its column, a thin rule at each column's right edge.
void DrawColumns(HDC dc, const RECT& item, const char* line, const ColumnView& view, bool selected, HBRUSH back);

// WM_PAINT of an owner-drawn list box of lines: every item in sight, the
// focus rectangle, the background below the last item (the parent's
// WM_CTLCOLORLISTBOX colours).
void PaintColumnList(HWND list, const ColumnView& view);

// The horizontal dialog base unit of font on h, as dialog boxes measure it,
// and the height of a list item in that font.
struct ListMetrics {
    int32_t baseX;
    int32_t itemHeight;
};
ListMetrics MeasureListFont(HWND h, HFONT font);

}  // namespace fk
