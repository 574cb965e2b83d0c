// Drag and drop with windows destroyed mid-drag and drag blocks that are wrong, dead or name a non-window.
#include <utility>

#include "tests/win/hostile/hostile.h"

using namespace fktest;

namespace {

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
        HWND f = CreateWindowExA(0, FK_CLASS_STRING, "", WS_CHILD | WS_VISIBLE | WS_BORDER, x, 10, 150, 24, stage,
                                 nullptr, nullptr, nullptr);
        SendMessageA(f, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(method));
        SetWindowTextA(f, text);
        return f;
    }
    RecordingParent stage{500, 300};
};

}  // namespace

// A target or source destroyed mid-drag (on the target's query, on the drag notice or on the drop) ends the drag at
// once, leaves others' messages, drops nothing dead.
TEST_F(HostileDrag, WindowsDestroyedMidDrag) {
    const struct {
        bool sourceDies;
        UINT when;             // GXM_DRAGQUERY at the target, or what the stage is told
        const char* survivor;  // its text afterwards
    } cases[] = {{false, GXM_DRAGQUERY, "moved"}, {false, GXM_DROPDATA, "moved"}, {true, GXN_DRAGNOTIFY, "kept"},
                 {true, GXM_DRAGQUERY, "kept"}, {true, GXM_DROPDATA, "moved"}};
    ShowWindow(parent, SW_HIDE);  // the group's own parent would be found under the mouse
    for (const auto& c : cases) {
        NowTrying("drag, the source dies", std::to_string(c.sourceDies) + " on " + std::to_string(c.when));
        HWND source = Field("@DRAGSRC(1)", 10, "moved"), target = Field("@DROPTARG", 250, "kept");
        g_fieldProc = reinterpret_cast<WNDPROC>(SetWindowLongPtrA(target, GWLP_WNDPROC, LONG_PTR(QueryHook)));
        const HWND victim = c.sourceDies ? source : target, survivor = c.sourceDies ? target : source;
        g_destroyOnQuery = c.when == GXM_DRAGQUERY ? victim : nullptr;
        stage.reply = [&](UINT msg, WPARAM, LPARAM) -> std::optional<LRESULT> {
            if (msg != c.when || !IsWindow(victim)) return std::nullopt;
            return DestroyWindow(victim), 0;
        };
        stage.clear();
        POINT at[] = {{300, 200}, {5, 5}};  // moves over the stage, then over the target, and is released there
        MapWindowPoints(stage, source, &at[0], 1);
        MapWindowPoints(target, source, &at[1], 1);
        twProcessDragDrop(source, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(2, 2));
        for (int i : {0, 1, 2}) PostMessageA(source, i < 2 ? WM_MOUSEMOVE : WM_LBUTTONUP, i < 2, MAKELPARAM(at[i > 0].x, at[i > 0].y));
        PostMessageA(stage, kAfterRelease, 0, 0);
        const UINT_PTR timer = SetTimer(nullptr, 0, 3000, Rescue);
        EXPECT_EQ(Tried(twProcessDragDrop(source, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(4, 4))), 1) << g_trying;
        KillTimer(nullptr, timer);
        ReleaseCapture();
        stage.reply = nullptr;
        PumpMessages();
        EXPECT_EQ(stage.Of(kAfterRelease).size(), 1u) << g_trying << ": the drag took a message that was not its own";
        EXPECT_EQ(std::to_string(IsWindow(victim)) + WindowText(survivor), "0" + std::string(c.survivor)) << g_trying;
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
        DWORD kind;
        Data data;
        HWND source;
        const char* seen;  // the query's answer, the text shown and whether our data block was taken (freed)
    } cases[] = {{2, kText, nullptr, "1 kept"}, {0xFFFFFFFF, kText, nullptr, "1 kept"}, {1, kSmallBlock, nullptr, "0 kept"},
                 {1, kFreedBlock, nullptr, "0 kept"}, {1, kFreedData, nullptr, "1 kept"}, {1, kForeign, nullptr, "1 kept"},
                 {1, kSelf, nullptr, "1 kept"}, {1, kUnterminated, nullptr, "1 uuuuuuuu taken"},
                 {1, kText, HWND_BROADCAST, "1 dropped taken"}, {1, kText, gone, "1 dropped taken"}};
    for (const auto& c : cases) {
        NowTrying("drag block", std::to_string(c.kind) + " " + std::to_string(c.data) + " " + c.seen);
        HWND target = Field("@DROPTARG", 250, "kept");
        HGLOBAL drag = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT | GMEM_DDESHARE, sizeof(FieldDragBlock));
        HGLOBAL data = c.data == kForeign ? ForeignHandle() : GlobalAlloc(GMEM_MOVEABLE | GMEM_DDESHARE, 8);
        if (c.data != kForeign) std::memcpy(GlobalLock(data), c.data == kUnterminated ? "uuuuuuuu" : "dropped", 8);
        if (c.data != kForeign) GlobalUnlock(data);
        if (c.data == kFreedData) GlobalFree(data);  // before the drag block is made: freed data stays dead
        auto* block = static_cast<FieldDragBlock*>(GlobalLock(drag));
        *block = FieldDragBlock{};
        block->hSource = c.source, block->dwFlags = 1, block->dwKind = c.kind;
        block->hData = c.data == kSelf ? drag : data;
        GlobalUnlock(drag);
        if (c.data == kSmallBlock) drag = GlobalReAlloc(drag, 16, GMEM_MOVEABLE);
        if (c.data == kFreedBlock) GlobalFree(drag);
        const auto lp = reinterpret_cast<LPARAM>(drag);
        std::string seen = std::to_string(Tried(SendMessageA(target, GXM_DRAGQUERY, 0, lp)));
        EXPECT_EQ(Tried(SendMessageA(target, GXM_DROPDATA, 0, lp)), 0) << g_trying;
        const bool owned = c.data <= kFreedBlock || c.data == kSelf;  // ours to free unless taken
        seen += " " + WindowText(target) + (owned && GlobalSize(data) == 0 ? " taken" : "");
        EXPECT_EQ(seen + " " + WindowText(bystander), std::string(c.seen) + " bystander") << g_trying;
        if (owned && GlobalSize(data) != 0) GlobalFree(data);
        if (c.data != kFreedBlock) EXPECT_NE(GlobalSize(drag), 0u) << g_trying << ": the drag block stays the sender's";
        if (c.data != kFreedBlock) GlobalFree(drag);
        DestroyWindow(target);
    }
}
