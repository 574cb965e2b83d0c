// A control that is reconfigured while it lives gives back what it held
// before: its item atom, its method-string blocks, its pictures, its table
// state. After many lives of reconfiguring and destroying, the process's
// windows, atoms, GDI objects and heap blocks are where they started.

#include <gtest/gtest.h>

#include <dde.h>

#include <string>
#include <vector>

#include "include/fldkit.h"
#include "tests/support/files.h"
#include "tests/support/resources.h"
#include "tests/support/window.h"
#include "tests/win/display/picture_files.h"

namespace {

using namespace fktest;

// A dialog hands the initiates that reach it to its controls; so does this parent.
LRESULT CALLBACK LinkingParent(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    if (msg == WM_DDE_INITIATE) {
        for (HWND child = GetWindow(h, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
            SendMessageA(child, msg, wp, lp);
        return 0;
    }
    if (msg == GXN_ERROR) return GXR_HANDLED;
    return DefWindowProcA(h, msg, wp, lp);
}

void SetMethod(HWND h, const std::string& method) {
    SendMessageA(h, GXM_SETMETHOD, 0, method.empty() ? 0 : reinterpret_cast<LPARAM>(method.c_str()));
}

// References of a global atom still held: deleted one by one until the
// table no longer knows the name.
int AtomReferences(const std::string& name) {
    int n = 0;
    for (ATOM a; n < 100 && (a = GlobalFindAtomA(name.c_str())) != 0; ++n) GlobalDeleteAtom(a);
    return n;
}

std::string Unique(const char* stem) { return stem + std::to_string(GetCurrentProcessId()); }

// A client and a server of one item in one parent; what happens between
// creating and destroying them leaves no reference of the item behind.
TEST(Reconfigure, LinkedControlsGiveBackTheirItemAtom) {
    const std::string item = Unique("QTY");
    const std::string client = "@CLIENT(ORDERS,SHEET," + item + ")NOAUTOSTART";
    const std::string server = "@SERVER(ORDERS,SHEET," + item + ")";
    enum Act { kNothing, kServerAgain, kServerCleared, kClientAgain, kClientCleared, kPush, kRefresh, kServerAlone };
    const struct {
        const char* name;
        Act act;
    } cases[] = {
        {"nothing", kNothing},           {"server sent again", kServerAgain}, {"server cleared", kServerCleared},
        {"client sent again", kClientAgain}, {"client cleared", kClientCleared}, {"server pushes", kPush},
        {"client refreshes", kRefresh},  {"server without client sent again", kServerAlone},
    };
    for (const char* cls : {FK_CLASS_STRING, FK_CLASS_CBTABLE}) {
        for (const auto& c : cases) {
            {
                auto parent = MakeParent(LinkingParent);
                UniqueWindow clientControl;
                if (c.act != kServerAlone) {
                    clientControl = MakeChild(parent, cls, 0, 101);
                    SetMethod(clientControl, client);
                }
                auto serverControl = MakeChild(parent, cls, 0, 102);
                SetMethod(serverControl, server);
                switch (c.act) {
                case kServerAgain:
                case kServerAlone:
                    for (int i = 0; i < 3; ++i) SetMethod(serverControl, server);
                    break;
                case kServerCleared: SetMethod(serverControl, ""); break;
                case kClientAgain: SetMethod(clientControl, client); break;
                case kClientCleared: SetMethod(clientControl, ""); break;
                case kPush: SendMessageA(serverControl, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>("12")); break;
                case kRefresh: SendMessageA(clientControl, GXM_SETVALUE, 0, 0); break;
                case kNothing: break;
                }
                MSG m;
                while (PeekMessageA(&m, nullptr, 0, 0, PM_REMOVE)) DispatchMessageA(&m);
            }
            MSG m;
            while (PeekMessageA(&m, nullptr, 0, 0, PM_REMOVE)) DispatchMessageA(&m);
            EXPECT_EQ(AtomReferences(item), 0) << cls << ": " << c.name;
        }
    }
}

// How a class is reconfigured: method strings sent in turn (the last one
// twice), messages that change a setting, a value, a style bit.
struct Setting {
    UINT msg;
    WPARAM wp;
    const char* text;  // lParam as text, or nullptr for number
    LPARAM number;
};

enum class ValueKind { kText, kLong, kDouble, kDate };

struct Plan {
    const char* cls;
    DWORD style;
    DWORD styleFlip;  // a style bit switched on and off again
    std::vector<std::string> methods;
    std::vector<Setting> settings;
    ValueKind value;
};

void SetValue(HWND h, ValueKind kind, int n) {
    LONG whole = n;
    double real = n / 4.0;
    std::string text = std::to_string(n);
    switch (kind) {
    case ValueKind::kLong: SendMessageA(h, GXM_SETVALUE, GXT_LONG, reinterpret_cast<LPARAM>(&whole)); break;
    case ValueKind::kDouble: SendMessageA(h, GXM_SETVALUE, GXT_DOUBLE, reinterpret_cast<LPARAM>(&real)); break;
    case ValueKind::kDate: SendMessageA(h, GXM_SETVALUE, GXT_TEXT, reinterpret_cast<LPARAM>("02032004")); break;
    case ValueKind::kText: SendMessageA(h, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>(text.c_str())); break;
    }
    SetWindowTextA(h, text.c_str());
}

class ReconfigureEveryClass : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        table_ = WriteTable((Unique("fk_reconf") + ".tbl").c_str(), "PAR,Paris,FR\r\nROM,Rome,IT\r\nOSL,Oslo,NO\r\n");
        bitmap_ = new TempFile("reconf.bmp", Bmp(kQuadW, kQuadH, 4, 0, kQuadColours, Rows(kQuadW, kQuadH, 4, false, Quadrant)));
        strip_ = new TempFile("reconf_strip.bmp",
                              Bmp(kQuadW * 4, kQuadH, 24, 0, {}, Rows(kQuadW * 4, kQuadH, 24, false, [](int x, int y) {
                                      return kQuadColours[Quadrant(x % kQuadW, y)];
                                  })));
        icon_ = new TempFile("reconf.ico", Ico({{16, 0x00FF00}, {32, 0x0000FF}}));
    }
    static void TearDownTestSuite() {
        DeleteFileA(table_.c_str());
        delete bitmap_;
        delete strip_;
        delete icon_;
        twFreeTable(nullptr);
    }

    static std::vector<Plan> Plans() {
        const std::string item = Unique("RECONF");
        const std::string server = "@SERVER(FkReconf,Sheet," + item + ")";
        const std::string client = "@CLIENT(FkReconfNone,Sheet," + item + ")NOAUTOSTART";
        const std::string entry = "@MND@RNG(1,100)@MSG(Out of range)@AUTOTAB@LIMIT(10)@DRAGSRC@DROPTARG";
        const std::string table = "@TBL(" + table_ + ")@DISPLAY(1,2)@DLM(,)@KEY(1)@DRAGSRC";
        const std::vector<Setting> fieldSettings = {
            {GXM_SETLIMIT, 1, nullptr, 8},        {GXM_SETLIMIT, 0, nullptr, 0},
            {GXM_SETDROPTARGET, 1, nullptr, 0},   {GXM_SETDROPTARGET, 0, nullptr, 0},
        };
        const std::vector<Setting> stringSettings = {
            {GXM_MASK, 1, "##-##-##", 0},   {GXM_MASK, 1, "@@??", 0},    {GXM_MASK, 1, nullptr, 0},
            {GXM_EXCLUDE, 1, "xyz", 0},     {GXM_EXCLUDE, 1, "", 0},     {GXM_INCLUDE, 1, "0123456789", 0},
            {GXM_AUTOTAB, 1, nullptr, 1},   {GXM_AUTOTAB, 1, nullptr, 0}, {GXM_AUTOFILL, 1, nullptr, 1},
            {GXM_SETLIMIT, 1, nullptr, 6},  {GXM_SETDROPTARGET, 1, nullptr, 0},
        };
        const std::vector<Setting> tableSettings = {
            {GXM_SETTABLE, 0, table_.c_str(), 0}, {GXM_SETDISPLAY, 0, "2,1", 0}, {GXM_SETDELIMITER, 0, ",", 0},
            {GXM_SETTABSTOPS, 0, "10,40", 0},      {GXM_SETCOLWIDTHS, 0, "20,30", 0},
        };
        const std::vector<Setting> tickerSettings = {
            {GXM_TICKER_SETINTERVAL, 50, nullptr, 0}, {GXM_TICKER_STOP, 1, nullptr, 0}, {GXM_TICKER_STOP, 0, nullptr, 0}};
        const std::string bitmap = std::string("@BITMAP(") + bitmap_->path() + ")";
        const std::string strip = std::string("@BITMAP(") + strip_->path() + ")";
        const std::string icon = std::string("@ICON(") + icon_->path() + ")";
        auto links = [&](const std::string& own) { return std::vector<std::string>{own, own + server, own + client, own + server}; };
        return {
            {FK_CLASS_STRING, STR_UPPER, STR_UPPER, links(entry + "@INCLUDE(0123456789)"), stringSettings, ValueKind::kText},
            {FK_CLASS_NUMERIC, NUM_LONG, WS_BORDER, links(entry), fieldSettings, ValueKind::kLong},
            {FK_CLASS_REAL, REAL_DOUBLE, WS_BORDER, links(entry + "@DECP(2)"), fieldSettings, ValueKind::kDouble},
            {FK_CLASS_CURRENCY, CURR_DOUBLE, WS_BORDER, links(entry), fieldSettings, ValueKind::kDouble},
            {FK_CLASS_DATE, DATE_MMDDYYYY | DATE_SLASH, WS_BORDER, links("@MND@RNG(01/01/1990,12/31/2030)@DROPTARG"),
             fieldSettings, ValueKind::kDate},
            {FK_CLASS_TABLE, 0, WS_BORDER, links(table), tableSettings, ValueKind::kText},
            {FK_CLASS_CBTABLE, 0x0003 /* CBS_DROPDOWNLIST */, WS_BORDER, links(table), tableSettings, ValueKind::kText},
            {FK_CLASS_TICKER, 0, WS_BORDER, links("@LIMIT(20)"), tickerSettings, ValueKind::kText},
            {FK_CLASS_TEXT3D, TEXT3D_LIGHTRAISED, TEXT3D_CENTER, links("@DRAGSRC"), {}, ValueKind::kText},
            {FK_CLASS_BITMAP, 0, BMP_STRETCH, {bitmap, bitmap + "@DROPTARG", "", bitmap + "@DRAGSRC"}, {}, ValueKind::kText},
            {FK_CLASS_ICON, 0, WS_BORDER, {icon, icon + "@DROPTARG", "", icon}, {}, ValueKind::kText},
            {FK_CLASS_BUTTON, 0, WS_BORDER, {strip, strip + "@DROPTARG", "@MSG(text only)", strip}, {}, ValueKind::kText},
            {FK_CLASS_COLOR, 0, WS_BORDER, {"@MSG(colour)", "@PRT", "", "@MSG(again)"}, {}, ValueKind::kText},
            {FK_CLASS_LINE, GXLINE_HORIZONTAL, WS_BORDER, {"@MSG(line)", "", "@MSG(line)"}, {}, ValueKind::kText},
            {FK_CLASS_FRAME3D, FRAME3D_INSET, WS_BORDER, {"@MSG(frame)", "", "@MSG(frame)"}, {}, ValueKind::kText},
        };
    }

    // One life: created, reconfigured every way the plan knows, destroyed.
    static void Live(HWND parent, const Plan& p, int n) {
        UniqueWindow h(CreateWindowExA(0, p.cls, "reconfigure", WS_CHILD | WS_VISIBLE | WS_TABSTOP | p.style, 10, 10, 160,
                                       26, parent, reinterpret_cast<HMENU>(101), GetModuleHandleA(nullptr), nullptr));
        ASSERT_NE(h.get(), nullptr) << p.cls;
        for (int round = 0; round < 2; ++round) {
            for (const std::string& method : p.methods) SetMethod(h, method);
            SetMethod(h, p.methods.back());
            for (const Setting& s : p.settings)
                SendMessageA(h, s.msg, s.wp, s.text ? reinterpret_cast<LPARAM>(s.text) : s.number);
            SetValue(h, p.value, n * 10 + round);
            const LONG_PTR style = GetWindowLongPtrA(h, GWL_STYLE);
            SetWindowLongPtrA(h, GWL_STYLE, style ^ p.styleFlip);
            SetWindowPos(h, nullptr, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_FRAMECHANGED);
            SetMethod(h, p.methods.front());
            SetWindowLongPtrA(h, GWL_STYLE, style);
            SendMessageA(h, WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(ANSI_VAR_FONT)), TRUE);
            UpdateWindow(h);
        }
    }

    static std::string table_;
    static TempFile* bitmap_;
    static TempFile* strip_;
    static TempFile* icon_;
};

std::string ReconfigureEveryClass::table_;
TempFile* ReconfigureEveryClass::bitmap_ = nullptr;
TempFile* ReconfigureEveryClass::strip_ = nullptr;
TempFile* ReconfigureEveryClass::icon_ = nullptr;

void Pump() {
    MSG m;
    while (PeekMessageA(&m, nullptr, 0, 0, PM_REMOVE)) DispatchMessageA(&m);
}

TEST_F(ReconfigureEveryClass, GivesBackWhatItHeld) {
    auto parent = MakeParent(LinkingParent, 300, 120);
    const std::vector<Plan> plans = Plans();
    // What the system makes once (fonts, caches, the table in memory) is made
    // in a first life of each class, before the first figures.
    for (const Plan& p : plans) Live(parent, p, 0);
    Pump();
    for (const Plan& p : plans) {
        const ResourceFigures before = TakeResourceFigures();
        for (int n = 1; n <= 4; ++n) Live(parent, p, n);
        Pump();
        const ResourceFigures after = TakeResourceFigures();
        EXPECT_EQ(DescribeGrowth(before, after, true), "") << p.cls;
    }
    EXPECT_EQ(AtomReferences(Unique("RECONF")), 0);
}

}  // namespace
