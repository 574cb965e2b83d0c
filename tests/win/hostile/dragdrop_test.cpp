// Drag and drop with windows destroyed in the middle of a drag, and drag blocks of the wrong kind, with
// dead handles, or naming a source that is not a window.
#include <utility>

#include "tests/support/recorder.h"
#include "tests/win/hostile/hostile.h"

using namespace fktest;

namespace {

std::string Text(HWND h) {
    char buffer[256] = {};
    return GetWindowTextA(h, buffer, sizeof buffer), buffer;
}

HGLOBAL Block(const void* bytes, size_t n) {
    HGLOBAL h = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT | GMEM_DDESHARE, n);
    std::memcpy(GlobalLock(h), bytes, n);
    GlobalUnlock(h);
    return h;
}
HGLOBAL Freed() {
    HGLOBAL h = GlobalAlloc(GMEM_MOVEABLE, 64);
    GlobalFree(h);
    return h;
}

// The 64-byte drag block: source, identifier, flags, kind, channel, cursor, data.
HGLOBAL DragBlock(HWND source, DWORD flags, DWORD kind, HGLOBAL data) {
    DWORD words[16] = {};
    words[0] = static_cast<DWORD>(reinterpret_cast<UINT_PTR>(source));
    words[2] = flags;
    words[3] = kind;
    words[15] = static_cast<DWORD>(reinterpret_cast<UINT_PTR>(data));
    return Block(words, sizeof words);
}

// Destroys a window when the target is asked whether it takes the drop.
HWND g_destroyOnQuery;
WNDPROC g_fieldProc;
LRESULT CALLBACK QueryHook(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    if (msg == GXM_DRAGQUERY && g_destroyOnQuery != nullptr) {
        HWND victim = std::exchange(g_destroyOnQuery, nullptr);
        DestroyWindow(victim);
        if (victim == h) return 1;  // says yes on its way out
    }
    return CallWindowProcA(g_fieldProc, h, msg, wp, lp);
}

bool g_dragging;  // a drag that would wait for a message that never comes is ended by a timer
void CALLBACK Rescue(HWND, UINT, UINT_PTR, DWORD) {
    if (g_dragging) ReleaseCapture();
}
constexpr UINT kAfterRelease = WM_APP + 7;  // posted behind the release: the drag must leave it alone

class HostileDrag : public HostileGroup {
protected:
    HWND Field(const char* method, int x) {
        HWND f = CreateWindowExA(0, FK_CLASS_STRING, "", WS_CHILD | WS_VISIBLE | WS_BORDER, x, 10, 150, 24, stage_,
                                 nullptr, nullptr, nullptr);
        SendMessageA(f, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(method));
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
        g_dragging = true;
        LRESULT r = twProcessDragDrop(source, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(4, 4));
        g_dragging = false;
        KillTimer(nullptr, timer);
        if (GetCapture() != nullptr) ReleaseCapture();
        for (MSG m; PeekMessageA(&m, nullptr, WM_MOUSEFIRST, WM_MOUSELAST, PM_REMOVE);) continue;
        return r;
    }
    RecordingParent stage_{500, 300};
};

}  // namespace

// The target is destroyed while it is asked (by itself) or while its parent is told of the drop; the
// source is destroyed by its parent at the drag notice, by the target while the source holds the
// capture, or by the target's parent during the drop. The drag ends at once (without waiting for, and
// taking, a message that is not its own), nothing is dropped on a dead window, and the survivors work.
TEST_F(HostileDrag, WindowsDestroyedMidDrag) {
    enum Victim { kTarget, kSource };
    const struct {
        const char* name;
        Victim victim;
        UINT when;  // GXM_DRAGQUERY at the target, or what the stage is told
        const char* dropped;  // the target's text afterwards (when it lives)
    } cases[] = {
        {"target, on its query", kTarget, GXM_DRAGQUERY, nullptr},
        {"target, by its parent on the drop", kTarget, GXM_DROPDATA, nullptr},
        {"source, by its parent on the drag notice", kSource, GXN_DRAGNOTIFY, "kept"},
        {"source, on the target's query", kSource, GXM_DRAGQUERY, "kept"},
        {"source, by the target's parent on the drop", kSource, GXM_DROPDATA, "moved"},
    };
    for (const auto& c : cases) {
        NowTrying("drag", c.name);
        HWND source = Field("@DRAGSRC(1)", 10), target = Field("@DROPTARG", 250);
        g_fieldProc = reinterpret_cast<WNDPROC>(
            SetWindowLongPtrA(target, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(QueryHook)));
        SetWindowTextA(source, "moved");
        SetWindowTextA(target, "kept");
        HWND victim = c.victim == kTarget ? target : source;
        if (c.when == GXM_DRAGQUERY) g_destroyOnQuery = victim;
        stage_.reply = [&](UINT msg, WPARAM, LPARAM) -> std::optional<LRESULT> {
            if (msg != c.when || !IsWindow(victim)) return std::nullopt;
            DestroyWindow(victim);
            return 0;
        };
        stage_.clear();
        EXPECT_EQ(Drag(source, target), 1) << c.name;
        stage_.reply = nullptr;
        g_destroyOnQuery = nullptr;
        PumpMessages();
        EXPECT_EQ(stage_.Of(kAfterRelease).size(), 1u) << c.name << ": the drag took a message that was not its own";
        EXPECT_FALSE(IsWindow(victim)) << c.name;
        if (c.victim == kTarget) {
            EXPECT_EQ(Text(source), "moved") << c.name << ": nothing was dropped";
        } else {
            EXPECT_EQ(Text(target), c.dropped) << c.name;
        }
        SetWindowTextA(c.victim == kTarget ? source : target, "still works");
        EXPECT_EQ(Text(c.victim == kTarget ? source : target), "still works");
        for (HWND h : {source, target}) if (IsWindow(h)) DestroyWindow(h);
    }
}

// Drag blocks handed to a target by hand. A block of another kind, too small, or freed is refused; a
// data handle that is dead, foreign or the drag block itself is refused; unterminated data is cut at
// its block's end; a source that is HWND_BROADCAST or gone is not asked to remove anything (a bystander
// field with the move's removal broadcast to it would lose its text).
TEST_F(HostileDrag, BadDragBlocks) {
    UniqueWindow bystander(CreateWindowExA(0, FK_CLASS_STRING, "bystander", WS_POPUP | WS_VISIBLE, 0, 0, 99, 24,
                                           nullptr, nullptr, nullptr, nullptr));
    HWND gone = Field("", 10);
    DestroyWindow(gone);
    enum Data { kText, kFreedData, kForeign, kSelf, kUnterminated };
    const struct {
        const char* name;
        DWORD kind;
        Data data;
        HWND source;
        size_t size;  // of the drag block: 64, or less
        bool freedBlock;
        LRESULT query;
        const char* shown;
    } cases[] = {
        {"kind 2", 2, kText, nullptr, 64, false, 1, "kept"},
        {"kind 0xFFFFFFFF", 0xFFFFFFFF, kText, nullptr, 64, false, 1, "kept"},
        {"16-byte block", 1, kText, nullptr, 16, false, 0, "kept"},
        {"freed drag block", 1, kText, nullptr, 64, true, 0, "kept"},
        {"freed data", 1, kFreedData, nullptr, 64, false, 1, "kept"},
        {"foreign data", 1, kForeign, nullptr, 64, false, 1, "kept"},
        {"data is the drag block", 1, kSelf, nullptr, 64, false, 1, "kept"},
        {"unterminated data", 1, kUnterminated, nullptr, 64, false, 1, "uuuuuuuu"},
        {"source HWND_BROADCAST, move", 1, kText, HWND_BROADCAST, 64, false, 1, "dropped"},
        {"source gone, move", 1, kText, gone, 64, false, 1, "dropped"},
    };
    for (const auto& c : cases) {
        NowTrying("drag block", c.name);
        HWND target = Field("@DROPTARG", 250);
        SetWindowTextA(target, "kept");
        HGLOBAL data = c.data == kText ? Block("dropped", 8) : c.data == kUnterminated ? Block("uuuuuuuu", 8)
                     : c.data == kFreedData ? Freed() : c.data == kForeign ? HGLOBAL(0x00C0FFEE) : nullptr;
        HGLOBAL drag = DragBlock(c.source, 1, c.kind, data);
        if (c.data == kSelf) {  // its own handle in the data field
            auto* words = static_cast<DWORD*>(GlobalLock(drag));
            words[15] = static_cast<DWORD>(reinterpret_cast<UINT_PTR>(drag));
            GlobalUnlock(drag);
        }
        if (c.size < 64) drag = GlobalReAlloc(drag, c.size, GMEM_MOVEABLE);
        if (c.freedBlock) GlobalFree(drag);
        const auto lp = reinterpret_cast<LPARAM>(drag);
        EXPECT_EQ(SendMessageA(target, GXM_DRAGQUERY, 0, lp), c.query) << c.name;
        EXPECT_EQ(SendMessageA(target, GXM_DROPDATA, 0, lp), 0) << c.name;
        EXPECT_EQ(Text(target), c.shown) << c.name;
        EXPECT_EQ(Text(bystander), "bystander") << c.name;
        if (c.data == kText || c.data == kUnterminated)
            EXPECT_EQ(GlobalSize(data) == 0, std::string(c.shown) != "kept") << c.name << ": taken data is freed";
        if (!c.freedBlock) EXPECT_NE(GlobalSize(drag), 0u) << c.name << ": the drag block stays the sender's";
        if ((c.data == kText || c.data == kUnterminated) && GlobalSize(data) != 0) GlobalFree(data);
        if (!c.freedBlock) GlobalFree(drag);
        DestroyWindow(target);
    }
}
