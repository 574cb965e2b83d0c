// Failing allocations: every caller ends its step quietly and leaks nothing.

#include <gtest/gtest.h>

#include <string>

#include "include/fldkit.h"
#include "tests/support/msgbox_watch.h"
#include "tests/support/recorder.h"

extern "C" int WINAPI fkFailAllocation(int nth);

namespace {

struct FailNext {
    explicit FailNext(int nth) { fkFailAllocation(nth); }
    ~FailNext() { fkFailAllocation(0); }
};

std::string Method(HWND h) {
    char buffer[300] = "";
    SendMessageA(h, GXM_GETMETHOD, 256, reinterpret_cast<LPARAM>(buffer));
    return buffer;
}

TEST(AllocationFailure, EachServiceReportsItQuietly) {
    fktest::RecordingParent parent;
    HWND field = CreateWindowExA(0, "gxString32", "", WS_CHILD | WS_VISIBLE, 5, 5, 150, 24, parent, nullptr,
                                 GetModuleHandleA(nullptr), nullptr);
    SendMessageA(field, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>("@LIMIT(4)"));
    {
        FailNext fail(1);
        SendMessageA(field, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>("@LIMIT(9)"));
    }
    EXPECT_EQ(Method(field), "") << "no method string kept";
    EXPECT_EQ(SendMessageA(field, GXM_GETLIMIT, 0, 0), 4) << "the limit stays";
    {
        FailNext fail(1);
        EXPECT_EQ(ListClasses(nullptr, 0, nullptr, nullptr), nullptr);
    }
    {
        FailNext fail(1);
        EXPECT_EQ(twClipboardCopyText(field, "abc", 3), 0);
    }
    {
        fktest::MessageBoxWatcher boxes;
        FailNext fail(1);
        char method[] = "@MSG(x)";
        EXPECT_EQ(twShowError(field, method, GXT_TEXT, GXE_NOTENTERED), 0);
        EXPECT_TRUE(boxes.boxes().empty());
    }
    DestroyWindow(field);
    EXPECT_TRUE(HeapValidate(GetProcessHeap(), 0, nullptr));
}

// A field's whole life with the nth allocation failing, for every n that
// the life reaches.
TEST(AllocationFailure, FieldLifeSurvivesAnyFailingAllocation) {
    fktest::MessageBoxWatcher boxes;
    fktest::RecordingParent parent;
    for (int nth = 1; nth <= 12; ++nth) {
        FailNext fail(nth);
        HWND field = CreateWindowExA(0, "gxString32", "", WS_CHILD | WS_VISIBLE, 5, 5, 150, 24, parent, nullptr,
                                     GetModuleHandleA(nullptr), nullptr);
        SendMessageA(field, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>("@MASK(###)@MND@DROPTARG"));
        SendMessageA(field, GXM_EXCLUDE, 1, reinterpret_cast<LPARAM>("9"));
        SendMessageA(field, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>("12"));
        SendMessageA(field, EM_SETSEL, 0, 2);
        SendMessageA(field, WM_KEYDOWN, 'C', 0);
        twClipboardCopyText(field, "12", 2);
        SendMessageA(field, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>(""));
        SendMessageA(field, GXM_VALIDATE, 0, 0);
        DestroyWindow(field);
    }
    EXPECT_TRUE(HeapValidate(GetProcessHeap(), 0, nullptr));
}

}  // namespace
