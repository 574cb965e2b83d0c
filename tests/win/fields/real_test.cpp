// gxReal32: decimal places on leaving and on setting, the value types with their deliberate asymmetry, one point
// and one sign.
#include <cmath>

#include "tests/win/fields/number_test.h"

namespace {

using namespace numtest;

class RealField : public NumberField {
protected:
    RealField() : NumberField("gxReal32") {}
    void SetDouble(double v) { SendMessageA(field_, GXM_SETVALUE, 3, reinterpret_cast<LPARAM>(&v)); }
    void SetText(const char* text) {
        SetWindowTextA(field_, text);
        SendMessageA(field_, EM_SETSEL, 0, 0);
        Key(field_, VK_END);
    }
};

// Leaving brings the text to its decimal places, keeps the selection and sends no EN_CHANGE.
TEST_F(RealField, LeavingBringsTheTextToItsDecimalPlaces) {
    const struct { const char* method; const char* typed; const char* left; } cases[] = {
        {"@DECP(2)", "3.14159", "3.14"}, {"@DECP(2)", "2.675", "2.68"}, {"@DECP(2)", "7", "7.00"},
        {"@DECP(2)", ".5", "0.50"},      {"@DECP(0)", "3.99", "3"},     {"", "12.345", "12.345"}};
    for (const auto& c : cases) {
        Make(0, c.method);
        Type(field_, c.typed);
        parent_.clear();
        Leave();
        EXPECT_EQ(Text(field_), c.left) << c.method << " " << c.typed;
        EXPECT_EQ(Codes(), std::vector<WORD>{EN_KILLFOCUS});
    }
    SetFocus(field_);
    SendMessageA(field_, EM_SETSEL, 1, 3);
    Leave();
    EXPECT_EQ(Sel(field_), std::make_pair(1, 3));
}

TEST_F(RealField, SettingRoundsToTheDecimalPlaces) {
    const struct { const char* method; double value; const char* shown; } cases[] = {
        {"@DECP(0)", 3.99, "4"}, {"", 12.345, "12"}, {"@DECP(3)", 0.0, "0.000"}, {"@DECP(3)@BLNK", 0.0, ""},
        {"@BLNK", -0.0, ""}, {"@DECP(2)", 0.5, "0.50"}, {"@DECP(2)", -1234.5, "-1234.50"}, {"", 0.0, "0"}};
    for (const auto& c : cases) {
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

// Long double goes in as a double and comes out as a float: four bytes written.
TEST_F(RealField, ValuesComeOutAsDoubleFloatOrText) {
    SetText("  -2.5e1x");
    unsigned char out[8];
    for (WPARAM type : {3u, 9u, 12u}) {
        std::memset(out, 0xAA, sizeof out);
        SendMessageA(field_, GXM_GETVALUE, type, reinterpret_cast<LPARAM>(out));
        double d;
        float f;
        std::memcpy(&d, out, sizeof d);
        std::memcpy(&f, out, sizeof f);
        EXPECT_EQ(type == 3 ? d : f, -25.0) << type;
        if (type != 3) EXPECT_TRUE(out[4] == 0xAA && out[7] == 0xAA) << "four bytes only for type " << type;
    }
    SetText("1e300");
    float f;
    SendMessageA(field_, GXM_GETVALUE, 9, reinterpret_cast<LPARAM>(&f));
    EXPECT_TRUE(std::isinf(f));
    char text[160];
    SendMessageA(field_, GXM_GETVALUE, 4, reinterpret_cast<LPARAM>(text));
    EXPECT_STREQ(text, "1e300");
}

// One point and one sign; a selection lifts the checks.
TEST_F(RealField, OnePointAndOneSign) {
    Type(field_, "-1.2.-3a");
    EXPECT_EQ(Text(field_), "-1.23");
    SendMessageA(field_, EM_SETSEL, 0, 2);
    Type(field_, ".");
    EXPECT_EQ(Text(field_), "..23");
    SendMessageA(field_, EM_SETSEL, 0, 4);
    Type(field_, "--");
    EXPECT_EQ(Text(field_), "-");
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
