// gxBitmap32 and gxIcon32 draw what the files hold; the DIB services; a click or double click launches, a drop
// changes the picture. gxButton32 gives a parent exactly what a system push button gives, draws each state from
// its image and toggles.

#include <gtest/gtest.h>

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

// The sizes of a file's picture through twOpenDib and twBitmapFromDib, then through twLoadDIBitmap ("-": refused).
std::string DibSizes(const char* path) {
    HGLOBAL dib = twOpenDib(path);
    std::string out;
    for (HBITMAP bitmap : {twBitmapFromDib(dib, nullptr), twLoadDIBitmap(nullptr, path)}) {
        BITMAP info{};
        const bool read = GetObjectA(bitmap, sizeof info, &info) != 0;
        out += read ? std::to_string(info.bmWidth) + "x" + std::to_string(info.bmHeight) + " " : "- ";
        DeleteObject(bitmap);
    }
    return GlobalFree(dib), out;
}

// The three pictures of one quadrant pattern: 4-bit, 8-bit RLE, 24-bit top-down.
struct QuadFiles {
    TempFile four{"four.bmp", Bmp(kQuadW, kQuadH, 4, 0, kQuadColours, Rows(kQuadW, kQuadH, 4, false, Quadrant))};
    TempFile rle{"rle.bmp", Bmp(kQuadW, kQuadH, 8, 1, kQuadColours, Rle8(kQuadW, kQuadH, Quadrant))};
    TempFile top{"top.bmp", Bmp(kQuadW, -kQuadH, 24, 0, {}, Rows(kQuadW, kQuadH, 24, true, [](int x, int y) {
                                    return kQuadColours[Quadrant(x, y)];
                                }))};
};

// A parent for pictures, and the pictures above.
class Pictures : public ::testing::Test {
protected:
    UniqueWindow Make(const char* cls, DWORD style, int w, int h, const std::string& method) {
        auto control = MakeChild(parent_, cls, style, 7, w, h);
        SendMessageA(control, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(method.c_str()));
        return control;
    }
    QuadFiles files_;
    UniqueWindow parent_ = MakeParent(nullptr, 200, 120);
};

// One table of files, good and damaged: what the DIB services read from each, and what a bitmap control of the
// given style draws of it (the quadrants at the given scale and place; nothing and no name when refused). An icon
// control draws the image that fits its side best, up to its last pixel.
TEST_F(Pictures, FilesAreReadAndDrawnOrRefused) {
    const Bytes good = Bmp(kQuadW, kQuadH, 4, 0, kQuadColours, Rows(kQuadW, kQuadH, 4, false, Quadrant));
    TempFile cut("cut.bmp", Bytes(good.begin(), good.end() - 3));
    TempFile ico("three.ico", Ico({{16, 0xFF0000}, {48, 0x00FF00}, {32, 0x0000FF}}));
    const struct { const char* path; DWORD style; int w, h, scale, x0, y0; const char* dib; } cases[] = {
        {files_.four.path(), 0, 30, 20, 1, 0, 0, "8x6 8x6 "},
        {files_.rle.path(), BMP_STRETCH, 16, 12, 2, 0, 0, "8x6 8x6 "},
        {files_.top.path(), BMP_CENTER, 20, 10, 1, 6, 2, "8x6 8x6 "},
        {files_.four.path(), BMP_SIZETOFIT, 50, 50, 1, 0, 0, ""},
        {cut.path(), 0, 30, 20, 0, 0, 0, "- - "},  {"Z:\\no\\such\\file.bmp", 0, 30, 20, 0, 0, 0, "- - "},
    };
    for (const auto& c : cases) {
        if (*c.dib) EXPECT_EQ(DibSizes(c.path), c.dib) << c.path;
        auto bitmap = Make("gxBitmap32", c.style, c.w, c.h, std::string("@BITMAP(") + c.path + ")");
        PaintNow(parent_);
        Canvas pixels(bitmap);
        EXPECT_EQ(Ask(bitmap), c.scale ? c.path : "") << c.path;
        if (c.style & BMP_SIZETOFIT) EXPECT_EQ(pixels.w * 100 + pixels.h, kQuadW * 100 + kQuadH);
        for (int y = 0; y < kQuadH * c.scale; ++y)
            for (int x = 0; x < kQuadW * c.scale; ++x)
                ASSERT_EQ(pixels.at(c.x0 + x, c.y0 + y), QuadrantColour(x / c.scale, y / c.scale)) << c.path;
    }
    EXPECT_TRUE(!twOpenDib(nullptr) && !twOpenDib("") && !twBitmapFromDib(nullptr, nullptr) &&
                !twLoadDIBitmap(nullptr, nullptr) && !twLoadDIBitmap(GetModuleHandleA(nullptr), "NOSUCHBITMAP"));
    const COLORREF red = RGB(255, 0, 0), green = RGB(0, 255, 0), blue = RGB(0, 0, 255);
    for (auto [side, want] : {std::pair{32, blue}, {40, blue}, {48, green}, {20, red}}) {
        auto icon = Make("gxIcon32", ICON_STRETCH, side, side, std::string("@ICON(") + ico.path() + ")");
        PaintNow(parent_);
        Canvas pixels(icon);
        EXPECT_TRUE(pixels.at(side / 2, side / 2) == want && pixels.at(side - 1, side - 1) == want) << side;
        EXPECT_EQ(Ask(icon), ico.path());
    }
}

// "@INVERT" inverts the picture while the button is down over it, and only then. Every bitmap, device context and
// block a picture makes goes with it: replaced, pressed, painted, destroyed.
TEST_F(Pictures, BitmapsInvertWhilePressedAndLeaveNothingBehind) {
    const struct { UINT msg; LPARAM at; COLORREF want; } steps[] = {
        {WM_LBUTTONDOWN, MAKELPARAM(1, 1), RGB(0, 255, 255)}, {WM_MOUSEMOVE, MAKELPARAM(90, 90), RGB(255, 0, 0)},
        {WM_MOUSEMOVE, MAKELPARAM(2, 2), RGB(0, 255, 255)},   {WM_LBUTTONUP, MAKELPARAM(2, 2), RGB(255, 0, 0)},
    };
    auto round = [&] {
        auto bitmap = Make("gxBitmap32", 0, 20, 20, std::string("@INVERT@BITMAP(") + files_.rle.path() + ")");
        const std::string method = std::string("@INVERT@BITMAP(") + files_.four.path() + ")";
        SendMessageA(bitmap, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(method.c_str()));
        for (const auto& s : steps) {
            SendMessageA(bitmap, s.msg, MK_LBUTTON, s.at);
            PaintNow(parent_);
            EXPECT_EQ(Canvas(bitmap).at(0, 0), s.want) << std::hex << s.msg;
        }
    };
    round();
    const ResourceFigures before = TakeResourceFigures();
    for (int i = 0; i < 3; ++i) round();
    EXPECT_EQ(DescribeGrowth(before, TakeResourceFigures(), true), "");
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

// A picture with "@DRAGSRC" drags its file name; dropped on a picture that takes drops ("@DROPTARG"), the name
// becomes that one's picture too, as does a name dropped from a field.
TEST_F(Pictures, DragTheirNameToAnotherPicture) {
    auto source = Make("gxBitmap32", 0, 20, 20, std::string("@DRAGSRC@BITMAP(") + files_.rle.path() + ")");
    auto target = Make("gxBitmap32", 0, 20, 20, "@DROPTARG");
    SetWindowPos(target, nullptr, 100, 10, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    PaintNow(parent_);
    DragOnto(source, {2, 2}, target);
    EXPECT_EQ(Ask(target) + "|" + Ask(source), std::string(files_.rle.path()) + "|" + files_.rle.path());
    EXPECT_EQ(GetCapture(), nullptr);
    auto field = Make("gxString32", 0, 60, 20, "@DRAGSRC");
    SetWindowTextA(field, (std::string(" ") + files_.four.path() + " ").c_str());
    DragOnto(field, {2, 2}, target);
    EXPECT_EQ(Ask(target), files_.four.path()) << "the name dropped from a field, without its blanks";
}

// ---- buttons ----

// What the parent hears from a button given a press released outside it, or Enter: each WM_COMMAND's wParam, "?"
// when lParam is not the button.
std::string Heard(const char* cls, DWORD style, bool pressOutside) {
    RecordingParent parent(300, 200);
    auto button = MakeChild(parent, cls, style, 42, 60, 24, "Go");
    for (auto [msg, at] : {std::pair<UINT, int>{WM_LBUTTONDOWN, 5}, {WM_MOUSEMOVE, 300}, {WM_LBUTTONUP, 300}})
        if (pressOutside) SendMessageA(button, msg, msg == WM_LBUTTONUP ? 0 : MK_LBUTTON, MAKELPARAM(at, at));
    if (!pressOutside) SendMessageA(button, WM_KEYDOWN, VK_RETURN, 0);
    std::string out;
    for (const Msg& m : parent.Of(WM_COMMAND)) out += std::to_string(m.wp) + (HWND(m.lp) == button.get() ? " " : "? ");
    return out;
}

// A press released outside the button is told as the system's push button tells it. Enter presses a default
// button outside a dialog (a dialog presses its default itself), and only a default one. A dialog moves the default
// between push buttons as between the system's (BM_SETSTYLE, WM_GETDLGCODE); toggles and toolbar buttons never
// become the default.
TEST(Button, PressesAndTheDefaultAsTheSystemsAndEnterOnlyOnTheDefault) {
    EXPECT_EQ(Heard("gxButton32", BTN_PUSH, true), Heard("button", BS_PUSHBUTTON, true));
    EXPECT_EQ(Heard("gxButton32", BTN_DEFPUSH, false) + "|" + Heard("gxButton32", BTN_PUSH, false), "42 |");
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

// Toggles keep their check; a push button that loses the mouse is released without a click. F1 shows the button's
// help.
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
        const LRESULT check = SendMessageA(s.h, BM_GETCHECK, 0, 0);
        EXPECT_EQ(check * 100 + SendMessageA(s.h, BM_GETSTATE, 0, 0), s.check * 100 + s.state) << std::hex << s.msg;
    }
    EXPECT_NE(GetFocus(), toggle.get()) << "a toolbar button takes no focus";
    MessageBoxWatcher boxes;
    SendMessageA(push, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>("@HELPMSG1(Starts the run)"));
    SendMessageA(push, WM_KEYDOWN, VK_F1, 0);
    EXPECT_EQ(boxes.boxes().size() == 1 ? boxes.boxes()[0].text : "one box", "Starts the run");
}

// Four images (up red, down green, focused blue, disabled yellow); two (up red, down green); a picture whose
// width is no multiple of its height: the up image alone, which pressed moves one pixel.
TEST_F(Pictures, ButtonsDrawEachStateFromTheirImage) {
    auto strip = [](const char* name, int width, int cut) {
        const uint32_t images[] = {0xFF0000, 0x00FF00, 0x0000FF, 0xFFFF00};
        const auto image = [=](int x, int) { return images[x < cut ? 0 : 1 + (x - cut) / 8]; };
        return std::make_unique<TempFile>(name, Bmp(width, 8, 24, 0, {}, Rows(width, 8, 24, false, image)));
    };
    const auto four = strip("strip.bmp", 32, 8), two = strip("two.bmp", 16, 8), odd = strip("odd.bmp", 20, 12);
    const auto single = strip("single.bmp", 8, 8);
    const COLORREF red = RGB(255, 0, 0), green = RGB(0, 255, 0), face = GetSysColor(COLOR_BTNFACE);
    const struct { const char* file; DWORD style; bool pushed; int at; COLORREF want; } cases[] = {
        {four->path(), BTN_PUSH, false, 4, red},    {four->path(), BTN_PUSH, true, 4, green},
        {four->path(), BTN_TOOLBAR | BTN_TOGGLE, true, 4, green}, {single->path(), BTN_PUSH, true, 0, face},
        {single->path(), BTN_PUSH, true, 7, red},   {two->path(), BTN_PUSH, true, 4, green},
        {odd->path(), BTN_PUSH, true, 4, red}};
    for (const auto& c : cases) {
        auto button = Make("gxButton32", c.style, 8, 8, std::string("@BITMAP(") + c.file + ")");
        SendMessageA(button, BM_SETSTATE, c.pushed, 0);
        PaintNow(parent_);
        EXPECT_EQ(Canvas(button).at(c.at, c.at), c.want) << c.file << " style " << c.style << " " << c.pushed;
    }
}

}  // namespace
