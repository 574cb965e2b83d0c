// gxBitmap32 and gxIcon32 draw what the files hold; the DIB services; a click or double click launches, a drop
// changes the picture. gxButton32 gives a parent exactly what a system push button gives, draws each state from
// its image and toggles.

#include <gtest/gtest.h>

#include <shlobj.h>

#include <cstring>
#include <string>
#include <vector>

#include "include/fldkit.h"
#include "links/hooks.h"
#include "tests/support/drag.h"
#include "tests/support/msgbox_watch.h"
#include "tests/support/recorder.h"
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

uint32_t QuadrantRgb(int x, int y) { return kQuadColours[Quadrant(x, y)]; }

// The three pictures of one quadrant pattern: 4-bit, 8-bit RLE, 24-bit top-down.
struct QuadFiles {
    TempFile four{"four.bmp", Bmp(kQuadW, kQuadH, 4, 0, kQuadColours, Rows(kQuadW, kQuadH, 4, false, Quadrant))};
    TempFile rle{"rle.bmp", Bmp(kQuadW, kQuadH, 8, 1, kQuadColours, Rle8(kQuadW, kQuadH, Quadrant))};
    TempFile top{"top.bmp", Bmp(kQuadW, -kQuadH, 24, 0, {}, Rows(kQuadW, kQuadH, 24, true, QuadrantRgb))};
};

// A parent for pictures, and the pictures above.
class Pictures : public ::testing::Test {
protected:
    UniqueWindow Make(const char* cls, DWORD style, int w, int h, const std::string& method) {
        auto control = MakeChild(parent_, cls, style, 7, w, h);
        SetMethod(control, method);
        return control;
    }
    QuadFiles files_;
    UniqueWindow parent_ = MakeParent(nullptr, 200, 120);
};

TEST_F(Pictures, BitmapsDrawEachFormPlacedByTheirStyle) {
    const QuadFiles& files = files_;
    const struct { const char* path; DWORD style; int w, h; int scale; int x0, y0; } cases[] = {
        {files.four.path(), 0, 30, 20, 1, 0, 0},          {files.rle.path(), 0, 30, 20, 1, 0, 0},
        {files.top.path(), 0, 30, 20, 1, 0, 0},           {files.rle.path(), BMP_STRETCH, 16, 12, 2, 0, 0},
        {files.top.path(), BMP_CENTER, 20, 10, 1, 6, 2},  {files.four.path(), BMP_SIZETOFIT, 50, 50, 1, 0, 0},
    };
    for (const auto& c : cases) {
        auto bitmap = Make("gxBitmap32", c.style, c.w, c.h, std::string("@BITMAP(") + c.path + ")");
        PaintNow(parent_);
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
TEST_F(Pictures, BitmapsInvertWhilePressedAndGiveTheirNameAsText) {
    auto bitmap = Make("gxBitmap32", 0, 20, 20, std::string("@INVERT@BITMAP(") + files_.four.path() + ")");
    const struct { UINT msg; LPARAM at; COLORREF want; } steps[] = {
        {WM_LBUTTONDOWN, MAKELPARAM(1, 1), RGB(0, 255, 255)}, {WM_MOUSEMOVE, MAKELPARAM(90, 90), RGB(255, 0, 0)},
        {WM_MOUSEMOVE, MAKELPARAM(2, 2), RGB(0, 255, 255)},   {WM_LBUTTONUP, MAKELPARAM(2, 2), RGB(255, 0, 0)},
    };
    for (const auto& s : steps) {
        SendMessageA(bitmap, s.msg, MK_LBUTTON, s.at);
        PaintNow(parent_);
        EXPECT_EQ(Capture(bitmap).at(0, 0), s.want) << std::hex << s.msg;
    }
    LONG size = 0;
    EXPECT_EQ(SendMessageA(bitmap, GXM_GETTYPE, GXT_TEXT, reinterpret_cast<LPARAM>(&size)), GXT_TEXT);
    EXPECT_EQ(size, MAX_PATH);
}

TEST_F(Pictures, IconsDrawTheImageThatFitsTheControlBest) {
    TempFile ico("three.ico", Ico({{16, 0xFF0000}, {48, 0x00FF00}, {32, 0x0000FF}}));
    const COLORREF red = RGB(255, 0, 0), green = RGB(0, 255, 0), blue = RGB(0, 0, 255);
    for (auto [side, want] : {std::pair{32, blue}, {40, blue}, {48, green}, {20, red}}) {
        auto icon = Make("gxIcon32", ICON_STRETCH, side, side, std::string("@ICON(") + ico.path() + ")");
        PaintNow(parent_);
        Capture pixels(icon);
        for (int at : {side / 2, side - 1}) EXPECT_EQ(pixels.at(at, at), want) << side << " at " << at;
        EXPECT_EQ(Value(icon), ico.path());
    }
}

TEST_F(Pictures, DibServicesReadGoodFilesAndRefuseTheRest) {
    const QuadFiles& files = files_;
    Bytes good = Bmp(kQuadW, kQuadH, 4, 0, kQuadColours, Rows(kQuadW, kQuadH, 4, false, Quadrant));
    TempFile truncated("cut.bmp", Bytes(good.begin(), good.end() - 3));
    TempFile text("text.bmp", std::string("not a picture\n"));
    Bytes huge = good;  // 100,000 pixels a side
    huge[18] = huge[22] = 0xA0, huge[19] = huge[23] = 0x86, huge[20] = huge[24] = 1;
    TempFile hugeFile("huge.bmp", huge);
    struct { WORD version, count; PALETTEENTRY entries[2]; } grey{0x300, 2, {{0, 0, 0, 0}, {128, 128, 128, 0}}};
    HPALETTE palette = CreatePalette(reinterpret_cast<LOGPALETTE*>(&grey));
    for (const char* path : {files.four.path(), files.rle.path(), files.top.path()}) {
        HGLOBAL dib = twOpenDib(path);
        for (HBITMAP bitmap : {twBitmapFromDib(dib, palette), twLoadDIBitmap(nullptr, path)}) {
            BITMAP info{};
            const int got = GetObjectA(bitmap, sizeof info, &info) ? info.bmWidth * 100 + info.bmHeight : 0;
            EXPECT_EQ(got, kQuadW * 100 + kQuadH) << path;
            DeleteObject(bitmap);
        }
        GlobalFree(dib);
    }
    DeleteObject(palette);
    for (const char* path : {truncated.path(), text.path(), hugeFile.path(), "Z:\\no\\such\\file.bmp", ""}) {
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
TEST_F(Pictures, ClicksStartTheProgramThroughTwExecProgram) {
    const FkLinkHooks fakes{nullptr, FakeExec, nullptr, nullptr, nullptr, nullptr};
    fkSetLinkHooks(&fakes);
    const std::string prog = "@PROG(notepad.exe)@CMDLINE(a.txt)";
    const struct { std::string method; UINT second; size_t started; } cases[] = {
        {prog, WM_LBUTTONDBLCLK, 1}, {prog, WM_LBUTTONDOWN, 0}, {prog + "@ONECLICK", WM_LBUTTONDOWN, 2},
        {prog + "@ONECLICK", WM_LBUTTONDBLCLK, 2}, {"@BITMAP(x.bmp)", WM_LBUTTONDBLCLK, 0},
    };
    for (const auto& c : cases) {
        g_started.clear();
        auto bitmap = Make("gxBitmap32", 0, 20, 20, c.method);
        for (UINT msg : {UINT(WM_LBUTTONDOWN), UINT(WM_LBUTTONUP), c.second, UINT(WM_LBUTTONUP)})
            SendMessageA(bitmap, msg, msg == WM_LBUTTONUP ? 0 : MK_LBUTTON, MAKELPARAM(3, 3));
        EXPECT_EQ(g_started, std::vector<std::string>(c.started, "notepad.exe a.txt")) << c.method;
    }
    fkSetLinkHooks(nullptr);
}

// What a field (kind 1, the text in its data block) or the shell (one file name in a DROPFILES block) drops.
HGLOBAL DragBlock(const std::string& text) {
    HGLOBAL data = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, text.size() + 1);
    std::memcpy(GlobalLock(data), text.c_str(), text.size()), GlobalUnlock(data);
    HGLOBAL drag = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, sizeof(FieldDragBlock));
    auto* block = static_cast<FieldDragBlock*>(GlobalLock(drag));
    block->dwKind = 1, block->hData = data;
    GlobalUnlock(drag);
    return drag;
}
HGLOBAL ShellDrop(const std::string& path) {
    HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, sizeof(DROPFILES) + path.size() + 2);
    auto* drop = static_cast<DROPFILES*>(GlobalLock(block));
    drop->pFiles = sizeof(DROPFILES);
    std::memcpy(drop + 1, path.c_str(), path.size());
    GlobalUnlock(block);
    return block;
}
LRESULT DropData(HWND target, const std::string& text) {
    HGLOBAL drag = DragBlock(text);
    const LRESULT taken = SendMessageA(target, GXM_DROPDATA, 0, reinterpret_cast<LPARAM>(drag));
    return GlobalFree(drag), taken;
}

// A file name dropped from a field or from the shell becomes the picture; a name that is no picture is refused
// and the picture stays. Without "@DROPTARG" nothing is taken.
TEST_F(Pictures, ADroppedFileBecomesThePicture) {
    TempFile text("words.bmp", std::string("words"));
    auto bitmap = Make("gxBitmap32", 0, 20, 20, "@DROPTARG");
    const std::string first = files_.four.path(), second = files_.top.path();
    HGLOBAL drag = DragBlock(" " + first + "\nsecond line");
    EXPECT_NE(SendMessageA(bitmap, GXM_DRAGQUERY, 0, reinterpret_cast<LPARAM>(drag)), 0);
    GlobalFree(drag);
    EXPECT_EQ(DropData(bitmap, " " + first + "\nsecond line"), 1);
    EXPECT_EQ(Value(bitmap), first);
    char method[300] = {};
    SendMessageA(bitmap, GXM_GETMETHOD, 256, reinterpret_cast<LPARAM>(method));
    EXPECT_EQ(std::string(method), "@DROPTARG@BITMAP(" + first + ")");
    PaintNow(parent_);
    EXPECT_EQ(Capture(bitmap).at(kQuadW - 1, kQuadH - 1), RGB(255, 255, 255));
    SendMessageA(bitmap, WM_DROPFILES, reinterpret_cast<WPARAM>(ShellDrop(second)), 0);
    EXPECT_EQ(Value(bitmap), second);
    {
        MessageBoxWatcher boxes;
        EXPECT_EQ(DropData(bitmap, text.path()), 0);
        SendMessageA(bitmap, WM_DROPFILES, reinterpret_cast<WPARAM>(ShellDrop("Z:\\no\\such.bmp")), 0);
    }
    EXPECT_EQ(Value(bitmap), second);
    SetMethod(bitmap, "");
    EXPECT_EQ(DropData(bitmap, first), 0);
}

// A picture with "@DRAGSRC" drags its file name; dropped on a picture that takes drops, the name becomes that
// one's picture too.
TEST_F(Pictures, DragTheirNameToAnotherPicture) {
    auto source = Make("gxBitmap32", 0, 20, 20, std::string("@DRAGSRC@BITMAP(") + files_.rle.path() + ")");
    UniqueWindow target(CreateWindowExA(0, "gxBitmap32", "", WS_CHILD | WS_VISIBLE, 100, 10, 20, 20, parent_, nullptr,
                                        GetModuleHandleA(nullptr), nullptr));
    SetMethod(target, "@DROPTARG");
    PaintNow(parent_);
    DragOnto(source, {2, 2}, target);
    EXPECT_EQ(Value(target) + "|" + Value(source), std::string(files_.rle.path()) + "|" + files_.rle.path());
    EXPECT_EQ(GetCapture(), nullptr);
}

// Every bitmap, icon, device context and block the controls make goes with them: pictures replaced, pressed,
// painted in every state, then destroyed.
TEST_F(Pictures, LeaveNothingBehind) {
    TempFile ico("leak.ico", Ico({{16, 0xFF0000}, {32, 0x0000FF}}));
    auto round = [&] {
        auto bitmap = Make("gxBitmap32", BMP_STRETCH, 20, 20, std::string("@INVERT@BITMAP(") + files_.four.path() + ")");
        auto icon = Make("gxIcon32", 0, 32, 32, std::string("@ICON(") + ico.path() + ")");
        auto button = Make("gxButton32", BTN_PUSH, 20, 20, std::string("@BITMAP(") + files_.top.path() + ")");
        SetMethod(bitmap, std::string("@INVERT@BITMAP(") + files_.rle.path() + ")");
        SendMessageA(bitmap, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(2, 2));
        SendMessageA(button, BM_SETSTATE, TRUE, 0);
        PaintNow(parent_);
        SendMessageA(bitmap, WM_LBUTTONUP, 0, MAKELPARAM(2, 2));
        EnableWindow(button, FALSE);
        PaintNow(parent_);
    };
    round();
    const ResourceFigures before = TakeResourceFigures();
    for (int i = 0; i < 3; ++i) round();
    EXPECT_EQ(DescribeGrowth(before, TakeResourceFigures(), true), "");
}

// ---- buttons ----

struct Input { UINT msg; WPARAM wp; int x, y; };
const Input kDown{WM_LBUTTONDOWN, MK_LBUTTON, 5, 5}, kUp{WM_LBUTTONUP, 0, 5, 5};
const Input kOut{WM_MOUSEMOVE, MK_LBUTTON, 300, 300}, kUpOutside{WM_LBUTTONUP, 0, 300, 300};
const Input kSpaceDown{WM_KEYDOWN, VK_SPACE, 0, 0}, kSpaceUp{WM_KEYUP, VK_SPACE, 0, 0};

// What the parent hears (wParam of each WM_COMMAND, and whether lParam is the button).
std::vector<std::pair<WPARAM, bool>> Commands(const char* cls, DWORD style, const std::vector<Input>& inputs) {
    RecordingParent parent(300, 200);
    auto button = MakeChild(parent, cls, style, 42, 60, 24, "Go");
    for (const Input& in : inputs) SendMessageA(button, in.msg, in.wp, MAKELPARAM(in.x, in.y));
    std::vector<std::pair<WPARAM, bool>> out;
    for (const Msg& m : parent.Of(WM_COMMAND)) out.push_back({m.wp, reinterpret_cast<HWND>(m.lp) == button.get()});
    return out;
}

// Enter presses a default button outside a dialog (a dialog presses its default itself).
TEST(Button, GivesThePushButtonsCommandSequence) {
    const struct { const char* name; std::vector<Input> inputs; } cases[] = {
        {"click", {kDown, kUp}}, {"out and back", {kDown, kOut, {WM_MOUSEMOVE, MK_LBUTTON, 6, 6}, kUp}},
        {"out and released", {kDown, kOut, kUpOutside}}, {"fast second click", {kDown, kUp, kDown, kUp}},
        {"space", {kSpaceDown, kSpaceUp}}, {"space held, repeats", {kSpaceDown, {WM_KEYDOWN, VK_SPACE, 0, 0}, kSpaceUp}},
        {"up without down", {kUp, kSpaceUp}}};
    for (const auto& c : cases) {
        const auto system = Commands("button", BS_PUSHBUTTON, c.inputs);
        EXPECT_EQ(Commands("gxButton32", BTN_PUSH, c.inputs), system) << c.name;
        EXPECT_EQ(Commands("gxButton32", BTN_TEXT | BTN_TOGGLE, c.inputs), system) << c.name;
    }
    const std::vector<std::pair<WPARAM, bool>> clicked{{MAKEWPARAM(42, BN_CLICKED), true}};
    EXPECT_EQ(Commands("gxButton32", BTN_PUSH, {kDown, kUp}), clicked);
    EXPECT_EQ(Commands("gxButton32", BTN_DEFPUSH, {{WM_KEYDOWN, VK_RETURN, 0, 0}}), clicked);
    EXPECT_TRUE(Commands("gxButton32", BTN_PUSH, {{WM_KEYDOWN, VK_RETURN, 0, 0}}).empty());
}

// A dialog moves the default between push buttons as between the system's (BM_SETSTYLE, WM_GETDLGCODE); toggles
// and toolbar buttons never become the default.
TEST(Button, TakesAndGivesUpTheDefaultAsTheSystemsDo) {
    auto parent = MakeParent(nullptr, 300, 200);
    auto answers = [&](const char* cls, DWORD style, WPARAM setStyle) {
        auto button = MakeChild(parent, cls, style, 7, 40, 24);
        SendMessageA(button, BM_SETSTYLE, setStyle, TRUE);
        return std::pair(SendMessageA(button, WM_GETDLGCODE, 0, 0), GetWindowLongA(button, GWL_STYLE) & 0x1F);
    };
    for (DWORD from : {BS_PUSHBUTTON, BS_DEFPUSHBUTTON})
        for (WPARAM to : {BS_PUSHBUTTON, BS_DEFPUSHBUTTON})
            EXPECT_EQ(answers("gxButton32", from, to), answers("button", from, to)) << from << " " << to;
    EXPECT_EQ(answers("gxButton32", BTN_TOOLBAR, BS_DEFPUSHBUTTON), std::pair(LRESULT(DLGC_BUTTON), LONG(BTN_TOOLBAR)));
    EXPECT_EQ(answers("gxButton32", BTN_TOGGLE, BS_PUSHBUTTON).first, DLGC_BUTTON);
}

// F1 shows the button's help.
TEST(Button, TogglesKeepTheirCheckAndReportTheirState) {
    RecordingParent parent(300, 200);
    auto toggle = MakeChild(parent, "gxButton32", BTN_TOOLBAR | BTN_TOGGLE, 7, 40, 24);
    auto push = MakeChild(parent, "gxButton32", BTN_PUSH, 8, 40, 24);
    const struct { HWND h; UINT msg; WPARAM wp; LRESULT check; LRESULT state; } steps[] = {
        {toggle, WM_LBUTTONDOWN, MK_LBUTTON, 0, BST_PUSHED}, {toggle, WM_LBUTTONUP, 0, 1, BST_CHECKED},
        {toggle, BM_CLICK, 0, 0, 0}, {toggle, BM_SETCHECK, BST_CHECKED, 1, BST_CHECKED},
        {toggle, BM_SETSTATE, TRUE, 1, BST_CHECKED | BST_PUSHED},
        {push, WM_LBUTTONDOWN, MK_LBUTTON, 0, BST_PUSHED | BST_FOCUS},
        {push, WM_CAPTURECHANGED, 0, 0, BST_FOCUS},  // another window took the mouse: released, no click
        {push, WM_LBUTTONUP, 0, 0, BST_FOCUS}, {push, BM_SETCHECK, BST_CHECKED, 0, BST_FOCUS}};
    for (const auto& s : steps) {
        SendMessageA(s.h, s.msg, s.wp, MAKELPARAM(3, 3));
        EXPECT_EQ(SendMessageA(s.h, BM_GETCHECK, 0, 0), s.check) << std::hex << s.msg;
        EXPECT_EQ(SendMessageA(s.h, BM_GETSTATE, 0, 0), s.state) << std::hex << s.msg;
    }
    EXPECT_NE(GetFocus(), toggle.get()) << "a toolbar button takes no focus";
    MessageBoxWatcher boxes;
    SetMethod(push, "@HELPMSG1(Starts the run)");
    SendMessageA(push, WM_KEYDOWN, VK_F1, 0);
    ASSERT_EQ(boxes.boxes().size(), 1u);
    EXPECT_EQ(boxes.boxes()[0].text, "Starts the run");
}

// An 8-pixel-high picture of the given width, its colour by column.
Bytes Strip(int width, const std::function<uint32_t(int)>& colour) {
    return Bmp(width, 8, 24, 0, {}, Rows(width, 8, 24, false, [&](int x, int) { return colour(x); }));
}

TEST_F(Pictures, ButtonsDrawEachStateFromTheirImage) {
    // Four images (up red, down green, focused blue, disabled yellow); two (up red, down green); a picture whose
    // width is no multiple of its height: the up image alone.
    const uint32_t images[] = {0xFF0000, 0x00FF00, 0x0000FF, 0xFFFF00};
    TempFile strip("strip.bmp", Strip(32, [&](int x) { return images[x / 8]; }));
    TempFile two("two.bmp", Strip(16, [](int x) { return x < 8 ? 0xFF0000u : 0x00FF00u; }));
    TempFile odd("odd.bmp", Strip(20, [](int x) { return x < 12 ? 0xFF0000u : 0x00FF00u; }));
    TempFile single("single.bmp", Strip(8, [](int) { return 0xFF0000u; }));
    const COLORREF face = GetSysColor(COLOR_BTNFACE), red = RGB(255, 0, 0), green = RGB(0, 255, 0);
    enum Act { kNone, kPush, kFocus, kDisable, kCheck };
    const struct { const char* file; DWORD style; Act act; POINT at; COLORREF want; } cases[] = {
        {strip.path(), BTN_PUSH, kNone, {4, 4}, red}, {strip.path(), BTN_PUSH, kPush, {4, 4}, green},
        {strip.path(), BTN_PUSH, kFocus, {4, 4}, RGB(0, 0, 255)},
        {strip.path(), BTN_PUSH, kDisable, {4, 4}, RGB(255, 255, 0)},
        {strip.path(), BTN_PUSH | BTN_TOGGLE, kCheck, {4, 4}, green}, {strip.path(), BTN_TOOLBAR, kFocus, {4, 4}, red},
        // Made from the up image: pressed it moves one pixel; disabled it is no longer red.
        {single.path(), BTN_PUSH, kPush, {0, 0}, face}, {single.path(), BTN_PUSH, kPush, {7, 7}, red},
        {single.path(), BTN_PUSH, kNone, {0, 0}, red}, {two.path(), BTN_PUSH, kPush, {4, 4}, green},
        {odd.path(), BTN_PUSH, kPush, {4, 4}, red}};
    for (const auto& c : cases) {
        auto button = Make("gxButton32", c.style, 8, 8, std::string("@BITMAP(") + c.file + ")");
        if (c.act == kPush) SendMessageA(button, BM_SETSTATE, TRUE, 0);
        if (c.act == kFocus) SetFocus(button);
        if (c.act == kDisable) EnableWindow(button, FALSE);
        if (c.act == kCheck) SendMessageA(button, BM_SETCHECK, BST_CHECKED, 0);
        PaintNow(parent_);
        EXPECT_EQ(Capture(button).at(c.at.x, c.at.y), c.want) << c.file << " style " << c.style << " act " << c.act;
    }
    auto disabled = Make("gxButton32", WS_DISABLED, 8, 8, std::string("@BITMAP(") + single.path() + ")");
    PaintNow(parent_);
    Capture pixels(disabled);
    for (int i = 0; i < 64; ++i) ASSERT_NE(pixels.at(i % 8, i / 8), red) << "the drawn disabled image at " << i;
}

}  // namespace
