// The classes the DLL registers at load, the class list for dialog editors, and every class's method string;
// unhandled numbers of the message set reach the default procedure; WEP answers 1.

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <tuple>
#include <vector>

#include "include/fldkit.h"
#include "tests/support/bitness.h"
#include "tests/support/msgbox_watch.h"
#include "tests/support/recorder.h"
#include "tests/support/window.h"

extern "C" int WINAPI fkFailAllocation(int nth);

namespace {

HMODULE Dll() { return GetModuleHandleA(FK_DLL_NAME); }
using fktest::Bits;

// proc: the exported window procedure; extra: for superclasses of base, added to its count; at32, at64: where
// callers read the method string (in FLDKIT64.dll the pointer-wide word behind the 32-bit bytes), -1 for the
// superclasses, which keep it behind the base class's bytes; listed: its record in the class list for dialog
// editors, in the order they have always shown.
struct ClassExpectation {
    const char *name, *proc;
    UINT style;
    int extra;
    LPCSTR cursor;
    INT_PTR background;
    const char* base;
    int at32, at64, listed;
};

const ClassExpectation kTable[] = {
    {"gxString32", "gxStringWndFn", 0x400B, Bits(34, 50), IDC_IBEAM, 6, nullptr, 26, 34, 0},
    {"gxNumeric32", "gxNumericWndFn", 0x400B, Bits(28, 36), IDC_IBEAM, 6, nullptr, 24, 28, 1},
    {"gxReal32", "gxRealWndFn", 0x400B, Bits(28, 36), IDC_IBEAM, 6, nullptr, 24, 28, 2},
    {"gxBitmap32", "gxBitmapWndFn", 0x400B, Bits(16, 40), IDC_ARROW, 6, nullptr, 12, 32, 3},
    {"gxIcon32", "gxIconWndFn", 0x400B, Bits(14, 40), IDC_ARROW, 6, nullptr, 10, 32, 4},
    {"gxDate32", "gxDateWndFn", 0x400B, Bits(28, 36), IDC_IBEAM, 6, nullptr, 24, 28, 9},
    {"gxColor32", "gxColorWndFn", 0x400B, Bits(40, 48), IDC_ARROW, 6, nullptr, 36, 40, 5},
    {"gxTable32", "gxTableWndFn", 0x4088, Bits(4, 8), IDC_ARROW, 6, "listbox", -1, -1, 6},
    {"gxCBTable32", "gxCBTableWndFn", 0x4088, Bits(4, 8), IDC_ARROW, 6, "combobox", -1, -1, 7},
    {"gxTicker32", "gxTickerWndFn", 0x400B, Bits(22, 30), IDC_ARROW, 6, nullptr, 16, 22, 8},
    {"gxCurrency32", "gxCurrencyWndFn", 0x400B, Bits(30, 38), IDC_IBEAM, 6, nullptr, 26, 30, 12},
    {"gxButton32", "gxButtonWndFn", 0x4003, Bits(18, 34), IDC_ARROW, 6, nullptr, 14, 26, 11},
    {"gxLine32", nullptr, 0x4003, Bits(8, 16), IDC_ARROW, 6, nullptr, 0, 8, 14},
    {"gxText3D32", "gxText3DWndFn", 0x400B, Bits(20, 28), IDC_ARROW, 6, nullptr, 12, 20, 13},
    {"gxFrame3D32", "gxFrame3DWndFn", 0x400B, Bits(20, 28), IDC_ARROW, 15, nullptr, 12, 20, 10},
};

class EveryClass : public ::testing::TestWithParam<ClassExpectation> {};

// What GXM_GETMETHOD writes into a 300-byte buffer filled with 0x55 (all 300 bytes when it is not terminated).
std::string GetMethod(HWND h) {
    char buffer[300];
    std::memset(buffer, 0x55, sizeof buffer);
    EXPECT_EQ(SendMessageA(h, GXM_GETMETHOD, 256, reinterpret_cast<LPARAM>(buffer)), 0);
    return std::string(buffer, strnlen(buffer, sizeof buffer));
}

// The class as registered and in the class list for dialog editors; its method string kept where callers read it,
// whole up to 1023 characters in a block of length + 1, and returned: 256 characters or more arrive as exactly 256
// bytes, unterminated, the rest of the buffer untouched. Numbers of the set without meaning reach the default
// procedure (0).
TEST_P(EveryClass, IsRegisteredKeepsItsMethodStringAndPassesUnknownNumbersOn) {
    const ClassExpectation& e = GetParam();
    WNDCLASSA wc{}, base{};
    ASSERT_TRUE(GetClassInfoA(Dll(), e.name, &wc));
    ASSERT_TRUE(GetClassInfoA(nullptr, e.base ? e.base : "combobox", &base));
    EXPECT_EQ(std::tuple(wc.style, wc.cbClsExtra, wc.cbWndExtra, wc.hCursor, reinterpret_cast<INT_PTR>(wc.hbrBackground),
                         wc.hIcon, wc.lpszMenuName, wc.hInstance),
              std::tuple(e.style, 0, e.extra + (e.base ? base.cbWndExtra : 0), LoadCursorA(nullptr, e.cursor),
                         e.background, HICON{}, LPCSTR{}, HINSTANCE(Dll())));
    if (e.proc) EXPECT_EQ(reinterpret_cast<FARPROC>(wc.lpfnWndProc), GetProcAddress(Dll(), e.proc));
    if (e.proc) EXPECT_EQ(GetProcAddress(Dll(), (e.proc + std::string("@16")).c_str()), nullptr) << "plain names only";
    HGLOBAL list = ListClasses(nullptr, 0, nullptr, nullptr);
    const auto* records = static_cast<const char*>(GlobalLock(list));
    EXPECT_EQ(GlobalSize(list) * 100 + *reinterpret_cast<const LONG*>(records), Bits(484, 728) * 100u + 15);
    const std::string record(records + Bits(16 + 32 * e.listed, 32 + 48 * e.listed), 20);
    EXPECT_EQ(record, e.name + std::string(20 - std::strlen(e.name), '\0')) << "names padded with zeros to 20 bytes";
    GlobalUnlock(list);
    GlobalFree(list);
    EXPECT_EQ(WEP(1), 1);

    auto parent = fktest::MakeParent();
    auto control = fktest::MakeChild(parent, e.name, 0, 100, 120, 80);
    EXPECT_EQ(GetMethod(control), "");
    EXPECT_EQ(SendMessageA(control, GXM_GETMETHOD, 256, 0), 0) << "a null buffer is harmless";
    const std::string tooLong(5000, 'x');
    for (const auto& [wp, method, kept] : std::vector<std::tuple<WPARAM, const char*, std::string>>{
             {0, "@LIMIT(10)@AUTOTAB", "@LIMIT(10)@AUTOTAB"}, {256, "@MSG(x)", "@MSG(x)"}, {0, nullptr, ""},
             {0, tooLong.c_str(), std::string(256, 'x') + std::string(44, '\x55')}}) {
        EXPECT_EQ(SendMessageA(control, GXM_SETMETHOD, wp, reinterpret_cast<LPARAM>(method)), 0);
        EXPECT_EQ(GetMethod(control), kept);
    }
    const bool super = e.at32 < 0;  // both superclasses keep it behind the combo box's bytes
    const char* word = super ? reinterpret_cast<const char*>(GetWindowLongPtrA(control, base.cbWndExtra))
                             : fktest::TextWord(control, e.at32, e.at64);
    const std::string kept = word ? std::string(word) + "/" + std::to_string(LocalSize(const_cast<char*>(word))) : "";
    EXPECT_EQ(kept, std::string(1023, 'x') + "/1024") << "the method and the size of its block";
    if (fktest::kWide && !super) EXPECT_EQ(GetWindowLongA(control, e.at32), 0) << "the 32-bit place stays unused";
    for (UINT msg : {0x0D02, 0x0D03, 0x0D08, 0x0D0A, 0x0D0F, 0x0D15, 0x0D17, 0x0D1A, 0x0D1F, 0x0D25, 0x0D27, 0x0D2A, 0x0D2F})
        EXPECT_EQ(SendMessageA(control, msg, 1, 0), 0) << std::hex << msg;
    control.reset();
    EXPECT_TRUE(HeapValidate(GetProcessHeap(), 0, nullptr));
}

INSTANTIATE_TEST_SUITE_P(AllFifteen, EveryClass, ::testing::ValuesIn(kTable),
                         [](const auto& info) { return std::string(info.param.name); });

// The string field's mask has a word of its own behind the method string, where callers read it.
TEST(MethodBlock, StringFieldKeepsItsMaskBehindTheMethod) {
    auto parent = fktest::MakeParent();
    auto field = fktest::MakeChild(parent, "gxString32");
    SendMessageA(field, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>("@MASK(##-##)"));
    const char* mask = fktest::TextWord(field, 30, 42);
    EXPECT_STREQ(mask ? mask : "(none)", "##-##");
}

// The DLL as installers see it: its version resource names the file and the project version ("major.minor.patch").
TEST(TheDll, VersionResourceNamesTheFileAndTheProjectVersion) {
    char path[MAX_PATH] = "";
    ASSERT_GT(GetModuleFileNameA(Dll(), path, MAX_PATH), 0u);
    std::vector<char> data(GetFileVersionInfoSizeA(path, nullptr));
    ASSERT_TRUE(!data.empty() && GetFileVersionInfoA(path, 0, static_cast<DWORD>(data.size()), data.data()));
    VS_FIXEDFILEINFO* fixed = nullptr;
    UINT size = 0;
    ASSERT_TRUE(VerQueryValueA(data.data(), "\\", reinterpret_cast<void**>(&fixed), &size));
    std::string seen = std::to_string(fixed->dwFileType) + " " + std::to_string(HIWORD(fixed->dwFileVersionMS)) + "." +
                       std::to_string(LOWORD(fixed->dwFileVersionMS));
    for (const char* name : {"OriginalFilename", "FileVersion", "ProductVersion", "ProductName"}) {
        char* value = nullptr;
        const std::string key = std::string("\\StringFileInfo\\040904B0\\") + name;
        const bool found = VerQueryValueA(data.data(), key.c_str(), reinterpret_cast<void**>(&value), &size);
        seen += std::string("|") + (found ? value : "-");
    }
    const std::string version = FK_PROJECT_VERSION;
    EXPECT_EQ(seen, std::to_string(VFT_DLL) + " " + version.substr(0, version.rfind('.')) + "|" + FK_DLL_NAME + "|" +
                        version + "|" + version + "|FieldKit");

}

// A failing allocation ends each step quietly: the method store keeps what it had, the services answer their
// failure value without a box, and a field's whole life survives its nth allocation failing, for every n it reaches.
TEST(AllocationFailure, EachStepEndsQuietlyAndNothingIsLeft) {
    fktest::MessageBoxWatcher boxes;
    fktest::RecordingParent parent;
    auto field = fktest::MakeChild(parent, "gxString32", 0, 100, 150, 24);
    SendMessageA(field, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>("@LIMIT(4)"));
    fkFailAllocation(1);
    SendMessageA(field, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>("@LIMIT(9)"));
    EXPECT_EQ(GetMethod(field) + "/" + std::to_string(SendMessageA(field, GXM_GETLIMIT, 0, 0)), "/4");
    char method[] = "@MSG(x)";
    EXPECT_EQ((fkFailAllocation(1), ListClasses(nullptr, 0, nullptr, nullptr)), nullptr);
    EXPECT_EQ((fkFailAllocation(1), twClipboardCopyText(field, "abc", 3)), 0);
    EXPECT_EQ((fkFailAllocation(1), twShowError(field, method, GXT_TEXT, GXE_NOTENTERED)), 0);
    EXPECT_TRUE(boxes.boxes().empty());
    for (int nth = 1; nth <= 12; ++nth) {
        fkFailAllocation(nth);
        auto life = fktest::MakeChild(parent, "gxString32", 0, 101, 150, 24);
        SendMessageA(life, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>("@MASK(###)@MND@DROPTARG"));
        SendMessageA(life, GXM_EXCLUDE, 1, reinterpret_cast<LPARAM>("9"));
        SendMessageA(life, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>("12"));
        SendMessageA(life, EM_SETSEL, 0, 2);
        SendMessageA(life, WM_KEYDOWN, 'C', 0);
        twClipboardCopyText(life, "12", 2);
        SendMessageA(life, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>(""));
        SendMessageA(life, GXM_VALIDATE, 0, 0);
    }
    fkFailAllocation(0);
    field.reset();
    EXPECT_TRUE(HeapValidate(GetProcessHeap(), 0, nullptr));
}

}  // namespace
