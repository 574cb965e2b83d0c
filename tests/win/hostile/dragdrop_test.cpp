// Drag and drop with windows destroyed mid-drag and drag blocks that are wrong, dead or name a non-window.
#include <utility>

#include "tests/win/hostile/hostile.h"

using namespace fktest;

namespace {

HGLOBAL Block(const char* eight) {  // eight bytes, with no terminator of their own
    HGLOBAL h = GlobalAlloc(GMEM_MOVEABLE | GMEM_DDESHARE, 8);
    std::memcpy(GlobalLock(h), eight, 8);
    GlobalUnlock(h);
    return h;
}

HWND g_destroyOnQuery;  // destroyed when the target is asked whether it takes the drop
WNDPROC g_fieldProc;
LRESULT CALLBACK QueryHook(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    if (msg == GXM_DRAGQUERY && g_destroyOnQuery != nullptr) {
        HWND victim = std::exchange(g_destroyOnQuery, nullptr);
        DestroyWindow(victim);
        if (victim == h) return 1;  // says yes on its way out
    }
    return CallWindowProcA(g_fieldProc, h, msg, wp, lp);
}
void CALLBACK Rescue(HWND, UINT, UINT_PTR, DWORD) { ReleaseCapture(); }  // ends a drag waiting in vain
constexpr UINT kAfterRelease = WM_APP + 7;  // posted behind the release: the drag must leave it alone

class HostileDrag : public HostileGroup {
protected:
    HWND Field(const char* method, int x, const char* text) {
        HWND f = CreateWindowExA(0, FK_CLASS_STRING, "", WS_CHILD | WS_VISIBLE | WS_BORDER, x, 10, 150, 24, stage_,
                                 nullptr, nullptr, nullptr);
        SendMessageA(f, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(method));
        SetWindowTextA(f, text);
        return f;
    }
    // A drag from source that moves over the stage, then over the target, and is released there.
    LRESULT Drag(HWND source, HWND target) {
        ShowWindow(parent, SW_HIDE);  // the group's own parent would be found under the mouse
        POINT stage{300, 200}, over{5, 5};
        MapWindowPoints(stage_, source, &stage, 1);
        MapWindowPoints(target, source, &over, 1);
        twProcessDragDrop(source, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(2, 2));
        PostMessageA(source, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(stage.x, stage.y));
        PostMessageA(source, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(over.x, over.y));
        PostMessageA(source, WM_LBUTTONUP, 0, MAKELPARAM(over.x, over.y));
        PostMessageA(stage_, kAfterRelease, 0, 0);
        const UINT_PTR timer = SetTimer(nullptr, 0, 3000, Rescue);
        const LRESULT r = Tried(twProcessDragDrop(source, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(4, 4)));
        KillTimer(nullptr, timer);
        if (GetCapture() != nullptr) ReleaseCapture();
        for (MSG m; PeekMessageA(&m, nullptr, WM_MOUSEFIRST, WM_MOUSELAST, PM_REMOVE);) continue;
        return r;
    }
    RecordingParent stage_{500, 300};
};

}  // namespace

// A target or source destroyed mid-drag ends the drag at once, leaves others' messages, drops nothing dead.
TEST_F(HostileDrag, WindowsDestroyedMidDrag) {
    const struct {
        const char* name;
        bool sourceDies;
        UINT when;             // GXM_DRAGQUERY at the target, or what the stage is told
        const char* survivor;  // its text afterwards
    } cases[] = {
        {"target, on its query", false, GXM_DRAGQUERY, "moved"},
        {"target, by its parent on the drop", false, GXM_DROPDATA, "moved"},
        {"source, by its parent on the drag notice", true, GXN_DRAGNOTIFY, "kept"},
        {"source, on the target's query", true, GXM_DRAGQUERY, "kept"},
        {"source, by the target's parent on the drop", true, GXM_DROPDATA, "moved"},
    };
    for (const auto& c : cases) {
        NowTrying("drag", c.name);
        HWND source = Field("@DRAGSRC(1)", 10, "moved"), target = Field("@DROPTARG", 250, "kept");
        g_fieldProc = reinterpret_cast<WNDPROC>(
            SetWindowLongPtrA(target, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(QueryHook)));
        const HWND victim = c.sourceDies ? source : target, survivor = c.sourceDies ? target : source;
        if (c.when == GXM_DRAGQUERY) g_destroyOnQuery = victim;
        stage_.reply = [&](UINT msg, WPARAM, LPARAM) -> std::optional<LRESULT> {
            if (msg != c.when || !IsWindow(victim)) return std::nullopt;
            return DestroyWindow(victim), 0;
        };
        stage_.clear();
        EXPECT_EQ(Drag(source, target), 1) << c.name;
        stage_.reply = nullptr;
        g_destroyOnQuery = nullptr;
        PumpMessages();
        EXPECT_EQ(stage_.Of(kAfterRelease).size(), 1u) << c.name << ": the drag took a message that was not its own";
        EXPECT_FALSE(IsWindow(victim)) << c.name;
        EXPECT_EQ(WindowText(survivor), c.survivor) << c.name;
        SetWindowTextA(survivor, "still works");
        EXPECT_EQ(WindowText(survivor), "still works");
        DestroyWindow(survivor);
    }
}

// Bad kinds, sizes and handles are refused; a non-window source (HWND_BROADCAST) is asked to remove nothing.
TEST_F(HostileDrag, BadDragBlocks) {
    UniqueWindow bystander(CreateWindowExA(0, FK_CLASS_STRING, "bystander", WS_POPUP | WS_VISIBLE, 0, 0, 99, 24,
                                           nullptr, nullptr, nullptr, nullptr));
    HWND gone = Field("", 10, "");
    DestroyWindow(gone);
    enum Data { kText, kUnterminated, kSmallBlock, kFreedBlock, kFreedData, kForeign, kSelf };
    const struct {
        const char* name;
        DWORD kind;
        Data data;
        HWND source;
        LRESULT query;
        const char* shown;
    } cases[] = {
        {"kind 2", 2, kText, nullptr, 1, "kept"},
        {"kind 0xFFFFFFFF", 0xFFFFFFFF, kText, nullptr, 1, "kept"},
        {"16-byte block", 1, kSmallBlock, nullptr, 0, "kept"},
        {"freed drag block", 1, kFreedBlock, nullptr, 0, "kept"},
        {"freed data", 1, kFreedData, nullptr, 1, "kept"},
        {"foreign data", 1, kForeign, nullptr, 1, "kept"},
        {"data is the drag block", 1, kSelf, nullptr, 1, "kept"},
        {"unterminated data", 1, kUnterminated, nullptr, 1, "uuuuuuuu"},
        {"source HWND_BROADCAST, move", 1, kText, HWND_BROADCAST, 1, "dropped"},
        {"source gone, move", 1, kText, gone, 1, "dropped"},
    };
    for (const auto& c : cases) {
        NowTrying("drag block", c.name);
        HWND target = Field("@DROPTARG", 250, "kept");
        // The drag block first: freed data stays dead.
        HGLOBAL drag = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT | GMEM_DDESHARE, sizeof(FieldDragBlock));
        const bool owned = c.data <= kFreedBlock;  // data of ours, to be taken or left
        HGLOBAL data = owned                 ? Block(c.data == kUnterminated ? "uuuuuuuu" : "dropped")
                       : c.data == kFreedData ? Block("freed!!")
                       : c.data == kForeign   ? ForeignHandle()
                                              : nullptr;
        if (c.data == kFreedData) GlobalFree(data);
        auto* block = static_cast<FieldDragBlock*>(GlobalLock(drag));
        block->hSource = c.source;
        block->dwFlags = 1;
        block->dwKind = c.kind;
        block->hData = c.data == kSelf ? drag : data;
        GlobalUnlock(drag);
        if (c.data == kSmallBlock) drag = GlobalReAlloc(drag, 16, GMEM_MOVEABLE);
        if (c.data == kFreedBlock) GlobalFree(drag);
        const auto lp = reinterpret_cast<LPARAM>(drag);
        EXPECT_EQ(Tried(SendMessageA(target, GXM_DRAGQUERY, 0, lp)), c.query) << c.name;
        EXPECT_EQ(Tried(SendMessageA(target, GXM_DROPDATA, 0, lp)), 0) << c.name;
        EXPECT_EQ(WindowText(target), c.shown) << c.name;
        EXPECT_EQ(WindowText(bystander), "bystander") << c.name;
        if (owned) EXPECT_EQ(GlobalSize(data) == 0, std::string(c.shown) != "kept") << c.name << ": taken data is freed";
        if (owned && GlobalSize(data) != 0) GlobalFree(data);
        if (c.data != kFreedBlock) EXPECT_NE(GlobalSize(drag), 0u) << c.name << ": the drag block stays the sender's";
        if (c.data != kFreedBlock) GlobalFree(drag);
        DestroyWindow(target);
    }
}
