// Lines of a lookup table: delimited text, one entry per line.
//
// Pure routines: no windows.h here, so they build and fuzz natively.
#pragma once

#include <stdint.h>

#include <string>
#include <vector>

namespace fk {

// Longest table line kept; longer lines are cut.
inline constexpr int32_t kTableLineMax = 255;

// Copies field number column (counted from 1; 0 counts as 1) of line, split
// at delimiter (',' when 0), into out (at most outSize - 1 characters).
// Returns false when the line has fewer fields (out is then empty).
bool LineField(const char* line, char delimiter, int32_t column, char* out, int32_t outSize);

// Splits the text of a table file or resource into its lines: CR LF, LF or
// CR end a line, a Ctrl-Z or NUL ends the text, blank lines are left out and
// lines are cut to kTableLineMax characters.
std::vector<std::string> SplitTableText(const char* text, size_t size);

// The text a popup list shows for a line: the columns whose bit is set in
// mask (bit n-1 for column n), joined by tabs; the whole line for mask 0.
std::string DisplayColumns(const char* line, char delimiter, uint32_t mask);

// Column numbers "1,3" of a display list as a mask (bit n-1 for column n;
// numbers outside 1-32 are left out).
uint32_t ColumnMask(const char* list);

// The most columns a table control shows.
inline constexpr int32_t kMaxColumns = 32;
// The widest column a width or tab-stop list can give, in dialog units.
inline constexpr int32_t kMaxColumnUnits = 1000;
// The narrowest column a control lays out, in dialog units.
inline constexpr int32_t kMinColumnUnits = 4;

// Column numbers "2,1,3" of a display list, in their order, into out (at
// most max of them). Items that are not numbers 1-32 are left out. Returns
// how many were written.
int32_t ColumnList(const char* list, int32_t* out, int32_t max);

// Numbers "40,,60" of a width or tab-stop list, one per item, into out (at
// most max items). An item that is not a number reads as 0, "not given";
// numbers above kMaxColumnUnits are cut to it. Returns how many items.
int32_t NumberList(const char* list, int32_t* out, int32_t max);

// Writes count numbers as "a,b,c" into out (at most outSize - 1
// characters; a number that does not fit is left out with all behind it).
// Returns the length written.
int32_t FormatNumberList(const int32_t* numbers, int32_t count, char* out, int32_t outSize);

// Fields of line split at delimiter (',' when 0): at least 1, at most
// kMaxColumns.
int32_t FieldCount(const char* line, char delimiter);

// Column widths and tab stops as a method string gives them, in dialog
// units (0: not given).
struct ColumnUnits {
    const int32_t* widths;
    int32_t widthCount;
    const int32_t* stops;
    int32_t stopCount;
};

// Pixels of a width in dialog units, for a font whose horizontal dialog base
// unit is baseX pixels (a quarter of it per unit), and back.
int32_t UnitsToPixels(int32_t units, int32_t baseX);
int32_t PixelsToUnits(int32_t pixels, int32_t baseX);

// Pixel widths of count shown columns, into px. A column takes its width
// when one is given; else its tab stops (column n ends at stop n and starts
// at stop n-1; a single stop spaces every column alike); else an equal share
// of what the others leave of clientWidth. No column is narrower than
// kMinColumnUnits.
void LayoutColumns(int32_t count, const ColumnUnits& units, int32_t baseX, int32_t clientWidth, int32_t* px);

}  // namespace fk
