// The table store (loading, searching by key column, copying) and its popup; the table list (gxTable32) and the
// combo table (gxCBTable32) built on it: filling, columns, values, type-ahead and completion, the table messages,
// links, and hostile tables.
#include <gtest/gtest.h>

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

// The text a GXM_GETMETHOD or GXM_GETVALUE fills in.
std::string Ask(HWND h, UINT msg) {
    char text[300] = {};
    SendMessageA(h, msg, 256, reinterpret_cast<LPARAM>(text));
    return text;
}
void SetMethod(HWND h, const std::string& m) { SendMessageA(h, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(m.c_str())); }

// The item strings of a list box or combo box.
Strings Keys(HWND h, bool combo = false) {
    Strings keys;
    char text[300];
    for (LRESULT i = 0, n = SendMessageA(h, combo ? CB_GETCOUNT : LB_GETCOUNT, 0, 0); i < n; ++i)
        SendMessageA(h, combo ? CB_GETLBTEXT : LB_GETTEXT, i, reinterpret_cast<LPARAM>(text)), keys.push_back(text);
    return keys;
}

class Tables : public ::testing::Test {
protected:
    ~Tables() override {
        twFreeTable(nullptr);
        for (auto& f : files) DeleteFileA(f.c_str());
    }
    std::string Write(const char* name, const std::string& text) { return files.emplace_back(WriteTable(name, text)); }
    static std::string Find(const std::string& name, int column, const char* key, char delimiter = ',') {
        return TakeLine(twSearchTable(name.c_str(), column, key, delimiter, nullptr, 0));
    }
    HWND Make(const char* cls, const std::string& method, DWORD style = WS_BORDER | WS_VSCROLL) {
        HWND h = CreateWindowExA(0, cls, "", WS_CHILD | WS_VISIBLE | style, 10, 10, 300, 120, parent, HMENU(7),
                                 GetModuleHandleA(nullptr), nullptr);
        EXPECT_NE(h, nullptr) << cls;
        SendMessageA(h, WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT)), FALSE);
        SetMethod(h, method);
        return h;
    }
    std::vector<std::string> files;
    std::string cities = Write("fk_controls.tbl", kCities);
    std::string odd = Write(
        "fk_cities.tbl", "PAR , Paris ,FR\r\nROM,Rome,IT\r\n\r\n  OSL  ,Oslo,NO\r\nrom,lower,xx\r\nBER|Berlin|DE\r\n");
    RecordingParent parent{500, 300};
};

TEST_F(Tables, SearchesByKeyColumn) {
    struct { int column; const char* key; char delimiter; const char* line; } cases[] = {
        {1, "ROM", ',', "ROM,Rome,IT"},     {0, "ROM", ',', "ROM,Rome,IT"},  // column 0 is column 1
        {1, "rom", ',', "rom,lower,xx"},    {1, "Rom", ',', "<none>"},       // case counts
        {1, "PAR", ',', "PAR , Paris ,FR"}, {1, "OSL", 0, "  OSL  ,Oslo,NO"},  // clipped both ends; "," by default
        {2, "Paris", ',', "PAR , Paris ,FR"}, {3, "NO", ',', "  OSL  ,Oslo,NO"}, {2, "Berlin", '|', "BER|Berlin|DE"},
        {4, "FR", ',', "<none>"}, {1, "", ',', "<none>"},
    };
    for (const auto& c : cases) EXPECT_EQ(Find(odd, c.column, c.key, c.delimiter), c.line) << c.column << c.key;
}

// A table is read once and kept by name until freed or copied over. (Missing tables and null arguments are the
// hostile tests'.)
TEST_F(Tables, KeptByNameUntilFreedOrCopiedOver) {
    const std::string bare = odd.substr(0, odd.size() - 4), dest = Write("fk_copy.tbl", "OLD,1\r\n");
    EXPECT_EQ(Find(bare, 1, "ROM"), "ROM,Rome,IT");  // ".tbl" is added
    twFreeTable(bare.c_str());
    EXPECT_EQ(twLoadTable(odd.c_str(), nullptr), 1);
    EXPECT_EQ(Find(dest, 1, "OLD"), "OLD,1");
    EXPECT_EQ(twCopyFile(odd.c_str(), dest.c_str()), 1);
    DeleteFileA(odd.c_str());  // the kept copy still answers
    EXPECT_EQ(Find(odd, 1, "ROM") + "/" + Find(dest, 1, "ROM") + "/" + Find(dest, 1, "OLD"),
              "ROM,Rome,IT/ROM,Rome,IT/<none>");
    EXPECT_EQ(twFreeTable(odd.c_str()), 1);
    EXPECT_EQ(twFreeTable(odd.c_str()), 0);
    EXPECT_EQ(Find(odd, 1, "ROM"), "<none>");
    UniqueWindow list = MakeChild(parent, "LISTBOX");  // a foreign list passes through the table's procedure
    SendMessageA(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>("one"));
    EXPECT_EQ(TableListBoxProc(list, LB_GETCOUNT, 0, 0), 1);
}

// A table file of 4 MiB is read; one byte more and it is not.
TEST_F(Tables, FilesAboveFourMebibytesAreNotRead) {
    for (size_t extra : {0u, 1u}) {
        std::string text = "BIG,1\r\n";
        text.resize((4u << 20) + extra, ' ');
        const std::string big = Write("fk_big.tbl", text);
        EXPECT_EQ(Find(big, 1, "BIG"), extra ? "<none>" : "BIG,1") << extra;
        twFreeTable(big.c_str());
    }
}

// The popup picks with keys or the mouse, and ends with its owner. (What it shows, and where, the validation tests
// see through a field.)
TEST_F(Tables, PopupPicksWithKeysOrMouseAndEndsWithItsOwner) {
    const struct { std::vector<int> script; int lineMax; const char* line; } cases[] = {
        {{VK_DOWN, VK_RETURN}, 256, "ROM,Rome,IT"}, {{VK_DOWN, VK_ESCAPE}, 256, "<none>"},
        {{-3}, 256, "  OSL  ,Oslo,NO"}, {{VK_RETURN}, 4, "PAR"},  // cut to the line maximum
        {{}, 0, "<none>"},  // the owner closed: the popup's own loop destroys it
    };
    for (const auto& c : cases) {
        UniqueWindow owner = MakeParent();
        if (c.lineMax == 0) PostMessageA(owner, WM_CLOSE, 0, 0);
        PopupDriver driver(odd, c.script);
        EXPECT_EQ(TakeLine(twShowTable(owner, odd.c_str(), 0, 10, 20, 80, 48, ',', c.lineMax, 0, 0, 0, nullptr, 0)),
                  c.line);
        EXPECT_TRUE(c.lineMax == 0 || (driver.popup != nullptr && !IsWindow(driver.popup))) << "shown, then gone";
    }
}

// Files (with ".TBL" added), resources of the program, a separate "@RES", ranges with and without case; then
// hostile tables (empty, binary, huge and wide, missing delimiters, column numbers out of range, garbage widths)
// and a file deleted while shown: each loads (or not) without harm, paints, and keeps its key within 255 bytes.
TEST_F(Tables, FillFromFilesAndResourcesWithinTheRangeAndSurviveHostileTables) {
    std::string big, wide, binary, widths = "@COLWIDTH(";
    for (int i = 0; i < 100000; ++i) big += "K" + std::to_string(i) + ",line " + std::to_string(i) + "\r\n";
    for (int i = 0; i < 3; ++i) wide += std::string(10000, static_cast<char>('a' + i)) + ",x\r\n";
    for (int i = 0; i < 4096; ++i) binary.push_back(static_cast<char>((i * 37 + 11) % 256));
    for (int i = 0; i < 1000; ++i) widths += std::to_string(i * 97) + ",";
    const std::string bare = cities.substr(0, cities.size() - 4), tbl = "@TBL(" + cities + ")";
    constexpr size_t kAny = 999999;
    const struct { std::string method; Strings keys; size_t count = 0; } cases[] = {
        {tbl, {"BER", "brn", "BRU", "LIS", "ROM"}},
        {"@TBL(" + bare + ")@KEY(3)", {"DE", "CH", "BE", "PT", "IT"}},
        {"@TBL(@RES(FKCITIES))", {"OSL", "PAR"}},
        {"@TBL(FKCITIES)@RES@KEY(2)", {"Oslo", "Paris"}},
        {tbl + "@RNG(B,BRZ)", {"BER", "brn", "BRU"}},  // compared as lstrcmpA compares
        {tbl + "@RNG(BRN,BRN)", {}},
        {tbl + "@RNGI(BRN,BRN)", {"brn"}},
        {tbl + "@RNG(L,)", {"LIS", "ROM"}},
        {"@TBL(C:\\no\\such.tbl)", {}},
        {"@DISPLAY(1)", {}},
        {"@TBL(" + Write("fk_empty.tbl", "") + ")", {}},
        {"@TBL(" + Write("fk_binary.tbl", binary) + ")@DISPLAY(1,2,3)", {}, kAny},
        {"@TBL(" + Write("fk_big.tbl", big) + ")@DISPLAY(2)", {}, 100000},
        {"@TBL(" + Write("fk_wide.tbl", wide) + ")", {}, 3},
        {tbl + "@DLM(;)@DISPLAY(0,33,-1)", {}, 5},
        {tbl + "@DISPLAY(3,2,1)@COLWIDTH(x,-5,,99999999)@TABSTOP(y)", {}, 5},
        {tbl + widths + "x)@TABSTOP(" + widths + "x))", {}, 5},
        {tbl + "@KEY(-1)@DLM()@RNG(((", {}},
    };
    for (const char* cls : {FK_CLASS_TABLE, FK_CLASS_CBTABLE}) {
        const bool combo = std::strcmp(cls, FK_CLASS_CBTABLE) == 0;
        for (const auto& c : cases) {
            UniqueWindow h(Make(cls, c.method, combo ? CBS_DROPDOWN : WS_BORDER));
            if (c.count == 0) EXPECT_EQ(Keys(h, combo), c.keys) << cls << " " << c.method;
            else if (c.count != kAny) EXPECT_EQ(SendMessageA(h, combo ? CB_GETCOUNT : LB_GETCOUNT, 0, 0), c.count);
            SendMessageA(h, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>("K99999"));
            SendMessageA(h, CB_SHOWDROPDOWN, TRUE, 0);
            PaintNow(parent);
            SendMessageA(h, CB_SHOWDROPDOWN, FALSE, 0);
            EXPECT_LT(Ask(h, GXM_GETVALUE).size(), 256u) << cls << " " << c.method;
        }
    }
    UniqueWindow list(Make(FK_CLASS_TABLE, tbl));
    DeleteFileA(cities.c_str()), twFreeTable(cities.c_str());
    PaintNow(parent);
    EXPECT_EQ(Keys(list).size(), 5u);  // the lines shown stay
    SetMethod(list, tbl);
    EXPECT_EQ(Keys(list).size(), 0u);
}

// Values are keys: set, read back, as window text; an unknown key selects nothing; the program's values notify
// nothing. F1 opens help: in the table list itself, in the combo table from its edit part.
TEST_F(Tables, ValuesAreKeysAndF1OpensHelp) {
    UniqueWindow list(Make(FK_CLASS_TABLE, "@TBL(" + cities + ")@DISPLAY(2)@HELPMSG1(Pick a city)"));
    UniqueWindow combo(Make(FK_CLASS_CBTABLE, "@TBL(" + cities + ")@HELPMSG1(Type a code)", CBS_DROPDOWN));
    LONG size = 0;
    EXPECT_EQ(SendMessageA(list, GXM_GETTYPE, GXT_TEXT, reinterpret_cast<LPARAM>(&size)), GXT_TABLE);
    EXPECT_EQ(size, 256);
    EXPECT_EQ(SendMessageA(combo, GXM_GETTYPE, GXT_TEXT, 0), GXT_TEXT);
    for (HWND h : {list.get(), combo.get()}) {
        SendMessageA(h, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>("ROM"));
        EXPECT_EQ(Ask(h, GXM_GETVALUE) + "/" + WindowText(h), "ROM/ROM");
        SendMessageA(h, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>("BRN"));  // keys match in case
        EXPECT_EQ(SendMessageA(h, h == list ? LB_GETCURSEL : CB_GETCURSEL, 0, 0), -1);
        SendMessageA(h, WM_SETTEXT, 0, reinterpret_cast<LPARAM>("brn"));
        EXPECT_EQ(Ask(h, GXM_GETVALUE), "brn");
    }
    SendMessageA(list, GXM_SETVALUE, 0, 0);
    EXPECT_EQ(Ask(list, GXM_GETVALUE), "");
    EXPECT_EQ(parent.CommandCodes(), std::vector<WORD>{}) << "values set by the program notify nothing";
    MessageBoxWatcher boxes;
    COMBOBOXINFO info{sizeof info};
    ASSERT_TRUE(GetComboBoxInfo(combo, &info));
    SendMessageA(list, WM_KEYDOWN, VK_F1, 0);
    SendMessageA(info.hwndItem, WM_KEYDOWN, VK_F1, 0);
    ASSERT_EQ(boxes.boxes().size(), 2u);
    EXPECT_EQ(boxes.boxes()[0].text + "/" + boxes.boxes()[1].text, "Pick a city/Type a code");
    EXPECT_EQ(boxes.boxes()[0].caption, "Help");
}

// A table list serving its key: a string field linked as client shows each selection; a line pressed and dragged
// drops its key into a string field, and stays.
TEST_F(Tables, TheKeyReachesALinkedFieldAndADropTarget) {
    parent.reply = [&](UINT msg, WPARAM wp, LPARAM lp) -> std::optional<LRESULT> {
        if (msg != WM_DDE_INITIATE) return std::nullopt;
        for (HWND c = GetWindow(parent, GW_CHILD); c; c = GetWindow(c, GW_HWNDNEXT)) SendMessageA(c, msg, wp, lp);
        return 0;
    };
    UniqueWindow list(Make(FK_CLASS_TABLE, "@TBL(" + cities + ")@DISPLAY(2)@DRAGSRC@SERVER(FkTables,Cities,Key)"));
    UniqueWindow other = MakeParent(), client = MakeChild(other, FK_CLASS_STRING);
    SetMethod(client, "@CLIENT(FkTables,Cities,Key)NOAUTOSTART");
    ASSERT_NE(GetPropA(client, "CLIENT"), nullptr);
    SendMessageA(list, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>("LIS"));
    EXPECT_TRUE(PumpUntil([&] { return WindowText(client) == "LIS"; })) << WindowText(client);
    SendMessageA(list, WM_KEYDOWN, VK_DOWN, 0);  // the user moves on
    EXPECT_TRUE(PumpUntil([&] { return WindowText(client) == "ROM"; })) << WindowText(client);
    other.reset();  // its window would lie over the drop
    UniqueWindow field = MakeChild(parent, FK_CLASS_STRING, 0, 8, 120, 24);
    SetWindowPos(field, nullptr, 350, 10, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    SetMethod(field, "@DROPTARG");
    RECT row;
    SendMessageA(list, LB_GETITEMRECT, 2, reinterpret_cast<LPARAM>(&row));
    DragOnto(list, {row.left + 20, row.top + 2}, field);
    EXPECT_EQ(WindowText(field) + "/" + Ask(list, GXM_GETVALUE), "BRU/BRU");
    EXPECT_EQ(Keys(list).size(), 5u);  // copied, not moved
}

// Characters typed in a row search the first shown column without case; a key press starts afresh.
TEST_F(Tables, TypeAheadOverSeveralCharacters) {
    UniqueWindow list(Make(FK_CLASS_TABLE, "@TBL(" + cities + ")@DISPLAY(2,1)"));
    const struct { std::string typed; const char* key; } steps[] = {
        {"b", "BER"}, {"e", "BER"}, {"rn", "brn"}, {"x", "brn"},  // "bernx" matches nothing: the line stays
        {"\x24" "b", "brn"},  // Home, then one letter goes on to the next line that starts with it
        {"b", "BRU"},  {"\x24" "BRU", "BRU"}, {"\x24" "lis", "LIS"},
    };
    for (const auto& s : steps) {
        for (char c : s.typed) {
            if (c == '\x24') SendMessageA(list, WM_KEYDOWN, VK_HOME, 0);
            else  // as a keyboard sends it: the key goes down, then the character
                SendMessageA(list, WM_KEYDOWN, LOBYTE(VkKeyScanA(c)), 0),
                    SendMessageA(list, WM_CHAR, static_cast<unsigned char>(c), 0);
        }
        EXPECT_EQ(Ask(list, GXM_GETVALUE), s.key) << s.typed;
    }
    EXPECT_GE(parent.Of(WM_COMMAND).size(), 4u);
    for (const Msg& m : parent.Of(WM_COMMAND)) EXPECT_EQ(HIWORD(m.wp), LBN_SELCHANGE);
    // A blank is searched for like a letter; a control character is not typed text.
    SetMethod(list, "@TBL(" + Write("fk_new.tbl", "NDL,New Delhi\r\nNWK,Newark\r\nNYC,New York\r\n") + ")@DISPLAY(2)");
    SendMessageA(list, WM_KEYDOWN, VK_HOME, 0);
    for (char c : std::string("new\x01 y")) SendMessageA(list, WM_CHAR, static_cast<unsigned char>(c), 0);
    EXPECT_EQ(Ask(list, GXM_GETVALUE), "NYC");
}

// Typing at the end of the combo's edit part completes a key; the application checks a typed key with twValidate.
TEST_F(Tables, ComboCompletesKeysAndTwValidateCatchesUnknownOnes) {
    const std::string method = "@TBL(" + cities + ")@DISPLAY(1,2)";
    UniqueWindow combo(Make(FK_CLASS_CBTABLE, method, CBS_DROPDOWNLIST));  // given an edit part all the same
    COMBOBOXINFO info{sizeof info};
    ASSERT_TRUE(GetComboBoxInfo(combo, &info));
    ASSERT_NE(info.hwndItem, combo.get());
    SetFocus(info.hwndItem);
    const struct { const char* typed; const char* text; DWORD selStart; } steps[] = {
        {"r", "ROM", 1}, {"\b\bB", "BER", 1}, {"r", "brn", 2}, {"U", "BRU", 3}, {"\b\b\bZZ", "ZZ", 2},
    };
    for (const auto& s : steps) {
        for (const char* c = s.typed; *c; ++c) SendMessageA(info.hwndItem, WM_CHAR, static_cast<unsigned char>(*c), 0);
        DWORD start = 0, end = 0;
        SendMessageA(info.hwndItem, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
        EXPECT_EQ(WindowText(combo) + " " + std::to_string(start) + "-" + std::to_string(end),
                  s.text + (" " + std::to_string(s.selStart)) + "-" + std::to_string(std::strlen(s.text)));
    }
    parent.reply = [](UINT msg, WPARAM, LPARAM) -> std::optional<LRESULT> {
        return msg == GXN_ERROR ? std::optional<LRESULT>(GXR_HANDLED) : std::nullopt;
    };
    char m[300], typed[32];
    for (const char* key : {"ZZ", "BRU", "bru"}) {
        SendMessageA(combo, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>(key));
        lstrcpyA(m, method.c_str()), lstrcpyA(typed, Ask(combo, GXM_GETVALUE).c_str());
        EXPECT_EQ(twValidate(combo, GXT_TEXT, typed, m, typed) != 0, std::strcmp(key, "BRU") == 0) << key;
    }
    EXPECT_EQ(parent.Of(GXN_ERROR).size(), 2u);
}

// The five table messages edit the method string and the list loads again.
TEST_F(Tables, TableMessagesEditTheMethodAndReload) {
    const std::string piped = Write("fk_piped.tbl", "X1|one\r\nX2|two\r\n");
    UniqueWindow list(Make(FK_CLASS_TABLE, "@TBL(" + cities + ")@DISPLAY(1,2)"));
    const struct { UINT msg; std::string text, method; Strings keys; } steps[] = {
        {GXM_SETTABLE, piped, "@DISPLAY(1,2)@TBL(" + piped + ")", {"X1|one", "X2|two"}},
        {GXM_SETDELIMITER, "|", "@DISPLAY(1,2)@TBL(" + piped + ")@DLM(|)", {"X1", "X2"}},
        {GXM_SETDISPLAY, "", "@TBL(" + piped + ")@DLM(|)", {"X1", "X2"}},
        {GXM_SETTABSTOPS, "30,70", "@TBL(" + piped + ")@DLM(|)@TABSTOP(30,70)", {"X1", "X2"}},
        {GXM_SETCOLWIDTHS, "20", "@TBL(" + piped + ")@DLM(|)@TABSTOP(30,70)@COLWIDTH(20)", {"X1", "X2"}},
        {GXM_SETTABLE, cities, "@DLM(|)@TABSTOP(30,70)@COLWIDTH(20)@TBL(" + cities + ")",
         {"BER,Berlin,DE", "brn,Bern,CH", "BRU,Brussels,BE", "LIS,Lisbon,PT", "ROM,Rome,IT"}},
    };
    for (const auto& s : steps) {
        SendMessageA(list, s.msg, 0, reinterpret_cast<LPARAM>(s.text.c_str()));
        EXPECT_EQ(Ask(list, GXM_GETMETHOD), s.method) << std::hex << s.msg;
        EXPECT_EQ(Keys(list), s.keys) << std::hex << s.msg;
    }
    UniqueWindow combo(Make(FK_CLASS_CBTABLE, "@TBL(" + piped + ")", CBS_DROPDOWN));
    SendMessageA(combo, GXM_SETDELIMITER, 0, reinterpret_cast<LPARAM>("|"));
    SendMessageA(combo, GXM_SETCOLWIDTHS, 0, reinterpret_cast<LPARAM>("20"));  // not a combo table message
    EXPECT_EQ(Ask(combo, GXM_GETMETHOD), "@TBL(" + piped + ")@DLM(|)");
    EXPECT_EQ(Keys(combo, true), (Strings{"X1", "X2"}));
}

// The first column of item row (of an owner-drawn list) in which text is drawn, from x on; -1 for none.
int FirstInk(HWND list, int row, int from) {
    RECT r;
    SendMessageA(list, LB_GETITEMRECT, row, reinterpret_cast<LPARAM>(&r));
    Canvas shot(list);
    for (int x = from; x < shot.w; ++x)
        for (int y = r.top + 1; y < r.bottom - 1; ++y)  // inside a focus rectangle
            if (GetRValue(shot.at(x, y)) + GetGValue(shot.at(x, y)) + GetBValue(shot.at(x, y)) < 300) return x;
    return -1;
}

INT_PTR CALLBACK QuietDialog(HWND, UINT msg, WPARAM, LPARAM) { return msg == WM_INITDIALOG; }

// Column widths are dialog units of the dialog's font, measured where the text is drawn, in the list and in the
// combo's drop-down alike; a dragged column edge becomes the new "@COLWIDTH", also when the drag loses the mouse.
TEST_F(Tables, ColumnsInDialogUnitsAndDraggedEdges) {
    UniqueWindow dialog(CreateDialogParamA(GetModuleHandleA(nullptr), "FKCOLUMNS", parent, QuietDialog, 0));
    ASSERT_NE(dialog.get(), nullptr);
    HWND list = GetDlgItem(dialog, 100);
    ASSERT_EQ(Keys(list), (Strings{"OSL", "PAR"}));
    RECT units{0, 0, 40, 10}, ten{0, 0, 10, 10};
    MapDialogRect(dialog, &units), MapDialogRect(dialog, &ten);
    const int edge = units.right;  // column 1 (the names) is 40 units wide
    COMBOBOXINFO info{sizeof info};
    ASSERT_TRUE(GetComboBoxInfo(GetDlgItem(dialog, 101), &info));
    SendMessageA(GetDlgItem(dialog, 101), CB_SHOWDROPDOWN, TRUE, 0);
    PaintNow(dialog), PaintNow(info.hwndList);
    const int name = FirstInk(list, 0, 1), key = FirstInk(list, 1, edge - 2);
    EXPECT_TRUE(name >= 2 && name <= 4) << name;                            // "Oslo" at the column's pad
    EXPECT_TRUE(key >= edge + 2 && key <= edge + 4) << key << " " << edge;  // "PAR" right of the 40-unit column
    EXPECT_EQ(FirstInk(info.hwndList, 1, edge - 2), key) << "the drop-down draws the key where the list does";
    SendMessageA(GetDlgItem(dialog, 101), CB_SHOWDROPDOWN, FALSE, 0);
    SendMessageA(list, LB_SETCURSEL, 1, 0);
    const struct { int to; bool release; int first; } drags[] = {
        {edge + ten.right, true, 50}, {edge + 2 * ten.right, false, 60}};
    for (int from = edge; const auto& d : drags) {
        SendMessageA(list, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(from, 5));
        SendMessageA(list, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM((from + d.to) / 2, 5));
        if (d.release) SendMessageA(list, WM_LBUTTONUP, 0, MAKELPARAM(d.to, 5));  // the release moves on
        else SendMessageA(list, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(d.to, 5)), ReleaseCapture();
        int first = 0, second = 0;
        const std::string m = Ask(list, GXM_GETMETHOD);
        ASSERT_EQ(std::sscanf(m.c_str() + m.find("@COLWIDTH("), "@COLWIDTH(%d,%d)", &first, &second), 2) << m;
        EXPECT_NEAR(first, d.first, 1) << m;
        EXPECT_EQ(second, 30) << m;
        EXPECT_EQ(m.find("@COLWIDTH"), m.rfind("@COLWIDTH")) << m;
        EXPECT_EQ(Ask(list, GXM_GETVALUE), "PAR");  // the reload keeps the selection
        from = d.to;
    }
}

}  // namespace
