// Draws the picture gallery of the display controls: the five border levels
// (with the colour-device strokes, and as this screen draws them) and each
// display control, saved as 24-bit BMP files into the folder given as the
// first argument. scripts/gallery.sh builds and runs it and turns the BMPs
// into the PNGs of docs/.

#include <windows.h>

#include <cstdio>
#include <string>
#include <vector>

#include "display/bevel.cpp"
#include "include/fldkit.h"

namespace {

std::string g_out = ".";
HFONT g_label = nullptr;
HFONT g_big = nullptr;
// The classic dialog grey, on which the white highlights of the borders
// and lettering show.
constexpr COLORREF kGrey = RGB(192, 192, 192);
HBRUSH g_grey = nullptr;

LRESULT CALLBACK GalleryProc(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    if (msg == WM_CTLCOLORSTATIC) {
        SetBkColor(reinterpret_cast<HDC>(wp), kGrey);
        SetTextColor(reinterpret_cast<HDC>(wp), RGB(0, 0, 0));
        return reinterpret_cast<LRESULT>(g_grey);
    }
    return DefWindowProcA(h, msg, wp, lp);
}

bool SaveBmp(HDC src, int width, int height, const char* name) {
    BITMAPINFO bi{};
    bi.bmiHeader.biSize = sizeof bi.bmiHeader;
    bi.bmiHeader.biWidth = width;
    bi.bmiHeader.biHeight = height;  // bottom-up, as BMP files keep it
    bi.bmiHeader.biPlanes = 1;
    bi.bmiHeader.biBitCount = 24;
    bi.bmiHeader.biCompression = BI_RGB;
    void* bits = nullptr;
    HDC mem = CreateCompatibleDC(src);
    HBITMAP dib = CreateDIBSection(mem, &bi, DIB_RGB_COLORS, &bits, nullptr, 0);
    HGDIOBJ old = SelectObject(mem, dib);
    BitBlt(mem, 0, 0, width, height, src, 0, 0, SRCCOPY);
    GdiFlush();
    const DWORD stride = ((width * 3) + 3) & ~3u;
    const DWORD size = stride * height;
    BITMAPFILEHEADER fh{};
    fh.bfType = 0x4D42;
    fh.bfOffBits = sizeof fh + sizeof bi.bmiHeader;
    fh.bfSize = fh.bfOffBits + size;
    std::string path = g_out + "\\" + name;
    FILE* f = std::fopen(path.c_str(), "wb");
    bool ok = f != nullptr;
    if (f) {
        std::fwrite(&fh, sizeof fh, 1, f);
        std::fwrite(&bi.bmiHeader, sizeof bi.bmiHeader, 1, f);
        std::fwrite(bits, size, 1, f);
        std::fclose(f);
    }
    SelectObject(mem, old);
    DeleteObject(dib);
    DeleteDC(mem);
    std::printf("%s %s\n", ok ? "wrote" : "could not write", path.c_str());
    return ok;
}

void PaintNow(HWND top) {
    RedrawWindow(top, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
    MSG msg;
    while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) {
        if (msg.message == WM_TIMER) continue;
        TranslateMessage(&msg);
        DispatchMessageA(&msg);
    }
}

HWND MakeTop(int width, int height) {
    WNDCLASSA wc{};
    wc.lpfnWndProc = GalleryProc;
    wc.hInstance = GetModuleHandleA(nullptr);
    wc.hbrBackground = g_grey;
    wc.lpszClassName = "FkGallery";
    RegisterClassA(&wc);
    RECT r{0, 0, width, height};
    AdjustWindowRect(&r, WS_OVERLAPPEDWINDOW, FALSE);
    return CreateWindowExA(0, "FkGallery", "FieldKit gallery", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0,
                           r.right - r.left, r.bottom - r.top, nullptr, nullptr, GetModuleHandleA(nullptr), nullptr);
}

HWND Child(HWND parent, const char* cls, const char* text, DWORD style, int x, int y, int w, int h,
           HFONT font = nullptr) {
    HWND c = CreateWindowExA(0, cls, text, WS_CHILD | WS_VISIBLE | style, x, y, w, h, parent, nullptr,
                             GetModuleHandleA(nullptr), nullptr);
    SendMessageA(c, WM_SETFONT, reinterpret_cast<WPARAM>(font ? font : g_label), FALSE);
    return c;
}

void Label(HWND parent, const char* text, int x, int y, int w) {
    Child(parent, "static", text, SS_CENTER, x, y, w, 18);
}

void Capture(HWND top, const char* name) {
    PaintNow(top);
    RECT rc;
    GetClientRect(top, &rc);
    HDC dc = GetDC(top);
    SaveBmp(dc, rc.right, rc.bottom, name);
    ReleaseDC(top, dc);
}

const struct {
    WORD level;
    const char* name;
} kLevels[] = {{1, "1 Heavy Indent"}, {2, "2 Shadow"}, {4, "4 OutDent"}, {8, "8 Indent Frame"}, {16, "16 Light Indent"}};

// The strokes of a colour device, drawn on a bitmap (this screen reports
// true colour, which takes the black strokes).
void BordersOnAColourDevice() {
    const int W = 640, H = 110;
    HDC screen = GetDC(nullptr);
    HDC mem = CreateCompatibleDC(screen);
    HBITMAP bmp = CreateCompatibleBitmap(screen, W, H);
    ReleaseDC(nullptr, screen);
    HGDIOBJ old = SelectObject(mem, bmp);
    RECT all{0, 0, W, H};
    FillRect(mem, &all, g_grey);
    HGDIOBJ oldFont = SelectObject(mem, g_label);
    SetBkMode(mem, TRANSPARENT);
    for (int i = 0; i < 5; ++i) {
        RECT control{20 + i * 124, 24, 20 + i * 124 + 90, 24 + 40};
        FillRect(mem, &control, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
        fk::DrawBevel(mem, control, kLevels[i].level, true, false);
        RECT text{control.left - 14, 78, control.right + 14, 98};
        DrawTextA(mem, kLevels[i].name, -1, &text, DT_CENTER);
    }
    SelectObject(mem, oldFont);
    SaveBmp(mem, W, H, "borders-colour.bmp");
    SelectObject(mem, old);
    DeleteObject(bmp);
    DeleteDC(mem);
}

// twDraw3D itself, around five white controls of a real dialog surface.
void BordersOnThisScreen() {
    HWND top = MakeTop(640, 110);
    std::vector<HWND> controls;
    for (int i = 0; i < 5; ++i) {
        controls.push_back(Child(top, "static", "", SS_WHITERECT, 20 + i * 124, 24, 90, 40));
        Label(top, kLevels[i].name, 6 + i * 124, 78, 118);
    }
    PaintNow(top);
    for (int i = 0; i < 5; ++i) twDraw3D(controls[i], kLevels[i].level);
    RECT rc;
    GetClientRect(top, &rc);
    HDC dc = GetDC(top);
    SaveBmp(dc, rc.right, rc.bottom, "borders-screen.bmp");
    ReleaseDC(top, dc);
    DestroyWindow(top);
}

void FramesAndLines() {
    HWND top = MakeTop(640, 170);
    Child(top, "gxFrame3D32", "Raised, left", TEXT3D_FLAT | FRAME3D_LEFT, 16, 12, 180, 110);
    Child(top, "gxFrame3D32", "Inset, centre", TEXT3D_LIGHTINSET | FRAME3D_INSET | FRAME3D_CENTER, 212, 12, 180,
          110);
    Child(top, "gxFrame3D32", "Black, right", TEXT3D_HEAVYRAISED | FRAME3D_BLACK | FRAME3D_RIGHT, 408, 12, 180,
          110);
    Child(top, "gxLine32", "", GXLINE_HORIZONTAL, 16, 136, 572, 6);
    Child(top, "gxLine32", "", GXLINE_VERTICAL, 606, 12, 6, 140);
    Label(top, "gxFrame3D32: raised, inset, black; gxLine32: horizontal and vertical", 16, 146, 572);
    Capture(top, "frames-lines.bmp");
    DestroyWindow(top);
}

void Text3D() {
    HWND top = MakeTop(640, 200);
    const struct {
        DWORD style;
        const char* text;
    } rows[] = {{TEXT3D_FLAT, "TEXT3D_FLAT"},
                {TEXT3D_LIGHTRAISED, "TEXT3D_LIGHTRAISED"},
                {TEXT3D_HEAVYRAISED, "TEXT3D_HEAVYRAISED"},
                {TEXT3D_LIGHTINSET, "TEXT3D_LIGHTINSET"},
                {TEXT3D_HEAVYINSET | TEXT3D_CENTER | TEXT3D_3D1, "HEAVYINSET, centred, 3D1 border"}};
    for (int i = 0; i < 5; ++i)
        Child(top, "gxText3D32", rows[i].text, rows[i].style | (i == 4 ? WS_BORDER : 0), 20, 10 + i * 36, 600, 32,
              g_big);
    Capture(top, "text3d.bmp");
    DestroyWindow(top);
}

void Ticker() {
    HWND top = MakeTop(640, 110);
    HWND a = Child(top, "gxTicker32", "FieldKit ticker: the text enters at the right and leaves at the left",
                   WS_BORDER | TICK_3D1, 20, 20, 600, 28, g_big);
    HWND b = Child(top, "gxTicker32", "Slow ticker: three characters a step", WS_BORDER | TICK_3D2, 20, 66, 300, 26);
    SendMessageA(a, GXM_TICKER_STOP, 1, 0);
    SendMessageA(b, GXM_TICKER_SETINTERVAL, 300, 0);
    SendMessageA(b, GXM_TICKER_STOP, 1, 0);
    Label(top, "TICK_3D1 and TICK_3D2, stopped mid-scroll", 340, 70, 280);
    PaintNow(top);
    for (int i = 0; i < 60; ++i) SendMessageA(a, WM_TIMER, 99, 0);
    for (int i = 0; i < 20; ++i) SendMessageA(b, WM_TIMER, 99, 0);
    RECT rc;
    GetClientRect(top, &rc);
    HDC dc = GetDC(top);
    SaveBmp(dc, rc.right, rc.bottom, "ticker.bmp");
    ReleaseDC(top, dc);
    DestroyWindow(top);
}

void Color() {
    HWND top = MakeTop(640, 200);
    HWND c = Child(top, "gxColor32", "", WS_BORDER | COLOR_3D3, 20, 16, 280, 168);
    DWORD colour = RGB(40, 120, 200);
    SendMessageA(c, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>(&colour));
    HWND d = Child(top, "gxColor32", "", WS_BORDER | COLOR_3D1, 340, 16, 280, 168);
    colour = RGB(230, 160, 20);
    SendMessageA(d, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>(&colour));
    Capture(top, "color.bmp");
    DestroyWindow(top);
}

// The demo's pictures, copied beside the program by scripts/gallery.sh.
std::string Picture(const char* name) { return std::string("pictures\\") + name; }

void SetMethod(HWND control, const std::string& method) {
    SendMessageA(control, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(method.c_str()));
}

void Pictures() {
    HWND top = MakeTop(640, 230);
    const struct {
        DWORD style;
        const char* label;
    } bitmaps[] = {{0, "top left"}, {BMP_CENTER, "BMP_CENTER"}, {BMP_STRETCH, "BMP_STRETCH"},
                   {BMP_SIZETOFIT, "BMP_SIZETOFIT"}, {BMP_CENTER | WS_BORDER | BMP_3D1, "3D1, pressed: @INVERT"}};
    for (int i = 0; i < 5; ++i) {
        HWND b = Child(top, "gxBitmap32", "", bitmaps[i].style, 14 + i * 125, 14, 112, 64);
        SetMethod(b, "@INVERT@BITMAP(" + Picture("logo.bmp") + ")");
        if (i == 4) SendMessageA(b, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
        Label(top, bitmaps[i].label, 4 + i * 125, 86, 124);
    }
    const struct {
        int side;
        DWORD style;
        const char* icon;
        const char* label;
    } icons[] = {{16, ICON_STRETCH, "ok.ico", "16: the 16 image"}, {32, ICON_STRETCH, "ok.ico", "32: the 32 image"},
                 {48, ICON_STRETCH, "warn.ico", "48: the 32 stretched"}, {40, ICON_CENTER, "lock.ico", "ICON_CENTER"},
                 {40, ICON_CENTER | WS_BORDER | ICON_3D3, "lock.ico", "3D3 border"}};
    for (int i = 0; i < 5; ++i) {
        HWND c = Child(top, "gxIcon32", "", icons[i].style, 70 + i * 125 - icons[i].side / 2, 120, icons[i].side,
                       icons[i].side);
        SetMethod(c, std::string("@ICON(") + Picture(icons[i].icon) + ")");
        Label(top, icons[i].label, 4 + i * 125, 176, 124);
    }
    Label(top, "gxBitmap32 (an RLE8 logo) by style; gxIcon32 picks the image that fits", 16, 204, 608);
    Capture(top, "pictures.bmp");
    DestroyWindow(top);
}

// One button in one state: "up", "down", "focused", "disabled" or "checked".
HWND Button(HWND top, DWORD style, const std::string& method, const char* text, const char* state, int x, int y, int w,
            int h) {
    HWND b = Child(top, "gxButton32", text, style, x, y, w, h);
    if (!method.empty()) SetMethod(b, method);
    const std::string s = state;
    if (s == "down") SendMessageA(b, BM_SETSTATE, TRUE, 0);
    if (s == "focused") SendMessageA(b, WM_SETFOCUS, 0, 0);  // the look only: one window has the focus
    if (s == "disabled") EnableWindow(b, FALSE);
    if (s == "checked") SendMessageA(b, BM_SETCHECK, BST_CHECKED, 0);
    return b;
}

void Buttons() {
    HWND top = MakeTop(640, 260);
    const char* states[] = {"up", "down", "focused", "disabled"};
    const char* strips[] = {"tb_clear.bmp", "tb_check.bmp", "tb_lock.bmp"};
    for (int i = 0; i < 4; ++i) {
        for (int j = 0; j < 3; ++j)
            Button(top, BTN_PUSH, "@BITMAP(" + Picture(strips[j]) + ")", "", states[i], 20 + i * 80 + j * 24, 14, 22, 22);
        Label(top, states[i], 10 + i * 80, 40, 80);
    }
    Button(top, BTN_TOOLBAR | BTN_TOGGLE, "@BITMAP(" + Picture("tb_lock.bmp") + ")", "", "up", 360, 14, 22, 22);
    Button(top, BTN_TOOLBAR | BTN_TOGGLE, "@BITMAP(" + Picture("tb_lock.bmp") + ")", "", "checked", 390, 14, 22, 22);
    Label(top, "toggle up, checked", 330, 40, 120);
    Label(top, "image strips", 460, 18, 170);
    for (int i = 0; i < 4; ++i) {
        Button(top, BTN_PUSH, "@BITMAP(" + Picture("logo.bmp") + ")", "", states[i], 14 + i * 125, 76, 104, 48);
        Label(top, states[i], 4 + i * 125, 128, 124);
    }
    Label(top, "from the up image", 500, 90, 140);
    const struct {
        DWORD style;
        const char* state;
        const char* text;
    } texts[] = {{BTN_TEXT, "up", "Up"}, {BTN_TEXT, "down", "Down"}, {BTN_TEXT, "focused", "Focused"},
                 {BTN_TEXT, "disabled", "Disabled"}, {BTN_DEFPUSH, "up", "Default"}};
    for (int i = 0; i < 5; ++i) Button(top, texts[i].style, "", texts[i].text, texts[i].state, 14 + i * 104, 160, 92, 26);
    Label(top, "BTN_TEXT in each state, and BTN_DEFPUSH without images: the system's look", 16, 200, 608);
    Label(top, "gxButton32", 16, 230, 608);
    Capture(top, "buttons.bmp");
    DestroyWindow(top);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc > 1) g_out = argv[1];
    if (!LoadLibraryA(FK_DLL_NAME)) {
        std::printf("FLDKIT32.dll not found\n");
        return 1;
    }
    g_label = static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));
    g_grey = CreateSolidBrush(kGrey);
    g_big = CreateFontA(-20, 0, 0, 0, FW_BOLD, 0, 0, 0, ANSI_CHARSET, 0, 0, 0, 0, "Tahoma");
    BordersOnAColourDevice();
    BordersOnThisScreen();
    FramesAndLines();
    Text3D();
    Ticker();
    Color();
    Pictures();
    Buttons();
    DeleteObject(g_big);
    DeleteObject(g_grey);
    return 0;
}
