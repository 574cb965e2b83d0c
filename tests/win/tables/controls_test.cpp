// The table list (gxTable32) and the combo table (gxCBTable32): filling, columns, values, type-ahead and
// completion, ranges, the table messages, links, and hostile tables.
#include <dde.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "include/fldkit.h"
#include "tests/support/drag.h"
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

std::string Method(HWND h) {
    char text[300] = {};
    SendMessageA(h, GXM_GETMETHOD, 256, reinterpret_cast<LPARAM>(text));
    return text;
}
std::string Value(HWND h) {
    char text[300] = {};
    SendMessageA(h, GXM_GETVALUE, 0, reinterpret_cast<LPARAM>(text));
    return text;
}
void SetMethod(HWND h, const std::string& m) { SendMessageA(h, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(m.c_str())); }

// The keys (item strings) a table list or combo table holds.
Strings Keys(HWND h, bool combo = false) {
    Strings keys;
    char text[300];
    const LRESULT n = SendMessageA(h, combo ? CB_GETCOUNT : LB_GETCOUNT, 0, 0);
    for (LRESULT i = 0; i < n; ++i)
        SendMessageA(h, combo ? CB_GETLBTEXT : LB_GETTEXT, i, reinterpret_cast<LPARAM>(text)), keys.push_back(text);
    return keys;
}

class TableControls : public ::testing::Test {
protected:
    ~TableControls() override {
        twFreeTable(nullptr);
        for (auto& f : files) DeleteFileA(f.c_str());
    }
    std::string Write(const char* name, const std::string& text) { return files.emplace_back(WriteTable(name, text)); }
    HWND Make(const char* cls, const std::string& method, DWORD style = WS_BORDER | WS_VSCROLL, int height = 120) {
        HWND h = CreateWindowExA(0, cls, "", WS_CHILD | WS_VISIBLE | style, 10, 10, 300, height, parent, HMENU(7),
                                 GetModuleHandleA(nullptr), nullptr);
        EXPECT_NE(h, nullptr) << cls;
        SendMessageA(h, WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT)), FALSE);
        SetMethod(h, method);
        return h;
    }
    std::vector<std::string> files;
    std::string cities = Write("fk_controls.tbl", kCities);
    RecordingParent parent{500, 300};
};

// Files (with ".TBL" added), resources of the program, a separate "@RES", ranges with and without case.
TEST_F(TableControls, FillFromFilesAndResourcesWithinTheRange) {
    const std::string bare = cities.substr(0, cities.size() - 4);
    const struct { std::string method; Strings keys; } cases[] = {
        {"@TBL(" + cities + ")", {"BER", "brn", "BRU", "LIS", "ROM"}},
        {"@TBL(" + bare + ")@KEY(3)", {"DE", "CH", "BE", "PT", "IT"}},
        {"@TBL(@RES(FKCITIES))", {"OSL", "PAR"}},
        {"@TBL(FKCITIES)@RES@KEY(2)", {"Oslo", "Paris"}},
        {"@TBL(" + cities + ")@RNG(B,BRZ)", {"BER", "brn", "BRU"}},  // compared as lstrcmpA compares
        {"@TBL(" + cities + ")@RNG(BRN,BRN)", {}},
        {"@TBL(" + cities + ")@RNGI(BRN,BRN)", {"brn"}},
        {"@TBL(" + cities + ")@RNG(L,)", {"LIS", "ROM"}},
        {"@TBL(C:\\no\\such.tbl)", {}},
        {"@DISPLAY(1)", {}},
    };
    for (const char* cls : {FK_CLASS_TABLE, FK_CLASS_CBTABLE}) {
        const bool combo = std::strcmp(cls, FK_CLASS_CBTABLE) == 0;
        for (const auto& c : cases) {
            UniqueWindow h(Make(cls, c.method, combo ? CBS_DROPDOWN : WS_BORDER));
            EXPECT_EQ(Keys(h, combo), c.keys) << cls << " " << c.method;
        }
    }
}

// Values are keys: set, read back, as window text, over DDE; an unknown key selects nothing.
TEST_F(TableControls, ValuesAreKeys) {
    UniqueWindow list(Make(FK_CLASS_TABLE, "@TBL(" + cities + ")@DISPLAY(2)"));
    UniqueWindow combo(Make(FK_CLASS_CBTABLE, "@TBL(" + cities + ")", CBS_DROPDOWN));
    LONG size = 0;
    EXPECT_EQ(SendMessageA(list, GXM_GETTYPE, GXT_TEXT, reinterpret_cast<LPARAM>(&size)), GXT_TABLE);
    EXPECT_EQ(size, 256);
    EXPECT_EQ(SendMessageA(combo, GXM_GETTYPE, GXT_TEXT, 0), GXT_TEXT);
    for (HWND h : {list.get(), combo.get()}) {
        SendMessageA(h, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>("ROM"));
        EXPECT_EQ(Value(h), "ROM");
        EXPECT_EQ(WindowText(h), "ROM");
        SendMessageA(h, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>("BRN"));  // keys match in case
        EXPECT_EQ(SendMessageA(h, h == list ? LB_GETCURSEL : CB_GETCURSEL, 0, 0), -1);
        SendMessageA(h, WM_SETTEXT, 0, reinterpret_cast<LPARAM>("brn"));
        EXPECT_EQ(Value(h), "brn");
    }
    EXPECT_EQ(Value(list), "brn");
    SendMessageA(list, GXM_SETVALUE, 0, 0);
    EXPECT_EQ(Value(list), "");
    EXPECT_EQ(parent.CommandCodes(), std::vector<WORD>{}) << "values set by the program notify nothing";
}

// F1 opens help: in the table list itself, in the combo table from its edit part.
TEST_F(TableControls, F1OpensHelp) {
    MessageBoxWatcher boxes;
    UniqueWindow list(Make(FK_CLASS_TABLE, "@TBL(" + cities + ")@HELPMSG1(Pick a city)"));
    UniqueWindow combo(Make(FK_CLASS_CBTABLE, "@HELPMSG1(Type a code)", CBS_DROPDOWN));
    COMBOBOXINFO info{sizeof info};
    ASSERT_TRUE(GetComboBoxInfo(combo, &info));
    SendMessageA(list, WM_KEYDOWN, VK_F1, 0);
    SendMessageA(info.hwndItem, WM_KEYDOWN, VK_F1, 0);
    ASSERT_EQ(boxes.boxes().size(), 2u);
    EXPECT_EQ(boxes.boxes()[0].text + "/" + boxes.boxes()[1].text, "Pick a city/Type a code");
    EXPECT_EQ(boxes.boxes()[0].caption, "Help");
}

// A table list serving its key: a string field linked as client shows each selection.
TEST_F(TableControls, ServerPushesTheSelectedKey) {
    parent.reply = [&](UINT msg, WPARAM wp, LPARAM lp) -> std::optional<LRESULT> {
        if (msg != WM_DDE_INITIATE) return std::nullopt;
        for (HWND c = GetWindow(parent, GW_CHILD); c; c = GetWindow(c, GW_HWNDNEXT)) SendMessageA(c, msg, wp, lp);
        return 0;
    };
    UniqueWindow list(Make(FK_CLASS_TABLE, "@TBL(" + cities + ")@SERVER(FkTables,Cities,Key)"));
    UniqueWindow other = MakeParent();
    UniqueWindow field = MakeChild(other, FK_CLASS_STRING);
    SetMethod(field, "@CLIENT(FkTables,Cities,Key)NOAUTOSTART");
    ASSERT_NE(GetPropA(field, "CLIENT"), nullptr);
    SendMessageA(list, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>("LIS"));
    EXPECT_TRUE(PumpUntil([&] { return WindowText(field) == "LIS"; })) << WindowText(field);
    SendMessageA(list, WM_KEYDOWN, VK_DOWN, 0);  // the user moves on
    EXPECT_TRUE(PumpUntil([&] { return WindowText(field) == "ROM"; })) << WindowText(field);
}

// A line pressed and dragged: its key lands in a string field.
TEST_F(TableControls, DragsTheKeyIntoAStringField) {
    UniqueWindow list(Make(FK_CLASS_TABLE, "@TBL(" + cities + ")@DISPLAY(2)@DRAGSRC"));
    UniqueWindow field = MakeChild(parent, FK_CLASS_STRING, 0, 8, 120, 24);
    SetWindowPos(field, nullptr, 350, 10, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    SetMethod(field, "@DROPTARG");
    RECT row;
    SendMessageA(list, LB_GETITEMRECT, 2, reinterpret_cast<LPARAM>(&row));
    DragOnto(list, {row.left + 20, row.top + 2}, field);
    EXPECT_EQ(WindowText(field), "BRU");
    EXPECT_EQ(Value(list), "BRU");
    EXPECT_EQ(Keys(list).size(), 5u);  // copied, not moved
}

// Characters typed in a row search the first shown column without case; a key press starts afresh.
TEST_F(TableControls, TypeAheadOverSeveralCharacters) {
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
        EXPECT_EQ(Value(list), s.key) << s.typed;
    }
    EXPECT_GE(parent.Of(WM_COMMAND).size(), 4u);
    for (const Msg& m : parent.Of(WM_COMMAND)) EXPECT_EQ(HIWORD(m.wp), LBN_SELCHANGE);
    // A blank is searched for like a letter; a control character is not typed text.
    SetMethod(list, "@TBL(" + Write("fk_new.tbl", "NDL,New Delhi\r\nNWK,Newark\r\nNYC,New York\r\n") + ")@DISPLAY(2)");
    SendMessageA(list, WM_KEYDOWN, VK_HOME, 0);
    for (char c : std::string("new\x01 y")) SendMessageA(list, WM_CHAR, static_cast<unsigned char>(c), 0);
    EXPECT_EQ(Value(list), "NYC");
}

// Typing at the end of the combo's edit part completes a key; the application checks a typed key with twValidate.
TEST_F(TableControls, ComboCompletesKeysAndTwValidateCatchesUnknownOnes) {
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
        EXPECT_EQ(WindowText(combo), s.text) << s.typed;
        DWORD start = 0, end = 0;
        SendMessageA(info.hwndItem, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
        EXPECT_EQ(start, s.selStart) << s.typed;
        EXPECT_EQ(end, std::strlen(s.text)) << s.typed;
    }
    parent.reply = [](UINT msg, WPARAM, LPARAM) -> std::optional<LRESULT> {
        return msg == GXN_ERROR ? std::optional<LRESULT>(GXR_HANDLED) : std::nullopt;
    };
    char m[300], typed[32];
    for (const char* key : {"ZZ", "BRU", "bru"}) {
        SendMessageA(combo, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>(key));
        lstrcpyA(m, method.c_str()), lstrcpyA(typed, Value(combo).c_str());
        EXPECT_EQ(twValidate(combo, GXT_TEXT, typed, m, typed) != 0, std::strcmp(key, "BRU") == 0) << key;
    }
    EXPECT_EQ(parent.Of(GXN_ERROR).size(), 2u);
}

// The five table messages edit the method string and the list loads again.
TEST_F(TableControls, TableMessagesEditTheMethodAndReload) {
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
        EXPECT_EQ(Method(list), s.method) << std::hex << s.msg;
        EXPECT_EQ(Keys(list), s.keys) << std::hex << s.msg;
    }
    UniqueWindow combo(Make(FK_CLASS_CBTABLE, "@TBL(" + piped + ")", CBS_DROPDOWN));
    SendMessageA(combo, GXM_SETDELIMITER, 0, reinterpret_cast<LPARAM>("|"));
    SendMessageA(combo, GXM_SETCOLWIDTHS, 0, reinterpret_cast<LPARAM>("20"));  // not a combo table message
    EXPECT_EQ(Method(combo), "@TBL(" + piped + ")@DLM(|)");
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

// The combo table's drop-down draws the columns where the table list draws them.
TEST_F(TableControls, DropDownShowsTheColumnsAsTheListDoes) {
    const std::string method = "@TBL(" + cities + ")@DISPLAY(2,1)@COLWIDTH(40,30)";
    UniqueWindow list(Make(FK_CLASS_TABLE, method)), combo(Make(FK_CLASS_CBTABLE, method, CBS_DROPDOWN));
    COMBOBOXINFO info{sizeof info};
    ASSERT_TRUE(GetComboBoxInfo(combo, &info));
    SendMessageA(combo, CB_SHOWDROPDOWN, TRUE, 0);
    PaintNow(parent), PaintNow(info.hwndList);
    const int inList = FirstInk(list, 1, 30), inDropDown = FirstInk(info.hwndList, 1, 30);
    EXPECT_GT(inList, 30);
    EXPECT_EQ(inDropDown, inList) << "the key column (\"brn\") of the second line";
    SendMessageA(combo, CB_SHOWDROPDOWN, FALSE, 0);
}

// A dialog template's control: its text is the method string. Widths are dialog units of the dialog's font,
// measured where the text is drawn; a dragged column edge becomes the new "@COLWIDTH".
INT_PTR CALLBACK QuietDialog(HWND, UINT msg, WPARAM, LPARAM) { return msg == WM_INITDIALOG; }

TEST_F(TableControls, ColumnsInDialogUnitsAndDraggedEdges) {
    std::vector<WORD> t;
    auto dword = [&](DWORD d) { t.push_back(LOWORD(d)), t.push_back(HIWORD(d)); };
    auto text = [&](const std::string& s) { for (char c : s) t.push_back(static_cast<BYTE>(c)); t.push_back(0); };
    dword(WS_POPUP | WS_VISIBLE | DS_SETFONT), dword(0), t.insert(t.end(), {1, 0, 0, 240, 120, 0, 0});
    text("Columns"), t.push_back(8), text("MS Shell Dlg");
    if (t.size() % 2) t.push_back(0);
    dword(WS_CHILD | WS_VISIBLE | WS_BORDER | WS_VSCROLL), dword(0), t.insert(t.end(), {5, 5, 220, 100, 100});
    text("gxTable32"), text("@INIT@TBL(" + cities + ")@DISPLAY(2,1)@COLWIDTH(40,30)"), t.push_back(0);
    UniqueWindow dialog(CreateDialogIndirectParamA(GetModuleHandleA(nullptr),
                                                   reinterpret_cast<LPCDLGTEMPLATEA>(t.data()), parent, QuietDialog, 0));
    ASSERT_NE(dialog.get(), nullptr);
    HWND list = GetDlgItem(dialog, 100);
    ASSERT_EQ(Keys(list).size(), 5u);
    RECT units{0, 0, 40, 10};
    MapDialogRect(dialog, &units);
    const int edge = units.right;  // column 1 (the names) is 40 units wide
    PaintNow(dialog);
    const int name = FirstInk(list, 0, 1), key = FirstInk(list, 0, edge - 2);
    EXPECT_TRUE(name >= 2 && name <= 4) << name;                // "Berlin" at the column's pad
    EXPECT_TRUE(key >= edge + 2 && key <= edge + 4) << key << " " << edge;  // "BER" right of the 40-unit column
    SendMessageA(list, LB_SETCURSEL, 3, 0);
    RECT ten{0, 0, 10, 10};
    MapDialogRect(dialog, &ten);
    SendMessageA(list, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(edge, 5));
    SendMessageA(list, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(edge + ten.right / 2, 5));  // the release moves on
    SendMessageA(list, WM_LBUTTONUP, 0, MAKELPARAM(edge + ten.right, 5));
    int first = 0, second = 0;
    const std::string m = Method(list);
    ASSERT_EQ(std::sscanf(m.c_str() + m.find("@COLWIDTH("), "@COLWIDTH(%d,%d)", &first, &second), 2) << m;
    EXPECT_NEAR(first, 50, 1) << m;
    EXPECT_EQ(second, 30) << m;
    EXPECT_EQ(m.find("@COLWIDTH"), m.rfind("@COLWIDTH")) << m;
    EXPECT_EQ(Value(list), "LIS");  // the reload keeps the selection
    // Losing the mouse in the middle of a drag keeps the width reached.
    SendMessageA(list, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(edge + ten.right, 5));
    SendMessageA(list, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(edge + 2 * ten.right, 5));
    ReleaseCapture();
    const std::string again = Method(list);
    ASSERT_EQ(std::sscanf(again.c_str() + again.find("@COLWIDTH("), "@COLWIDTH(%d,%d)", &first, &second), 2) << again;
    EXPECT_NEAR(first, 60, 1) << again;
}

// Empty, binary, huge and wide tables, missing delimiters, column numbers out of range, garbage widths, a file
// deleted while shown: each loads (or not) without harm and paints.
TEST_F(TableControls, HostileTables) {
    std::string big, wide, binary;
    for (int i = 0; i < 100000; ++i) big += "K" + std::to_string(i) + ",line " + std::to_string(i) + "\r\n";
    for (int i = 0; i < 3; ++i) wide += std::string(10000, static_cast<char>('a' + i)) + ",x\r\n";
    for (int i = 0; i < 4096; ++i) binary.push_back(static_cast<char>((i * 37 + 11) % 256));
    std::string widths = "@COLWIDTH(";
    for (int i = 0; i < 1000; ++i) widths += std::to_string(i * 97) + ",";
    widths += "x)";
    const struct { std::string table, extra; size_t count; } cases[] = {
        {Write("fk_empty.tbl", ""), "", 0},
        {Write("fk_binary.tbl", binary), "@DISPLAY(1,2,3)", 0},  // whatever lines there are
        {Write("fk_big.tbl", big), "@DISPLAY(2)", 100000},
        {Write("fk_wide.tbl", wide), "", 3},
        {cities, "@DLM(;)@DISPLAY(0,33,-1)", 5},
        {cities, "@DISPLAY(3,2,1)@COLWIDTH(x,-5,,99999999)@TABSTOP(y)", 5},
        {cities, widths + "@TABSTOP(" + widths + ")", 5},
        {cities, "@KEY(-1)@DLM()@RNG(((", 0},
    };
    for (const char* cls : {FK_CLASS_TABLE, FK_CLASS_CBTABLE}) {
        const bool combo = std::strcmp(cls, FK_CLASS_CBTABLE) == 0;
        for (const auto& c : cases) {
            UniqueWindow h(Make(cls, "@TBL(" + c.table + ")" + c.extra, combo ? CBS_DROPDOWN : WS_BORDER));
            const size_t count = SendMessageA(h, combo ? CB_GETCOUNT : LB_GETCOUNT, 0, 0);
            if (c.table.find("binary") == std::string::npos) EXPECT_EQ(count, c.count) << cls << c.extra;
            SendMessageA(h, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>("K99999"));
            if (combo) SendMessageA(h, CB_SHOWDROPDOWN, TRUE, 0);
            PaintNow(parent);
            if (combo) SendMessageA(h, CB_SHOWDROPDOWN, FALSE, 0);
            char key[300];
            SendMessageA(h, GXM_GETVALUE, 0, reinterpret_cast<LPARAM>(key));
            EXPECT_LT(std::strlen(key), 256u);
        }
    }
    UniqueWindow list(Make(FK_CLASS_TABLE, "@TBL(" + cities + ")"));
    DeleteFileA(cities.c_str()), twFreeTable(cities.c_str());
    PaintNow(parent);
    EXPECT_EQ(Keys(list).size(), 5u);  // the lines shown stay
    SetMethod(list, "@TBL(" + cities + ")");
    EXPECT_EQ(Keys(list).size(), 0u);
}

}  // namespace
