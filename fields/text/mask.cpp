#include "fields/text/mask.h"

#include <string.h>

namespace fk {

bool IsMaskPlaceholder(char c) { return c == '#' || c == '@' || c == '?' || c == '*'; }

int32_t MaskCapacity(const char* mask) {
    int32_t n = 0;
    for (const char* m = mask; m != nullptr && *m != 0; ++m)
        if (IsMaskPlaceholder(*m)) ++n;
    return n;
}

int32_t ScrToAppMask(char* app, const char* screen, const char* mask, int32_t selStart, int32_t selEnd) {
    if (app == nullptr) return 0;
    *app = 0;
    if (screen == nullptr || mask == nullptr) return 0;
    int32_t out = 0;
    int32_t i = 0;
    // Up to the start of the deleted range every placeholder position counts.
    for (; i < selStart && screen[i] != 0 && mask[i] != 0; ++i)
        if (IsMaskPlaceholder(mask[i])) app[out++] = screen[i];
    const int32_t result = out;
    // The deleted range.
    for (; i < selEnd && screen[i] != 0; ++i) {
        if (mask[i] == 0) {
            app[out] = 0;
            return result;
        }
    }
    // Behind it, blank placeholders are empty positions.
    for (; screen[i] != 0 && mask[i] != 0; ++i)
        if (IsMaskPlaceholder(mask[i]) && screen[i] != ' ') app[out++] = screen[i];
    app[out] = 0;
    return result;
}

}  // namespace fk

extern "C" int32_t FK_API twAppToScrMask(char* screen, const char* app, const char* mask, int32_t appPos,
                                         int32_t noFill) {
    if (mask == nullptr) mask = "";
    if (screen != nullptr) {
        const char* a = app != nullptr ? app : "";
        const char* m = mask;
        char* s = screen;
        for (; *m != 0 && *a != 0; ++m) *s++ = fk::IsMaskPlaceholder(*m) ? *a++ : *m;
        // Text longer than the mask allows is shown behind it.
        while (*a != 0) *s++ = *a++;
        if (noFill == 0)
            for (; *m != 0; ++m) *s++ = fk::IsMaskPlaceholder(*m) ? ' ' : *m;
        *s = 0;
    }
    if (appPos < 0) return -1;
    int32_t passed = 0;
    int32_t count = 0;
    while (mask[passed] != 0 && count <= appPos) {
        if (fk::IsMaskPlaceholder(mask[passed])) ++count;
        ++passed;
    }
    return count == appPos ? passed : passed - 1;
}
