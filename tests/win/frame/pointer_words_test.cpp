// Where each class keeps its method string (and the string field its mask):
// the position callers read in FLDKIT32.dll, and in FLDKIT64.dll the
// pointer-wide word behind the 32-bit bytes, whose 32-bit place stays zero
// while the words around it keep their positions.

#include <gtest/gtest.h>

#include <string>

#include "include/fldkit.h"
#include "tests/support/bitness.h"
#include "tests/support/window.h"

namespace {

struct MethodPlace {
    const char* cls;
    int at32, at64;
};

const MethodPlace kPlaces[] = {
    {FK_CLASS_STRING, 26, 34},  {FK_CLASS_NUMERIC, 24, 28}, {FK_CLASS_REAL, 24, 28},    {FK_CLASS_BITMAP, 12, 32},
    {FK_CLASS_ICON, 10, 32},    {FK_CLASS_DATE, 24, 28},    {FK_CLASS_COLOR, 36, 40},   {FK_CLASS_TICKER, 16, 22},
    {FK_CLASS_CURRENCY, 26, 30}, {FK_CLASS_BUTTON, 14, 26}, {FK_CLASS_LINE, 0, 8},      {FK_CLASS_TEXT3D, 12, 20},
    {FK_CLASS_FRAME3D, 12, 20},
};

class PointerWords : public ::testing::TestWithParam<MethodPlace> {};

TEST_P(PointerWords, MethodStringAtItsPlace) {
    const MethodPlace& p = GetParam();
    auto parent = fktest::MakeParent();
    auto control = fktest::MakeChild(parent, p.cls, 0, 100, 120, 80);
    ASSERT_NE(control.get(), nullptr);
    SendMessageA(control, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>("@MSG(placed)"));
    const char* text = fktest::TextWord(control, p.at32, p.at64);
    ASSERT_NE(text, nullptr) << p.cls;
    EXPECT_STREQ(text, "@MSG(placed)") << p.cls;
    if (fktest::kWide) EXPECT_EQ(GetWindowLongA(control, p.at32), 0) << p.cls << ": the 32-bit place stays unused";
}

INSTANTIATE_TEST_SUITE_P(EveryClass, PointerWords, ::testing::ValuesIn(kPlaces), [](const auto& info) {
    return std::string(info.param.cls);
});

// The string field's mask has a word of its own behind the method string;
// the caret and the selection keep their places.
TEST(PointerWords, StringFieldMaskBesideTheFieldWords) {
    auto parent = fktest::MakeParent();
    auto field = fktest::MakeChild(parent, FK_CLASS_STRING);
    SendMessageA(field, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>("@MASK(##-##)"));
    const char* mask = fktest::TextWord(field, 30, 42);
    ASSERT_NE(mask, nullptr);
    EXPECT_STREQ(mask, "##-##");
    SetWindowTextA(field, "1234");
    SendMessageA(field, EM_SETSEL, 1, 3);
    EXPECT_EQ(LOWORD(GetWindowLongA(field, 12)), 1);
    EXPECT_EQ(HIWORD(GetWindowLongA(field, 12)), 3);
}

}  // namespace
