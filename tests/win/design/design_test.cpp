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
#include "tests/support/pump.h"

namespace {

// ListClasses order; each class's Info and Win32 record as an editor reads them: "<title>|<types> types|<first
// type's style> <width>x<height> <description>|<style names> names|<the names line of its style dialog for style
// 0>|<the help its Help button opens>".
struct ClassRow { const char* name; const char* record; };
const ClassRow kClasses[] = {
    {"gxString32", "|1 types|10810000 60x12 String field|11 names||FLDKIT.HLP 1 232"},
    {"gxNumeric32", "Numeric Control|1 types|10810002 40x12 Numeric values|9 names||FLDKIT.HLP 1 236"},
    {"gxReal32", "0|1 types|10810004 30x12 Real numbers|10 names||FLDKIT.HLP 1 234"},
    {"gxBitmap32", "|1 types|10000000 40x40 Bitmap|8 names||FLDKIT.HLP 1 103"},
    {"gxIcon32", "|1 types|10000000 20x20 Icon|8 names||FLDKIT.HLP 1 225"},
    {"gxColor32", "|1 types|10010000 100x60 Colour picker|5 names||FLDKIT.HLP 1 219"},
    {"gxTable32", "|1 types|10a10001 80x60 Table list|7 names||FLDKIT.HLP 1 230"},
    {"gxCBTable32", "|3 types|10210001 80x60 Table combo|7 names||FLDKIT.HLP 1 217"},
    {"gxTicker32", "Ticker text|1 types|10000000 100x12 Ticker|5 names||FLDKIT.HLP 1 228"},
    {"gxDate32", "|1 types|10811001 48x12 Date field|18 names||FLDKIT.HLP 1 223"},
    {"gxFrame3D32", "Frame|2 types|100002a1 100x60 Inset frame|12 names|"
                    "TEXT3D_FLAT | FRAME3D_BLACK | FRAME3D_RAISED | FRAME3D_RIGHT|FLDKIT.HLP 1 194"},
    {"gxButton32", "Button|5 types|10010000 40x14 Push button|5 names|BTN_PUSH|FLDKIT.HLP 1 105"},
    {"gxCurrency32", "0|1 types|10810002 40x12 Currency values|11 names||FLDKIT.HLP 1 221"},
    {"gxText3D32", "Text|3 types|10000201 60x12 Flat text|13 names||FLDKIT.HLP 1 201"},
    {"gxLine32", "|2 types|10000010 4x40 Vertical line|2 names||FLDKIT.HLP 1 195"},
};
enum { kString, kNumeric, kDate = 9, kCurrency = 12 };

using InfoFn = HGLOBAL(WINAPI*)();
using StyleFn = BOOL(WINAPI*)(HWND, HGLOBAL, LPFNSTRTOID, LPFNIDTOSTR);
using FlagsFn = UINT(WINAPI*)(DWORD, LPSTR, UINT);

// An entry as an editor finds it: in the class list.
template <typename Fn>
Fn EntryOf(int i, FARPROC CTLCLASS::*entry) {
    HGLOBAL block = ListClasses(nullptr, 0, nullptr, nullptr);
    const FARPROC found = static_cast<CTLCLASSLIST*>(GlobalLock(block))->Classes[i].*entry;
    GlobalUnlock(block), GlobalFree(block);
    return reinterpret_cast<Fn>(found);
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
        CTLSTYLE r{10, 20, 40, 12, 100, style};
        std::strcpy(r.szClass, kClasses[cls].name);
        std::strcpy(r.szTitle, "Old");
        std::memset(&r.CtlDataSize, 0x5A, sizeof r - FK_CTLSTYLE_BASE);
        HGLOBAL h = GlobalAlloc(GHND, size);
        std::memcpy(GlobalLock(h), &r, size), GlobalUnlock(h);
        return h;
    }
    HHOOK hook_;
    fktest::MessageBoxWatcher boxes_;
};

void Check(HWND dlg, int entry) {
    CheckDlgButton(dlg, IDC_FK_STYLE + entry, BST_CHECKED);
    SendMessageA(dlg, WM_COMMAND, MAKEWPARAM(IDC_FK_STYLE + entry, BN_CLICKED), 0);
}
void Ok(HWND dlg) { PostMessageA(dlg, WM_COMMAND, IDOK, 0); }
std::string g_identShown;
void Ident(HWND dlg, const std::string& ident) {
    g_identShown = fktest::WindowText(GetDlgItem(dlg, IDC_FK_IDENT));
    SetDlgItemTextA(dlg, IDC_FK_IDENT, ident.c_str()), Ok(dlg);
}
void Border(HWND dlg, int item) {
    SendDlgItemMessageA(dlg, IDC_FK_BORDER, CB_SETCURSEL, item, 0);
    SendMessageA(dlg, WM_COMMAND, MAKEWPARAM(IDC_FK_BORDER, CBN_SELCHANGE), 0), Ok(dlg);
}
void Typed(HWND dlg, const char* names) {  // over the whole names line
    SendDlgItemMessageA(dlg, IDC_FK_FLAGS, EM_SETSEL, 0, -1);
    SendDlgItemMessageA(dlg, IDC_FK_FLAGS, EM_REPLACESEL, TRUE, LPARAM(names)), Ok(dlg);
}
void BoxAndText(HWND dlg) { Check(dlg, 3), SetDlgItemTextA(dlg, IDC_FK_TEXT, "New"); }

DWORD WINAPI AcceptName(LPSTR) { return MAKELONG(1, 777); }
DWORD WINAPI RefuseName(LPSTR) { return 0; }
UINT WINAPI NameOf(UINT id, LPSTR buffer, UINT size) { return std::snprintf(buffer, size, "IDC_%u", id); }

// Each row's outcome reads "<result> <style> <identifier> <title> [<identifier shown>] <message boxes> <dialogs>";
// the record's place and the editor's data stay. A block smaller than the common part is refused before any
// dialog opens; the common part alone is enough.
TEST_F(StyleDialogs, OkCancelAndTheIdentifierAsAnEditorSeesThem) {
    const DWORD field = 0x10810000, integer = field | NUM_INTEGER, full = sizeof(CTLSTYLE);
    const struct { const char* what; int cls; DWORD style; SIZE_T size; LPFNSTRTOID strToId; LPFNIDTOSTR idToStr;
                   void (*script)(HWND); const char* outcome; } cases[] = {
        {"box, name, text", kString, field, full, AcceptName, NameOf,
         [](HWND d) { BoxAndText(d), Ident(d, "IDC_NAME"); },
         "1 10810008 777 New [IDC_100] 0 1"},
        {"name refused", kString, field, full, RefuseName, NameOf, [](HWND d) { Ident(d, "IDC_NAME"); },
         "0 10810000 100 Old [IDC_100] 1 1"},
        {"number without callbacks", kString, field, full, nullptr, nullptr, [](HWND d) { Ident(d, "0x20"); },
         "1 10810000 32 Old [100] 0 1"},
        {"cancel", kString, field, full, nullptr, nullptr, [](HWND d) { Check(d, 0); }, "0 10810000 100 Old [] 0 1"},
        {"radio", kNumeric, integer, full, nullptr, nullptr, [](HWND d) { Check(d, 2), Ok(d); },
         "1 10810004 100 Old [] 0 1"},
        {"border list, last", kNumeric, integer | NUM_3D1, full, nullptr, nullptr, [](HWND d) { Border(d, 5); },
         "1 10814002 100 Old [] 0 1"},
        {"border list, none", kNumeric, integer | NUM_3D1, full, nullptr, nullptr, [](HWND d) { Border(d, 0); },
         "1 10810002 100 Old [] 0 1"},
        {"names typed", kDate, field | DATE_DEFAULT | DATE_CHAR, full, nullptr, nullptr,
         [](HWND d) { Typed(d, "DATE_MMDDYYYY | date_3d3"); }, "1 10810303 100 Old [] 0 1"},
        {"a name with another's as its start", kCurrency, field | CURR_DOUBLE, full, nullptr, nullptr,
         [](HWND d) { Typed(d, "CURR_LONGDOUBLE"); }, "1 10810008 100 Old [] 0 1"},
        {"the common part alone", kString, 0, FK_CTLSTYLE_BASE, nullptr, nullptr, [](HWND d) { BoxAndText(d), Ok(d); },
         "1 8 100 New [] 0 1"},
        {"one byte short", kString, 0, FK_CTLSTYLE_BASE - 1, nullptr, nullptr, Ok, "0 0 100 Old [] 0 0"},
    };
    for (const auto& c : cases) {
        boxes_.clear(), g_identShown.clear(), g_dialogs = 0;
        g_script = c.script;
        HGLOBAL block = Block(c.cls, c.style, c.size);
        const BOOL result = EntryOf<StyleFn>(c.cls, &CTLCLASS::lpfnStyle)(nullptr, block, c.strToId, c.idToStr);
        fktest::PumpIdle();  // the Cancel posted behind a dialog that ended otherwise goes to no later dialog
        CTLSTYLE r{};
        std::memcpy(&r, GlobalLock(block), GlobalSize(block));
        char outcome[400];
        std::snprintf(outcome, sizeof outcome, "%d %lx %u %s [%s] %u %d", result, static_cast<unsigned long>(r.dwStyle),
                      r.wId, r.szTitle, g_identShown.c_str(), static_cast<unsigned>(boxes_.boxes().size()), g_dialogs);
        EXPECT_EQ(std::string(outcome), c.outcome) << c.what;
        const bool dataKept = c.size < full || (r.CtlDataSize == 0x5A && r.CtlData[254] == 0x5A);
        EXPECT_TRUE(GlobalSize(block) == c.size && dataKept && (!g_dialogs || (r.wX == 10 && r.wCy == 12))) << c.what;
        GlobalUnlock(block), GlobalFree(block);
    }
    EXPECT_FALSE(EntryOf<StyleFn>(kString, &CTLCLASS::lpfnStyle)(nullptr, nullptr, nullptr, nullptr));
}

std::vector<std::string> g_help;
BOOL WINAPI FakeHelp(HWND, LPCSTR file, UINT command, ULONG_PTR data) {
    return g_help.push_back(std::string(file) + " " + std::to_string(command) + " " + std::to_string(data)), TRUE;
}

// Every class: its Info block and Win32 record compared whole, and the style dialog of its Win32 record (whose text
// it changes, with no identifier to edit) with a Help button. An editor tells the types apart by the low word of
// their style; unused types are empty.
TEST_F(StyleDialogs, EveryClassesInfoRecordAndHelp) {
    CCINFOA records[15];
    EXPECT_EQ(CustomControlInfoA(nullptr), 15u);
    ASSERT_EQ(CustomControlInfoA(records), 15u);
    const FkLinkHooks fakes{FakeHelp, nullptr, nullptr, nullptr, nullptr, nullptr};
    fkSetLinkHooks(&fakes);
    std::fclose(std::fopen("FLDKIT.HLP", "wb"));
    static std::string names;
    static bool identEnabled;
    g_script = [](HWND dlg) {
        names = fktest::WindowText(GetDlgItem(dlg, IDC_FK_FLAGS)), PostMessageA(dlg, WM_COMMAND, IDHELP, 0);
        identEnabled = IsWindowEnabled(GetDlgItem(dlg, IDC_FK_IDENT));
        SetDlgItemTextA(dlg, IDC_FK_TEXT, "New"), Ok(dlg);
    };
    for (int i = 0; i < 15; ++i) {
        HGLOBAL block = EntryOf<InfoFn>(i, &CTLCLASS::lpfnInfo)();
        ASSERT_EQ(GlobalSize(block), sizeof(CTLINFO));  // 708 bytes from FLDKIT32.dll, 808 from FLDKIT64.dll
        const CTLINFO info = *static_cast<CTLINFO*>(GlobalLock(block));
        GlobalUnlock(block), GlobalFree(block);
        BITMAP bm{};
        EXPECT_EQ(GetObjectA(info.Type[0].hToolBit, sizeof bm, &bm) ? bm.bmWidth * 100 + bm.bmHeight : 0, 2424);
        for (UINT t = 0; t < FK_CTLTYPES; DeleteObject(info.Type[t++].hToolBit))
            for (UINT u = 0; u < t; ++u)
                EXPECT_TRUE(t < info.wCtlTypes ? LOWORD(info.Type[t].dwStyle) != LOWORD(info.Type[u].dwStyle)
                                               : !info.Type[t].dwStyle && !info.Type[t].hToolBit) << t;
        const CCINFOA& r = records[i];
        EXPECT_TRUE(!std::strcmp(info.szClass, kClasses[i].name) && !std::strcmp(r.szClass, kClasses[i].name));
        EXPECT_TRUE(r.cxDefault > 0 && r.flStyleDefault & WS_VISIBLE && r.lpfnStyle != records[(i + 1) % 15].lpfnStyle);
        g_help.clear();
        CCSTYLEA style{WS_VISIBLE, 0, "text"};
        EXPECT_TRUE(r.lpfnStyle(nullptr, &style) && !identEnabled);
        fktest::PumpIdle();
        EXPECT_EQ(std::to_string(style.flStyle) + style.szText, std::to_string(WS_VISIBLE) + "New");
        EXPECT_FALSE(r.lpfnStyle(nullptr, nullptr));
        char record[300];
        std::snprintf(record, sizeof record, "%s|%u types|%lx %ux%u %s|%d names|", info.szTitle,
                      info.wVersion * 100 + info.wCtlTypes, static_cast<unsigned long>(info.Type[0].dwStyle),
                      info.Type[0].wWidth, info.Type[0].wHeight, info.Type[0].szDescr, r.cStyleFlags);
        for (const std::string& help : g_help) std::strcat(record, (names + "|" + help).c_str());
        char flags[400] = "";  // Flags names what the names line shows
        const UINT given = EntryOf<FlagsFn>(i, &CTLCLASS::lpfnFlags)(0, flags, sizeof flags);
        EXPECT_EQ(std::to_string(given) + flags, names.empty() ? "0" : "0 | " + names);
        EXPECT_EQ(std::string(record), kClasses[i].record);
    }
    DeleteFileA("FLDKIT.HLP");
    fkSetLinkHooks(nullptr);
    EXPECT_TRUE(boxes_.boxes().empty());
}

}  // namespace
