// Drag and drop between system edit and list boxes and the library's
// numeric fields. The modal loop is driven by mouse messages posted before
// the drag starts.

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "include/fldkit.h"
#include "link_control.h"
#include "tests/support/recorder.h"

using linktest::MakeDragControl;
using linktest::Text;

namespace {

constexpr UINT kDrop = 0x0D12, kAccept = 0x0D13;

class DragTest : public ::testing::Test {
protected:
    void SetUp() override {
        SetWindowPos(parent_, HWND_TOP, 0, 0, 500, 300, SWP_SHOWWINDOW);
        UpdateWindow(parent_);
    }
    void TearDown() override {
        ReleaseCapture();
        linktest::PumpUntil([] { return false; }, 20);
    }
    HWND Make(const char* cls, const char* method, int x, int y, DWORD style = 0, int w = 150, int h = 24) {
        static int id = 200;
        HWND c = MakeDragControl(parent_, cls, method, style, x, y, w, h, ++id);
        EXPECT_NE(c, nullptr) << cls;
        return c;
    }
    // Arms the source, queues the moves and the release over target at
    // point (target client coordinates), then starts the drag.
    LRESULT Drag(HWND source, HWND target, POINT at = {5, 5}, bool escape = false) {
        MapWindowPoints(target, source, &at, 1);
        twProcessDragDrop(source, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(2, 2));
        PostMessageA(source, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(at.x, at.y));
        if (escape) PostMessageA(source, WM_KEYDOWN, VK_ESCAPE, 0);
        PostMessageA(source, WM_LBUTTONUP, 0, MAKELPARAM(at.x, at.y));
        LRESULT r = twProcessDragDrop(source, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(4, 4));
        MSG m;
        while (PeekMessageA(&m, nullptr, WM_MOUSEFIRST, WM_MOUSELAST, PM_REMOVE)) {
        }
        return r;
    }
    fktest::RecordingParent parent_{500, 300};
};

// A drag block as the library builds it, for the target-side messages.
HGLOBAL MakeBlock(const char* channel, const std::string& text, DWORD kind = 1, HWND source = nullptr) {
    HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT | GMEM_DDESHARE, 64);
    auto* p = static_cast<BYTE*>(GlobalLock(block));
    std::memcpy(p, &source, 4);
    std::memcpy(p + 12, &kind, 4);
    std::strncpy(reinterpret_cast<char*>(p + 16), channel, 29);
    HGLOBAL data = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT | GMEM_DDESHARE, text.size() + 1);
    std::memcpy(GlobalLock(data), text.c_str(), text.size() + 1);
    GlobalUnlock(data);
    std::memcpy(p + 60, &data, 4);
    GlobalUnlock(block);
    return block;
}

std::vector<std::string> Items(HWND list) {
    std::vector<std::string> items;
    LRESULT n = SendMessageA(list, LB_GETCOUNT, 0, 0);
    for (LRESULT i = 0; i < n; ++i) {
        char text[128] = {};
        SendMessageA(list, LB_GETTEXT, i, reinterpret_cast<LPARAM>(text));
        items.push_back(text);
    }
    return items;
}

void Fill(HWND list, std::initializer_list<const char*> items) {
    for (const char* s : items) SendMessageA(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(s));
}

TEST(DragCursors, TheLibrarySuppliesItsDragAndNoDropCursors) {
    HMODULE library = GetModuleHandleA("FLDKIT32.dll");
    ASSERT_NE(library, nullptr);
    EXPECT_NE(LoadCursorA(library, MAKEINTRESOURCEA(160)), nullptr);
    EXPECT_NE(LoadCursorA(library, MAKEINTRESOURCEA(161)), nullptr);
}

TEST_F(DragTest, WholeTextReplacesTheTargetsText) {
    HWND source = Make("edit", "@DRAGSRC", 10, 10);
    HWND target = Make("edit", "@DROPTARG(4)", 250, 10);
    SetWindowTextA(source, "dragged");
    SetWindowTextA(target, "old");
    EXPECT_EQ(Drag(source, target), 1);
    EXPECT_EQ(Text(target), "dragged");
    EXPECT_EQ(Text(source), "dragged");
    EXPECT_EQ(GetPropA(source, "@DRAGSRC"), nullptr);
}

TEST_F(DragTest, MovedSelectionIsInsertedAtTheCaretAndLeavesTheSource) {
    HWND source = Make("edit", "@DRAGSRC(1)", 10, 10);
    HWND target = Make("edit", "@DROPTARG(0)", 250, 10);
    SetWindowTextA(source, "one two three");
    SetWindowTextA(target, "[]");
    SendMessageA(target, EM_SETSEL, 1, 1);
    twProcessDragDrop(source, WM_LBUTTONDOWN, MK_LBUTTON, 0);
    SendMessageA(source, EM_SETSEL, 4, 7);
    POINT at = {5, 5};
    MapWindowPoints(target, source, &at, 1);
    PostMessageA(source, WM_LBUTTONUP, 0, MAKELPARAM(at.x, at.y));
    EXPECT_EQ(twProcessDragDrop(source, WM_MOUSEMOVE, MK_LBUTTON, 0), 1);
    EXPECT_EQ(Text(target), "[two]");
    EXPECT_EQ(Text(source), "one  three");
}

TEST_F(DragTest, NumericFieldsTakeTheTextUpToTheFirstLetterOrBlank) {
    const struct {
        const char* cls;
        const char* dropped;
        const char* shown;
    } cases[] = {
        {"gxNumeric32", "12ab", "12"},  {"gxNumeric32", "ab", ""},   {"gxNumeric32", "1 000", "1"},
        {"gxReal32", "3,5", "3"},       {"gxReal32", "2.75", "2.75"}, {"gxNumeric32", "3,5", "3,5"},
        {"gxNumeric32", "4\n5\n", "45"}, {"gxCurrency32", "a1b2", ""},  // ends before the first letter
        {"gxDate32", "1/2/99", "1/2/99"},
    };
    for (const auto& c : cases) {
        HWND source = Make("edit", "@DRAGSRC", 10, 10);
        HWND target = Make(c.cls, "@DROPTARG", 250, 10);
        SetWindowTextA(source, c.dropped);
        SetWindowTextA(target, "before");
        EXPECT_EQ(Drag(source, target), 1);
        EXPECT_EQ(Text(target), c.shown) << c.cls << " " << c.dropped;
        DestroyWindow(source);
        DestroyWindow(target);
    }
}

TEST_F(DragTest, EmptyDropOnANumericFieldChangesNothing) {
    HWND target = Make("gxNumeric32", "@DROPTARG", 250, 10);
    SetWindowTextA(target, "7");
    HGLOBAL block = MakeBlock("", "");
    EXPECT_EQ(SendMessageA(target, kDrop, 0, reinterpret_cast<LPARAM>(block)), 0);
    EXPECT_EQ(Text(target), "7");
    GlobalFree(block);
}

TEST_F(DragTest, EmptySourceStartsNoDrag) {
    HWND source = Make("edit", "@DRAGSRC", 10, 10);
    HWND target = Make("edit", "@DROPTARG", 250, 10);
    SetWindowTextA(target, "kept");
    EXPECT_EQ(Drag(source, target), 0);
    EXPECT_EQ(Text(target), "kept");
}

TEST_F(DragTest, ChannelsDecideWhatATargetAccepts) {
    const struct {
        const char* target;
        const char* source;
        LRESULT accepted;
    } cases[] = {
        {"@DROPTARG", "", 1},
        {"@DROPTARG@DROPCHANNEL(A)", "", 0},
        {"@DROPTARG@DROPCHANNEL(A)", "A", 1},
        {"@DROPTARG@DROPCHANNEL(A)", "a", 0},
        {"@DROPTARG@DROPCHANNEL(A)", "B", 0},
        {"@DROPTARG", "A", 0},
    };
    for (const auto& c : cases) {
        HWND target = Make("edit", c.target, 250, 10);
        HGLOBAL block = MakeBlock(c.source, "x");
        EXPECT_EQ(SendMessageA(target, kAccept, 0, reinterpret_cast<LPARAM>(block)), c.accepted)
            << c.target << " / " << c.source;
        GlobalFree(block);
        DestroyWindow(target);
    }
    HWND plain = Make("edit", "", 250, 10);
    HGLOBAL block = MakeBlock("", "x");
    EXPECT_EQ(SendMessageA(plain, kAccept, 0, reinterpret_cast<LPARAM>(block)), 0) << "no @WANTDROP";
    HWND target = Make("edit", "@DROPTARG", 250, 40);
    for (LPARAM junk : {LPARAM(0), LPARAM(1), LPARAM(0x12345678)}) {
        EXPECT_EQ(SendMessageA(target, kAccept, 0, junk), 0);
        EXPECT_EQ(SendMessageA(target, kDrop, 0, junk), 0);
    }
    HGLOBAL other = MakeBlock("", "x", 2);
    EXPECT_EQ(SendMessageA(target, kDrop, 0, reinterpret_cast<LPARAM>(other)), 0);
    EXPECT_EQ(Text(target), "") << "a block of another kind is refused";
    GlobalFree(block);
}

TEST_F(DragTest, RefusedChannelDropsNothing) {
    HWND source = Make("edit", "@DRAGSRC(1)@DRAGCHANNEL(X)", 10, 10);
    HWND target = Make("edit", "@DROPTARG@DROPCHANNEL(Y)", 250, 10);
    SetWindowTextA(source, "text");
    SetWindowTextA(target, "kept");
    EXPECT_EQ(Drag(source, target), 1);
    EXPECT_EQ(Text(target), "kept");
    EXPECT_EQ(Text(source), "text");
}

TEST_F(DragTest, EscapeEndsTheDragWithoutADrop) {
    HWND source = Make("edit", "@DRAGSRC(1)", 10, 10);
    HWND target = Make("edit", "@DROPTARG", 250, 10);
    SetWindowTextA(source, "text");
    SetWindowTextA(target, "kept");
    EXPECT_EQ(Drag(source, target, {5, 5}, true), 1);
    EXPECT_EQ(Text(target), "kept");
    EXPECT_EQ(Text(source), "text");
    EXPECT_EQ(GetCapture(), source) << "nothing is restored on this path";
}

TEST_F(DragTest, ParentMayTakeTheDragOver) {
    HWND source = Make("edit", "@DRAGSRC(3,ARROW)@DRAGCHANNEL(chan)", 10, 10);
    HWND target = Make("edit", "@DROPTARG", 250, 10);
    SetWindowTextA(source, "offered");
    std::string seenText, seenChannel;
    DWORD seenFlags = 0, seenKind = 0;
    HWND seenSource = nullptr;
    HCURSOR seenCursor = nullptr;
    parent_.reply = [&](UINT msg, WPARAM wp, LPARAM lp) -> std::optional<LRESULT> {
        if (msg != 0x0D11) return std::nullopt;
        auto* p = static_cast<BYTE*>(GlobalLock(reinterpret_cast<HGLOBAL>(lp)));
        seenSource = reinterpret_cast<HWND>(wp);
        std::memcpy(&seenFlags, p + 8, 4);
        std::memcpy(&seenKind, p + 12, 4);
        seenChannel = reinterpret_cast<char*>(p + 16);
        std::memcpy(&seenCursor, p + 48, 4);
        HGLOBAL data;
        std::memcpy(&data, p + 60, 4);
        seenText = static_cast<char*>(GlobalLock(data));
        GlobalUnlock(data);
        GlobalUnlock(reinterpret_cast<HGLOBAL>(lp));
        return 1;
    };
    SetWindowTextA(target, "kept");
    EXPECT_EQ(Drag(source, target), 1);
    parent_.reply = nullptr;
    EXPECT_EQ(seenSource, source);
    EXPECT_EQ(seenFlags, 3u);
    EXPECT_EQ(seenKind, 1u);
    EXPECT_EQ(seenChannel, "chan");
    EXPECT_EQ(seenCursor, LoadCursorA(nullptr, IDC_ARROW));
    EXPECT_EQ(seenText, "offered");
    EXPECT_EQ(Text(target), "kept");
}

TEST_F(DragTest, ListToListMoveInsertsAtTheDropPointAndDeletesTheSelection) {
    HWND source = Make("listbox", "@DRAGSRC(1)", 10, 10, LBS_EXTENDEDSEL | WS_BORDER, 150, 150);
    HWND target = Make("listbox", "@DROPTARG(0)", 250, 10, WS_BORDER, 150, 150);
    Fill(source, {"a", "b", "c", "d"});
    Fill(target, {"x", "y"});
    SendMessageA(source, LB_SETSEL, TRUE, 1);
    SendMessageA(source, LB_SETSEL, TRUE, 3);
    LRESULT height = SendMessageA(target, LB_GETITEMHEIGHT, 0, 0);
    EXPECT_EQ(Drag(source, target, {5, static_cast<LONG>(height + 1)}), 1);
    EXPECT_EQ(Items(target), (std::vector<std::string>{"x", "b", "d", "y"}));
    EXPECT_EQ(Items(source), (std::vector<std::string>{"a", "c"}));
}

TEST_F(DragTest, MoveWithinOneListAppendsTheCopiesAfterDeleting) {
    HWND list = Make("listbox", "@DRAGSRC(1)@DROPTARG(4)", 10, 10, LBS_EXTENDEDSEL | WS_BORDER, 150, 150);
    Fill(list, {"a", "b", "c"});
    SendMessageA(list, LB_SETSEL, TRUE, 0);
    EXPECT_EQ(Drag(list, list, {5, 60}), 1);
    EXPECT_EQ(Items(list), (std::vector<std::string>{"b", "c", "a"}));
}

TEST_F(DragTest, DirectoryListDoesNotDragDirectoryEntries) {
    HWND source = Make("listbox", "@DRAGSRC DIRLST", 10, 10, LBS_EXTENDEDSEL | WS_BORDER, 150, 150);
    HWND target = Make("listbox", "@DROPTARG(4)", 250, 10, WS_BORDER, 150, 150);
    Fill(source, {"[sub]", "file.txt"});
    SendMessageA(source, LB_SETSEL, TRUE, 0);
    EXPECT_EQ(Drag(source, target), 0) << "only a directory entry is selected";
    EXPECT_TRUE(Items(target).empty());
    SendMessageA(source, LB_SETSEL, TRUE, 1);
    EXPECT_EQ(Drag(source, target), 1);
    EXPECT_EQ(Items(target), (std::vector<std::string>{"file.txt"}));
}

TEST_F(DragTest, ListDropOnAnEditJoinsTheLinesWithBlanks) {
    HWND source = Make("listbox", "@DRAGSRC", 10, 10, LBS_EXTENDEDSEL | WS_BORDER, 150, 150);
    HWND target = Make("edit", "@DROPTARG(4)", 250, 10);
    Fill(source, {"one", "two"});
    SendMessageA(source, LB_SETSEL, TRUE, -1);
    EXPECT_EQ(Drag(source, target), 1);
    EXPECT_EQ(Text(target), "one two ");
}

}  // namespace
