// The classes the DLL registers at load, and the class list for dialog editors.

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "include/fldkit.h"

namespace {

HMODULE Dll() { return GetModuleHandleA("FLDKIT32.dll"); }

struct ClassExpectation {
    const char* name;
    const char* proc;  // exported window procedure, or null
    UINT style;
    int extra;         // for superclasses: added to the base class's count
    LPCSTR cursor;
    int background;
    const char* base;  // superclassed system class, or null
};

const ClassExpectation kTable[] = {
    {"gxString32", "gxStringWndFn", 0x400B, 34, IDC_IBEAM, 6, nullptr},
    {"gxNumeric32", "gxNumericWndFn", 0x400B, 28, IDC_IBEAM, 6, nullptr},
    {"gxReal32", "gxRealWndFn", 0x400B, 28, IDC_IBEAM, 6, nullptr},
    {"gxBitmap32", "gxBitmapWndFn", 0x400B, 16, IDC_ARROW, 6, nullptr},
    {"gxIcon32", "gxIconWndFn", 0x400B, 14, IDC_ARROW, 6, nullptr},
    {"gxDate32", "gxDateWndFn", 0x400B, 28, IDC_IBEAM, 6, nullptr},
    {"gxColor32", "gxColorWndFn", 0x400B, 40, IDC_ARROW, 6, nullptr},
    {"gxTable32", "gxTableWndFn", 0x4088, 4, IDC_ARROW, 6, "listbox"},
    {"gxCBTable32", "gxCBTableWndFn", 0x4088, 4, IDC_ARROW, 6, "combobox"},
    {"gxTicker32", "gxTickerWndFn", 0x400B, 22, IDC_ARROW, 6, nullptr},
    {"gxCurrency32", "gxCurrencyWndFn", 0x400B, 30, IDC_IBEAM, 6, nullptr},
    {"gxButton32", "gxButtonWndFn", 0x4003, 18, IDC_ARROW, 6, nullptr},
    {"gxLine32", nullptr, 0x4003, 8, IDC_ARROW, 6, nullptr},
    {"gxText3D32", "gxText3DWndFn", 0x400B, 20, IDC_ARROW, 6, nullptr},
    {"gxFrame3D32", "gxFrame3DWndFn", 0x400B, 20, IDC_ARROW, 15, nullptr},
};

class ClassTable : public ::testing::TestWithParam<ClassExpectation> {};

TEST_P(ClassTable, RegisteredWithTheTableValues) {
    const ClassExpectation& e = GetParam();
    WNDCLASSA wc{};
    ASSERT_TRUE(GetClassInfoA(Dll(), e.name, &wc)) << e.name;
    EXPECT_EQ(wc.style, e.style);
    EXPECT_EQ(wc.cbClsExtra, 0);
    int extra = e.extra;
    if (e.base) {
        WNDCLASSA base{};
        ASSERT_TRUE(GetClassInfoA(nullptr, e.base, &base));
        extra += base.cbWndExtra;
    }
    EXPECT_EQ(wc.cbWndExtra, extra);
    EXPECT_EQ(wc.hCursor, LoadCursorA(nullptr, e.cursor));
    EXPECT_EQ(reinterpret_cast<INT_PTR>(wc.hbrBackground), e.background);
    EXPECT_EQ(wc.hIcon, nullptr);
    EXPECT_EQ(wc.lpszMenuName, nullptr);
    EXPECT_EQ(wc.hInstance, reinterpret_cast<HINSTANCE>(Dll()));
    if (e.proc) EXPECT_EQ(reinterpret_cast<FARPROC>(wc.lpfnWndProc), GetProcAddress(Dll(), e.proc));
}

INSTANTIATE_TEST_SUITE_P(AllFifteen, ClassTable, ::testing::ValuesIn(kTable),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(ClassRegistry, ClassesAreGlobalAndCreatableFromTheApplication) {
    for (const auto& e : kTable) {
        HWND h = CreateWindowExA(0, e.name, "", WS_POPUP, 0, 0, 50, 20, nullptr, nullptr, GetModuleHandleA(nullptr),
                                 nullptr);
        EXPECT_NE(h, nullptr) << e.name;
        DestroyWindow(h);
    }
}

// Both superclasses keep their word behind the combo box's extra bytes.
TEST(ClassRegistry, TableListKeepsItsMethodAtTheComboBoxCount) {
    WNDCLASSA combo{};
    ASSERT_TRUE(GetClassInfoA(nullptr, "combobox", &combo));
    HWND h = CreateWindowExA(0, "gxTable32", "", WS_POPUP, 0, 0, 80, 80, nullptr, nullptr, GetModuleHandleA(nullptr),
                             nullptr);
    ASSERT_NE(h, nullptr);
    SendMessageA(h, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>("@TBL(x)"));
    auto* method = reinterpret_cast<const char*>(GetWindowLongA(h, combo.cbWndExtra));
    ASSERT_NE(method, nullptr);
    EXPECT_STREQ(method, "@TBL(x)");
    DestroyWindow(h);
}

TEST(ListClasses, PublishedLayoutAndOrder) {
    const char* order[] = {"gxString32", "gxNumeric32", "gxReal32",    "gxBitmap32",  "gxIcon32",
                           "gxColor32",  "gxTable32",   "gxCBTable32", "gxTicker32",  "gxDate32",
                           "gxFrame3D32", "gxButton32", "gxCurrency32", "gxText3D32", "gxLine32"};
    HGLOBAL block = ListClasses(nullptr, 0, nullptr, nullptr);
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(GlobalSize(block), 484u);
    auto* bytes = static_cast<const unsigned char*>(GlobalLock(block));
    ASSERT_NE(bytes, nullptr);
    LONG count;
    std::memcpy(&count, bytes, 4);
    EXPECT_EQ(count, 15);
    for (int i = 0; i < 15; ++i) {
        const unsigned char* name = bytes + 16 + 32 * i;
        EXPECT_STREQ(reinterpret_cast<const char*>(name), order[i]) << "record " << i;
        for (size_t k = std::strlen(order[i]); k < 20; ++k) EXPECT_EQ(name[k], 0) << order[i] << " byte " << k;
    }
    GlobalUnlock(block);
    GlobalFree(block);
}

TEST(Wep, ReturnsOneForEveryArgument) {
    EXPECT_EQ(WEP(1), 1);
}

}  // namespace
