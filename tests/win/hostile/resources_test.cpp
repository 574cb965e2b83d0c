// The resource figures themselves: each one moves by exactly what a test
// creates and comes back when it is released.

#include <gtest/gtest.h>
#include <malloc.h>
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <vector>

#include "tests/support/resources.h"
#include "tests/support/window.h"

namespace {

using fktest::CountGdiObjects;
using fktest::CountGlobalAtoms;
using fktest::CountThreadWindows;
using fktest::MeasureHeap;

TEST(ResourceFigures, GdiTableIsReadable) {
    // Stock objects and the screen DC belong to every process.
    EXPECT_GT(CountGdiObjects(), 0);
}

// Each kind of object the library makes (brushes, pens, fonts, bitmaps,
// regions) shows up in the count and leaves it again.
TEST(ResourceFigures, GdiCountFollowsCreateAndDelete) {
    using Maker = HGDIOBJ (*)(int);
    const struct {
        const char* kind;
        Maker make;
    } kinds[] = {
        {"brush", [](int i) -> HGDIOBJ { return CreateSolidBrush(RGB(i, 2, 3)); }},
        {"pen", [](int i) -> HGDIOBJ { return CreatePen(PS_SOLID, 1 + i % 3, RGB(i, 0, 0)); }},
        {"font", [](int i) -> HGDIOBJ { return CreateFontA(10 + i % 7, 0, 0, 0, 400, 0, 0, 0, 0, 0, 0, 0, 0, "Arial"); }},
        {"bitmap", [](int i) -> HGDIOBJ { return CreateBitmap(4 + i % 5, 4, 1, 1, nullptr); }},
        {"region", [](int i) -> HGDIOBJ { return CreateRectRgn(0, 0, i + 1, i + 1); }},
    };
    for (const auto& k : kinds) {
        SCOPED_TRACE(k.kind);
        const long before = CountGdiObjects();
        std::vector<HGDIOBJ> made;
        for (int i = 0; i < 100; ++i) made.push_back(k.make(i));
        EXPECT_EQ(CountGdiObjects(), before + 100);
        for (HGDIOBJ o : made) DeleteObject(o);
        EXPECT_EQ(CountGdiObjects(), before);
    }
}

TEST(ResourceFigures, GdiCountSeesDeviceContexts) {
    // The first memory DC of a process brings objects that stay.
    DeleteDC(CreateCompatibleDC(nullptr));
    const long before = CountGdiObjects();
    HDC dc = CreateCompatibleDC(nullptr);
    EXPECT_EQ(CountGdiObjects(), before + 1);
    DeleteDC(dc);
    EXPECT_EQ(CountGdiObjects(), before);
}

TEST(ResourceFigures, WindowCountTakesChildrenAndGrandchildren) {
    // The first top-level window of a thread brings the thread's input
    // method window with it, until the last one goes: keep one open.
    fktest::UniqueWindow holder = fktest::MakeParent();
    const long before = CountThreadWindows();
    {
        fktest::UniqueWindow parent = fktest::MakeParent();
        HWND child = CreateWindowExA(0, "STATIC", "", WS_CHILD, 0, 0, 10, 10, parent, nullptr, nullptr, nullptr);
        CreateWindowExA(0, "STATIC", "", WS_CHILD, 0, 0, 5, 5, child, nullptr, nullptr, nullptr);
        CreateWindowExA(0, "BUTTON", "", WS_CHILD, 0, 0, 5, 5, parent, nullptr, nullptr, nullptr);
        EXPECT_EQ(CountThreadWindows(), before + 4);
    }
    EXPECT_EQ(CountThreadWindows(), before);
}

TEST(ResourceFigures, AtomCountFollowsAddAndDelete) {
    const long before = CountGlobalAtoms();
    std::vector<ATOM> atoms;
    for (int i = 0; i < 10; ++i) {
        char name[64];
        std::snprintf(name, sizeof name, "FkResourceFigures%lu_%d", GetCurrentProcessId(), i);
        atoms.push_back(GlobalAddAtomA(name));
    }
    EXPECT_EQ(CountGlobalAtoms(), before + 10);
    for (ATOM a : atoms) GlobalDeleteAtom(a);
    EXPECT_EQ(CountGlobalAtoms(), before);
}

TEST(ResourceFigures, LocalAndGlobalBlocksAreProcessHeapBlocks) {
    std::vector<HLOCAL> locals;
    std::vector<HGLOBAL> globals;
    locals.reserve(50);
    globals.reserve(50);
    const long before = MeasureHeap(GetProcessHeap()).blocks;
    for (int i = 0; i < 50; ++i) locals.push_back(LocalAlloc(LMEM_ZEROINIT, 10 + i));
    for (int i = 0; i < 50; ++i) globals.push_back(GlobalAlloc(GMEM_MOVEABLE, 10 + i));
    EXPECT_EQ(MeasureHeap(GetProcessHeap()).blocks, before + 100);
    for (HLOCAL l : locals) LocalFree(l);
    for (HGLOBAL g : globals) GlobalFree(g);
    EXPECT_EQ(MeasureHeap(GetProcessHeap()).blocks, before);
}

TEST(ResourceFigures, MallocBlocksAreCrtHeapBlocks) {
    HANDLE crt = reinterpret_cast<HANDLE>(_get_heap_handle());
    std::vector<void*> blocks;
    blocks.reserve(50);
    const fktest::HeapFigures before = MeasureHeap(crt);
    EXPECT_TRUE(before.valid);
    for (int i = 0; i < 50; ++i) blocks.push_back(std::malloc(100));
    const fktest::HeapFigures during = MeasureHeap(crt);
    EXPECT_EQ(during.blocks, before.blocks + 50);
    EXPECT_GE(during.bytes, before.bytes + 5000);
    for (void* p : blocks) std::free(p);
    EXPECT_EQ(MeasureHeap(crt).blocks, before.blocks);
}

TEST(ResourceFigures, SnapshotComparison) {
    const fktest::ResourceFigures before = fktest::TakeResourceFigures();
    EXPECT_TRUE(before.allHeapsValid);
    EXPECT_TRUE(before.processHeap.valid);
    EXPECT_TRUE(before.crtHeap.valid);
    HBRUSH leaked = CreateSolidBrush(RGB(9, 9, 9));
    fktest::ResourceFigures after = fktest::TakeResourceFigures();
    EXPECT_FALSE(fktest::HandlesBackAndHeapsValid(before, after));
    EXPECT_NE(fktest::DescribeGrowth(before, after, false).find("gdi +1"), std::string::npos);
    DeleteObject(leaked);
    after = fktest::TakeResourceFigures();
    EXPECT_TRUE(fktest::HandlesBackAndHeapsValid(before, after)) << fktest::DescribeGrowth(before, after, false);
}

}  // namespace
