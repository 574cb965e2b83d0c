// The resource figures move by exactly what is made (GDI objects of every kind the library makes, DCs
// included; windows with their descendants; named atoms; Local/Global blocks on the process heap, malloc
// blocks on the C runtime's) and come back when it is released.
#include <malloc.h>

#include "tests/support/window.h"
#include "tests/win/hostile/hostile.h"

using namespace fktest;

TEST(ResourceFigures, FollowWhatIsMadeAndReleased) {
    DeleteDC(CreateCompatibleDC(nullptr));  // the first memory DC brings objects that stay
    UniqueWindow holder = MakeParent();     // holds the thread's input-method window
    std::vector<HGDIOBJ> objects;
    std::vector<void*> blocks;
    objects.reserve(120), blocks.reserve(60);
    char name[64];
    const ResourceFigures before = TakeResourceFigures();
    ASSERT_TRUE(before.allHeapsValid && before.processHeap.valid && before.crtHeap.valid);
    for (int i = 0; i < 20; ++i) {
        objects.push_back(CreateSolidBrush(RGB(i, 2, 3)));
        objects.push_back(CreatePen(PS_SOLID, 1 + i % 3, RGB(i, 0, 0)));
        objects.push_back(CreateFontA(10 + i % 7, 0, 0, 0, 400, 0, 0, 0, 0, 0, 0, 0, 0, "Arial"));
        objects.push_back(CreateBitmap(4 + i % 5, 4, 1, 1, nullptr));
        objects.push_back(CreateRectRgn(0, 0, i + 1, i + 1));
        objects.push_back(CreateCompatibleDC(nullptr));
        blocks.push_back(LocalAlloc(LMEM_ZEROINIT, 10 + i));
        blocks.push_back(GlobalAlloc(GMEM_MOVEABLE, 10 + i));
        blocks.push_back(std::malloc(100));
        std::snprintf(name, sizeof name, "FkFigures%lu_%d", GetCurrentProcessId(), i);
        GlobalAddAtomA(name);
    }
    const ResourceFigures during = TakeResourceFigures();
    EXPECT_EQ(during.gdiObjects, before.gdiObjects + 120);
    EXPECT_EQ(during.atoms, before.atoms + 20);
    EXPECT_EQ(during.processHeap.blocks, before.processHeap.blocks + 40);
    EXPECT_EQ(during.crtHeap.blocks, before.crtHeap.blocks + 20);
    EXPECT_GE(during.crtHeap.bytes, before.crtHeap.bytes + 2000);
    EXPECT_NE(DescribeGrowth(before, during, false).find("gdi +120 ("), std::string::npos);
    for (HGDIOBJ o : objects) GetObjectType(o) == OBJ_MEMDC ? DeleteDC(static_cast<HDC>(o)) : DeleteObject(o);
    for (size_t i = 0; i < blocks.size(); i += 3) {
        LocalFree(blocks[i]);
        GlobalFree(blocks[i + 1]);
        std::free(blocks[i + 2]);
    }
    for (int i = 0; i < 20; ++i) {
        std::snprintf(name, sizeof name, "FkFigures%lu_%d", GetCurrentProcessId(), i);
        GlobalDeleteAtom(GlobalFindAtomA(name));
    }
    EXPECT_EQ(DescribeGrowth(before, TakeResourceFigures(), true), "");
    const long windows = CountThreadWindows();
    UniqueWindow parent = MakeParent();
    HWND child = CreateWindowExA(0, "STATIC", "", WS_CHILD, 0, 0, 10, 10, parent, nullptr, nullptr, nullptr);
    CreateWindowExA(0, "STATIC", "", WS_CHILD, 0, 0, 5, 5, child, nullptr, nullptr, nullptr);
    CreateWindowExA(0, "BUTTON", "", WS_CHILD, 0, 0, 5, 5, parent, nullptr, nullptr, nullptr);
    EXPECT_EQ(CountThreadWindows(), windows + 4);
    parent.reset();
    EXPECT_EQ(CountThreadWindows(), windows);
}
