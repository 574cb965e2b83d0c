// Method strings: reading and editing "@KEYWORD(argument)" items.
//
// The routines work in place on the caller's buffers and allocate nothing.
// They do not check buffer sizes: callers copy method strings into the fixed
// work buffers first.
#include "method.h"

#include <ctype.h>
#include <stddef.h>
#include <string.h>

#include "../strings/lstr.h"

namespace {

// Case-insensitive search for the first len characters of key, matched the way
// lstristr matches (an empty key is found at the start of a non-empty text,
// nothing is found in an empty text). Lets the editing routines look for the
// keyword part of an item without cutting the item at its "(": items are
// often string literals.
char* findKeyword(char* text, const char* key, size_t len) {
    if (*text == 0) {
        return nullptr;
    }
    for (char* p = text; *p != 0; ++p) {
        size_t i = 0;
        while (i < len && toupper(static_cast<unsigned char>(p[i])) ==
                              toupper(static_cast<unsigned char>(key[i]))) {
            ++i;
        }
        if (i == len) {
            return p;
        }
    }
    return nullptr;
}

}  // namespace

extern "C" {

int32_t FK_API twGetMethodParam(char* method, const char* keyword, char* argument) {
    if (argument != nullptr) {
        *argument = 0;
    }
    if (method == nullptr || keyword == nullptr) {
        return 0;
    }

    // Whatever stands behind the first ");" is not ours to read: hide it
    // until we return.
    char* semi = strstr(method, ");");
    if (semi != nullptr) {
        ++semi;
        *semi = 0;
    }

    int32_t found = 0;
    char* at = lstristr(method, keyword);
    if (at != nullptr) {
        found = 1;
        char* k = at + strlen(keyword);
        bool paren = false;
        if (k == semi) {
            // The keyword ends where we cut the text. Zeroing the two spare
            // bytes here would wipe out the characters behind the ";", so
            // the keyword is taken as a flag, which is what the zeros would
            // have said.
        } else {
            if (*k == 0) {
                // The keyword ends the text. Method string buffers keep two
                // spare bytes behind the terminator; zero them so the
                // look-ahead below reads nothing stale.
                k[1] = 0;
                k[2] = 0;
            }
            // Look at most two characters ahead for the "(", and never past
            // the end of the text.
            paren = k[0] == '(' ||
                    (k[0] != 0 && (k[1] == '(' || (k[1] != 0 && k[2] == '(')));
        }

        if (paren && argument != nullptr) {
            // The copy deliberately starts one character behind the keyword;
            // existing method strings rely on it. For @KEY(arg) that is the
            // first character of the argument; for @KEY (arg) it is the "("
            // itself, which then counts as one level of nesting.
            const char* src = k + 1;
            char* dst = argument;
            int32_t depth = 0;
            while (*src != 0) {
                const char c = *src++;
                *dst++ = c;
                if (c == '(') {
                    ++depth;
                } else if (c == ')') {
                    if (depth == 0) {
                        --dst;  // the closing ")" is not part of the argument
                        break;
                    }
                    --depth;
                }
            }
            *dst = 0;
        }
    }

    if (semi != nullptr) {
        *semi = ';';
    }
    return found;
}

int32_t FK_API twRemoveMethodParam(char* method, const char* item) {
    if (method == nullptr || item == nullptr || *item == 0) {
        return 0;
    }
    // Only the keyword of the item is looked for: its text up to any "(".
    const char* open = strchr(item, '(');
    const size_t keyLen = open != nullptr ? static_cast<size_t>(open - item) : strlen(item);
    char* start = findKeyword(method, item, keyLen);
    if (start == nullptr) {
        return 0;
    }

    // The item runs to the next "@", or through its argument when a "("
    // comes first. The scan starts one character in, so anything between
    // the keyword and the next "@" or "(" goes with it.
    char* end = start + 1;
    while (*end != 0 && *end != '(' && *end != '@') {
        ++end;
    }
    if (*end == '(') {
        int32_t depth = 1;
        ++end;
        while (*end != 0) {
            const char c = *end++;
            if (c == '(') {
                ++depth;
            } else if (c == ')' && --depth == 0) {
                break;
            }
        }
    }
    memmove(start, end, strlen(end) + 1);
    return 1;
}

int32_t FK_API twAddMethodParam(char* method, const char* item) {
    if (method == nullptr || item == nullptr || *item == 0) {
        return 0;
    }
    twRemoveMethodParam(method, item);
    // No length check: the caller's buffer holds the result.
    strcat(method, item);
    return 1;
}

}  // extern "C"
