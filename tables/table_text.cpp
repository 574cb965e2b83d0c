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

uint32_t ColumnMask(const char* list) {
    uint32_t mask = 0;
    if (list == nullptr) {
        return mask;
    }
    const char* p = list;
    while (*p != 0) {
        int64_t n = 0;
        bool any = false;
        while (*p == ' ') {
            ++p;
        }
        while (*p >= '0' && *p <= '9') {
            if (n < 1000) {
                n = n * 10 + (*p - '0');
            }
            any = true;
            ++p;
        }
        if (any && n >= 1 && n <= 32) {
            mask |= 1u << (n - 1);
        }
        while (*p != 0 && *p != ',') {
            ++p;
        }
        if (*p == ',') {
            ++p;
        }
    }
    return mask;
}

}  // namespace fk
