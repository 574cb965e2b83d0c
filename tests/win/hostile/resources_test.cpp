// The resource figures: each moves by exactly what a test makes and comes back when it is released.
#include <gtest/gtest.h>
#include <malloc.h>

#include <cstdio>
#include <cstdlib>
#include <vector>

#include "tests/support/resources.h"
#include "tests/support/window.h"

namespace {

using namespace fktest;

// Every kind of object the library makes, DCs included, shows up in the count and leaves it again.
TEST(ResourceFigures, GdiCountFollowsCreateAndDelete) {
    DeleteDC(CreateCompatibleDC(nullptr));  // the first memory DC brings objects that stay
    HGDIOBJ (*const kinds[])(int) = {
        [](int i) -> HGDIOBJ { return CreateSolidBrush(RGB(i, 2, 3)); },
        [](int i) -> HGDIOBJ { return CreatePen(PS_SOLID, 1 + i % 3, RGB(i, 0, 0)); },
        [](int i) -> HGDIOBJ { return CreateFontA(10 + i % 7, 0, 0, 0, 400, 0, 0, 0, 0, 0, 0, 0, 0, "Arial"); },
        [](int i) -> HGDIOBJ { return CreateBitmap(4 + i % 5, 4, 1, 1, nullptr); },
        [](int i) -> HGDIOBJ { return CreateRectRgn(0, 0, i + 1, i + 1); },
        [](int) -> HGDIOBJ { return CreateCompatibleDC(nullptr); },
    };
    for (auto make : kinds) {
        const long before = CountGdiObjects();
        std::vector<HGDIOBJ> made;
        for (int i = 0; i < 100; ++i) made.push_back(make(i));
        EXPECT_EQ(CountGdiObjects(), before + 100);
        for (HGDIOBJ o : made) GetObjectType(o) == OBJ_MEMDC ? DeleteDC(static_cast<HDC>(o)) : DeleteObject(o);
        EXPECT_EQ(CountGdiObjects(), before);
    }
}

TEST(ResourceFigures, WindowsAtomsAndHeapBlocks) {
    UniqueWindow holder = MakeParent();  // holds the thread's input-method window
    const long windows = CountThreadWindows(), atoms = CountGlobalAtoms();
    {
        UniqueWindow parent = MakeParent();
        HWND child = CreateWindowExA(0, "STATIC", "", WS_CHILD, 0, 0, 10, 10, parent, nullptr, nullptr, nullptr);
        CreateWindowExA(0, "STATIC", "", WS_CHILD, 0, 0, 5, 5, child, nullptr, nullptr, nullptr);
        CreateWindowExA(0, "BUTTON", "", WS_CHILD, 0, 0, 5, 5, parent, nullptr, nullptr, nullptr);
        EXPECT_EQ(CountThreadWindows(), windows + 4);
    }
    EXPECT_EQ(CountThreadWindows(), windows);
    std::vector<ATOM> made;
    char name[64];
    for (int i = 0; i < 10; ++i) {
        std::snprintf(name, sizeof name, "FkFigures%lu_%d", GetCurrentProcessId(), i);
        made.push_back(GlobalAddAtomA(name));
    }
    EXPECT_EQ(CountGlobalAtoms(), atoms + 10);
    for (ATOM a : made) GlobalDeleteAtom(a);
    EXPECT_EQ(CountGlobalAtoms(), atoms);

    // LocalAlloc and GlobalAlloc blocks are process-heap blocks; malloc blocks are the C runtime's.
    HANDLE crt = reinterpret_cast<HANDLE>(_get_heap_handle());
    std::vector<void*> blocks(150);
    const HeapFigures process = MeasureHeap(GetProcessHeap()), runtime = MeasureHeap(crt);
    EXPECT_TRUE(process.valid && runtime.valid);
    for (int i = 0; i < 50; ++i) {
        blocks[i] = LocalAlloc(LMEM_ZEROINIT, 10 + i);
        blocks[50 + i] = GlobalAlloc(GMEM_MOVEABLE, 10 + i);
        blocks[100 + i] = std::malloc(100);
    }
    EXPECT_EQ(MeasureHeap(GetProcessHeap()).blocks, process.blocks + 100);
    EXPECT_EQ(MeasureHeap(crt).blocks, runtime.blocks + 50);
    EXPECT_GE(MeasureHeap(crt).bytes, runtime.bytes + 5000);
    for (int i = 0; i < 50; ++i) {
        LocalFree(blocks[i]);
        GlobalFree(blocks[50 + i]);
        std::free(blocks[100 + i]);
    }
    EXPECT_EQ(MeasureHeap(GetProcessHeap()).blocks, process.blocks);
    EXPECT_EQ(MeasureHeap(crt).blocks, runtime.blocks);
}

TEST(ResourceFigures, SnapshotComparison) {
    const ResourceFigures before = TakeResourceFigures();
    EXPECT_TRUE(before.allHeapsValid);
    HBRUSH leaked = CreateSolidBrush(RGB(9, 9, 9));
    const std::string growth = DescribeGrowth(before, TakeResourceFigures(), false);
    DeleteObject(leaked);
    EXPECT_NE(growth.find("gdi +1"), std::string::npos) << growth;
    EXPECT_NE(growth.find("gdi type 0x10 +1"), std::string::npos) << growth;
}

}  // namespace
