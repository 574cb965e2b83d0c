// String utilities on NUL-terminated single-byte text.
//
// Every routine works in place on the caller's buffer. A null pointer is
// answered with 0 or null, or the routine does nothing.
#include "lstr.h"

#include <ctype.h>
#include <stddef.h>
#include <string.h>

#include "workbuf.h"

namespace {

// Characters compare as signed bytes: 0x80-0xFF order below ASCII.
inline int sbyte(char c) {
    return static_cast<signed char>(c);
}

// Upper case by the runtime's single-byte conversion, as a signed byte.
inline int fold(char c) {
    return static_cast<signed char>(toupper(static_cast<unsigned char>(c)));
}

// The common loop of lstrncmp, lstrnicmp and lstricmp; limit < 0 means none.
template <int (*Conv)(char)>
int32_t compare(const char* s1, const char* s2, int32_t limit) {
    if (s1 == nullptr || s2 == nullptr) {
        return 0;
    }
    for (int32_t i = 0; limit < 0 || i < limit; ++i) {
        const char a = s1[i];
        const char b = s2[i];
        if (a == 0 && b == 0) {
            return 0;
        }
        if (b == 0) {
            return 1;
        }
        if (a == 0) {
            return -1;
        }
        const int ca = Conv(a);
        const int cb = Conv(b);
        if (ca != cb) {
            return cb > ca ? -1 : 1;
        }
    }
    return 0;
}

// The work buffer holds 159 characters. The original callers never hand over
// more, but a longer text would overrun the buffer: it is cut to its first
// 159 characters before the work begins. Returns the (possibly cut) length.
size_t fitWork(char* text) {
    size_t len = strlen(text);
    if (len > static_cast<size_t>(fk::kNumWorkMax)) {
        len = fk::kNumWorkMax;
        text[len] = 0;
    }
    return len;
}

// Removes every ch and puts one blank in front for each (lstrnocomma and
// lstrnodecp): the text keeps its length and stays right-aligned.
char* dropKeepWidth(char* text, char ch) {
    if (text == nullptr) {
        return nullptr;
    }
    const size_t len = fitWork(text);
    size_t blanks = 0;
    for (size_t i = 0; i < len; ++i) {
        if (text[i] == ch) {
            ++blanks;
        }
    }
    if (blanks == 0) {
        return text;
    }
    char* work = fk::g_numWork;
    memset(work, ' ', blanks);
    size_t w = blanks;
    for (size_t i = 0; i < len; ++i) {
        if (text[i] != ch) {
            work[w++] = text[i];
        }
    }
    work[w] = 0;
    memcpy(text, work, w + 1);
    return text;
}

}  // namespace

extern "C" {

// Stops at src's terminator or after n characters; the terminator is written
// only in the first case. Callers that copy n or more characters zero their
// buffer first or give it room.
char* FK_API lstrncpy(char* dst, const char* src, int32_t n) {
    if (dst == nullptr || src == nullptr) {
        return dst;
    }
    int32_t i = 0;
    while (i < n && src[i] != 0) {
        dst[i] = src[i];
        ++i;
    }
    if (i < n) {
        dst[i] = 0;
    }
    return dst;
}

int32_t FK_API lstrncmp(const char* s1, const char* s2, int32_t n) {
    if (n <= 0) {
        return 0;
    }
    return compare<sbyte>(s1, s2, n);
}

int32_t FK_API lstrnicmp(const char* s1, const char* s2, int32_t n) {
    if (n <= 0) {
        return 0;
    }
    return compare<fold>(s1, s2, n);
}

int32_t FK_API lstricmp(const char* s1, const char* s2) {
    return compare<fold>(s1, s2, -1);
}

char* FK_API lstrchr(const char* text, char c) {
    if (text == nullptr || c == 0) {
        return nullptr;
    }
    for (const char* p = text; *p != 0; ++p) {
        if (*p == c) {
            return const_cast<char*>(p);
        }
    }
    return nullptr;
}

// An empty pattern is found at the start of a non-empty text; an empty text
// holds nothing, not even the empty pattern.
char* FK_API lstristr(const char* text, const char* pattern) {
    if (text == nullptr || pattern == nullptr || *text == 0) {
        return nullptr;
    }
    for (const char* p = text; *p != 0; ++p) {
        size_t i = 0;
        // p[i] == 0 folds to 0 and so never equals a pattern character.
        while (pattern[i] != 0 && fold(p[i]) == fold(pattern[i])) {
            ++i;
        }
        if (pattern[i] == 0) {
            return const_cast<char*>(p);
        }
    }
    return nullptr;
}

void FK_API lstrpad(char* text, int32_t width) {
    if (text == nullptr) {
        return;
    }
    int32_t len = static_cast<int32_t>(strlen(text));
    while (len < width) {
        text[len++] = ' ';
    }
    text[len] = 0;
}

char* FK_API lstrclip(char* text) {
    if (text == nullptr || *text == 0) {
        return text;
    }
    size_t len = strlen(text);
    while (len > 0 && text[len - 1] == ' ') {
        --len;
    }
    text[len] = 0;
    return text;
}

char* FK_API lstrpreclip(char* text) {
    if (text == nullptr || *text == 0) {
        return text;
    }
    size_t lead = 0;
    while (text[lead] == ' ') {
        ++lead;
    }
    if (lead > 0) {
        memmove(text, text + lead, strlen(text + lead) + 1);
    }
    return text;
}

// The width is held to the 159 characters of the work buffer.
char* FK_API lstrright(char* text, int32_t width) {
    if (text == nullptr) {
        return nullptr;
    }
    lstrclip(text);
    const int32_t len = static_cast<int32_t>(fitWork(text));
    if (width > fk::kNumWorkMax) {
        width = fk::kNumWorkMax;
    }
    if (width <= len) {
        return text;
    }
    char* work = fk::g_numWork;
    const int32_t blanks = width - len;
    memset(work, ' ', static_cast<size_t>(blanks));
    memcpy(work + blanks, text, static_cast<size_t>(len) + 1);
    memcpy(text, work, static_cast<size_t>(width) + 1);
    return text;
}

int32_t FK_API lstrcount(const char* text, char c) {
    if (text == nullptr) {
        return 0;
    }
    int32_t count = 0;
    for (const char* p = text; *p != 0; ++p) {
        if (*p == c) {
            ++count;
        }
    }
    return count;
}

int32_t FK_API lstrdigits(const char* text) {
    if (text == nullptr) {
        return 0;
    }
    int32_t count = 0;
    for (const char* p = text; *p != 0; ++p) {
        if (*p >= '0' && *p <= '9') {
            ++count;
        }
    }
    return count;
}

char* FK_API lstrremove(char* text, const char* set) {
    if (text == nullptr || set == nullptr || *set == 0) {
        return text;
    }
    char* out = text;
    for (const char* in = text; *in != 0; ++in) {
        if (strchr(set, *in) == nullptr) {
            *out++ = *in;
        }
    }
    *out = 0;
    return text;
}

char* FK_API lstrremovestr(char* text, const char* pattern) {
    char* at = lstristr(text, pattern);
    if (at == nullptr) {
        return nullptr;
    }
    const char* rest = at + strlen(pattern);
    memmove(at, rest, strlen(rest) + 1);
    return text;
}

char* FK_API lstrnocomma(char* text, char sep) {
    return dropKeepWidth(text, sep);
}

char* FK_API lstrnodecp(char* text, char dp) {
    return dropKeepWidth(text, dp);
}

// Three leading blanks make room for three new separators, so numbers of up to
// twelve integer digits come out whole. A thirteenth digit loses the leading
// digit to the fourth separator. Displays rely on the width staying as it is,
// so the limit stays.
char* FK_API lstrcomma(char* text, char sep, char dp) {
    if (text == nullptr) {
        return nullptr;
    }
    lstrright(text, static_cast<int32_t>(strlen(text)) + 3);
    lstrnocomma(text, sep);
    const int32_t len = static_cast<int32_t>(strlen(text));

    // Fraction digits count up from below zero and are never grouped.
    int32_t digits = 0;
    if (const char* point = lstrchr(text, dp)) {
        digits = -static_cast<int32_t>(strlen(point + 1));
    }

    char* work = fk::g_numWork;
    work[len] = 0;
    int32_t w = len - 1;    // next free place in the work buffer, from the back
    int32_t left = len;     // places still to fill
    for (int32_t i = len - 1; i >= 0 && left > 0; --i) {
        const char c = text[i];
        work[w--] = c;
        if (isdigit(static_cast<unsigned char>(c))) {
            ++digits;
            if (digits >= 1 && digits % 3 == 0 && i > 0 &&
                isdigit(static_cast<unsigned char>(text[i - 1])) && w >= 0) {
                work[w--] = sep;
                --left;
            }
        }
        --left;
    }
    memcpy(text, work, static_cast<size_t>(len) + 1);
    return lstrpreclip(text);
}

// Moves the decimal character so that places digits follow it; the digits
// themselves stay where they are. The text keeps its width and its leading
// blanks. A negative number gets its sign back from lstrminus, which
// overwrites the units zero of a number below one (-5 with one place gives
// -.5); displays rely on that form.
char* FK_API lstrdecp(char* text, int32_t places, char dp) {
    if (text == nullptr) {
        return nullptr;
    }
    if (lstrchr(text, dp) != nullptr) {
        lstrnodecp(text, dp);
    } else {
        lstrright(text, static_cast<int32_t>(strlen(text)) + 1);
    }
    const int32_t len = static_cast<int32_t>(strlen(text));

    // The decimal character goes to index at. It must stand behind the
    // leading slot and inside the text; a negative count of places would put
    // it beyond the end, and such a text is only aligned like one too short.
    // Counted in 64 bits: places may be anything a caller passes.
    const int64_t at64 = static_cast<int64_t>(len) - places - 1;
    if (at64 < 1 || at64 >= len) {
        return text;
    }
    const int32_t at = static_cast<int32_t>(at64);

    char* work = fk::g_numWork;
    const char* in = text + 1;  // the leading slot is given up to dp
    bool leading = true;
    bool negative = false;
    for (int32_t i = 0; i < len; ++i) {
        if (i == at) {
            work[i] = dp;
            continue;
        }
        const char c = *in++;
        if (i >= at - 1) {
            // Units digit and fraction: everything but 1-9 becomes a zero.
            if (c >= '1' && c <= '9') {
                work[i] = c;
            } else {
                work[i] = '0';
                if (c == '-') {
                    negative = true;
                }
            }
            leading = false;
        } else if (leading) {
            if (c == '0') {
                work[i] = ' ';
            } else if (c == '-') {
                work[i] = ' ';
                negative = true;
            } else {
                work[i] = c;
                if (c != ' ') {
                    leading = false;
                }
            }
        } else {
            work[i] = c;
        }
    }
    work[len] = 0;
    if (negative) {
        lstrminus(work);
    }
    memcpy(text, work, static_cast<size_t>(len) + 1);
    return text;
}

// Toggles the sign of a right-aligned number. A "-" up to the first digit is
// blanked out; otherwise the blank in front of the first non-blank character
// behind the first position takes the "-". A text that starts with a
// non-blank character loses it to the sign: callers align with at least one
// leading blank first.
void FK_API lstrminus(char* text) {
    if (text == nullptr || *text == 0) {
        return;
    }
    for (size_t i = 0;; ++i) {
        if (text[i] == '-') {
            text[i] = ' ';
            return;
        }
        // The terminator counts as non-blank, so the walk ends at the latest
        // there (i >= 1, the text is not empty).
        if (i >= 1 && text[i] != ' ') {
            text[i - 1] = '-';
            return;
        }
    }
}

}  // extern "C"

namespace fk {

char lstrputc(char* text, char c, int32_t index) {
    if (text == nullptr || index < 0) {
        return 0;
    }
    const int32_t len = static_cast<int32_t>(strlen(text));
    if (index > len) {
        return 0;
    }
    const char old = text[index];
    text[index] = c;
    if (index == len) {
        text[index + 1] = 0;
    }
    return old;
}

char lstrdelc(char* text, int32_t index) {
    if (text == nullptr || index < 0) {
        return 0;
    }
    const int32_t len = static_cast<int32_t>(strlen(text));
    if (index >= len) {
        return 0;
    }
    const char old = text[index];
    memmove(text + index, text + index + 1, static_cast<size_t>(len - index));
    return old;
}

// An index beyond the length inserts nothing. The result is held to the 159
// characters of the work buffer: when the text is already that long, its last
// character falls off (and c itself, when it was to go behind it).
char* lstrinsc(char* text, char c, int32_t index) {
    if (text == nullptr || index < 0) {
        return text;
    }
    const int32_t len = static_cast<int32_t>(fitWork(text));
    if (index > len || index >= kNumWorkMax) {
        return text;
    }
    int32_t tail = len - index;
    if (index + 1 + tail > kNumWorkMax) {
        tail = kNumWorkMax - index - 1;
    }
    char* work = g_numWork;
    memcpy(work, text, static_cast<size_t>(index));
    work[index] = c;
    memcpy(work + index + 1, text + index, static_cast<size_t>(tail));
    const int32_t total = index + 1 + tail;
    work[total] = 0;
    memcpy(text, work, static_cast<size_t>(total) + 1);
    return text;
}

}  // namespace fk
