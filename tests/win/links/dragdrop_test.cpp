// Drag and drop between edits, lists and fields; the modal loop is driven by mouse messages posted before it.
#include <gtest/gtest.h>

#include <cstring>
#include <map>
#include <vector>

#include "include/fldkit.h"
#include "tests/support/pump.h"
#include "tests/support/recorder.h"

using namespace fktest;
using Strings = std::vector<std::string>;

namespace {

// Controls subclassed to answer as a drag-aware control: (method, base procedure).
std::map<HWND, std::pair<std::string, WNDPROC>> g_hooked;

LRESULT CALLBACK DragProc(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    auto [method, base] = g_hooked[h];
    if (msg == GXM_GETMETHOD && lp) return lstrcpynA(reinterpret_cast<char*>(lp), method.c_str(), 257), 0;
    if (msg >= GXM_DROPDATA && msg <= GXM_DRAGEND) return twProcessDragDrop(h, msg, wp, lp);
    if (msg == WM_NCDESTROY) g_hooked.erase(h);
    return CallWindowProcA(base, h, msg, wp, lp);
}

class DragTest : public ::testing::Test {
protected:
    HWND Make(const char* cls, const char* method, int x, const char* text = "", DWORD style = 0, int height = 24) {
        HWND c = CreateWindowExA(0, cls, text, WS_CHILD | WS_VISIBLE | style, x, 10, 150, height, parent_, nullptr,
                                 GetModuleHandleA(nullptr), nullptr);
        EXPECT_NE(c, nullptr) << cls;
        if (std::strstr(method, "@DROPTARG")) SetPropA(c, "@WANTDROP", reinterpret_cast<HANDLE>(5));
        g_hooked[c] = {method, reinterpret_cast<WNDPROC>(
                                   SetWindowLongPtrA(c, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(DragProc)))};
        return c;
    }
    HWND List(const char* method, int x, Strings items) {
        HWND list = Make("listbox", method, x, "", LBS_EXTENDEDSEL | WS_BORDER, 150);
        for (auto& s : items) SendMessageA(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(s.c_str()));
        return list;
    }
    // Arms the source, queues a move and release over target (at: its client point), drags.
    LRESULT Drag(HWND source, HWND target, POINT at = {5, 5}, bool escape = false) {
        MapWindowPoints(target, source, &at, 1);
        twProcessDragDrop(source, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(2, 2));
        PostMessageA(source, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(at.x, at.y));
        if (escape) PostMessageA(source, WM_KEYDOWN, VK_ESCAPE, 0);
        PostMessageA(source, WM_LBUTTONUP, 0, MAKELPARAM(at.x, at.y));
        LRESULT r = twProcessDragDrop(source, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(4, 4));
        for (MSG m; PeekMessageA(&m, nullptr, WM_MOUSEFIRST, WM_MOUSELAST, PM_REMOVE);) continue;
        return r;
    }
    RecordingParent parent_{500, 300};
};

Strings Items(HWND list) {
    Strings items;
    char text[128];
    for (LRESULT i = 0, n = SendMessageA(list, LB_GETCOUNT, 0, 0); i < n; ++i)
        items.push_back(SendMessageA(list, LB_GETTEXT, i, reinterpret_cast<LPARAM>(text)) > 0 ? text : "");
    return items;
}

// Numeric fields take the text up to the first blank; letters are dropped but leave their place empty.
TEST_F(DragTest, DropsFromAnEdit) {
    const struct { const char *from, *cls, *to, *dropped, *shown, *left; bool escape = false; LRESULT started = 1; }
        cases[] = {
        {"@DRAGSRC", "gxNumeric32", "@DROPTARG", "12ab", "12", "12ab"},
        {"@DRAGSRC", "gxNumeric32", "@DROPTARG", "ab", "", "ab"},
        {"@DRAGSRC", "gxNumeric32", "@DROPTARG", "1 000", "1", "1 000"},
        {"@DRAGSRC", "gxNumeric32", "@DROPTARG", "3,5", "3,5", "3,5"},
        {"@DRAGSRC", "gxNumeric32", "@DROPTARG", "4\n5\n", "45", "4\n5\n"},
        {"@DRAGSRC", "gxReal32", "@DROPTARG", "3,5", "3", "3,5"},
        {"@DRAGSRC", "gxReal32", "@DROPTARG", "2.75", "2.75", "2.75"},
        {"@DRAGSRC", "gxCurrency32", "@DROPTARG", "a1b2", "", "a1b2"},
        {"@DRAGSRC", "gxDate32", "@DROPTARG", "1/2/99", "1/2/99", "1/2/99"},
        {"@DRAGSRC(1)", "edit", "@DROPTARG(4)", "moved", "moved", ""},  // no selection: the whole text
        {"@DRAGSRC(1)@DRAGCHANNEL(X)", "edit", "@DROPTARG@DROPCHANNEL(Y)", "text", "kept", "text"},
        {"@DRAGSRC(1)@DRAGCHANNEL(X)", "edit", "@DROPTARG@DROPCHANNEL(x)", "text", "kept", "text"},
        {"@DRAGSRC(1)@DRAGCHANNEL(X)", "edit", "@DROPTARG", "text", "kept", "text"},
        {"@DRAGSRC(1)", "edit", "@DROPTARG@DROPCHANNEL(X)", "text", "kept", "text"},
        {"@DRAGSRC@DRAGCHANNEL(X)", "edit", "@DROPTARG@DROPCHANNEL(X)", "text", "text", "text"},
        {"@DRAGSRC", "edit", "", "text", "kept", "text"},  // not a target
        {"@DRAGSRC(1)@DRAGCHANNEL(X)", "edit", "@DROPTARG@DROPCHANNEL(X)", "text", "kept", "text", true},
        {"@DRAGSRC(1)", "edit", "@DROPTARG", "", "kept", "", false, 0},  // an empty source starts no drag
    };
    for (const auto& c : cases) {
        HWND source = Make("edit", c.from, 10, c.dropped), target = Make(c.cls, c.to, 250, "kept");
        EXPECT_EQ(Drag(source, target, {5, 5}, c.escape), c.started);
        EXPECT_EQ(WindowText(target) + "/" + WindowText(source), c.shown + ("/" + std::string(c.left))) << c.cls;
        EXPECT_EQ(GetPropA(source, "@DRAGSRC"), nullptr);
        if (c.escape) EXPECT_EQ(GetCapture(), source) << "nothing is restored on this path";
        for (HWND h : {source, target}) DestroyWindow(h);
    }
}

TEST_F(DragTest, ParentMayTakeTheDragOver) {
    HWND source = Make("edit", "@DRAGSRC(3,ARROW)@DRAGCHANNEL(chan)", 10, "offered");
    HWND target = Make("edit", "@DROPTARG", 250);
    std::string seen;  // source, flags, kind, channel, cursor, text
    parent_.reply = [&](UINT msg, WPARAM wp, LPARAM lp) -> std::optional<LRESULT> {
        if (msg != GXN_DRAGNOTIFY) return std::nullopt;
        auto* p = static_cast<FieldDragBlock*>(GlobalLock(reinterpret_cast<HGLOBAL>(lp)));
        HGLOBAL data = p->hData;
        seen = std::to_string(wp == reinterpret_cast<WPARAM>(source)) + " " + std::to_string(p->dwFlags) + " " +
               std::to_string(p->dwKind) + " " + p->szChannel + " " +
               std::to_string(p->hCursor == LoadCursorA(nullptr, IDC_ARROW)) + " " +
               static_cast<char*>(GlobalLock(data));
        GlobalUnlock(data), GlobalUnlock(reinterpret_cast<HGLOBAL>(lp));
        return 1;
    };
    EXPECT_EQ(Drag(source, target), 1);
    parent_.reply = nullptr;
    EXPECT_EQ(seen, "1 3 1 chan 1 offered");
    EXPECT_EQ(WindowText(target), "") << "no drop";
}

TEST_F(DragTest, MovesInsertAtCaretOrDropPointAndListsSkipDirectories) {
    HWND edit = Make("edit", "@DRAGSRC(1)", 10, "one two three"), caret = Make("edit", "@DROPTARG(0)", 250, "[]");
    SendMessageA(caret, EM_SETSEL, 1, 1);
    SetFocus(edit);
    SendMessageA(edit, EM_SETSEL, 4, 7);
    EXPECT_EQ(Drag(edit, caret), 1);
    EXPECT_EQ(WindowText(caret), "[two]");
    EXPECT_EQ(WindowText(edit), "one  three");
    for (HWND h : {edit, caret}) DestroyWindow(h);
    HWND source = List("@DRAGSRC(1)@DROPTARG(4)", 10, {"a", "b", "c", "d"});
    HWND target = List("@DROPTARG(0)", 250, {"x", "y"});
    for (int i : {1, 3}) SendMessageA(source, LB_SETSEL, TRUE, i);
    auto height = static_cast<LONG>(SendMessageA(target, LB_GETITEMHEIGHT, 0, 0));
    EXPECT_EQ(Drag(source, target, {5, height + 1}), 1);  // inserted at the drop point
    EXPECT_EQ(Items(target), (Strings{"x", "b", "d", "y"}));
    EXPECT_EQ(Items(source), (Strings{"a", "c"}));
    SendMessageA(source, LB_SETSEL, TRUE, 0);
    EXPECT_EQ(Drag(source, source, {5, 60}), 1);  // within one list: deleted, then appended
    EXPECT_EQ(Items(source), (Strings{"c", "a"}));
    DestroyWindow(target);
    edit = Make("edit", "@DROPTARG(4)", 250);
    SendMessageA(source, LB_SETSEL, TRUE, -1);
    EXPECT_EQ(Drag(source, edit), 1);
    EXPECT_EQ(WindowText(edit), "c a ");
    for (HWND h : {source, edit}) DestroyWindow(h);
    HWND dirs = List("@DRAGSRC DIRLST", 10, {"[sub]", "file.txt"});
    target = List("@DROPTARG(4)", 250, {});
    SendMessageA(dirs, LB_SETSEL, TRUE, 0);
    EXPECT_EQ(Drag(dirs, target), 0) << "only a directory entry is selected";
    SendMessageA(dirs, LB_SETSEL, TRUE, 1);
    EXPECT_EQ(Drag(dirs, target), 1);
    EXPECT_EQ(Items(target), (Strings{"file.txt"}));
}

}  // namespace
