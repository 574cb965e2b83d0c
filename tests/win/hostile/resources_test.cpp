// The resource figures move by exactly what is made, of every kind the flat checks count, and come back.
#include <malloc.h>

#include "tests/win/hostile/hostile.h"

using namespace fktest;

TEST(ResourceFigures, FollowWhatIsMadeAndReleased) {
    DeleteDC(CreateCompatibleDC(nullptr));  // the first memory DC brings objects that stay
    UniqueWindow holder = MakeParent();     // holds the thread's input-method window
    std::vector<HGDIOBJ> objects;
    std::vector<void*> blocks;
    objects.reserve(120), blocks.reserve(60);
    auto atom = [](int i) {
        static char name[64];
        return std::snprintf(name, sizeof name, "FkFigures%lu_%d", GetCurrentProcessId(), i), name;
    };
    const ResourceFigures before = TakeResourceFigures();
    ASSERT_TRUE(before.allHeapsValid && before.processHeap.valid && before.crtHeap.valid);
    for (int i = 0; i < 20; ++i) {
        objects.insert(objects.end(), {CreateSolidBrush(RGB(i, 2, 3)), CreatePen(PS_SOLID, 1 + i % 3, RGB(i, 0, 0)),
                                       CreateFontA(10 + i % 7, 0, 0, 0, 400, 0, 0, 0, 0, 0, 0, 0, 0, "Arial"),
                                       CreateBitmap(4 + i % 5, 4, 1, 1, nullptr), CreateRectRgn(0, 0, i + 1, i + 1),
                                       CreateCompatibleDC(nullptr)});
        blocks.insert(blocks.end(), {LocalAlloc(LMEM_ZEROINIT, 10 + i), GlobalAlloc(GMEM_MOVEABLE, 10 + i), std::malloc(100)});
        GlobalAddAtomA(atom(i));
    }
    const ResourceFigures during = TakeResourceFigures();
    EXPECT_EQ(during.gdiObjects, before.gdiObjects + 120);
    EXPECT_EQ(during.atoms, before.atoms + 20);
    EXPECT_EQ(during.processHeap.blocks, before.processHeap.blocks + 40);
    EXPECT_EQ(during.crtHeap.blocks, before.crtHeap.blocks + 20);
    EXPECT_GE(during.crtHeap.bytes, before.crtHeap.bytes + 2000);
    EXPECT_NE(DescribeGrowth(before, during, false).find("gdi +120 ("), std::string::npos);
    for (HGDIOBJ o : objects) GetObjectType(o) == OBJ_MEMDC ? DeleteDC(static_cast<HDC>(o)) : DeleteObject(o);
    for (size_t i = 0; i < blocks.size(); i += 3) LocalFree(blocks[i]), GlobalFree(blocks[i + 1]), std::free(blocks[i + 2]);
    for (int i = 0; i < 20; ++i) GlobalDeleteAtom(GlobalFindAtomA(atom(i)));
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
