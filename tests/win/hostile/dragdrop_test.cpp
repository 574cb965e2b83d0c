// Drops of drag blocks that are wrong, dead or name a non-window.
#include "tests/win/hostile/hostile.h"

using namespace fktest;

class HostileDrag : public HostileGroup {};

// Drag blocks of a bad kind, size or handle are refused, and a non-window source (HWND_BROADCAST) is asked to remove
// nothing.
TEST_F(HostileDrag, BadDragBlocks) {
    UniqueWindow bystander(CreateWindowExA(0, FK_CLASS_STRING, "bystander", WS_POPUP | WS_VISIBLE, 0, 0, 99, 24,
                                           nullptr, nullptr, nullptr, nullptr));
    enum Data { kText, kUnterminated, kSmallBlock, kFreedBlock, kSelf, kFreedData, kForeign };
    const struct {
        DWORD kind;
        Data data;
        HWND source;
        const char* seen;  // the query's answer, the text shown and whether our data block was taken (freed)
    } cases[] = {{2, kText, nullptr, "1 kept"}, {0xFFFFFFFF, kText, nullptr, "1 kept"}, {0, kText, nullptr, "1 kept"},
                 {1, kSmallBlock, nullptr, "0 kept"}, {3, kSmallBlock, nullptr, "0 kept"}, {1, kSelf, nullptr, "1 kept"},
                 {1, kFreedBlock, nullptr, "0 kept"}, {1, kFreedData, nullptr, "1 kept"}, {1, kForeign, nullptr, "1 kept"},
                 {1, kUnterminated, nullptr, "1 uuuuuuuu taken"}, {1, kText, nullptr, "1 dropped taken"},
                 {1, kText, HWND_BROADCAST, "1 dropped taken"}, {1, kText, HWND(0x4321), "1 dropped taken"}};
    for (const auto& c : cases) {
        NowTrying("drag block", std::to_string(c.kind) + " " + std::to_string(c.data) + " " + c.seen);
        UniqueWindow target = MakeChild(parent, FK_CLASS_STRING, 0, 100, 150, 24, "kept");
        SendMessageA(target, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>("@DROPTARG"));
        HGLOBAL data = GlobalAlloc(GMEM_MOVEABLE, 8), drag = GlobalAlloc(GMEM_MOVEABLE, sizeof(FieldDragBlock));
        std::memcpy(GlobalLock(data), c.data == kUnterminated ? "uuuuuuuu" : "dropped", 8);
        GlobalUnlock(data);
        if (c.data == kFreedData) GlobalFree(data);  // before the drag block is made: freed data stays dead
        const HGLOBAL named = c.data == kSelf ? drag : c.data == kForeign ? kForeignHandle : data;
        const FieldDragBlock block{.hSource = c.source, .dwFlags = 1, .dwKind = c.kind, .hData = named};
        std::memcpy(GlobalLock(drag), &block, sizeof block);
        GlobalUnlock(drag);
        if (c.data == kSmallBlock) drag = GlobalReAlloc(drag, 16, GMEM_MOVEABLE);
        if (c.data == kFreedBlock) GlobalFree(drag);
        std::string seen = std::to_string(Tried(SendMessageA(target, GXM_DRAGQUERY, 0, LPARAM(drag))));
        EXPECT_EQ(Tried(SendMessageA(target, GXM_DROPDATA, 0, LPARAM(drag))), 0) << g_trying;
        seen += " " + WindowText(target) + (c.data != kFreedData && GlobalSize(data) == 0 ? " taken" : "");
        EXPECT_EQ(seen + " " + WindowText(bystander) + (c.data != kFreedBlock && GlobalSize(drag) == 0 ? " freed" : ""),
                  std::string(c.seen) + " bystander") << g_trying << " (the drag block stays the sender's)";
        if (c.data != kFreedData && GlobalSize(data) != 0) GlobalFree(data);
        if (c.data != kFreedBlock) GlobalFree(drag);
    }
}
