// Failing allocations: every caller ends its step quietly and leaks nothing.

#include <gtest/gtest.h>

#include <string>

#include "include/fldkit.h"
#include "tests/support/msgbox_watch.h"
#include "tests/support/recorder.h"
#include "tests/support/window.h"

extern "C" int WINAPI fkFailAllocation(int nth);

namespace {

struct FailNext {
    explicit FailNext(int nth) { fkFailAllocation(nth); }
    ~FailNext() { fkFailAllocation(0); }
};

// Each service once, then a field's whole life with the nth allocation failing, for every n that the life reaches.
TEST(AllocationFailure, EachServiceAndAFieldsLifeEndQuietly) {
    fktest::MessageBoxWatcher boxes;
    fktest::RecordingParent parent;
    auto field = fktest::MakeChild(parent, "gxString32", 0, 100, 150, 24);
    SendMessageA(field, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>("@LIMIT(4)"));
    (FailNext(1), SendMessageA(field, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>("@LIMIT(9)")));
    char kept[300] = "";
    SendMessageA(field, GXM_GETMETHOD, 256, reinterpret_cast<LPARAM>(kept));
    EXPECT_STREQ(kept, "") << "no method string kept";
    EXPECT_EQ(SendMessageA(field, GXM_GETLIMIT, 0, 0), 4) << "the limit stays";
    EXPECT_EQ((FailNext(1), ListClasses(nullptr, 0, nullptr, nullptr)), nullptr);
    EXPECT_EQ((FailNext(1), twClipboardCopyText(field, "abc", 3)), 0);
    char method[] = "@MSG(x)";
    EXPECT_EQ((FailNext(1), twShowError(field, method, GXT_TEXT, GXE_NOTENTERED)), 0);
    EXPECT_TRUE(boxes.boxes().empty());
    for (int nth = 1; nth <= 12; ++nth) {
        FailNext fail(nth);
        field = fktest::MakeChild(parent, "gxString32", 0, 100, 150, 24);
        SendMessageA(field, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>("@MASK(###)@MND@DROPTARG"));
        SendMessageA(field, GXM_EXCLUDE, 1, reinterpret_cast<LPARAM>("9"));
        SendMessageA(field, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>("12"));
        SendMessageA(field, EM_SETSEL, 0, 2);
        SendMessageA(field, WM_KEYDOWN, 'C', 0);
        twClipboardCopyText(field, "12", 2);
        SendMessageA(field, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>(""));
        SendMessageA(field, GXM_VALIDATE, 0, 0);
        field.reset();
    }
    EXPECT_TRUE(HeapValidate(GetProcessHeap(), 0, nullptr));
}

}  // namespace
