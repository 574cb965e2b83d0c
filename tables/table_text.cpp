// Lines of a lookup table: splitting text into lines and lines into fields.
#include "tables/table_text.h"

#include <string.h>

namespace fk {

bool LineField(const char* line, char delimiter, int32_t column, char* out, int32_t outSize) {
    if (out == nullptr || outSize <= 0) {
        return false;
    }
    out[0] = 0;
    if (line == nullptr) {
        return false;
    }
    if (delimiter == 0) {
        delimiter = ',';
    }
    if (column < 1) {
        column = 1;
    }
    const char* p = line;
    for (int32_t i = 1; i < column; ++i) {
        p = strchr(p, delimiter);
        if (p == nullptr) {
            return false;
        }
        ++p;
    }
    int32_t n = 0;
    while (*p != 0 && *p != delimiter && n < outSize - 1) {
        out[n++] = *p++;
    }
    out[n] = 0;
    return true;
}

std::vector<std::string> SplitTableText(const char* text, size_t size) {
    std::vector<std::string> lines;
    if (text == nullptr) {
        return lines;
    }
    std::string line;
    // Whether the line as the text has it is blank: a line whose first
    // non-blank character lies past the cut is still an entry.
    bool blank = true;
    auto finish = [&] {
        if (!blank) {
            lines.push_back(line);
        }
        line.clear();
        blank = true;
    };
    for (size_t i = 0; i < size; ++i) {
        const char c = text[i];
        if (c == 0 || c == 0x1A) {
            break;
        }
        if (c == '\r' || c == '\n') {
            finish();
            continue;
        }
        if (c != ' ' && c != '\t') {
            blank = false;
        }
        if (static_cast<int32_t>(line.size()) < kTableLineMax) {
            line.push_back(c);
        }
    }
    finish();
    return lines;
}

std::string DisplayColumns(const char* line, char delimiter, uint32_t mask) {
    if (line == nullptr) {
        return std::string();
    }
    if (mask == 0) {
        return std::string(line);
    }
    std::string shown;
    char field[kTableLineMax + 1];
    bool first = true;
    for (int32_t column = 1; column <= 32; ++column) {
        if ((mask & (1u << (column - 1))) == 0) {
            continue;
        }
        if (!LineField(line, delimiter, column, field, sizeof field)) {
            continue;
        }
        if (!first) {
            shown.push_back('\t');
        }
        shown += field;
        first = false;
    }
    return shown;
}

namespace {

// Reads the number that an item of a list starts with (blanks before it are
// skipped); *p ends behind the item and its ",". False for an item that is
// not a number. Numbers are held below 100,000.
bool ReadItem(const char*& p, int64_t& n) {
    n = 0;
    bool any = false;
    while (*p == ' ') {
        ++p;
    }
    while (*p >= '0' && *p <= '9') {
        if (n < 100000) {
            n = n * 10 + (*p - '0');
        }
        any = true;
        ++p;
    }
    while (*p != 0 && *p != ',') {
        ++p;
    }
    if (*p == ',') {
        ++p;
    }
    return any;
}

}  // namespace

int32_t ColumnList(const char* list, int32_t* out, int32_t max) {
    int32_t count = 0;
    if (list == nullptr || out == nullptr) {
        return 0;
    }
    for (const char* p = list; *p != 0 && count < max;) {
        int64_t n = 0;
        if (ReadItem(p, n) && n >= 1 && n <= kMaxColumns) {
            out[count++] = static_cast<int32_t>(n);
        }
    }
    return count;
}

int32_t NumberList(const char* list, int32_t* out, int32_t max) {
    int32_t count = 0;
    if (list == nullptr || out == nullptr) {
        return 0;
    }
    for (const char* p = list; *p != 0 && count < max;) {
        int64_t n = 0;
        const bool number = ReadItem(p, n);
        out[count++] = number ? static_cast<int32_t>(n < kMaxColumnUnits ? n : kMaxColumnUnits) : 0;
    }
    return count;
}

int32_t FormatNumberList(const int32_t* numbers, int32_t count, char* out, int32_t outSize) {
    if (out == nullptr || outSize <= 0) {
        return 0;
    }
    int32_t length = 0;
    out[0] = 0;
    for (int32_t i = 0; i < count && numbers != nullptr; ++i) {
        char item[16];
        int32_t n = 0;
        if (i > 0) {
            item[n++] = ',';
        }
        char digits[12];
        int32_t d = 0;
        uint32_t v = numbers[i] < 0 ? 0u : static_cast<uint32_t>(numbers[i]);
        do {
            digits[d++] = static_cast<char>('0' + v % 10);
            v /= 10;
        } while (v != 0);
        while (d > 0) {
            item[n++] = digits[--d];
        }
        if (length + n > outSize - 1) {
            break;
        }
        memcpy(out + length, item, static_cast<size_t>(n));
        length += n;
        out[length] = 0;
    }
    return length;
}

int32_t FieldCount(const char* line, char delimiter) {
    if (line == nullptr) {
        return 1;
    }
    if (delimiter == 0) {
        delimiter = ',';
    }
    int32_t count = 1;
    for (const char* p = line; *p != 0 && count < kMaxColumns; ++p) {
        if (*p == delimiter) {
            ++count;
        }
    }
    return count;
}

int32_t UnitsToPixels(int32_t units, int32_t baseX) {
    if (baseX < 1) {
        baseX = 1;
    }
    const int64_t px = (static_cast<int64_t>(units) * baseX + 2) / 4;
    return px > INT32_MAX ? INT32_MAX : (px < INT32_MIN ? INT32_MIN : static_cast<int32_t>(px));
}

int32_t PixelsToUnits(int32_t pixels, int32_t baseX) {
    if (baseX < 1) {
        baseX = 1;
    }
    return static_cast<int32_t>((static_cast<int64_t>(pixels) * 4 + baseX / 2) / baseX);
}

void LayoutColumns(int32_t count, const ColumnUnits& units, int32_t baseX, int32_t clientWidth, int32_t* px) {
    if (px == nullptr || count <= 0) {
        return;
    }
    if (count > kMaxColumns) {
        count = kMaxColumns;
    }
    auto stop = [&](int32_t i) { return i < units.stopCount && units.stops != nullptr ? units.stops[i] : 0; };
    int64_t given = 0;
    int32_t open = 0;
    for (int32_t i = 0; i < count; ++i) {
        int32_t du = i < units.widthCount && units.widths != nullptr ? units.widths[i] : 0;
        if (du <= 0 && units.stopCount == 1) {
            du = stop(0);
        } else if (du <= 0 && i < units.stopCount) {
            du = stop(i) - (i > 0 ? stop(i - 1) : 0);
        }
        if (du > 0) {
            if (du < kMinColumnUnits) {
                du = kMinColumnUnits;
            }
            px[i] = UnitsToPixels(du, baseX);
            given += px[i];
        } else {
            px[i] = -1;
            ++open;
        }
    }
    const int32_t least = UnitsToPixels(kMinColumnUnits, baseX);
    int64_t share = open > 0 ? (static_cast<int64_t>(clientWidth) - given) / open : 0;
    if (share < least) {
        share = least;
    }
    if (share > INT32_MAX) {
        share = INT32_MAX;
    }
    for (int32_t i = 0; i < count; ++i) {
        if (px[i] < 0) {
            px[i] = static_cast<int32_t>(share);
        }
    }
}

uint32_t ColumnMask(const char* list) {
    uint32_t mask = 0;
    for (const char* p = list; p != nullptr && *p != 0;) {
        int64_t n = 0;
        if (ReadItem(p, n) && n >= 1 && n <= kMaxColumns) {
            mask |= 1u << (n - 1);
        }
    }
    return mask;
}

}  // namespace fk
