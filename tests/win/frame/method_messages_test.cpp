// Every class keeps a method string and hands it back; numbers of the
// message set that a class does not handle reach its default procedure.

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "include/fldkit.h"
#include "tests/support/window.h"

namespace {

const char* const kClasses[] = {"gxString32", "gxNumeric32", "gxReal32",   "gxBitmap32",   "gxIcon32",
                                "gxDate32",   "gxColor32",   "gxTable32",  "gxCBTable32",  "gxTicker32",
                                "gxCurrency32", "gxButton32", "gxLine32",  "gxText3D32",   "gxFrame3D32"};

class EveryClass : public ::testing::TestWithParam<const char*> {
protected:
    void SetUp() override {
        parent_ = fktest::MakeParent();
        control_ = fktest::MakeChild(parent_, GetParam(), 0, 100, 120, 80);
        ASSERT_NE(control_.get(), nullptr);
    }
    std::string GetMethod() {
        char buffer[300];
        std::memset(buffer, 0x55, sizeof buffer);
        EXPECT_EQ(SendMessageA(control_, GXM_GETMETHOD, 256, reinterpret_cast<LPARAM>(buffer)), 0);
        return std::string(buffer, strnlen(buffer, sizeof buffer));
    }
    fktest::UniqueWindow parent_;
    fktest::UniqueWindow control_;
};

TEST_P(EveryClass, KeepsAndReturnsItsMethodString) {
    EXPECT_EQ(GetMethod(), "");
    EXPECT_EQ(SendMessageA(control_, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>("@LIMIT(10)@AUTOTAB")), 0);
    EXPECT_EQ(GetMethod(), "@LIMIT(10)@AUTOTAB");
    SendMessageA(control_, GXM_SETMETHOD, 256, reinterpret_cast<LPARAM>("@MSG(x)"));
    EXPECT_EQ(GetMethod(), "@MSG(x)");
    SendMessageA(control_, GXM_SETMETHOD, 0, 0);
    EXPECT_EQ(GetMethod(), "");
}

// A copy of 256 characters or more arrives without a terminator: exactly
// 256 bytes are written and the rest of the caller's buffer is untouched.
TEST_P(EveryClass, LongMethodIsHandedOutAsAnUnterminated256Characters) {
    std::string longText(5000, 'x');
    SendMessageA(control_, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(longText.c_str()));
    char buffer[300];
    std::memset(buffer, 0x55, sizeof buffer);
    SendMessageA(control_, GXM_GETMETHOD, 256, reinterpret_cast<LPARAM>(buffer));
    EXPECT_EQ(std::string(buffer, 256), std::string(256, 'x'));
    EXPECT_EQ(buffer[256], 0x55);
}

TEST_P(EveryClass, GetMethodWithNullBufferIsHarmless) {
    SendMessageA(control_, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>("@NUM"));
    EXPECT_EQ(SendMessageA(control_, GXM_GETMETHOD, 256, 0), 0);
}

// Numbers of the set without meaning reach the default procedure (0).
TEST_P(EveryClass, NumbersWithoutMeaningReachTheDefaultProcedure) {
    const UINT unused[] = {0x0D02, 0x0D03, 0x0D08, 0x0D0A, 0x0D0F, 0x0D15, 0x0D17,
                           0x0D1A, 0x0D1F, 0x0D25, 0x0D27, 0x0D2A, 0x0D2F};
    for (UINT msg : unused) EXPECT_EQ(SendMessageA(control_, msg, 1, 0), 0) << std::hex << msg;
}

TEST_P(EveryClass, DestroyingAfterManyReplacementsIsClean) {
    for (int i = 0; i < 200; ++i) {
        std::string text = "@LIMIT(" + std::to_string(i) + ")";
        SendMessageA(control_, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(text.c_str()));
    }
    EXPECT_EQ(GetMethod(), "@LIMIT(199)");
    control_.reset();
    EXPECT_TRUE(HeapValidate(GetProcessHeap(), 0, nullptr));
}

INSTANTIATE_TEST_SUITE_P(AllFifteen, EveryClass, ::testing::ValuesIn(kClasses),
                         [](const auto& info) { return std::string(info.param); });

// The string field keeps at most 1023 characters, in a block of length + 1.
TEST(MethodBlock, StringFieldCutsAt1023Characters) {
    auto parent = fktest::MakeParent();
    auto field = fktest::MakeChild(parent, "gxString32");
    std::string longText(4000, 'a');
    SendMessageA(field, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(longText.c_str()));
    auto* block = reinterpret_cast<const char*>(GetWindowLongA(field, 26));
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(std::strlen(block), 1023u);
    EXPECT_EQ(LocalSize(reinterpret_cast<HLOCAL>(const_cast<char*>(block))), 1024u);
}

}  // namespace
