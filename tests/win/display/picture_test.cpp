// gxBitmap32 and gxIcon32 draw what the files hold; the DIB services; a
// click or double click launches, a drop changes the picture.

#include <gtest/gtest.h>

#include <shlobj.h>

#include <cstring>
#include <string>

#include "include/fldkit.h"
#include "links/hooks.h"
#include "tests/support/drag.h"
#include "tests/support/msgbox_watch.h"
#include "tests/support/resources.h"
#include "tests/win/display/picture_files.h"
#include "tests/win/display/pixels.h"

namespace {

using namespace fktest;

std::string Value(HWND control) {
    char buffer[MAX_PATH] = {};
    SendMessageA(control, GXM_GETVALUE, 0, reinterpret_cast<LPARAM>(buffer));
    return buffer;
}

void SetMethod(HWND control, const std::string& method) {
    SendMessageA(control, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(method.c_str()));
}

// The three pictures of one quadrant pattern: 4-bit, 8-bit RLE, 24-bit top-down.
struct QuadFiles {
    TempFile four{"four.bmp", Bmp(kQuadW, kQuadH, 4, 0, kQuadColours, Rows(kQuadW, kQuadH, 4, false, Quadrant))};
    TempFile rle{"rle.bmp", Bmp(kQuadW, kQuadH, 8, 1, kQuadColours, Rle8(kQuadW, kQuadH, Quadrant))};
    TempFile top{"top.bmp", Bmp(kQuadW, -kQuadH, 24, 0, {}, Rows(kQuadW, kQuadH, 24, true, [](int x, int y) {
                                   return kQuadColours[Quadrant(x, y)];
                               }))};
};

TEST(Bitmap, DrawsEachFormPlacedByItsStyle) {
    QuadFiles files;
    auto parent = MakeParent(nullptr, 200, 120);
    const struct { const char* path; DWORD style; int w, h; int scale; int x0, y0; } cases[] = {
        {files.four.path(), 0, 30, 20, 1, 0, 0},
        {files.rle.path(), 0, 30, 20, 1, 0, 0},
        {files.top.path(), 0, 30, 20, 1, 0, 0},
        {files.rle.path(), BMP_STRETCH, 16, 12, 2, 0, 0},
        {files.top.path(), BMP_CENTER, 20, 10, 1, 6, 2},
        {files.four.path(), BMP_SIZETOFIT, 50, 50, 1, 0, 0},
    };
    for (const auto& c : cases) {
        auto bitmap = MakeChild(parent, "gxBitmap32", c.style, 7, c.w, c.h);
        SetMethod(bitmap, std::string("@BITMAP(") + c.path + ")");
        PaintNow(parent);
        Capture pixels(bitmap);
        if (c.style & BMP_SIZETOFIT) EXPECT_TRUE(pixels.w == kQuadW && pixels.h == kQuadH) << pixels.w << "x" << pixels.h;
        for (int y = 0; y < kQuadH * c.scale; ++y)
            for (int x = 0; x < kQuadW * c.scale; ++x)
                ASSERT_EQ(pixels.at(c.x0 + x, c.y0 + y), QuadrantColour(x / c.scale, y / c.scale))
                    << c.path << " style " << c.style << " at " << x << "," << y;
        EXPECT_EQ(Value(bitmap), c.path);
    }
}

// "@INVERT" inverts the picture while the button is down over it, and only then.
TEST(Bitmap, InvertsWhilePressedAndGivesItsNameAsText) {
    QuadFiles files;
    auto parent = MakeParent(nullptr, 200, 120);
    auto bitmap = MakeChild(parent, "gxBitmap32", 0, 7, 20, 20);
    SetMethod(bitmap, std::string("@INVERT@BITMAP(") + files.four.path() + ")");
    const struct { UINT msg; LPARAM at; COLORREF want; } steps[] = {
        {WM_LBUTTONDOWN, MAKELPARAM(1, 1), RGB(0, 255, 255)},
        {WM_MOUSEMOVE, MAKELPARAM(90, 90), RGB(255, 0, 0)},
        {WM_MOUSEMOVE, MAKELPARAM(2, 2), RGB(0, 255, 255)},
        {WM_LBUTTONUP, MAKELPARAM(2, 2), RGB(255, 0, 0)},
    };
    for (const auto& s : steps) {
        SendMessageA(bitmap, s.msg, MK_LBUTTON, s.at);
        PaintNow(parent);
        EXPECT_EQ(Capture(bitmap).at(0, 0), s.want) << std::hex << s.msg;
    }
    LONG size = 0;
    EXPECT_EQ(SendMessageA(bitmap, GXM_GETTYPE, GXT_TEXT, reinterpret_cast<LPARAM>(&size)), GXT_TEXT);
    EXPECT_EQ(size, MAX_PATH);
}

TEST(Icon, DrawsTheImageThatFitsTheControlBest) {
    TempFile ico("three.ico", Ico({{16, 0xFF0000}, {48, 0x00FF00}, {32, 0x0000FF}}));
    auto parent = MakeParent(nullptr, 200, 120);
    const struct { int side; COLORREF want; } cases[] = {{32, RGB(0, 0, 255)}, {40, RGB(0, 0, 255)}, {48, RGB(0, 255, 0)}, {20, RGB(255, 0, 0)}};
    for (const auto& c : cases) {
        auto icon = MakeChild(parent, "gxIcon32", ICON_STRETCH, 7, c.side, c.side);
        SetMethod(icon, std::string("@ICON(") + ico.path() + ")");
        PaintNow(parent);
        Capture pixels(icon);
        EXPECT_EQ(pixels.at(c.side / 2, c.side / 2), c.want) << c.side;
        EXPECT_EQ(pixels.at(c.side - 1, c.side - 1), c.want) << c.side;
        EXPECT_EQ(Value(icon), ico.path());
    }
}

TEST(Dib, ServicesReadGoodFilesAndRefuseTheRest) {
    QuadFiles files;
    Bytes good = Bmp(kQuadW, kQuadH, 4, 0, kQuadColours, Rows(kQuadW, kQuadH, 4, false, Quadrant));
    TempFile truncated("cut.bmp", Bytes(good.begin(), good.end() - 3));
    TempFile text("text.bmp", Bytes{'n', 'o', 't', ' ', 'a', ' ', 'p', 'i', 'c', 't', 'u', 'r', 'e', '\n'});
    TempFile huge("huge.bmp", [&] { Bytes b = good; b[18] = b[22] = 0xA0, b[19] = b[23] = 0x86, b[20] = b[24] = 1; return b; }());
    for (const char* path : {files.four.path(), files.rle.path(), files.top.path()}) {
        HGLOBAL dib = twOpenDib(path);
        ASSERT_NE(dib, nullptr) << path;
        struct { WORD version, count; PALETTEENTRY entries[2]; } grey{0x300, 2, {{0, 0, 0, 0}, {128, 128, 128, 0}}};
        HPALETTE palette = CreatePalette(reinterpret_cast<LOGPALETTE*>(&grey));
        HBITMAP bitmap = twBitmapFromDib(dib, palette);
        DeleteObject(palette);
        BITMAP info{};
        EXPECT_TRUE(bitmap && GetObjectA(bitmap, sizeof info, &info) && info.bmWidth == kQuadW && info.bmHeight == kQuadH) << path;
        DeleteObject(bitmap);
        GlobalFree(dib);
        bitmap = twLoadDIBitmap(nullptr, path);
        EXPECT_NE(bitmap, nullptr) << path;
        DeleteObject(bitmap);
    }
    for (const char* path : {truncated.path(), text.path(), huge.path(), "Z:\\no\\such\\file.bmp", ""}) {
        EXPECT_EQ(twOpenDib(path), nullptr) << path;
        EXPECT_EQ(twLoadDIBitmap(nullptr, path), nullptr) << path;
    }
    EXPECT_EQ(twOpenDib(nullptr), nullptr);
    EXPECT_EQ(twBitmapFromDib(nullptr, nullptr), nullptr);
    HGLOBAL junk = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, 48);
    *static_cast<DWORD*>(GlobalLock(junk)) = 40, GlobalUnlock(junk);  // a header claiming what is not there
    EXPECT_EQ(twBitmapFromDib(junk, nullptr), nullptr);
    GlobalFree(junk);
    EXPECT_EQ(twLoadDIBitmap(GetModuleHandleA(nullptr), "NOSUCHBITMAP"), nullptr);
    EXPECT_EQ(twLoadDIBitmap(nullptr, nullptr), nullptr);
}

std::vector<std::string> g_started;
UINT WINAPI FakeExec(LPCSTR command, UINT) { return g_started.push_back(command), 33; }

// A double click starts "@PROG"; with "@ONECLICK" every click does.
TEST(Bitmap, ClicksStartTheProgramThroughTwExecProgram) {
    const FkLinkHooks fakes{nullptr, FakeExec, nullptr, nullptr, nullptr, nullptr};
    fkSetLinkHooks(&fakes);
    QuadFiles files;
    auto parent = MakeParent(nullptr, 200, 120);
    const struct { const char* method; UINT second; size_t started; } cases[] = {
        {"@PROG(notepad.exe)@CMDLINE(a.txt)", WM_LBUTTONDBLCLK, 1},
        {"@PROG(notepad.exe)@CMDLINE(a.txt)", WM_LBUTTONDOWN, 0},
        {"@PROG(notepad.exe)@CMDLINE(a.txt)@ONECLICK", WM_LBUTTONDOWN, 2},
        {"@PROG(notepad.exe)@CMDLINE(a.txt)@ONECLICK", WM_LBUTTONDBLCLK, 2},
        {"@BITMAP(x.bmp)", WM_LBUTTONDBLCLK, 0},
    };
    for (const auto& c : cases) {
        g_started.clear();
        auto bitmap = MakeChild(parent, "gxBitmap32", 0, 7, 20, 20);
        SetMethod(bitmap, c.method);
        for (UINT msg : {static_cast<UINT>(WM_LBUTTONDOWN), static_cast<UINT>(WM_LBUTTONUP), c.second, static_cast<UINT>(WM_LBUTTONUP)})
            SendMessageA(bitmap, msg, msg == WM_LBUTTONUP ? 0 : MK_LBUTTON, MAKELPARAM(3, 3));
        ASSERT_EQ(g_started.size(), c.started) << c.method;
        for (const std::string& s : g_started) EXPECT_EQ(s, "notepad.exe a.txt");
    }
    fkSetLinkHooks(nullptr);
}

// A drag block of the library's kind (kind 1, the text in its data block).
HGLOBAL DragBlock(const std::string& text) {
    HGLOBAL data = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, text.size() + 1);
    std::memcpy(GlobalLock(data), text.c_str(), text.size()), GlobalUnlock(data);
    HGLOBAL drag = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, sizeof(FieldDragBlock));
    auto* block = static_cast<FieldDragBlock*>(GlobalLock(drag));
    block->dwKind = 1, block->hData = data;
    GlobalUnlock(drag);
    return drag;
}

// What the shell hands over: one file name in a DROPFILES block.
HGLOBAL ShellDrop(const std::string& path) {
    HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, sizeof(DROPFILES) + path.size() + 2);
    auto* drop = static_cast<DROPFILES*>(GlobalLock(block));
    drop->pFiles = sizeof(DROPFILES);
    std::memcpy(drop + 1, path.c_str(), path.size());
    GlobalUnlock(block);
    return block;
}

// A file name dropped from a field or from the shell becomes the picture;
// a name that is no picture is refused and the picture stays.
TEST(Bitmap, ADroppedFileBecomesThePicture) {
    QuadFiles files;
    TempFile text("words.bmp", Bytes{'w', 'o', 'r', 'd', 's'});
    auto parent = MakeParent(nullptr, 200, 120);
    auto bitmap = MakeChild(parent, "gxBitmap32", 0, 7, 20, 20);
    SetMethod(bitmap, "@DROPTARG");
    const std::string first = files.four.path(), second = files.top.path();
    HGLOBAL drag = DragBlock(" " + first + "\nsecond line");
    EXPECT_NE(SendMessageA(bitmap, GXM_DRAGQUERY, 0, reinterpret_cast<LPARAM>(drag)), 0);
    EXPECT_EQ(SendMessageA(bitmap, GXM_DROPDATA, 0, reinterpret_cast<LPARAM>(drag)), 1);
    GlobalFree(drag);
    EXPECT_EQ(Value(bitmap), first);
    char method[300] = {};
    SendMessageA(bitmap, GXM_GETMETHOD, 256, reinterpret_cast<LPARAM>(method));
    EXPECT_EQ(std::string(method), "@DROPTARG@BITMAP(" + first + ")");
    PaintNow(parent);
    EXPECT_EQ(Capture(bitmap).at(kQuadW - 1, kQuadH - 1), RGB(255, 255, 255));

    SendMessageA(bitmap, WM_DROPFILES, reinterpret_cast<WPARAM>(ShellDrop(second)), 0);
    EXPECT_EQ(Value(bitmap), second);
    {
        MessageBoxWatcher boxes;
        drag = DragBlock(text.path());
        EXPECT_EQ(SendMessageA(bitmap, GXM_DROPDATA, 0, reinterpret_cast<LPARAM>(drag)), 0);
        GlobalFree(drag);
        SendMessageA(bitmap, WM_DROPFILES, reinterpret_cast<WPARAM>(ShellDrop("Z:\\no\\such.bmp")), 0);
    }
    EXPECT_EQ(Value(bitmap), second);
    // Without "@DROPTARG" nothing is taken.
    SetMethod(bitmap, "");
    drag = DragBlock(first);
    EXPECT_EQ(SendMessageA(bitmap, GXM_DROPDATA, 0, reinterpret_cast<LPARAM>(drag)), 0);
    GlobalFree(drag);
}

// A picture with "@DRAGSRC" drags its file name; dropped on a picture that
// takes drops, the name becomes that one's picture too.
TEST(Bitmap, DragsItsNameToAnotherPicture) {
    QuadFiles files;
    auto parent = MakeParent(nullptr, 200, 120);
    auto source = MakeChild(parent, "gxBitmap32", 0, 7, 20, 20);
    UniqueWindow target(CreateWindowExA(0, "gxBitmap32", "", WS_CHILD | WS_VISIBLE, 100, 10, 20, 20, parent, nullptr,
                                        GetModuleHandleA(nullptr), nullptr));
    SetMethod(source, std::string("@DRAGSRC@BITMAP(") + files.rle.path() + ")");
    SetMethod(target, "@DROPTARG");
    PaintNow(parent);
    DragOnto(source, {2, 2}, target);
    EXPECT_EQ(Value(target), files.rle.path());
    EXPECT_EQ(Value(source), files.rle.path());
    EXPECT_EQ(GetCapture(), nullptr);
}

// Every bitmap, icon, device context and block the controls make goes with
// them: pictures replaced, pressed, painted in every state, then destroyed.
TEST(Pictures, LeaveNothingBehind) {
    QuadFiles files;
    TempFile ico("leak.ico", Ico({{16, 0xFF0000}, {32, 0x0000FF}}));
    auto parent = MakeParent(nullptr, 200, 120);
    auto round = [&] {
        auto bitmap = MakeChild(parent, "gxBitmap32", BMP_STRETCH, 7, 20, 20);
        auto icon = MakeChild(parent, "gxIcon32", 0, 8, 32, 32);
        auto button = MakeChild(parent, "gxButton32", BTN_PUSH, 9, 20, 20);
        SetMethod(bitmap, std::string("@INVERT@BITMAP(") + files.four.path() + ")");
        SetMethod(bitmap, std::string("@INVERT@BITMAP(") + files.rle.path() + ")");
        SetMethod(icon, std::string("@ICON(") + ico.path() + ")");
        SetMethod(button, std::string("@BITMAP(") + files.top.path() + ")");
        SendMessageA(bitmap, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(2, 2));
        SendMessageA(button, BM_SETSTATE, TRUE, 0);
        PaintNow(parent);
        SendMessageA(bitmap, WM_LBUTTONUP, 0, MAKELPARAM(2, 2));
        EnableWindow(button, FALSE);
        PaintNow(parent);
    };
    round();
    const ResourceFigures before = TakeResourceFigures();
    for (int i = 0; i < 3; ++i) round();
    EXPECT_EQ(DescribeGrowth(before, TakeResourceFigures(), true), "");
}

}  // namespace
