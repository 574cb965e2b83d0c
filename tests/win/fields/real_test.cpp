// gxReal32: decimal places on leaving and on setting, the value types with
// their deliberate asymmetry, one point and one sign.

#include <cmath>

#include "tests/support/msgbox_watch.h"
#include "tests/win/fields/number_test.h"

namespace {

using namespace numtest;

class RealField : public NumberField {
protected:
    RealField() : NumberField("gxReal32") {}
    void SetDouble(double v, WPARAM type = 3) {
        SendMessageA(field_, GXM_SETVALUE, type, reinterpret_cast<LPARAM>(&v));
    }
    void SetText(const char* text) {
        SetWindowTextA(field_, text);
        SendMessageA(field_, EM_SETSEL, 0, 0);
        SendMessageA(field_, WM_KEYDOWN, VK_END, 1);
    }
};

struct Leaving {
    const char* method;
    const char* typed;
    const char* left;
};

TEST_F(RealField, LeavingBringsTheTextToItsDecimalPlaces) {
    const Leaving cases[] = {
        {"@DECP(2)", "3.14159", "3.14"}, {"@DECP(2)", "2.675", "2.68"}, {"@DECP(2)", "7", "7.00"},
        {"@DECP(2)", ".5", "0.50"},      {"@DECP(0)", "3.99", "3"},     {"", "12.345", "12.345"},
    };
    for (const Leaving& c : cases) {
        Make(0, c.method);
        Type(field_, c.typed);
        parent_.clear();
        Leave();
        EXPECT_EQ(Text(field_), c.left) << c.method << " " << c.typed;
        EXPECT_EQ(Codes(), std::vector<WORD>{EN_KILLFOCUS}) << "no EN_CHANGE";
    }
}

struct Setting {
    const char* method;
    double value;
    const char* shown;
};

TEST_F(RealField, SettingRoundsToTheDecimalPlaces) {
    const Setting cases[] = {
        {"@DECP(0)", 3.99, "4"},      {"", 12.345, "12"},       {"@DECP(3)", 0.0, "0.000"},
        {"@DECP(3)@BLNK", 0.0, ""},   {"@BLNK", -0.0, ""},      {"@DECP(2)", 0.5, "0.50"},
        {"@DECP(2)", -1234.5, "-1234.50"}, {"", 0.0, "0"},
    };
    for (const Setting& c : cases) {
        Make(REAL_DOUBLE, c.method);
        SendMessageA(field_, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>(&c.value));
        EXPECT_EQ(Text(field_), c.shown) << c.method << " " << c.value;
        EXPECT_TRUE(Codes().empty());
    }
    const float quarter = 2.25f;
    SendMessageA(field_, GXM_SETVALUE, 9, reinterpret_cast<LPARAM>(&quarter));
    EXPECT_EQ(Text(field_), "2");
    SendMessageA(field_, GXM_SETVALUE, 4, reinterpret_cast<LPARAM>("5.5"));
    EXPECT_EQ(Text(field_), "2") << "a text value is not shown";
    SetMethod("@BLNK");
    SendMessageA(field_, GXM_SETVALUE, 3, 0);
    EXPECT_EQ(Text(field_), "") << "a null value with @BLNK empties the field";
}

TEST_F(RealField, ValuesComeOutAsDoubleFloatOrText) {
    SetText("  -2.5e1x");
    unsigned char out[8];
    std::memset(out, 0xAA, sizeof out);
    SendMessageA(field_, GXM_GETVALUE, 3, reinterpret_cast<LPARAM>(out));
    double d;
    std::memcpy(&d, out, sizeof d);
    EXPECT_EQ(d, -25.0);
    for (WPARAM type : {9u, 12u}) {
        std::memset(out, 0xAA, sizeof out);
        SendMessageA(field_, GXM_GETVALUE, type, reinterpret_cast<LPARAM>(out));
        float f;
        std::memcpy(&f, out, sizeof f);
        EXPECT_EQ(f, -25.0f) << type;
        EXPECT_EQ(out[4], 0xAA) << "four bytes only for type " << type;
        EXPECT_EQ(out[7], 0xAA);
    }
    SetText("1e300");
    SendMessageA(field_, GXM_GETVALUE, 9, reinterpret_cast<LPARAM>(out));
    float f;
    std::memcpy(&f, out, sizeof f);
    EXPECT_TRUE(std::isinf(f));
    char text[160];
    SendMessageA(field_, GXM_GETVALUE, 4, reinterpret_cast<LPARAM>(text));
    EXPECT_STREQ(text, "1e300");
}

TEST_F(RealField, OnePointAndOneSign) {
    Type(field_, "-1.2.-3a");
    EXPECT_EQ(Text(field_), "-1.23");
    SendMessageA(field_, EM_SETSEL, 0, 2);
    Type(field_, ".");
    EXPECT_EQ(Text(field_), "..23") << "a selection lifts the checks";
    SendMessageA(field_, EM_SETSEL, 0, 4);
    Type(field_, "-");
    Type(field_, "-");
    EXPECT_EQ(Text(field_), "-");
}

TEST_F(RealField, SpinDropsTheFraction) {
    SetText("2.5");
    SendMessageA(field_, WM_VSCROLL, SB_LINEUP, 0);
    EXPECT_EQ(Text(field_), "3");
    EXPECT_EQ(Codes(), (std::vector<WORD>{EN_CHANGE, EN_SETFOCUS}));
}

struct Typing {
    DWORD style;
    WPARAM asked;
    LRESULT answer;
};

TEST_F(RealField, TypeAnswersAndLimit) {
    const Typing cases[] = {
        {REAL_CHAR | REAL_FLOAT, 0, 4}, {REAL_FLOAT | REAL_DOUBLE, 0, 9}, {REAL_DOUBLE | REAL_LONGDOUBLE, 0, 3},
        {REAL_LONGDOUBLE, 0, 12},       {0, 0, 3},                        {REAL_DOUBLE, 9, 9},
    };
    for (const Typing& c : cases) {
        Make(c.style);
        EXPECT_EQ(SendMessageA(field_, GXM_GETTYPE, c.asked, 0), c.answer) << c.style << " / " << c.asked;
    }
    EXPECT_EQ(SendMessageA(field_, EM_LIMITTEXT, 5, 0), 5) << "unlike the numeric field";
    Type(field_, "1234567");
    EXPECT_EQ(Text(field_), "12345");
}

struct Validating {
    DWORD style;
    WPARAM type;
    const char* text;
    LRESULT answer;
};

TEST_F(RealField, ValidationAsDouble) {
    fktest::MessageBoxWatcher boxes;
    const Validating cases[] = {
        {0, 0, "50", 0}, {REAL_FLOAT, 0, "12.5", -1}, {REAL_DOUBLE, 0, "1.5", 0}, {0, 12, "9.01", -1},
    };
    for (const Validating& c : cases) {
        Make(c.style, "@RNG(1,9)");
        SetText(c.text);
        EXPECT_EQ(SendMessageA(field_, GXM_VALIDATE, c.type, 0), c.answer) << c.style << " / " << c.type;
    }
    EXPECT_EQ(boxes.boxes().size(), 2u);
}

TEST_F(RealField, LeavingKeepsTheSelection) {
    Type(field_, "12.5");
    SendMessageA(field_, EM_SETSEL, 1, 3);
    Leave();
    EXPECT_EQ(Sel(field_), std::make_pair(1, 3));
}

TEST_F(RealField, HostileInputIsCut) {
    SetMethod("@DECP(100000)");
    SetText(std::string(300, '9').c_str());
    Leave();
    EXPECT_EQ(Text(field_).size(), 159u);
    SetDouble(1e308);
    EXPECT_EQ(Text(field_).size(), 159u);
    SetMethod("@DECP(-5)");
    SetDouble(-7.25);
    EXPECT_EQ(Text(field_), "-7") << "negative places count as none";
}

}  // namespace
