// The table store and its popup; the table list (gxTable32) and the combo table (gxCBTable32) on one dialog:
// filling, hostile tables, columns, values, type-ahead and completion, the table messages, links.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "include/fldkit.h"
#include "tests/support/drag.h"
#include "tests/support/files.h"
#include "tests/support/msgbox_watch.h"
#include "tests/support/pump.h"
#include "tests/support/recorder.h"
#include "tests/support/window.h"
#include "tests/win/display/pixels.h"
#include "tests/win/tables/popup_driver.h"

using namespace fktest;
using Strings = std::vector<std::string>;

namespace {

const char kCities[] = "BER,Berlin,DE\r\nbrn,Bern,CH\r\nBRU,Brussels,BE\r\nLIS,Lisbon,PT\r\nROM,Rome,IT\r\n";

std::string Find(const std::string& name, int column, const char* key, char delimiter = ',') {
    return TakeLine(twSearchTable(name.c_str(), column, key, delimiter, nullptr, 0));
}

// Lines found by key column (clipped, in case); a table is read once and kept by name until freed or copied over; a
// file of 4 MiB is read, one byte more is not; the popup picks with keys, or cancels.
TEST(TableStore, SearchesKeepsTablesByNameAndPicksInThePopup) {
    const std::string odd = WriteTable("fk_odd.tbl", " PAR , Paris ,FR\r\nrom,lower,xx\r\nROM,Rome,IT\r\nBER|Berlin|DE\r\n");
    const struct { int column; const char* key; char delimiter; const char* line; } cases[] = {
        {1, "ROM", ',', "ROM,Rome,IT"}, {0, "rom", ',', "rom,lower,xx"},     {1, "Rom", ',', "<none>"},
        {2, "Paris", 0, " PAR , Paris ,FR"}, {2, "Berlin", '|', "BER|Berlin|DE"}, {4, "FR", ',', "<none>"},
    };
    for (const auto& c : cases) EXPECT_EQ(Find(odd, c.column, c.key, c.delimiter), c.line) << c.column << c.key;
    const std::string dest = WriteTable("fk_copy.tbl", "OLD,1\r\n");
    EXPECT_EQ(Find(odd.substr(0, odd.size() - 4), 1, "ROM") + "/" + Find(dest, 1, "OLD"), "ROM,Rome,IT/OLD,1");
    EXPECT_EQ(twCopyFile(odd.c_str(), dest.c_str()), 1);
    DeleteFileA(odd.c_str());  // the kept lines still answer; the copy's are read afresh
    EXPECT_EQ(Find(odd, 1, "ROM") + "/" + Find(dest, 1, "ROM"), "ROM,Rome,IT/ROM,Rome,IT");
    EXPECT_EQ((std::vector<int>{twFreeTable(odd.c_str()), twFreeTable(odd.c_str())}), (std::vector<int>{1, 0}));
    EXPECT_EQ(Find(odd, 1, "ROM"), "<none>");
    for (size_t extra : {0u, 1u}) {
        std::string text = "BIG,1\r\n";
        text.resize((4u << 20) + extra, ' ');
        EXPECT_EQ(Find(WriteTable("fk_big.tbl", text), 1, "BIG"), extra ? "<none>" : "BIG,1") << extra;
        twFreeTable(nullptr);
    }
    const struct { std::vector<int> script; int lineMax; const char* line; } picks[] = {
        {{VK_DOWN, VK_RETURN}, 256, "rom,lower,xx"}, {{VK_ESCAPE}, 256, "<none>"}, {{-3}, 4, "ROM"},
    };
    for (const auto& p : picks) {
        UniqueWindow owner = MakeParent();
        PopupDriver driver(dest, p.script);
        EXPECT_EQ(TakeLine(twShowTable(owner, dest.c_str(), 0, 10, 20, 80, 48, ',', p.lineMax, 0, 0, 0, nullptr, 0)),
                  p.line);
        EXPECT_TRUE(driver.popup != nullptr && !IsWindow(driver.popup)) << "shown, then gone";
    }
    DeleteFileA(dest.c_str());
}

// The dialog hears its controls' notifications and errors (refused without a box), and hands a DDE initiate on to its controls (it
// reaches top-level windows only).
std::vector<Msg> g_heard;
INT_PTR CALLBACK HeardDialog(HWND dialog, UINT msg, WPARAM wp, LPARAM lp) {
    if (msg == WM_COMMAND || msg == GXN_ERROR) g_heard.push_back({msg, wp, lp});
    for (HWND c = GetWindow(dialog, GW_CHILD); msg == WM_DDE_INITIATE && c; c = GetWindow(c, GW_HWNDNEXT))
        SendMessageA(c, msg, wp, lp);
    if (msg == GXN_ERROR) SetWindowLongPtrA(dialog, DWLP_MSGRESULT, GXR_HANDLED);  // no box
    return msg == WM_INITDIALOG || msg == GXN_ERROR;
}

class Tables : public ::testing::Test {
protected:
    Tables() { g_heard.clear(); }
    ~Tables() override { twFreeTable(nullptr), DeleteFileA(cities.c_str()); }
    static void Set(HWND h, const std::string& m) { SendMessageA(h, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(m.c_str())); }
    static void Value(HWND h, const char* key) { SendMessageA(h, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>(key)); }
    // The text a GXM_GETMETHOD or GXM_GETVALUE fills in.
    static std::string Ask(HWND h, UINT msg = GXM_GETVALUE) {
        char text[300] = {};
        SendMessageA(h, msg, 256, reinterpret_cast<LPARAM>(text));
        return text;
    }
    // The item strings of the list or the combo.
    Strings Keys(HWND h) const {
        Strings keys;
        char text[300];
        for (LRESULT i = 0, n = SendMessageA(h, h == list ? LB_GETCOUNT : CB_GETCOUNT, 0, 0); i < n; ++i)
            SendMessageA(h, h == list ? LB_GETTEXT : CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(text)), keys.push_back(text);
        return keys;
    }
    RecordingParent owner{500, 300};
    UniqueWindow dialog{CreateDialogParamA(GetModuleHandleA(nullptr), "FKTABLES", owner, HeardDialog, 0)};
    HWND list = GetDlgItem(dialog, 100), combo = GetDlgItem(dialog, 101), field = GetDlgItem(dialog, 102);
    std::string cities = WriteTable("fk_controls.tbl", kCities), tbl = "@TBL(" + cities + ")";
};

// Column widths are dialog units of the dialog's font; a dragged column edge becomes the new "@COLWIDTH", also when
// the drag loses the mouse, and the reload keeps the selection.
TEST_F(Tables, DraggedColumnEdgesBecomeTheWidthsInDialogUnits) {
    ASSERT_EQ(Keys(list), (Strings{"OSL", "PAR"}));
    RECT units{0, 0, 40, 10}, ten{0, 0, 10, 10};
    MapDialogRect(dialog, &units), MapDialogRect(dialog, &ten);
    SendMessageA(list, LB_SETCURSEL, 1, 0);
    const struct { int to; bool release; int first; } drags[] = {
        {units.right + ten.right, true, 50}, {units.right + 2 * ten.right, false, 60}};
    for (int from = units.right; const auto& d : drags) {
        SendMessageA(list, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(from, 5));
        SendMessageA(list, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM((from + d.to) / 2, 5));
        if (d.release) SendMessageA(list, WM_LBUTTONUP, 0, MAKELPARAM(d.to, 5));  // the release moves on
        else SendMessageA(list, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(d.to, 5)), ReleaseCapture();
        const std::string method = Ask(list, GXM_GETMETHOD), prefix = "@INIT@TBL(@RES(FKCITIES))@DISPLAY(2,1)@COLWIDTH(";
        int first = 0;  // mouse positions in dialog units round: one unit either way
        std::sscanf(method.c_str(), (prefix + "%d").c_str(), &first);
        EXPECT_NEAR(first, d.first, 1) << method;
        EXPECT_EQ(method + " " + Ask(list), prefix + std::to_string(first) + ",30) PAR");
        from = d.to;
    }
}

// Filled from files (".TBL" added), resources (a separate "@RES" too), another key column, within a range; hostile
// tables (missing, empty, binary, huge and wide, bad delimiters, columns and widths) and a file deleted while shown
// load (or not) without harm, paint, and keep the key within 255 bytes.
TEST_F(Tables, FillFromFilesAndResourcesWithinTheRangeAndSurviveHostileTables) {
    std::string big, wide, binary, widths = "@COLWIDTH(";
    for (int i = 0; i < 100000; ++i) big += "K" + std::to_string(i) + ",line " + std::to_string(i) + "\r\n";
    for (int i = 0; i < 3; ++i) wide += std::string(10000, static_cast<char>('a' + i)) + ",x\r\n";
    for (int i = 0; i < 4096; ++i) binary.push_back(static_cast<char>((i * 37 + 11) % 256));
    for (int i = 0; i < 1000; ++i) widths += std::to_string(i * 97) + ",";
    const struct { std::string method; Strings keys; } fills[] = {
        {tbl, {"BER", "brn", "BRU", "LIS", "ROM"}},
        {"@TBL(" + cities.substr(0, cities.size() - 4) + ")@KEY(3)", {"DE", "CH", "BE", "PT", "IT"}},
        {"@TBL(@RES(FKCITIES))", {"OSL", "PAR"}},
        {"@TBL(FKCITIES)@RES@KEY(2)", {"Oslo", "Paris"}},
        {tbl + "@RNG(B,BRZ)", {"BER", "brn", "BRU"}},  // compared as lstrcmpA compares
        {tbl + "@RNGI(BRN,BRN)", {"brn"}},
    };
    const std::string hostile[] = {
        "@TBL(C:\\no\\such.tbl)", "@DISPLAY(1)", "@TBL(" + WriteTable("fk_empty.tbl", "") + ")",
        "@TBL(" + WriteTable("fk_binary.tbl", binary) + ")@DISPLAY(1,2,3)",
        "@TBL(" + WriteTable("fk_big.tbl", big) + ")@DISPLAY(2)", "@TBL(" + WriteTable("fk_wide.tbl", wide) + ")",
        tbl + "@DLM(;)@DISPLAY(0,33,-1)", tbl + "@DISPLAY(3,2,1)@COLWIDTH(x,-5,,99999999)@TABSTOP(y)",
        tbl + widths + "x)@TABSTOP(" + widths + "x))", tbl + "@KEY(-1)@DLM()@RNG(((",
    };
    for (HWND h : {list, combo}) {
        for (const auto& f : fills) {
            Set(h, f.method);
            EXPECT_EQ(Keys(h), f.keys) << f.method;
        }
        for (const auto& method : hostile) {
            Set(h, method);
            Value(h, "K99999");
            SendMessageA(h, CB_SHOWDROPDOWN, TRUE, 0);
            PaintNow(dialog);
            SendMessageA(h, CB_SHOWDROPDOWN, FALSE, 0);
            EXPECT_LT(Ask(h).size(), 256u) << method;
        }
    }
    Set(list, tbl);
    DeleteFileA(cities.c_str()), twFreeTable(cities.c_str());
    PaintNow(dialog);
    EXPECT_EQ(Keys(list).size(), 5u);  // the lines shown stay
    Set(list, tbl);
    EXPECT_EQ(Keys(list).size(), 0u);
}

// Values are keys, also as window text, matched in case; the program's values notify nothing. F1 opens help, in
// the combo table from its edit part. Characters typed in a row search the first shown column without case (one
// letter again goes on to the next line with it; a blank is searched for, a control character is not); a key press
// starts afresh; the parent hears of each pick.
TEST_F(Tables, ValuesAreKeysF1OpensHelpAndTypingSearches) {
    Set(list, tbl + "@DISPLAY(2,1)@HELPMSG1(Pick a city)");
    Set(combo, tbl + "@HELPMSG1(Type a code)");
    LONG size = 0;
    EXPECT_EQ(SendMessageA(list, GXM_GETTYPE, GXT_TEXT, reinterpret_cast<LPARAM>(&size)), GXT_TABLE);
    EXPECT_EQ(size, 256);
    EXPECT_EQ(SendMessageA(combo, GXM_GETTYPE, GXT_TEXT, 0), GXT_TEXT);
    for (HWND h : {list, combo}) {
        Value(h, "ROM");
        const std::string rom = Ask(h) + "/" + WindowText(h);
        Value(h, "BRN");
        const LRESULT none = SendMessageA(h, h == list ? LB_GETCURSEL : CB_GETCURSEL, 0, 0);
        SendMessageA(h, WM_SETTEXT, 0, reinterpret_cast<LPARAM>("brn"));
        EXPECT_EQ(rom + "/" + std::to_string(none) + "/" + Ask(h), "ROM/ROM/-1/brn");
    }
    EXPECT_TRUE(g_heard.empty()) << "values set by the program notify nothing";
    MessageBoxWatcher boxes;
    COMBOBOXINFO info{sizeof info};
    ASSERT_TRUE(GetComboBoxInfo(combo, &info));
    SendMessageA(list, WM_KEYDOWN, VK_F1, 0);
    SendMessageA(info.hwndItem, WM_KEYDOWN, VK_F1, 0);
    ASSERT_EQ(boxes.boxes().size(), 2u);
    EXPECT_EQ(boxes.boxes()[0].text + "/" + boxes.boxes()[1].text + "/" + boxes.boxes()[0].caption,
              "Pick a city/Type a code/Help");
    g_heard.clear();  // the boxes took the focus
    const struct { std::string typed; const char* key; } steps[] = {
        {"\x24" "bern", "brn"}, {"\x24" "b", "brn"}, {"b", "BRU"}, {"\x24" "lis", "LIS"},  // \x24: Home
    };
    for (const auto& s : steps) {
        for (char c : s.typed) {
            if (c == '\x24') SendMessageA(list, WM_KEYDOWN, VK_HOME, 0);
            else  // as a keyboard sends it: the key goes down, then the character
                SendMessageA(list, WM_KEYDOWN, LOBYTE(VkKeyScanA(c)), 0),
                    SendMessageA(list, WM_CHAR, static_cast<unsigned char>(c), 0);
        }
        EXPECT_EQ(Ask(list), s.key) << s.typed;
    }
    EXPECT_GE(g_heard.size(), 4u);
    for (const Msg& m : g_heard) EXPECT_EQ(m.wp, MAKEWPARAM(100, LBN_SELCHANGE));
    Set(list, "@TBL(" + WriteTable("fk_new.tbl", "NDL,New Delhi\r\nNWK,Newark\r\nNYC,New York\r\n") + ")@DISPLAY(2)");
    SendMessageA(list, WM_KEYDOWN, VK_HOME, 0);
    for (char c : std::string("new\x01 y")) SendMessageA(list, WM_CHAR, static_cast<unsigned char>(c), 0);
    EXPECT_EQ(Ask(list), "NYC");
}

// Typing at the end of the combo's edit part completes a key; the application checks a typed key with twValidate.
TEST_F(Tables, ComboCompletesKeysAndTwValidateCatchesUnknownOnes) {
    const std::string method = tbl + "@DISPLAY(1,2)";
    Set(combo, method);
    COMBOBOXINFO info{sizeof info};
    ASSERT_TRUE(GetComboBoxInfo(combo, &info));
    ASSERT_NE(info.hwndItem, combo);
    SetFocus(info.hwndItem);
    const struct { const char* typed; const char* shown; } steps[] = {
        {"r", "ROM 1-3"}, {"\b\bB", "BER 1-3"}, {"r", "brn 2-3"}, {"U", "BRU 3-3"}, {"\b\b\bZZ", "ZZ 2-2"},
    };
    for (const auto& s : steps) {
        for (const char* c = s.typed; *c; ++c) SendMessageA(info.hwndItem, WM_CHAR, static_cast<unsigned char>(*c), 0);
        DWORD start = 0, end = 0;
        SendMessageA(info.hwndItem, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
        EXPECT_EQ(WindowText(combo) + " " + std::to_string(start) + "-" + std::to_string(end), s.shown);
    }
    g_heard.clear();
    char m[300], typed[32];
    for (const char* key : {"ZZ", "BRU", "bru"}) {
        Value(combo, key);
        lstrcpyA(m, method.c_str()), lstrcpyA(typed, Ask(combo).c_str());
        EXPECT_EQ(twValidate(combo, GXT_TEXT, typed, m, typed) != 0, std::strcmp(key, "BRU") == 0) << key;
    }
    EXPECT_EQ(g_heard.size(), 2u);
}

// The table messages edit the method string and the list loads again; the combo table takes three of them.
TEST_F(Tables, TableMessagesEditTheMethodAndReload) {
    const std::string piped = WriteTable("fk_piped.tbl", "X1|one\r\nX2|two\r\n"), pipedTbl = "@TBL(" + piped + ")";
    Set(list, tbl + "@DISPLAY(1,2)");
    const struct { UINT msg; std::string text, method; Strings keys; } steps[] = {
        {GXM_SETTABLE, piped, "@DISPLAY(1,2)" + pipedTbl, {"X1|one", "X2|two"}},
        {GXM_SETDELIMITER, "|", "@DISPLAY(1,2)" + pipedTbl + "@DLM(|)", {"X1", "X2"}},
        {GXM_SETDISPLAY, "", pipedTbl + "@DLM(|)", {"X1", "X2"}},
        {GXM_SETTABSTOPS, "30,70", pipedTbl + "@DLM(|)@TABSTOP(30,70)", {"X1", "X2"}},
        {GXM_SETCOLWIDTHS, "20", pipedTbl + "@DLM(|)@TABSTOP(30,70)@COLWIDTH(20)", {"X1", "X2"}},
    };
    for (const auto& s : steps) {
        SendMessageA(list, s.msg, 0, reinterpret_cast<LPARAM>(s.text.c_str()));
        EXPECT_EQ(Ask(list, GXM_GETMETHOD), s.method) << std::hex << s.msg;
        EXPECT_EQ(Keys(list), s.keys) << std::hex << s.msg;
    }
    Set(combo, pipedTbl);
    SendMessageA(combo, GXM_SETDELIMITER, 0, reinterpret_cast<LPARAM>("|"));
    SendMessageA(combo, GXM_SETCOLWIDTHS, 0, reinterpret_cast<LPARAM>("20"));  // not a combo table message
    EXPECT_EQ(Ask(combo, GXM_GETMETHOD), pipedTbl + "@DLM(|)");
    EXPECT_EQ(Keys(combo), (Strings{"X1", "X2"}));
}

// A table list serving its key: a string field linked as client shows each selection; a line pressed and dragged
// drops its key into a string field, and stays.
TEST_F(Tables, TheKeyReachesALinkedFieldAndADropTarget) {
    Set(list, tbl + "@DISPLAY(2)@DRAGSRC@SERVER(FkTables,Cities,Key)");
    UniqueWindow other = MakeParent(), client = MakeChild(other, FK_CLASS_STRING);
    Set(client, "@CLIENT(FkTables,Cities,Key)NOAUTOSTART");
    ASSERT_NE(GetPropA(client, "CLIENT"), nullptr);
    Value(list, "LIS");
    EXPECT_TRUE(PumpUntil([&] { return WindowText(client) == "LIS"; })) << WindowText(client);
    SendMessageA(list, WM_KEYDOWN, VK_DOWN, 0);  // the user moves on
    EXPECT_TRUE(PumpUntil([&] { return WindowText(client) == "ROM"; })) << WindowText(client);
    other.reset();  // its window would lie over the drop
    Set(field, "@DROPTARG");
    RECT row;
    SendMessageA(list, LB_GETITEMRECT, 2, reinterpret_cast<LPARAM>(&row));
    DragOnto(list, {row.left + 20, row.top + 2}, field);
    EXPECT_EQ(WindowText(field) + "/" + Ask(list), "BRU/BRU");
    EXPECT_EQ(Keys(list).size(), 5u);  // copied, not moved
}

}  // namespace
