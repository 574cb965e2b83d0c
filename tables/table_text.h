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

}  // namespace fk
