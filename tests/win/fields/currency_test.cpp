// gxCurrency32 driven the way a dialog drives it: values shown by country,
// typing rules, the type and limit messages, and the WIN.INI defaults read
// when the library starts (checked in a child process of this program).

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "include/fldkit.h"
#include "tests/support/msgbox_watch.h"
#include "tests/support/self_process.h"
#include "tests/win/fields/number_test.h"

namespace {

using numtest::Text;
using numtest::Type;

constexpr WPARAM kLongType = 2;  // this field's long: hundredths

// Beeps: the library's import of MessageBeep is pointed at a counter.
int g_beeps = 0;
BOOL WINAPI CountBeep(UINT) { return ++g_beeps, TRUE; }

void CountLibraryBeeps() {
    static bool patched = false;
    if (patched) return;
    patched = true;
    auto* base = reinterpret_cast<BYTE*>(GetModuleHandleA(FK_DLL_NAME));
    const auto real = reinterpret_cast<DWORD_PTR>(GetProcAddress(GetModuleHandleA("user32.dll"), "MessageBeep"));
    auto* nt = reinterpret_cast<IMAGE_NT_HEADERS*>(base + reinterpret_cast<IMAGE_DOS_HEADER*>(base)->e_lfanew);
    const IMAGE_DATA_DIRECTORY dir = nt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    for (auto* imp = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(base + dir.VirtualAddress); imp->Name; ++imp) {
        for (auto* thunk = reinterpret_cast<IMAGE_THUNK_DATA*>(base + imp->FirstThunk); thunk->u1.Function; ++thunk) {
            if (thunk->u1.Function != real) continue;
            DWORD old;
            VirtualProtect(&thunk->u1.Function, sizeof thunk->u1.Function, PAGE_READWRITE, &old);
            thunk->u1.Function = reinterpret_cast<DWORD_PTR>(&CountBeep);
            VirtualProtect(&thunk->u1.Function, sizeof thunk->u1.Function, old, &old);
        }
    }
}

HWND MakeField(HWND parent, DWORD style, const char* method) {
    HWND h = CreateWindowExA(0, "gxCurrency32", "", WS_CHILD | WS_VISIBLE | style, 10, 10, 240, 24, parent, nullptr,
                             GetModuleHandleA(nullptr), nullptr);
    SendMessageA(h, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(method));
    return h;
}

template <typename T>
std::string Set(HWND h, T value, WPARAM type = 0) {
    SendMessageA(h, GXM_SETVALUE, type, reinterpret_cast<LPARAM>(&value));
    return Text(h);
}

class CurrencyField : public numtest::NumberField {
protected:
    CurrencyField() : NumberField("gxCurrency32") {}
    void SetUp() override {
        CountLibraryBeeps();
        NumberField::SetUp();
    }
    void Make(DWORD style, const char* method = nullptr) {
        NumberField::Make(style, method);
        g_beeps = 0;
    }
};

// (Negative formats come from WIN.INI: the child test below shows them.)
TEST_F(CurrencyField, ValuesAreShownByTheRowOfTheMethodString) {
    const struct {
        DWORD style;
        const char* method;
        WPARAM type;
        double value;
        const char* shown;
    } cases[] = {
        {CURR_DOUBLE, "@CF_GERMANY", 0, 1234.5, "DM1.234,50"},
        {CURR_LONGDOUBLE, "@LIMIT(20)@cf_unitedstates", 0, 0.5, "$.50"},
        {CURR_DOUBLE | CURR_SUPPRESS, "@CF_GERMANY", 0, 12.75, "DM12"},
        {CURR_DOUBLE, "@CF_GERMANY@BLNK", 0, 0.0, ""},
        {CURR_CHAR, "@CF_FRANCE", GXT_DOUBLE, 98765.4, "98.765,40 F"},  // wParam picks the type
    };
    for (const auto& c : cases) {
        Make(c.style, c.method);
        EXPECT_EQ(Set(field_, c.value, c.type), c.shown) << c.method << " " << c.value;
        EXPECT_TRUE(Codes().empty()) << "setting a value sends no EN_CHANGE";
    }
    Make(0, "@CF_UNITEDSTATES");  // no type: an empty field gets a zero
    EXPECT_EQ(Set(field_, 5), "$0.00");
}

TEST_F(CurrencyField, LongsRoundTripAndOtherTypesReadTheShownText) {
    Make(CURR_LONG, "@CF_UNITEDSTATES");
    EXPECT_EQ(Set(field_, 123456), "$1,234.56");
    int32_t back = 0;
    SendMessageA(field_, GXM_GETVALUE, 0, reinterpret_cast<LPARAM>(&back));
    EXPECT_EQ(back, 123456);
    char text[160] = "";
    SendMessageA(field_, GXM_GETVALUE, GXT_TEXT, reinterpret_cast<LPARAM>(text));
    EXPECT_STREQ(text, "$1,234.56");
    double amount = 0;
    SendMessageA(field_, GXM_GETVALUE, GXT_DOUBLE, reinterpret_cast<LPARAM>(&amount));
    EXPECT_DOUBLE_EQ(amount, 1234.56);
}

TEST_F(CurrencyField, TypingTakesDigitsSignAndTheRowsSeparators) {
    const struct {
        DWORD style;
        const char* method;
        const char* typed;
        const char* text;
        int beeps;
    } cases[] = {
        {0, "@CF_UNITEDSTATES", "-1,234.56", "-1,234.56", 0},
        {0, "@CF_GERMANY", "1.234,5", "1.234,5", 0},
        {0, "@CF_UNITEDSTATES", "1a*2", "12", 1},         // letters beep, others are dropped
        {0, "@CF_UNITEDSTATES", "12.345", "12.34", 1},    // every decimal typed
        {CURR_RIGHTJUST, "@CF_UNITEDSTATES", "12.345", "12.345", 0},
        {CURR_SUPPRESS, "@CF_UNITEDSTATES", "12.5", "125", 1},
        {0, "@CF_GERMANY", "1,2,3", "1,32", 0},           // the second "," moves the caret behind the first
        {0, "@CF_UNITEDSTATES@LIMIT(3)", "12345", "123", 2},
    };
    for (const auto& c : cases) {
        Make(c.style, c.method);
        Type(field_, c.typed);
        EXPECT_EQ(Text(field_), c.text) << c.method << " typed " << c.typed;
        EXPECT_EQ(g_beeps, c.beeps) << c.method << " typed " << c.typed;
        EXPECT_EQ(Codes().size(), std::string(c.text).size()) << "EN_CHANGE per character taken";
    }
}

// Selections count in the shown text: "1234" is shown as "$1,234.00".
TEST_F(CurrencyField, SelectionsCountInTheFormattedText) {
    Make(0, "@CF_UNITEDSTATES");
    Type(field_, "1234");
    SendMessageA(field_, EM_SETSEL, 0, 100);
    EXPECT_EQ(numtest::Sel(field_), std::make_pair(0, 9));
    SendMessageA(field_, EM_SETSEL, 2, 9);  // ",234.00"
    Type(field_, "5");
    EXPECT_EQ(Text(field_), "$15");
}

TEST_F(CurrencyField, TypeLimitAndValidation) {
    const struct {
        DWORD style;
        LRESULT type;
        LONG size;  // written through lParam; -1: untouched
    } cases[] = {
        {CURR_CHAR, GXT_TEXT, 7}, {CURR_DOUBLE, GXT_DOUBLE, -1}, {CURR_LONG, kLongType, -1},
        {CURR_LONGDOUBLE, GXT_LONGDOUBLE, -1}, {0, GXT_TEXT, 80},  // no type: 80 whatever the limit
    };
    for (const auto& c : cases) {
        Make(c.style, "@LIMIT(7)");
        LONG size = -1;
        EXPECT_EQ(SendMessageA(field_, GXM_GETTYPE, 0, reinterpret_cast<LPARAM>(&size)), c.type) << c.style;
        EXPECT_EQ(size, c.size) << c.style;
        EXPECT_EQ(SendMessageA(field_, GXM_GETTYPE, 0, 0), c.type) << "a null lParam is left alone";
    }
    EXPECT_EQ(SendMessageA(field_, GXM_SETLIMIT, 0, 99), 7);  // wParam 0 asks
    EXPECT_EQ(SendMessageA(field_, GXM_SETLIMIT, 1, 12), 0);
    EXPECT_EQ(SendMessageA(field_, GXM_GETLIMIT, 0, 0), 12);
    EXPECT_EQ(SendMessageA(field_, EM_LIMITTEXT, 5, 0), 5);

    // Validation reads the cleaned amount; a long is its whole number.
    fktest::MessageBoxWatcher boxes;
    Make(0, "@CF_UNITEDSTATES@RNG(1,2000)");
    SetWindowTextA(field_, "$2,000.50");
    EXPECT_EQ(SendMessageA(field_, GXM_VALIDATE, kLongType, 0), 0);
    EXPECT_EQ(SendMessageA(field_, GXM_VALIDATE, GXT_DOUBLE, 0), -1);
    EXPECT_EQ(SendMessageA(field_, GXM_VALIDATE, 0, 0), 0) << "no type passes";
}

// ---------------------------------------------------------------------
// WIN.INI: row 0 and every row's negative format are read when the library
// starts, so a child process of this program checks them after the parent
// wrote [intl].

const char kChildVariable[] = "FK_CURRENCY_INTL_CHILD";

TEST(CurrencyIntlChild, ShowsTheDefaultsItStartedWith) {
    if (GetEnvironmentVariableA(kChildVariable, nullptr, 0) == 0) GTEST_SKIP() << "runs as a child process";
    fktest::RecordingParent parent;
    HWND plain = MakeField(parent, CURR_DOUBLE, "@LIMIT(20)");
    HWND german = MakeField(parent, CURR_DOUBLE, "@CF_GERMANY");
    EXPECT_EQ(Set(plain, 1234.5), "1'234,500 kr");  // no sDecimal: ","
    EXPECT_EQ(Set(plain, -1234.5), "-1'234,500 kr") << "iNegCurr 8 for row 0";
    EXPECT_EQ(Set(german, -1234.5), "-1.234,50 DM") << "and for every country";
}

TEST(CurrencyIntl, DefaultsComeFromWinIniAtStartUp) {
    numtest::IntlKeys keys{{"iCurrDigits", "3"}, {"iCurrency", "3"}, {"iNegCurr", "8"},
                  {"sCurrency", "kr"},  {"sThousand", "'"}, {"sDecimal", nullptr}};
    SetEnvironmentVariableA(kChildVariable, "1");
    fktest::SelfProcess child("--gtest_filter=CurrencyIntlChild.*");
    SetEnvironmentVariableA(kChildVariable, nullptr);
    ASSERT_NE(child.pi.hProcess, nullptr);
    EXPECT_EQ(child.ExitCode(120000), 0u) << "the child's failures are printed above";
}

}  // namespace
