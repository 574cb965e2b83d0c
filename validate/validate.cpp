// The validation engine: twValidate and its range and choice tests.
#include <windows.h>

#include <string.h>
#include <time.h>

#include "frame/method.h"
#include "include/fldkit.h"
#include "strings/lstr.h"
#include "tables/table_text.h"
#include "validate/buffers.h"
#include "validate/text/dates.h"
#include "validate/error_notice.h"
#include "validate/text/range_parse.h"

namespace {

// Shown for a year before 1000 on a four-digit-year date field, whatever the
// control's own message says.
char g_fourDigitYear[] = "@MSG(Year must be four digits and greater than 999)";

int32_t CompareExact(const char* a, const char* b) {
    return strcmp(a, b);
}
int32_t CompareLocale(const char* a, const char* b) {
    return lstrcmpA(a, b);
}
int32_t CompareLocaleNoCase(const char* a, const char* b) {
    return lstrcmpiA(a, b);
}
int32_t CompareNoCase(const char* a, const char* b) {
    return lstricmp(a, b);
}

char* Find(char* method, const char* keyword) {
    return lstristr(method, keyword);
}

// The empty numeric value: 0, or a double whose bits are zero apart from the
// sign (so -0.0 is empty too).
bool IsZero(int type, const void* value) {
    if (value == nullptr) {
        return true;
    }
    if (type == 1 || type == 2) {
        return *static_cast<const int32_t*>(value) == 0;
    }
    uint64_t bits;
    memcpy(&bits, value, sizeof bits);
    return (bits & 0x7FFFFFFFFFFFFFFFull) == 0;
}

// The control's text as the window manager keeps it (the control's own text
// handling is bypassed), trailing blanks clipped.
bool WindowTextBlank(HWND h) {
    char text[fk::kFieldText] = "";
    if (h != nullptr) {
        DefWindowProcA(h, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text));
    }
    text[sizeof text - 1] = 0;
    return *lstrclip(text) == 0;
}

// Returned by the steps below when the value passed them and validation goes
// on; anything else is the verdict.
constexpr int kPassed = -1;

// The range and choice tests of one value, reporting what fails.
int RangeAndChoice(HWND h, int type, void* value, char* rng, char* chc, int reportType) {
    if (rng != nullptr && !twValidateRange(type, value, rng)) {
        return twShowError(h, rng, reportType, GXE_RANGE);
    }
    if (chc != nullptr && !twValidateChoice(type, value, chc)) {
        return twShowError(h, chc, reportType, GXE_CHOICE);
    }
    return kPassed;
}

int ValidateNumber(HWND h, int type, void* value, char* method) {
    char* const mnd = Find(method, "@MND");
    char* const rng = Find(method, "@RNG");
    char* const chc = Find(method, "@CHC");
    const bool zero = IsZero(type, value);
    static const double kZero = 0.0;
    static const int32_t kZeroLong = 0;
    void* const v = value != nullptr ? value
                                     : const_cast<void*>(type == 1 || type == 2 ? static_cast<const void*>(&kZeroLong)
                                                                                : static_cast<const void*>(&kZero));

    auto mandatoryText = [&]() { return mnd != nullptr && WindowTextBlank(h); };
    auto zeroAccepted = [&]() { return mnd == nullptr && zero; };
    if (type == 2) {
        if (zeroAccepted()) return 1;
        if (mandatoryText()) return twShowError(h, mnd, type, GXE_NOTENTERED);
    } else {
        if (mandatoryText()) return twShowError(h, mnd, type, GXE_NOTENTERED);
        if (zeroAccepted()) return 1;
    }
    const int tested = RangeAndChoice(h, type, v, rng, chc, type);
    if (tested != kPassed) {
        return tested;
    }
    // A mandatory number that is 0 counts as not entered unless a range or
    // choice list has accepted it.
    if (mnd != nullptr && zero && rng == nullptr && chc == nullptr) {
        return twShowError(h, mnd, type, GXE_NOTENTERED);
    }
    return 1;
}

// The popup rectangle below the control, in dialog units of the parent's
// client area.
struct PopupRect {
    int x, y, cx, cy;
};

int ToDialogX(int v, int base) {
    return (v / base) * 4 + ((v % base) * 4) / base;
}
int ToDialogY(int v, int base) {
    return (v / base) * 8 + ((v % base) * 8) / base;
}

PopupRect PopupBelow(HWND h, HWND parent, char* method) {
    RECT r{};
    GetWindowRect(h, &r);
    POINT at{r.left, r.top};
    if (parent != nullptr) {
        ScreenToClient(parent, &at);
    }
    const LONG units = GetDialogBaseUnits();
    int bx = LOWORD(units);
    int by = HIWORD(units);
    if (bx <= 0) bx = 8;
    if (by <= 0) by = 16;
    const int height = r.bottom - r.top;
    const int x = at.x;
    const int y = at.y + height;
    const int cx = (r.right - r.left) + 2 * GetSystemMetrics(SM_CXDLGFRAME) + GetSystemMetrics(SM_CXVSCROLL);
    const int cy = 5 * by + 2 * GetSystemMetrics(SM_CYDLGFRAME);
    PopupRect p{ToDialogX(x, bx), ToDialogY(y, by), ToDialogX(cx, bx), ToDialogY(cy, by)};

    // "@POS(x,y,width,height)" in dialog units; a missing or zero item keeps
    // the computed value.
    if (twGetMethodParam(method, "@POS", fk::g_methodArg)) {
        int* const slot[4] = {&p.x, &p.y, &p.cx, &p.cy};
        const char* q = fk::g_methodArg;
        for (int i = 0; i < 4 && q != nullptr; ++i) {
            const int32_t n = fk::TextToLong(q);
            if (n != 0) *slot[i] = n;
            q = strchr(q, ',');
            if (q != nullptr) ++q;
        }
    }
    return p;
}

// The entry was not found in the table: offer the failure to the parent,
// else let the user pick from the table.
int TableMiss(HWND h, char* method, char* tbl, int keyColumn, char delimiter) {
    const HWND parent = h != nullptr ? GetParent(h) : nullptr;
    const int id = h != nullptr ? GetDlgCtrlID(h) : 0;
    {
        fk::NoticeBlock block(parent != nullptr);
        if (parent != nullptr) {
            if (!block) {
                return 0;
            }
            char caption[32];
            fk::CopyCut(caption, sizeof caption, lstristr(tbl, "@WARN") ? "Warning" : "Application Error");
            fk::CopyCut(fk::g_errorMessage, fk::kErrorMessage, "Table Entry not found.");
            const LRESULT reply = block.Send(parent, h, id, GXT_TEXT, GXE_NOTFOUND, method, fk::g_errorMessage, caption);
            if (reply & GXR_HANDLED) {
                return (reply & GXR_ACCEPT) ? 1 : 0;
            }
        }
        if (lstristr(tbl, "@BEEP")) {
            MessageBeep(0);
        }
    }
    DestroyCaret();

    uint32_t mask = 0;
    if (twGetMethodParam(tbl, "@DISPLAY", fk::g_methodArg)) {
        mask = fk::ColumnMask(fk::g_methodArg);
    }
    const PopupRect p = PopupBelow(h, parent, method);
    HGLOBAL line = twShowTable(parent, fk::g_tableName, mask, p.x, p.y, p.cx, p.cy, delimiter, 256, 0, 0, 0,
                               nullptr, 0);
    if (line != nullptr) {
        {
            fk::GlobalLocked<char> text(line);
            if (text) {
                char field[fk::kTableWork];
                fk::LineField(text.get(), delimiter, keyColumn, field, sizeof field);
                if (h != nullptr) {
                    SetWindowTextA(h, lstrpreclip(field));
                }
            }
        }
        GlobalFree(line);
    }
    if (parent != nullptr) {
        SendMessageA(parent, GXN_ERRORSHOWN, static_cast<WPARAM>(id),
                     static_cast<LPARAM>(LOWORD(reinterpret_cast<UINT_PTR>(h))));
    }
    if (h != nullptr) {
        SetFocus(h);
        SendMessageA(h, EM_SETSEL, 0, 500);
        InvalidateRect(h, nullptr, TRUE);
        UpdateWindow(h);
    }
    return 0;
}

// Looks the work text up in the "@TBL" table: kPassed when found, else what
// the table-miss path decides.
int TableLookup(HWND h, char* method, char* tbl) {
    char* const arg = fk::g_methodArg;
    const int keyColumn = twGetMethodParam(tbl, "@KEY", arg) ? fk::TextToLong(arg) : 1;
    char delimiter = ',';
    if (twGetMethodParam(tbl, "@DLM", arg)) {
        delimiter = arg[0];
    }
    fk::CopyCut(fk::g_tableKey, fk::kTableWork, fk::g_validateText);
    if (strlen(fk::g_tableKey) > 1) {
        lstrpreclip(lstrclip(fk::g_tableKey));
    }
    const HINSTANCE instance =
        h != nullptr ? reinterpret_cast<HINSTANCE>(GetWindowLongPtrA(h, GWLP_HINSTANCE)) : nullptr;
    HGLOBAL found = twSearchTable(fk::g_tableName, keyColumn, fk::g_tableKey, delimiter, instance, 0);
    if (found != nullptr) {
        if (found != reinterpret_cast<HGLOBAL>(-1)) {
            GlobalFree(found);
        }
        return kPassed;
    }
    return TableMiss(h, method, tbl, keyColumn, delimiter);
}

int ValidateText(HWND h, void* value, char* method) {
    char* const mnd = Find(method, "@MND");
    char* const tbl = Find(method, "@TBL");
    char* const rng = Find(method, "@RNG");
    char* const chc = Find(method, "@CHC");
    char* const work = fk::g_validateText;
    fk::CopyCut(work, fk::kFieldText, static_cast<const char*>(value));
    if (mnd != nullptr && *lstrclip(work) == 0) {
        if (tbl == nullptr) {
            return twShowError(h, mnd, GXT_TEXT, GXE_NOTENTERED);
        }
        // A blank mandatory entry with a table: the lookup below fails and
        // the user is offered the table.
        lstrcpyA(work, " ");
    }
    if (*work != 0 && tbl != nullptr && twGetMethodParam(tbl, "@TBL", fk::g_methodArg) && fk::g_methodArg[0] != 0) {
        fk::CopyCut(fk::g_tableName, fk::kTableWork, fk::g_methodArg);
        const int looked = TableLookup(h, method, tbl);
        if (looked != kPassed) {
            return looked;
        }
    }
    if (*work == 0) {
        return 1;
    }
    const int tested = RangeAndChoice(h, GXT_TEXT, work, rng, chc, GXT_TEXT);
    return tested == kPassed ? 1 : tested;
}

int ValidateDate(HWND h, int type, void* value, char* method) {
    char* const mnd = Find(method, "@MND");
    struct tm date;
    memset(&date, 0, sizeof date);
    date.tm_mon = -1;
    if (value != nullptr) {
        const struct tm* v = static_cast<const struct tm*>(value);
        date.tm_sec = v->tm_sec;
        date.tm_min = v->tm_min;
        date.tm_hour = v->tm_hour;
        date.tm_mday = v->tm_mday;
        date.tm_mon = v->tm_mon;
        date.tm_year = v->tm_year;
        date.tm_wday = v->tm_wday;
        date.tm_yday = v->tm_yday;
        date.tm_isdst = v->tm_isdst;
    }
    if (fk::IsEmptyDate(&date, false)) {
        return mnd == nullptr ? 1 : twShowError(h, mnd, GXT_DATE, GXE_NOTENTERED);
    }
    if (!twIsDateValid(&date)) {
        return twShowError(h, method, GXT_DATE, GXE_INVALID);
    }
    if ((type == 14 || type == 16 || type == 18) && date.tm_year < -900) {
        return twShowError(h, g_fourDigitYear, GXT_DATE, GXE_INVALID);
    }
    const int tested = RangeAndChoice(h, type, &date, Find(method, "@RNG"), Find(method, "@CHC"), GXT_DATE);
    return tested == kPassed ? 1 : tested;
}

}  // namespace

int WINAPI twValidate(HWND hWnd, int nType, void* lpValue, char* lpMethod, char* /*lpText*/) {
    fk::CopyMethod(fk::g_validateMethod, lpMethod);
    char* const method = fk::g_validateMethod;
    if (nType < 1 || nType > 18) {
        return 0;
    }
    if (*method == 0) {
        return 1;
    }
    switch (nType) {
        case 1:
        case 2:
        case 3:
        case 12: return ValidateNumber(hWnd, nType, lpValue, method);
        case 4: return ValidateText(hWnd, lpValue, method);
        case 5:
        case 13:
        case 14:
        case 15:
        case 16:
        case 17:
        case 18: return ValidateDate(hWnd, nType, lpValue, method);
        default: return 0;  // reserved codes
    }
}

int WINAPI twValidateRange(int nType, void* lpValue, char* lpRange) {
    if (lpRange == nullptr) {
        return 0;
    }
    // "@RNGI" anywhere from the range keyword on asks for a comparison that
    // ignores case.
    const bool noCase = strstr(lpRange, "@RNGI") != nullptr;
    return fk::RangeTest(nType, lpValue, lpRange, noCase ? CompareNoCase : CompareLocale);
}

int WINAPI twValidateChoice(int nType, void* lpValue, char* lpChoice) {
    if (lpChoice == nullptr) {
        return 0;
    }
    const bool noCase = strstr(lpChoice, "@CHCI") != nullptr;
    return fk::ChoiceTest(nType, lpValue, lpChoice, noCase ? CompareLocaleNoCase : CompareExact);
}
