// twValidate and twShowError: which test refuses, what the parent is told, the box, table lookups.
#include <gtest/gtest.h>

#include <time.h>

#include <algorithm>

#include "include/fldkit.h"
#include "tests/support/msgbox_watch.h"
#include "tests/support/pump.h"
#include "tests/support/recorder.h"
#include "tests/support/window.h"
#include "tests/win/tables/popup_driver.h"

namespace {

using namespace fktest;

// The field: a child (id 42) that keeps its text with DefWindowProcA and records what it gets.
std::vector<Msg> g_field;
LRESULT CALLBACK FieldProc(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    g_field.push_back({msg, wp, lp});
    return DefWindowProcA(h, msg, wp, lp);
}
UniqueWindow MakeField(HWND parent, const std::string& text = "x") {
    WNDCLASSA wc{0, FieldProc, 0, 0, GetModuleHandleA(nullptr), nullptr, nullptr, nullptr, nullptr, "FkTestField"};
    RegisterClassA(&wc);  // fails harmlessly once registered
    g_field.clear();
    return UniqueWindow(CreateWindowExA(0, "FkTestField", text.c_str(), (parent ? WS_CHILD : WS_POPUP) | WS_VISIBLE,
                                        20, 30, 100, 24, parent, parent ? reinterpret_cast<HMENU>(42) : nullptr,
                                        wc.hInstance, nullptr));
}
bool SelectedAll() {  // the whole text: start 0, end 500
    return std::ranges::any_of(g_field, [](const Msg& m) { return m.msg == EM_SETSEL && m.wp == 0 && m.lp == 500; });
}
// The boxes shown, as "text|caption" each, "*" marking one owned by the parent.
std::string Shown(const MessageBoxWatcher& boxes, HWND parent) {
    std::string all;
    for (const ShownBox& b : boxes.boxes()) all += b.text + "|" + b.caption + (b.owner == parent ? "* " : " ");
    return all;
}

class Validation : public ::testing::Test {
protected:
    Validation() {  // each notice as "type error method|message|caption"; the id and the block are checked here
        parent.reply = [this](UINT msg, WPARAM wp, LPARAM lp) -> std::optional<LRESULT> {
            if (msg != GXN_ERROR) return std::nullopt;
            const auto* n = reinterpret_cast<const FieldErrorNotice*>(lp);
            EXPECT_TRUE(wp == 42 && n->nId == 42 && n->hWnd == field.get());
            EXPECT_TRUE(GlobalSize(GlobalHandle(n)) >= 60 && std::ranges::all_of(n->reserved, [](BYTE b) { return !b; }));
            auto s = [](const char* p) { return std::string(p ? p : "<null>"); };
            notices.push_back(std::to_string(n->nType) + " " + std::to_string(n->nError) + " " + s(n->lpMethod) + "|" +
                              s(n->lpMessage) + "|" + s(n->lpCaption));
            return answer;
        };
        twFreeTable(path.c_str());
    }
    ~Validation() override {
        twFreeTable(path.c_str());
        DeleteFileA(path.c_str());
    }
    // Validates value (the text itself when null) in a fresh field showing text.
    int Check(int type, const void* value, std::string method, std::string text = "x") {
        notices.clear();
        field = MakeField(parent, text);
        return twValidate(field, type, value ? const_cast<void*>(value) : text.data(), method.data(), text.data());
    }
    std::string Tbl(const char* rest = "") const { return "@TBL(" + path + ")" + rest; }

    RecordingParent parent;
    UniqueWindow field;
    std::vector<std::string> notices;
    LRESULT answer = GXR_HANDLED;  // handled, value refused: no box
    std::string path = WriteTable("fk_validate.tbl", "PAR,Paris,FR\r\nROM,Rome,IT\r\nOSL,Oslo,NO\r\n");
};

// twShowError: the message and caption composed for the parent's notice; the reply's bits decide; not handled, the box
// is shown (owned by the parent), the field's text selected and the parent told after. Without a parent nothing is
// composed: the box shows the last message, uncaptioned. Seen: "result message|caption", then "shown", "selected".
TEST_F(Validation, ShowErrorComposesTheNoticeAndTheReplyDecides) {
    field = MakeField(parent);
    MessageBoxWatcher boxes;
    const struct { std::string method; int type, error; std::string seen; LRESULT reply = GXR_HANDLED; } cases[] = {
        {"@MBOX(a;b)", 1, 300, "0 a|b"}, {"@MBOX(a;b:c)", 1, 300, "0 a;b|c"},  // ":" is tried first
        {"@MBOX(m:" + std::string(150, 'c') + ")", 1, 300, "0 m|" + std::string(99, 'c')},
        {"@MBOX(x)@MSG(y)", 1, 300, "0 x|Application Error"}, {"@STAT(Status)", 4, 100, "0 Status|"},
        {"@RNG(1,9)", 1, 100, "0 Value not entered.|Numeric Value"}, {"", 2, 200, "0 Value not filled.|Numeric Value"},
        {"", 10, 500, "0 Not a valid choice.|Character String"}, {"", 5, 600, "0 Value could not be found.|Date Value"},
        {"", 6, 100, "0 Value not entered.|Time Value"}, {"", 7, 400, "0 Value is not valid.|Floating Point"},
        {"", 99, 250, "0 No message specified.|Error Condition"},
        {"@MSG(One digit)", 1, 300, "1 One digit|", GXR_HANDLED | GXR_ACCEPT},
        {"@MSG(One digit)", 1, 300, "0 One digit| shown selected", GXR_ACCEPT},  // without bit 0 the box is shown
        {"@MBOX(Too large)@WARN@BEEP", 1, 300, "1 Too large|Warning shown selected", 0}};  // warned: the value stands
    const auto low = static_cast<LPARAM>(LOWORD(reinterpret_cast<UINT_PTR>(field.get())));
    for (const auto& c : cases) {
        parent.clear();
        g_field.clear();
        notices.clear();
        answer = c.reply;
        std::string seen = std::to_string(twShowError(field, const_cast<char*>(c.method.c_str()), c.type, c.error));
        for (const Msg& m : parent.messages())
            if (m.msg == GXN_ERROR) seen += " " + notices.at(0).substr(notices[0].find('|') + 1);
            else if (m.msg == GXN_ERRORSHOWN && m.wp == 42 && m.lp == low) seen += " shown";
        EXPECT_EQ(seen + (SelectedAll() ? " selected" : ""), c.seen) << c.method;
    }
    char lonely[] = "@MSG(x)@WARN";
    UniqueWindow lone = MakeField(nullptr);
    EXPECT_EQ(twShowError(lone, lonely, 1, 300), 1);
    EXPECT_EQ(twShowError(nullptr, nullptr, 3, 400), 0);
    EXPECT_EQ(Shown(boxes, parent), "One digit|* Too large|Warning* Too large| Too large| ");
}

// Values by type: numbers, text (the field's text), dates as yyyymmdd (19000000 is the empty date). The notice
// carries the method from the failing keyword on (or the whole method of a table miss); the parent's reply decides.
TEST_F(Validation, WhichTestRefusesAndTheReplyDecides) {
    const std::string miss = "Table Entry not found.|";
    const struct {
        int type; double num; std::string method; const char* seen;  // "result", then the notice's type and error
        const char* text = "x";
        std::string shown = "", from = "";  // the notice's "message|caption" and method, when the row says
        LRESULT reply = GXR_HANDLED;
    } cases[] = {
        {1, 12, "@RNG(1,9)", "0 1 300"}, {2, 0, "@RNG(1,9)", "1", "0"},  // zero: not tested
        {1, 0, "@MND", "0 1 100", "   "}, {2, 0, "@MND", "0 2 100", "0"}, {1, 0, "@MND@RNG(0,5)", "1", "0"},
        {1, 4, "@CHC(1,2,3)", "0 1 500"}, {1, 3, "@CHC(1,2,3)@RNG(5,9)", "0 1 300"},  // range before choice
        {3, -0.0, "@RNG(1,2)", "1"},                                                  // -0.0 is empty
        {6, 0, "@MND@RNG(1,2)", "0"}, {19, 0, "@MND@RNG(1,2)", "0"},                  // reserved: no test, no message
        {4, 0, "@RNG(a,m)@CHC(x)", "1", ""}, {4, 0, "@MND", "0 4 100", "  "},
        {4, 0, "@RNG(a,m)", "1", "Apple"},  // the locale's order puts "Apple" after "a"
        {4, 0, "@RNGI(a,m)", "0 4 300", "Zebra"}, {4, 0, "@CHC(Red, Blue)", "0 4 500", "blue"},
        {4, 0, "@CHCI(Red, Blue)", "1", "blue"}, {13, 19000000, "@RNG(01/01/90,)", "1"},
        {13, 19000000, "@MND", "0 5 100", "", "Value not entered.|Date Value"}, {13, 20000229, "", "1"},
        {13, 20000229, "@RNG(,)", "0 5 400", "", "Value is not valid.|Date Value"},
        {14, 9990101, "@MSG(Mine)", "0 5 400", "", "Year must be four digits and greater than 999|"},
        {13, 9990101, "@MSG(Mine)", "1"}, {16, 19950615, "@RNG(01.01.1996,)@MSG(Late)", "0 5 300", "", "Late|"},
        {5, 19950615, "@CHC(06/16/95)", "0 5 500"},
        {4, 0, Tbl(), "1", "  ROM  "}, {4, 0, Tbl("@RNG(A,M)"), "0 4 300", "ROM"},  // found; found, out of range
        {4, 0, Tbl("@KEY(3)@DLM(,)"), "1", "IT"}, {4, 0, "@MND", "1", "b"},  // found; then no table at all
        {1, 12, "@NUM@RNG(1,9)@MSG(One digit)", "0 1 300", "x", "One digit|", "@RNG(1,9)@MSG(One digit)"},
        {1, 12, "@MSG(x)@RNG(1,9)", "0 1 300", "x", "Value out of range.|Numeric Value", "@RNG(1,9)"},
        {4, 0, Tbl(), "0 4 600", "XXX", miss + "Application Error", Tbl()},
        {4, 0, Tbl("@WARN"), "1 4 600", "XXX", miss + "Warning", "", GXR_HANDLED | GXR_ACCEPT},
        {4, 0, "@WARN" + Tbl(), "0 4 600", "XXX", miss + "Application Error"},  // "@WARN" must follow "@TBL"
        {4, 0, Tbl("@RNG(A,B)"), "1 4 600", "XXX", miss + "Application Error", "", GXR_HANDLED | GXR_ACCEPT},
        {4, 0, Tbl("@MND"), "0 4 600", "   ", miss + "Application Error"}};  // blank: the table is offered
    for (const auto& c : cases) {
        const int32_t whole = static_cast<int32_t>(c.num);
        struct tm date{0, 0, 0, whole % 100, whole / 100 % 100 - 1, whole / 10000 - 1900, 0, 0, 0};
        const void* v = c.type == 4 ? nullptr : c.type == 3 ? static_cast<const void*>(&c.num)
                        : c.type <= 2 ? static_cast<const void*>(&whole) : static_cast<const void*>(&date);
        answer = c.reply;
        std::string seen = std::to_string(Check(c.type, v, c.method, c.text));
        for (const std::string& n : notices) seen += " " + n.substr(0, n.find(' ', n.find(' ') + 1));
        EXPECT_EQ(seen, c.seen) << c.type << " " << c.num << c.text << c.method;
        const std::string notice = notices.empty() ? "" : notices[0].substr(notices[0].find(' ', 2) + 1);
        if (!c.shown.empty()) EXPECT_EQ(notice.substr(notice.find('|') + 1), c.shown) << c.method;
        if (!c.from.empty()) EXPECT_EQ(notice.substr(0, notice.find('|')), c.from) << c.method;
    }
    EXPECT_TRUE(parent.Of(GXN_ERRORSHOWN).empty());
    answer = 0;  // a warning not handled shows the box and ends the tests
    MessageBoxWatcher boxes;
    const int32_t twelve = 12;
    EXPECT_EQ(Check(1, &twelve, "@RNG(1,9)@WARN@CHC(5)"), 1);
    EXPECT_EQ(Shown(boxes, parent), "Value out of range.|Numeric Value* ") << "the choice test did not run";
}

// Not handled, a miss opens the table below the field (or where @POS says): a pick sets the key and still refuses.
TEST_F(Validation, TablePopupPicksOrCancels) {
    answer = 0;
    RECT r;
    {
        PopupDriver driver(path, {VK_DOWN, VK_RETURN});
        EXPECT_EQ(Check(4, nullptr, Tbl("@KEY(2)@DISPLAY(2,3)"), "Nowhere"), 0);
        EXPECT_EQ(driver.items, (std::vector<std::string>{"Paris\tFR", "Rome\tIT", "Oslo\tNO"}));
        EXPECT_EQ(WindowText(field), "Rome");
        EXPECT_TRUE(driver.owner == parent.hwnd() && SelectedAll() && GetFocus() == field.get());
        EXPECT_TRUE(GetWindowRect(field, &r) && std::abs(driver.rect.top - r.bottom) <= 4) << "it opens below the field";
    }
    PopupDriver driver(path, {VK_ESCAPE});
    EXPECT_EQ(Check(4, nullptr, Tbl("@POS(5,6,120,60)"), "XXX"), 0);
    EXPECT_EQ(std::pair(driver.rect.right - driver.rect.left, driver.rect.top < r.top),
              std::pair(LONG{MulDiv(120, LOWORD(GetDialogBaseUnits()), 4)}, true)) << "@POS sizes and places it";
    MessageBoxWatcher boxes;  // a missing table is a miss: no box, an empty popup
    EXPECT_EQ(Check(4, nullptr, "@TBL(C:\\no\\such\\table.tbl)@BEEP", "XXX"), 0);
    EXPECT_EQ(notices.size() + boxes.boxes().size() + parent.Of(GXN_ERRORSHOWN).size(), 4u);
}

}  // namespace
