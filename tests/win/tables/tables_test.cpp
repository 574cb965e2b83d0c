// The table store; the table list (gxTable32) and the combo table (gxCBTable32) on one dialog: filling, hostile
// tables, dragged columns, values, type-ahead and completion, the table messages, links.
#include <gtest/gtest.h>

#include <cstdio>

#include "include/fldkit.h"
#include "tests/support/drag.h"
#include "tests/support/msgbox_watch.h"
#include "tests/support/pump.h"
#include "tests/win/display/pixels.h"
#include "tests/win/tables/popup_driver.h"

using namespace fktest;

namespace {

std::string Find(const std::string& name, int column, const char* key, char delimiter = ',') {
    return TakeLine(twSearchTable(name.c_str(), column, key, delimiter, nullptr, 0));
}

// Lines found by key column (clipped, in case); a table is read once and kept by name until freed or copied over;
// a file of 4 MiB is read, one byte more is not. (The popup's picks are the validation tests'.)
TEST(TableStore, SearchesKeepsTablesByNameAndReadsUpToFourMebibytes) {
    const std::string odd = WriteTable("fk_odd.tbl", " PAR , Paris ,FR\r\nrom,lower,xx\r\nROM,Rome,IT\r\nB|Berlin\r\n");
    const struct { int column; const char* key; char delimiter; const char* line; } cases[] = {
        {1, "ROM", ',', "ROM,Rome,IT"}, {0, "rom", ',', "rom,lower,xx"},     {1, "Rom", ',', "<none>"},
        {2, "Paris", 0, " PAR , Paris ,FR"}, {2, "Berlin", '|', "B|Berlin"}, {4, "FR", ',', "<none>"},
    };
    for (const auto& c : cases) EXPECT_EQ(Find(odd, c.column, c.key, c.delimiter), c.line) << c.column << c.key;
    EXPECT_EQ(Find(odd.substr(0, odd.size() - 4), 1, "ROM"), "ROM,Rome,IT") << "\".tbl\" is added";
    const std::string copy = WriteTable("fk_copy.tbl", "OLD,1\r\n");
    EXPECT_EQ(Find(copy, 1, "OLD"), "OLD,1");
    EXPECT_EQ(twCopyFile(odd.c_str(), copy.c_str()), 1);
    EXPECT_EQ(Find(copy, 1, "OLD") + "/" + Find(copy, 1, "ROM"), "<none>/ROM,Rome,IT") << "a copy is read afresh";
    DeleteFileA(copy.c_str());
    DeleteFileA(odd.c_str());
    EXPECT_EQ(Find(odd, 1, "ROM"), "ROM,Rome,IT") << "the kept lines still answer";
    EXPECT_EQ((std::vector<int>{twFreeTable(odd.c_str()), twFreeTable(odd.c_str())}), (std::vector<int>{1, 0}));
    EXPECT_EQ(Find(odd, 1, "ROM"), "<none>");
    for (size_t extra : {0u, 1u}) {
        std::string text = "BIG,1\r\n";
        text.resize((4u << 20) + extra, ' ');
        EXPECT_EQ(Find(WriteTable("fk_big.tbl", text), 1, "BIG"), extra ? "<none>" : "BIG,1") << extra;
        twFreeTable(nullptr);
    }
}

int g_selChanges = 0;  // the LBN_SELCHANGE notices the dialog heard

// The dialog hands a DDE initiate on to its controls (it reaches top-level windows only).
INT_PTR CALLBACK LinkingDialog(HWND dialog, UINT msg, WPARAM wp, LPARAM lp) {
    if (msg == WM_COMMAND && HIWORD(wp) == LBN_SELCHANGE) ++g_selChanges;
    for (HWND c = msg == WM_DDE_INITIATE ? GetWindow(dialog, GW_CHILD) : nullptr; c; c = GetWindow(c, GW_HWNDNEXT))
        SendMessageA(c, msg, wp, lp);
    return msg == WM_INITDIALOG;
}

class Tables : public ::testing::Test {
protected:
    ~Tables() override { twFreeTable(nullptr), DeleteFileA(cities.c_str()); }
    // The item strings of the list or the combo, each followed by a comma.
    std::string Lines(HWND h) const {
        std::string lines;
        char text[300];
        for (LRESULT i = 0, n = SendMessageA(h, h == list ? LB_GETCOUNT : CB_GETCOUNT, 0, 0); i < n; ++i) {
            SendMessageA(h, h == list ? LB_GETTEXT : CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(text));
            lines += text + std::string(",");
        }
        return lines;
    }
    UniqueWindow dialog{CreateDialogParamA(GetModuleHandleA(nullptr), "FKTABLES", nullptr, LinkingDialog, 0)};
    HWND list = GetDlgItem(dialog, 100), combo = GetDlgItem(dialog, 101), field = GetDlgItem(dialog, 102);
    std::string cities = WriteTable("fk_town.tbl", "BER,Berlin\r\nbrn,Bern\r\nBRU,Brussels\r\nLIS,Lisbon\r\nROM,Rome\r\n");
    std::string tbl = "@TBL(" + cities + ")";
};

// Column widths are dialog units of the dialog's font; a dragged column edge becomes the new "@COLWIDTH", also when
// the drag loses the mouse, and the reload keeps the selection.
TEST_F(Tables, DraggedColumnEdgesBecomeTheWidthsInDialogUnits) {
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

// Hostile tables (missing, empty, binary, huge and wide, bad delimiters, columns and widths) load (or not) without
// harm in both controls, paint, and keep the key within 255 bytes.
TEST_F(Tables, SurviveHostileTables) {
    std::string big, wide, binary, widths = "@COLWIDTH(";
    for (int i = 0; i < 100000; ++i) big += "K" + std::to_string(i) + ",line " + std::to_string(i) + "\r\n";
    for (int i = 0; i < 3; ++i) wide += std::string(10000, static_cast<char>('a' + i)) + ",x\r\n";
    for (int i = 0; i < 4096; ++i) binary.push_back(static_cast<char>((i * 37 + 11) % 256));
    for (int i = 0; i < 1000; ++i) widths += std::to_string(i * 97) + ",";
    const std::string hostile[] = {
        "@TBL(C:\\no\\such.tbl)", "@DISPLAY(1)", "@TBL(" + WriteTable("fk_empty.tbl", "") + ")",
        "@TBL(" + WriteTable("fk_binary.tbl", binary) + ")@DISPLAY(1,2,3)",
        "@TBL(" + WriteTable("fk_big.tbl", big) + ")@DISPLAY(2)", "@TBL(" + WriteTable("fk_wide.tbl", wide) + ")",
        tbl + "@DLM(;)@DISPLAY(0,33,-1)", tbl + "@DISPLAY(3,2,1)@COLWIDTH(x,-5,,99999999)@TABSTOP(y)",
        tbl + widths + "x)@TABSTOP(" + widths + "x))", tbl + "@KEY(-1)@DLM()@RNG(((",
    };
    for (HWND h : {list, combo})
        for (const auto& method : hostile) {
            SendMessageA(h, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(method.c_str()));
            SendMessageA(h, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>("K99999"));
            SendMessageA(h, CB_SHOWDROPDOWN, TRUE, 0);
            PaintNow(dialog);
            SendMessageA(h, CB_SHOWDROPDOWN, FALSE, 0);
            EXPECT_LT(Ask(h).size(), 256u) << method;
        }
}

// One scripted run: each step sends a message (a WM_CHAR step types its text, in the list the key going down first),
// then compares what the control shows: its key, method string, lines or text, or the combo's text and selection.
// Lines come from files or resources (a separate "@RES" too), within a range, by another key column. Values are keys,
// matched in case, also as window text. Typing in the list searches the first shown column without case (one letter
// again goes on to the next line with it; a blank is searched for, a control character is not); a key that moves
// and the focus coming back start afresh. Typing at the end of the combo's edit part completes a key. The table messages edit the method string and
// the list loads again. A table list serving its key: a string field linked as client shows each selection. The
// list's type answers the key's size. F1 opens help in the list and in the combo's edit part; each pick by key or
// type-ahead tells the dialog LBN_SELCHANGE. A line pressed and dragged drops its key into a field.
TEST_F(Tables, ScriptedRunOfFillingValuesTypingCompletionTableMessagesAndLinks) {
    const std::string piped = "@TBL(" + WriteTable("fk_piped.tbl", "X1|one\r\nX2|two\r\n") + ")";
    const HWND edit = FindWindowExA(combo, nullptr, "Edit", nullptr);  // a drop-down list has one too
    // What a step compares besides a message's answer: the lines, the combo's selection, the last message box's text.
    const UINT kLines = 1, kSelection = EM_GETSEL, kValue = GXM_GETVALUE, kMethod = GXM_GETMETHOD, kHelpBox = WM_HELP;
    MessageBoxWatcher boxes;
    g_selChanges = 0;
    const struct { HWND h; UINT msg; WPARAM wp; std::string text; UINT ask; std::string shown; } steps[] = {
        {list, GXM_SETMETHOD, 0, tbl + "@RNG(B,BRZ)@DISPLAY(2,1)@HELPMSG1(Pick)", kLines, "BER,brn,BRU,"},
        {list, WM_KEYDOWN, VK_F1, "", kHelpBox, "Pick"},
        {combo, GXM_SETMETHOD, 0, "@TBL(FKCITIES)@RES@KEY(2)", kLines, "Oslo,Paris,"},
        {list, GXM_SETVALUE, 0, "BRU", WM_GETTEXT, "BRU"},
        {list, GXM_SETVALUE, 0, "BRN", kValue, ""},
        {list, WM_SETTEXT, 0, "brn", kValue, "brn"},
        {list, GXM_SETMETHOD, 0, tbl + "@DISPLAY(2,1)", kValue, "brn"},
        {list, WM_KEYDOWN, VK_HOME, "", kValue, "BER"},
        {list, WM_CHAR, 0, "bern", kValue, "brn"},
        {list, WM_KEYDOWN, VK_END, "", kValue, "ROM"},
        {list, WM_CHAR, 0, "b", kValue, "BER"},
        {list, WM_CHAR, 0, "b", kValue, "brn"},
        {list, WM_KEYDOWN, VK_PRIOR, "", kValue, "BER"}, {list, WM_CHAR, 0, "r", kValue, "ROM"},
        {list, WM_SETFOCUS, 0, "", kValue, "ROM"},       {list, WM_CHAR, 0, "b", kValue, "BER"},
        {combo, GXM_SETMETHOD, 0, tbl + "@DISPLAY(1,2)@HELPMSG1(Type)", kValue, ""},
        {edit, WM_KEYDOWN, VK_F1, "", kHelpBox, "Type"},
        {edit, WM_CHAR, 0, "r", kSelection, "ROM 1-3"},
        {edit, WM_CHAR, 0, "\b\bB", kSelection, "BER 1-3"},
        {edit, WM_CHAR, 0, "r", kSelection, "brn 2-3"},
        {edit, WM_CHAR, 0, "U", kSelection, "BRU 3-3"},
        {edit, WM_CHAR, 0, "\b\b\bZZ", kSelection, "ZZ 2-2"},
        {combo, GXM_SETVALUE, 0, "BRN", kValue, "BRN"},
        {list, GXM_SETTABLE, 0, piped.substr(5, piped.size() - 6), kMethod, "@DISPLAY(2,1)" + piped},
        {list, GXM_SETDELIMITER, 0, "|", kLines, "X1,X2,"},
        {list, GXM_SETDISPLAY, 0, "", kMethod, piped + "@DLM(|)"},
        {list, GXM_SETTABSTOPS, 0, "30,70", kMethod, piped + "@DLM(|)@TABSTOP(30,70)"},
        {list, GXM_SETCOLWIDTHS, 0, "20", kMethod, piped + "@DLM(|)@TABSTOP(30,70)@COLWIDTH(20)"},
        {combo, GXM_SETCOLWIDTHS, 0, "20", kMethod, tbl + "@DISPLAY(1,2)@HELPMSG1(Type)"},  // not the combo's
        {combo, GXM_SETDELIMITER, 0, "|", kMethod, tbl + "@DISPLAY(1,2)@HELPMSG1(Type)@DLM(|)"},
        {list, GXM_SETMETHOD, 0, "@TBL(" + WriteTable("fk_new.tbl", "NDL,New Delhi\r\nNWK,Newark\r\nNYC,New York\r\n") +
         ")@DISPLAY(2)", kValue, ""},
        {list, WM_KEYDOWN, VK_HOME, "", kValue, "NDL"},
        {list, WM_CHAR, 0, std::string("new\x01 y"), kValue, "NYC"},
        {list, GXM_SETMETHOD, 0, tbl + "@DISPLAY(2)@DRAGSRC", kValue, ""},
        {field, GXM_SETMETHOD, 0, "@DROPTARG", WM_GETTEXT, ""},
        {field, WM_LBUTTONDOWN, 0, "", WM_GETTEXT, "BER"},  // the list's first line dragged onto the field
        {list, GXM_SETMETHOD, 0, tbl + "@SERVER(FkTables,Cities,Key)", kValue, "BER"},
        {field, GXM_SETMETHOD, 0, "@CLIENT(FkTables,Cities,Key)NOAUTOSTART", WM_GETTEXT, "BER"},
        {list, GXM_SETVALUE, 0, "LIS", kValue, "LIS"},
        {field, WM_NULL, 0, "", WM_GETTEXT, "LIS"},
        {list, WM_KEYDOWN, VK_DOWN, "", kValue, "ROM"},
        {field, WM_NULL, 0, "", WM_GETTEXT, "ROM"},
    };
    for (const auto& s : steps) {
        if (s.msg == WM_LBUTTONDOWN) DragOnto(list, {20, 2}, s.h);
        else if (s.msg != WM_CHAR) SendMessageA(s.h, s.msg, s.wp, reinterpret_cast<LPARAM>(s.text.c_str()));
        for (char c : s.msg == WM_CHAR ? s.text : "") {
            if (s.h == list && c > ' ') SendMessageA(s.h, WM_KEYDOWN, LOBYTE(VkKeyScanA(c)), 0);
            SendMessageA(s.h, WM_CHAR, static_cast<unsigned char>(c), 0);
        }
        PumpIdle();  // what a server posts its clients
        DWORD from = 0, to = 0;
        SendMessageA(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
        const std::string selection = WindowText(combo) + " " + std::to_string(from) + "-" + std::to_string(to);
        EXPECT_EQ(s.ask == kSelection ? selection
                  : s.ask == kLines   ? Lines(s.h)
                  : s.ask == kHelpBox ? (boxes.boxes().empty() ? "" : boxes.boxes().back().text)
                                      : (s.ask == WM_GETTEXT ? WindowText(s.h) : Ask(s.h, s.ask)),
                  s.shown)
            << s.text;
    }
    EXPECT_EQ(g_selChanges, 16);  // the picks by key and by type-ahead
    LONG size = 0;
    EXPECT_EQ(SendMessageA(list, GXM_GETTYPE, GXT_TEXT, reinterpret_cast<LPARAM>(&size)), GXT_TABLE);
    EXPECT_EQ(size, 256);
}

}  // namespace
