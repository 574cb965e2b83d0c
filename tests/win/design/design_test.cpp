// The design-time entries as a dialog editor uses them: ListClasses, Info,
// Flags, the style dialogs (driven by a hook) and the Win32 records.
#include <gtest/gtest.h>

#include <windows.h>
#include <custcntl.h>

#include <cstdio>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "include/fldkit.h"
#include "links/hooks.h"
#include "resources/design_ids.h"
#include "tests/support/msgbox_watch.h"

namespace {

struct ClassRow {
    const char* name;
    const char* word;
    DWORD helpContext;
    UINT types;
};
// ListClasses order.
const ClassRow kClasses[] = {
    {"gxString32", "String", 232, 1},   {"gxNumeric32", "Numeric", 236, 1}, {"gxReal32", "Real", 234, 1},
    {"gxBitmap32", "Bitmap", 103, 1},   {"gxIcon32", "Icon", 225, 1},       {"gxColor32", "Color", 219, 1},
    {"gxTable32", "Table", 230, 1},     {"gxCBTable32", "CBTable", 217, 3}, {"gxTicker32", "Ticker", 228, 1},
    {"gxDate32", "Date", 223, 1},       {"gxFrame3D32", "Frame3D", 194, 2}, {"gxButton32", "Button", 105, 5},
    {"gxCurrency32", "Currency", 221, 1}, {"gxText3D32", "Text3D", 201, 3}, {"gxLine32", "Line", 195, 2},
};
enum { kString, kNumeric, kReal, kDate = 9, kFrame = 10, kCurrency = 12, kLine = 14 };

using InfoFn = HGLOBAL(WINAPI*)();
using StyleFn = BOOL(WINAPI*)(HWND, HGLOBAL, LPFNSTRTOID, LPFNIDTOSTR);
using FlagsFn = UINT(WINAPI*)(DWORD, LPSTR, UINT);
struct Entries {
    InfoFn info;
    StyleFn style;
    FlagsFn flags;
};

// The entries as an editor finds them: in the class list.
Entries EntriesOf(int i) {
    HGLOBAL block = ListClasses(nullptr, 0, nullptr, nullptr);
    const CTLCLASS& c = static_cast<CTLCLASSLIST*>(GlobalLock(block))->Classes[i];
    Entries e{reinterpret_cast<InfoFn>(c.lpfnInfo), reinterpret_cast<StyleFn>(c.lpfnStyle),
              reinterpret_cast<FlagsFn>(c.lpfnFlags)};
    GlobalUnlock(block);
    GlobalFree(block);
    return e;
}

std::string Flags(int cls, DWORD style, UINT size = 400) {
    char out[512];
    std::memset(out, '#', sizeof out);
    EXPECT_EQ(EntriesOf(cls).flags(style, out, size), 0u);
    return std::string(out, strnlen(out, sizeof out));
}

bool NamesToken(const std::string& text, const std::string& name) {
    const size_t at = (text + " ").find(" | " + name + " ");
    return at != std::string::npos;
}

TEST(Design, ClassListHoldsEveryClassesEntries) {
    HMODULE dll = GetModuleHandleA(FK_DLL_NAME);
    for (int i = 0; i < 15; ++i) {
        const Entries e = EntriesOf(i);
        ASSERT_TRUE(e.info && e.style && e.flags) << kClasses[i].name;
        const std::string gx = std::string("gx") + kClasses[i].word;
        const bool exported = i != kLine;  // gxLine32's entries are internal
        EXPECT_EQ(reinterpret_cast<FARPROC>(e.info) == GetProcAddress(dll, (gx + "Info").c_str()), exported) << gx;
        EXPECT_EQ(reinterpret_cast<FARPROC>(e.style) == GetProcAddress(dll, (gx + "Style").c_str()), exported);
        EXPECT_EQ(reinterpret_cast<FARPROC>(e.flags) == GetProcAddress(dll, (gx + "Flags").c_str()), exported);
        EXPECT_EQ(GetProcAddress(dll, (gx + "DlgFn").c_str()) != nullptr, exported);
    }
}

TEST(Design, InfoBlocksOfEveryClass) {
    for (int i = 0; i < 15; ++i) {
        const ClassRow& row = kClasses[i];
        HGLOBAL block = EntriesOf(i).info();
        ASSERT_NE(block, nullptr) << row.name;
        EXPECT_EQ(GlobalSize(block), sizeof(CTLINFO));  // 708 bytes from FLDKIT32.dll, 808 from FLDKIT64.dll
        const CTLINFO info = *static_cast<CTLINFO*>(GlobalLock(block));
        GlobalUnlock(block);
        EXPECT_EQ(GlobalFree(block), nullptr);
        EXPECT_EQ(info.wVersion, 0u);
        EXPECT_EQ(info.wCtlTypes, row.types) << row.name;
        EXPECT_STREQ(info.szClass, row.name);
        for (UINT t = 0; t < FK_CTLTYPES; ++t) {
            const CTLTYPE& type = info.Type[t];
            if (t >= info.wCtlTypes) {
                EXPECT_EQ(type.dwStyle | type.wWidth | reinterpret_cast<UINT_PTR>(type.hToolBit), 0u);
                continue;
            }
            BITMAP bm{};
            EXPECT_EQ(GetObjectA(type.hToolBit, sizeof bm, &bm), static_cast<int>(sizeof bm)) << row.name;
            EXPECT_EQ(bm.bmWidth * 100 + bm.bmHeight, 2424) << row.name;
            DeleteObject(type.hToolBit);
            EXPECT_EQ(type.hDropCurs, nullptr);
            EXPECT_TRUE(type.wWidth > 0 && type.wHeight > 0 && type.szDescr[0]) << row.name;
            EXPECT_TRUE(type.dwStyle & WS_VISIBLE);
            for (UINT u = 0; u < t; ++u)  // an editor tells the types apart by the low word
                EXPECT_NE(LOWORD(type.dwStyle), LOWORD(info.Type[u].dwStyle)) << row.name << " type " << t;
        }
    }
}

// The defaults the entry fields are known by.
TEST(Design, EntryFieldDefaults) {
    const struct {
        int cls;
        DWORD style;
        UINT width;
        const char* title;
        const char* descr;
    } cases[] = {{kNumeric, 0x10810002, 40, "Numeric Control", "Numeric values"},
                 {kReal, 0x10810004, 30, "0", "Real numbers"},
                 {kCurrency, 0x10810002, 40, "0", "Currency values"}};
    for (const auto& c : cases) {
        HGLOBAL block = EntriesOf(c.cls).info();
        const CTLINFO info = *static_cast<CTLINFO*>(GlobalLock(block));
        GlobalUnlock(block), GlobalFree(block), DeleteObject(info.Type[0].hToolBit);
        EXPECT_EQ(info.Type[0].dwStyle, c.style);
        EXPECT_EQ(info.Type[0].wWidth * 100 + info.Type[0].wHeight, c.width * 100 + 12);
        EXPECT_STREQ(info.szTitle, c.title);
        EXPECT_STREQ(info.Type[0].szDescr, c.descr);
    }
}

// Every style constant of every class is named by its class's Flags.
#define C(cls, name) {cls, #name, name}
TEST(Design, FlagsNameEveryConstant) {
    const struct {
        int cls;
        const char* name;
        DWORD value;
    } constants[] = {
        C(0, STR_NUMERIC), C(0, STR_ALPHA), C(0, STR_ALPHANUM), C(0, STR_UPPER), C(0, STR_LOWER),
        C(0, STR_FIRSTCHARUPPER), C(0, STR_3D1), C(0, STR_3D2), C(0, STR_3D3), C(0, STR_3D4), C(0, STR_3D5),
        C(1, NUM_CHAR), C(1, NUM_INTEGER), C(1, NUM_LONG), C(1, NUM_RIGHTJUST), C(1, NUM_3D1), C(1, NUM_3D2),
        C(1, NUM_3D3), C(1, NUM_3D4), C(1, NUM_3D5), C(2, REAL_CHAR), C(2, REAL_FLOAT), C(2, REAL_DOUBLE),
        C(2, REAL_LONGDOUBLE), C(2, REAL_RIGHTJUST), C(2, REAL_3D1), C(2, REAL_3D2), C(2, REAL_3D3), C(2, REAL_3D4),
        C(2, REAL_3D5), C(3, BMP_STRETCH), C(3, BMP_CENTER), C(3, BMP_SIZETOFIT), C(3, BMP_3D1), C(3, BMP_3D2), C(3, BMP_3D3), C(3, BMP_3D4), C(3, BMP_3D5), C(4, ICON_STRETCH), C(4, ICON_CENTER), C(4, ICON_SIZETOFIT), C(4, ICON_3D1),
        C(4, ICON_3D2), C(4, ICON_3D3), C(4, ICON_3D4), C(4, ICON_3D5), C(5, COLOR_3D1), C(5, COLOR_3D2),
        C(5, COLOR_3D3), C(5, COLOR_3D4), C(5, COLOR_3D5), C(6, LBS_NOTIFY), C(6, LBS_SORT), C(6, LBS_MULTIPLESEL),
        C(6, LBS_EXTENDEDSEL), C(6, LBS_USETABSTOPS), C(6, LBS_NOINTEGRALHEIGHT), C(6, LBS_DISABLENOSCROLL),
        C(7, CBS_SIMPLE), C(7, CBS_DROPDOWN), C(7, CBS_DROPDOWNLIST), C(7, CBS_AUTOHSCROLL), C(7, CBS_SORT),
        C(7, CBS_NOINTEGRALHEIGHT), C(7, CBS_DISABLENOSCROLL), C(8, TICK_3D1), C(8, TICK_3D2), C(8, TICK_3D3),
        C(8, TICK_3D4), C(8, TICK_3D5), C(9, DATE_DEFAULT), C(9, DATE_MMDDYY), C(9, DATE_MMDDYYYY),
        C(9, DATE_DDMMYY), C(9, DATE_DDMMYYYY), C(9, DATE_YYMMDD), C(9, DATE_YYYYMMDD), C(9, DATE_DOT),
        C(9, DATE_DASH), C(9, DATE_SLASH), C(9, DATE_3D1), C(9, DATE_3D2), C(9, DATE_3D3), C(9, DATE_3D4),
        C(9, DATE_3D5), C(9, DATE_CHAR), C(9, DATE_TMSTRUCT), C(9, DATE_LONG), C(10, TEXT3D_FLAT),
        C(10, TEXT3D_LIGHTRAISED), C(10, TEXT3D_HEAVYRAISED), C(10, TEXT3D_LIGHTINSET), C(10, TEXT3D_HEAVYINSET),
        C(10, FRAME3D_DARKGREY), C(10, FRAME3D_BLACK), C(10, FRAME3D_INSET), C(10, FRAME3D_RAISED),
        C(10, FRAME3D_LEFT), C(10, FRAME3D_CENTER), C(10, FRAME3D_RIGHT), C(11, BTN_PUSH), C(11, BTN_DEFPUSH),
        C(11, BTN_TOGGLE), C(11, BTN_TOOLBAR), C(11, BTN_TEXT), C(12, CURR_CHAR), C(12, CURR_DOUBLE),
        C(12, CURR_LONG), C(12, CURR_LONGDOUBLE), C(12, CURR_RIGHTJUST), C(12, CURR_SUPPRESS), C(12, CURR_3D1),
        C(12, CURR_3D2), C(12, CURR_3D3), C(12, CURR_3D4), C(12, CURR_3D5), C(13, TEXT3D_FLAT),
        C(13, TEXT3D_LIGHTRAISED), C(13, TEXT3D_HEAVYRAISED), C(13, TEXT3D_LIGHTINSET), C(13, TEXT3D_HEAVYINSET),
        C(13, TEXT3D_3D1), C(13, TEXT3D_3D2), C(13, TEXT3D_3D3), C(13, TEXT3D_3D4), C(13, TEXT3D_3D5),
        C(13, TEXT3D_LEFT), C(13, TEXT3D_CENTER), C(13, TEXT3D_RIGHT), C(14, GXLINE_VERTICAL),
        C(14, GXLINE_HORIZONTAL),
    };
    for (const auto& c : constants)
        EXPECT_TRUE(NamesToken(Flags(c.cls, c.value), c.name)) << kClasses[c.cls].name << ": " << Flags(c.cls, c.value);
}
#undef C

TEST(Design, FlagsOfCombinationsAndShortBuffers) {
    const struct {
        int cls;
        DWORD style;
        const char* text;
    } cases[] = {
        {kString, 0x10810000 | STR_UPPER | STR_NUMERIC, " | STR_NUMERIC | STR_UPPER"},
        {kString, 0, ""},
        {kFrame, 0, " | TEXT3D_FLAT | FRAME3D_BLACK | FRAME3D_RAISED | FRAME3D_RIGHT"},
        {kFrame, 0x0002 | 0x0010 | 0x0020 | 0x0080 | 0x0200,
         " | TEXT3D_LIGHTRAISED | FRAME3D_DARKGREY | FRAME3D_INSET | FRAME3D_LEFT"},
        {kLine, GXLINE_VERTICAL | GXLINE_HORIZONTAL, " | GXLINE_VERTICAL"},
        {kLine, 0x0001, ""},
        {kDate, DATE_MMDDYYYY | DATE_DOT | DATE_3D3, " | DATE_MMDDYYYY | DATE_DOT | DATE_3D3"},
        {kCurrency, CURR_LONGDOUBLE | CURR_SUPPRESS | CURR_3D5, " | CURR_LONGDOUBLE | CURR_SUPPRESS | CURR_3D5"},
        {7, CBS_DROPDOWNLIST | CBS_SORT, " | CBS_DROPDOWNLIST | CBS_SORT"},
    };
    for (const auto& c : cases) EXPECT_EQ(Flags(c.cls, c.style), c.text) << kClasses[c.cls].name;
    // One byte too short, 1 and 0: nothing of the text, nothing past the size.
    const std::string whole = " | STR_NUMERIC | STR_UPPER";
    const UINT n = static_cast<UINT>(whole.size());
    EXPECT_EQ(Flags(kString, STR_UPPER | STR_NUMERIC, n + 1), whole);
    for (UINT size : {n, 1u}) {
        char out[64];
        std::memset(out, '#', sizeof out);
        EXPECT_EQ(EntriesOf(kString).flags(STR_UPPER | STR_NUMERIC, out, size), 0u);
        EXPECT_EQ(out[0], '\0');
        EXPECT_EQ(out[size], '#');
    }
    char untouched = '#';
    EXPECT_EQ(EntriesOf(kString).flags(STR_UPPER, &untouched, 0), 0u);
    EXPECT_EQ(untouched, '#');
    EXPECT_EQ(EntriesOf(kString).flags(STR_UPPER, nullptr, 100), 0u);
}

// ---- Style dialogs -------------------------------------------------------

// Runs the script on each style dialog as it opens, then posts Cancel, so
// that no dialog outlives its test whatever the script did.
std::function<void(HWND)> g_script;
int g_dialogs;
LRESULT CALLBACK DialogHook(int code, WPARAM wp, LPARAM lp) {
    const auto* m = reinterpret_cast<const CWPRETSTRUCT*>(lp);
    if (code == HC_ACTION && m->message == WM_INITDIALOG && GetDlgItem(m->hwnd, IDC_FK_FLAGS)) {
        ++g_dialogs;
        if (g_script) g_script(m->hwnd);
        PostMessageA(m->hwnd, WM_COMMAND, IDCANCEL, 0);
    }
    return CallNextHookEx(nullptr, code, wp, lp);
}

class StyleDialogs : public ::testing::Test {
protected:
    StyleDialogs() : hook_(SetWindowsHookExA(WH_CALLWNDPROCRET, DialogHook, nullptr, GetCurrentThreadId())) {
        g_dialogs = 0;
    }
    ~StyleDialogs() override { UnhookWindowsHookEx(hook_), g_script = nullptr; }
    // An editor's style record: a field at (10,20) with identifier 100 and
    // text "Old"; CtlData bytes that nothing may touch.
    static HGLOBAL Block(int cls, DWORD style, SIZE_T size = sizeof(CTLSTYLE)) {
        HGLOBAL h = GlobalAlloc(GHND, size);
        auto* r = static_cast<CTLSTYLE*>(GlobalLock(h));
        std::memset(r, 0x5A, size);
        std::memset(r, 0, FK_CTLSTYLE_BASE);
        r->wX = 10, r->wY = 20, r->wCx = 40, r->wCy = 12, r->wId = 100, r->dwStyle = style;
        std::strcpy(r->szClass, kClasses[cls].name);
        std::strcpy(r->szTitle, "Old");
        GlobalUnlock(h);
        return h;
    }
    // The class's Style entry; the Cancel posted behind a dialog that ended
    // otherwise is dropped, so that it cannot reach a later dialog that
    // gets the same handle.
    static BOOL Style(int cls, HGLOBAL block, LPFNSTRTOID strToId = nullptr, LPFNIDTOSTR idToStr = nullptr) {
        const BOOL result = EntriesOf(cls).style(nullptr, block, strToId, idToStr);
        for (MSG m; PeekMessageA(&m, nullptr, 0, 0, PM_REMOVE);) {
        }
        return result;
    }
    HHOOK hook_;
    fktest::MessageBoxWatcher boxes_;
};

void Check(HWND dlg, int entry) {
    CheckDlgButton(dlg, IDC_FK_STYLE + entry, BST_CHECKED);
    SendMessageA(dlg, WM_COMMAND, MAKEWPARAM(IDC_FK_STYLE + entry, BN_CLICKED), 0);
}
void Ok(HWND dlg) { PostMessageA(dlg, WM_COMMAND, IDOK, 0); }

std::string g_identShown, g_textSeen;
DWORD WINAPI AcceptName(LPSTR text) { return g_textSeen = text, MAKELONG(1, 777); }
DWORD WINAPI RefuseName(LPSTR text) { return g_textSeen = text, 0; }
DWORD WINAPI GarbageId(LPSTR text) { return g_textSeen = text, 0xFFFFFFFF; }
UINT WINAPI NameOf(UINT id, LPSTR buffer, UINT size) { return std::snprintf(buffer, size, "IDC_%u", id); }
UINT WINAPI GarbageName(UINT, LPSTR buffer, UINT size) { return std::memset(buffer, 'G', size), 0xFFFF; }

TEST_F(StyleDialogs, OkCancelAndTheIdentifierAsAnEditorSeesThem) {
    const std::string longName(1000, 'N');
    const auto identAndOk = [](std::string ident) {
        return [ident](HWND dlg) {
            char shown[300] = {};
            GetDlgItemTextA(dlg, IDC_FK_IDENT, shown, sizeof shown);
            g_identShown = shown;
            SetDlgItemTextA(dlg, IDC_FK_IDENT, ident.c_str());
            Ok(dlg);
        };
    };
    const DWORD field = 0x10810000;
    const auto border = [](int item) {
        return [item](HWND dlg) {
            SendDlgItemMessageA(dlg, IDC_FK_BORDER, CB_SETCURSEL, item, 0);
            SendMessageA(dlg, WM_COMMAND, MAKEWPARAM(IDC_FK_BORDER, CBN_SELCHANGE), 0);
            Ok(dlg);
        };
    };
    const struct {
        const char* what;
        int cls;
        DWORD style;
        LPFNSTRTOID strToId;
        LPFNIDTOSTR idToStr;
        std::function<void(HWND)> script;
        BOOL result;
        DWORD wantStyle;
        UINT wantId;
        const char* wantTitle;
        const char* identShown;
        size_t boxes;
    } cases[] = {
        {"box, name, text", kString, field, AcceptName, NameOf,
         [&](HWND dlg) { Check(dlg, 3), SetDlgItemTextA(dlg, IDC_FK_TEXT, "New"), identAndOk("IDC_NAME")(dlg); },
         TRUE, field | STR_UPPER, 777, "New", "IDC_100", 0},
        {"name refused", kString, field, RefuseName, NameOf, identAndOk("IDC_NAME"), FALSE, field, 100, "Old",
         "IDC_100", 1},
        {"number without callbacks", kString, field, nullptr, nullptr, identAndOk("0x20"), TRUE, field, 32, "Old",
         "100", 0},
        {"refused name, but a number", kString, field, RefuseName, nullptr, identAndOk("7"), TRUE, field, 7, "Old",
         "100", 0},
        {"cancel", kString, field, nullptr, nullptr, [](HWND dlg) { Check(dlg, 0); }, FALSE, field, 100, "Old", nullptr,
         0},
        {"ok, nothing changed", kString, field, nullptr, nullptr, Ok, FALSE, field, 100, "Old", nullptr, 0},
        {"radio", kNumeric, field | NUM_INTEGER, nullptr, nullptr, [](HWND dlg) { Check(dlg, 2), Ok(dlg); }, TRUE,
         field | NUM_LONG, 100, "Old", nullptr, 0},
        {"border list", kNumeric, field | NUM_INTEGER | NUM_3D1, nullptr, nullptr, border(4),  // "Shadow"
         TRUE, field | NUM_INTEGER | NUM_3D2, 100, "Old", nullptr, 0},
        {"border list, last", kNumeric, field | NUM_INTEGER | NUM_3D1, nullptr, nullptr, border(5), TRUE,
         field | NUM_INTEGER | NUM_3D5, 100, "Old", nullptr, 0},
        {"border list, none", kNumeric, field | NUM_INTEGER | NUM_3D1, nullptr, nullptr, border(0), TRUE,
         field | NUM_INTEGER, 100, "Old", nullptr, 0},
        {"names typed", kDate, field | DATE_DEFAULT | DATE_CHAR, nullptr, nullptr,
         [](HWND dlg) {  // typed over the whole line
             SendDlgItemMessageA(dlg, IDC_FK_FLAGS, EM_SETSEL, 0, -1);
             SendDlgItemMessageA(dlg, IDC_FK_FLAGS, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>("DATE_MMDDYYYY | date_3d3"));
             Ok(dlg);
         },
         TRUE, field | DATE_MMDDYYYY | DATE_3D3, 100, "Old", nullptr, 0},
        {"garbage callbacks, 1000 characters", kString, field, GarbageId, GarbageName, identAndOk(longName), TRUE,
         field, 0xFFFF, "Old", nullptr, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        boxes_.clear(), g_textSeen.clear(), g_identShown.clear();
        g_script = c.script;
        HGLOBAL block = Block(c.cls, c.style);
        EXPECT_EQ(Style(c.cls, block, c.strToId, c.idToStr), c.result);
        const auto* r = static_cast<const CTLSTYLE*>(GlobalLock(block));
        EXPECT_EQ(r->dwStyle, c.wantStyle);
        EXPECT_EQ(r->wId, c.wantId);
        EXPECT_STREQ(r->szTitle, c.wantTitle);
        EXPECT_EQ(r->wX * 1000 + r->wCy, 10012u);
        EXPECT_EQ(r->CtlDataSize, 0x5A) << "the editor's data stays";
        EXPECT_EQ(r->CtlData[254], 0x5A);
        GlobalUnlock(block), GlobalFree(block);
        if (c.identShown) EXPECT_EQ(g_identShown, c.identShown);
        EXPECT_LT(g_textSeen.size(), 256u);
        EXPECT_EQ(boxes_.boxes().size(), c.boxes);
    }
}

// A block too small, a null one: refused before any dialog opens. The
// common part alone is enough.
TEST_F(StyleDialogs, BlocksEditorsHandOver) {
    g_script = [](HWND dlg) { Check(dlg, 3), Ok(dlg); };
    EXPECT_FALSE(Style(kString, nullptr));
    HGLOBAL small = GlobalAlloc(GHND, FK_CTLSTYLE_BASE - 1);
    EXPECT_FALSE(Style(kString, small));
    GlobalFree(small);
    EXPECT_EQ(g_dialogs, 0);
    HGLOBAL common = Block(kString, 0, FK_CTLSTYLE_BASE);
    EXPECT_TRUE(Style(kString, common));
    EXPECT_EQ(GlobalSize(common), static_cast<SIZE_T>(FK_CTLSTYLE_BASE));
    EXPECT_EQ(static_cast<const CTLSTYLE*>(GlobalLock(common))->dwStyle, static_cast<DWORD>(STR_UPPER));
    GlobalUnlock(common), GlobalFree(common);
}

std::vector<std::string> g_help;
BOOL WINAPI FakeHelp(HWND, LPCSTR file, UINT command, ULONG_PTR data) {
    return g_help.push_back(std::string(file) + " " + std::to_string(command) + " " + std::to_string(data)), TRUE;
}

// Every class's dialog has a button for each of its style names (borders
// are in the list) and its Help button opens the help at the class's page.
TEST_F(StyleDialogs, EveryClassesDialogAndHelp) {
    CCINFOA records[15];
    ASSERT_EQ(CustomControlInfoA(records), 15u);
    const FkLinkHooks fakes{FakeHelp, nullptr, nullptr, nullptr, nullptr, nullptr};
    fkSetLinkHooks(&fakes);
    std::fclose(std::fopen("FLDKIT.HLP", "wb"));
    for (int i = 0; i < 15; ++i) {
        SCOPED_TRACE(kClasses[i].name);
        g_help.clear();
        int missing = 0, borders = 0;
        bool listEnabled = false;
        g_script = [&](HWND dlg) {
            for (int k = 0; k < records[i].cStyleFlags; ++k) {
                const bool border = std::strstr(records[i].aStyleFlags[k].pszStyle, "_3D") != nullptr;
                borders += border;
                missing += !border && GetDlgItem(dlg, IDC_FK_STYLE + k) == nullptr;
            }
            listEnabled = IsWindowEnabled(GetDlgItem(dlg, IDC_FK_BORDER));
            PostMessageA(dlg, WM_COMMAND, IDHELP, 0);
        };
        HGLOBAL block = Block(i, 0);
        EXPECT_FALSE(Style(i, block));
        GlobalFree(block);
        EXPECT_EQ(g_dialogs, i + 1);
        EXPECT_EQ(missing, 0);
        EXPECT_EQ(listEnabled, borders == 5);
        EXPECT_EQ(g_help, std::vector<std::string>{"FLDKIT.HLP 1 " + std::to_string(kClasses[i].helpContext)});
    }
    DeleteFileA("FLDKIT.HLP");
    fkSetLinkHooks(nullptr);
    EXPECT_TRUE(boxes_.boxes().empty());
}

// The Win32 interface: the count, the records, and a style dialog run
// through a record's own entry.
TEST_F(StyleDialogs, CustomControlInfo) {
    EXPECT_EQ(CustomControlInfoA(nullptr), 15u);
    CCINFOA records[16];
    std::memset(records, 0x5A, sizeof records);
    ASSERT_EQ(CustomControlInfoA(records), 15u);
    EXPECT_EQ(reinterpret_cast<const unsigned char*>(&records[15])[0], 0x5A);
    for (int i = 0; i < 15; ++i) {
        const CCINFOA& r = records[i];
        EXPECT_STREQ(r.szClass, kClasses[i].name);
        EXPECT_TRUE(r.cxDefault > 0 && r.flStyleDefault & WS_VISIBLE && r.lpfnStyle != nullptr);
        EXPECT_NE(r.lpfnStyle, records[(i + 1) % 15].lpfnStyle);
        ASSERT_GT(r.cStyleFlags, 0);
        for (int k = 0; k < r.cStyleFlags; ++k)
            EXPECT_TRUE(NamesToken(Flags(i, r.aStyleFlags[k].flStyle), r.aStyleFlags[k].pszStyle))
                << r.aStyleFlags[k].pszStyle;
    }
    bool identEnabled = true;
    g_script = [&](HWND dlg) { identEnabled = IsWindowEnabled(GetDlgItem(dlg, IDC_FK_IDENT)), Check(dlg, 3), Ok(dlg); };
    CCSTYLEA style{};
    style.flStyle = WS_VISIBLE;
    std::strcpy(style.szText, "text");
    EXPECT_TRUE(records[kString].lpfnStyle(nullptr, &style));
    for (MSG m; PeekMessageA(&m, nullptr, 0, 0, PM_REMOVE);) {
    }
    EXPECT_EQ(style.flStyle, static_cast<DWORD>(WS_VISIBLE | STR_UPPER));
    EXPECT_STREQ(style.szText, "text");
    EXPECT_FALSE(identEnabled);
    EXPECT_FALSE(records[kString].lpfnStyle(nullptr, nullptr));
}

}  // namespace
