// The resource figures the groups compare move by what is made, of every kind the flat checks count, and come back.
#include "tests/win/hostile/hostile.h"

using namespace fktest;

TEST(ResourceFigures, FollowWhatIsMadeAndReleased) {
    DeleteDC(CreateCompatibleDC(nullptr));  // the first memory DC brings objects that stay
    UniqueWindow holder = MakeParent();     // holds the thread's input-method window
    const ResourceFigures before = TakeResourceFigures();
    ASSERT_TRUE(before.allHeapsValid && before.processHeap.valid && before.crtHeap.valid);
    const std::string atom = "FkFigures" + std::to_string(GetCurrentProcessId());
    HGDIOBJ objects[] = {CreateSolidBrush(RGB(1, 2, 3)), CreatePen(PS_SOLID, 2, 0), CreateBitmap(4, 4, 1, 1, nullptr),
                         CreateFontA(10, 0, 0, 0, 400, 0, 0, 0, 0, 0, 0, 0, 0, "Arial"), CreateRectRgn(0, 0, 3, 3),
                         CreateCompatibleDC(nullptr)};
    HLOCAL local = LocalAlloc(LMEM_ZEROINIT, 10);
    HGLOBAL global = GlobalAlloc(GMEM_MOVEABLE, 10);
    void* volatile crt = std::malloc(2000);
    GlobalAddAtomA(atom.c_str());
    const ResourceFigures during = TakeResourceFigures();
    EXPECT_EQ(during.gdiObjects, before.gdiObjects + 6);
    EXPECT_EQ(during.atoms, before.atoms + 1);
    EXPECT_EQ(during.processHeap.blocks, before.processHeap.blocks + 2);
    EXPECT_EQ(during.crtHeap.blocks, before.crtHeap.blocks + 1);
    EXPECT_GE(during.crtHeap.bytes, before.crtHeap.bytes + 2000);
    EXPECT_NE(DescribeGrowth(before, during, false).find("gdi +6 ("), std::string::npos);
    for (HGDIOBJ o : objects) GetObjectType(o) == OBJ_MEMDC ? DeleteDC(static_cast<HDC>(o)) : DeleteObject(o);
    LocalFree(local);
    GlobalFree(global);
    std::free(crt);
    GlobalDeleteAtom(GlobalFindAtomA(atom.c_str()));
    EXPECT_EQ(DescribeGrowth(before, TakeResourceFigures(), true), "");
    const long windows = CountThreadWindows();
    UniqueWindow window = MakeParent();
    CreateWindowExA(0, "STATIC", "", WS_CHILD, 0, 0, 5, 5, window, nullptr, nullptr, nullptr);
    EXPECT_EQ(CountThreadWindows(), windows + 2);
    window.reset();
    EXPECT_EQ(CountThreadWindows(), windows);
}
