// Prints what the entry fields cost against the system's "edit" control on
// this machine: a keystroke with its repaint, caret moves and a selection by
// keyboard, create + method + destroy, a full paint, a dialog of 40 fields;
// then validations per second and a push to five linked fields. Each measure
// alternates field and edit control over several rounds (the order flips
// every round) so that a busy machine slows both alike; the ratio is the
// median of the rounds' ratios. Figures only; nothing passes or fails.
//
//   fields_bench.exe [rounds]

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include "include/fldkit.h"

namespace {

HINSTANCE g_instance;
HWND g_host;
HFONT g_font;

double NowUs() {
    static const double perUs = [] {
        LARGE_INTEGER f;
        QueryPerformanceFrequency(&f);
        return static_cast<double>(f.QuadPart) / 1e6;
    }();
    LARGE_INTEGER c;
    QueryPerformanceCounter(&c);
    return static_cast<double>(c.QuadPart) / perUs;
}

void Pump() {
    for (MSG m; PeekMessageA(&m, nullptr, 0, 0, PM_REMOVE);) DispatchMessageA(&m);
}

struct Kind {
    const char* cls;
    const char* method;  // sent after creation; none for the edit control
};
const Kind kEdit{"edit", nullptr};
const Kind kFields[] = {
    {"gxString32", "@LIMIT(20)"},
    {"gxNumeric32", "@LIMIT(9)"},
    {"gxReal32", "@LIMIT(12)"},
    {"gxCurrency32", "@LIMIT(12)"},
    {"gxDate32", "@MND"},
};

HWND Make(const Kind& k, const char* text = "") {
    const DWORD style = WS_CHILD | WS_VISIBLE | WS_BORDER | (k.method ? 0 : ES_AUTOHSCROLL);
    HWND h = CreateWindowExA(0, k.cls, text, style, 10, 10, 200, 24, g_host, reinterpret_cast<HMENU>(100), g_instance,
                             nullptr);
    SendMessageA(h, WM_SETFONT, reinterpret_cast<WPARAM>(g_font), FALSE);
    if (k.method) SendMessageA(h, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(k.method));
    return h;
}

// One measure: microseconds per operation, made of `batches` batches of `ops`
// operations; setup runs before each batch, outside the clock.
struct Measure {
    const char* name;
    int batches, ops;
    std::function<void(HWND)> setup;
    std::function<void(HWND, int)> op;
    bool needsWindow = true;
};

double Run(const Kind& k, const Measure& m) {
    HWND h = m.needsWindow ? Make(k) : nullptr;
    if (h) SetFocus(h);
    Pump();
    double total = 0;
    for (int b = 0; b < m.batches; ++b) {
        if (m.setup) m.setup(h);
        Pump();
        const double t = NowUs();
        for (int i = 0; i < m.ops; ++i) m.op(h, i);
        total += NowUs() - t;
    }
    if (h) DestroyWindow(h);
    Pump();
    return total / (m.batches * m.ops);
}

void KeyDown(HWND h, UINT vk, bool shift) {
    BYTE keys[256];
    GetKeyboardState(keys);
    keys[VK_SHIFT] = shift ? 0x80 : 0;
    SetKeyboardState(keys);
    SendMessageA(h, WM_KEYDOWN, vk, 1);
    SendMessageA(h, WM_KEYUP, vk, 0xC0000001);
    UpdateWindow(h);
}

// A dialog template in memory: `count` controls of one class, four columns.
std::vector<WORD> DialogTemplate(const char* cls, int count) {
    std::vector<WORD> t;
    auto dword = [&](DWORD d) { t.push_back(LOWORD(d)), t.push_back(HIWORD(d)); };
    auto text = [&](const char* s) {
        for (; *s; ++s) t.push_back(static_cast<WORD>(static_cast<unsigned char>(*s)));
        t.push_back(0);
    };
    auto align = [&] {
        if (t.size() % 2) t.push_back(0);
    };
    dword(WS_POPUP | WS_CAPTION | DS_SETFONT), dword(0);
    t.push_back(static_cast<WORD>(count));
    for (short v : {0, 0, 400, 220}) t.push_back(static_cast<WORD>(v));
    t.push_back(0), t.push_back(0), text("Bench");
    t.push_back(8), text("MS Sans Serif");
    for (int i = 0; i < count; ++i) {
        align();
        dword(WS_CHILD | WS_VISIBLE | WS_BORDER | WS_TABSTOP), dword(0);
        for (short v : {static_cast<short>(5 + 98 * (i % 4)), static_cast<short>(5 + 20 * (i / 4)), short{90}, short{14}})
            t.push_back(static_cast<WORD>(v));
        t.push_back(static_cast<WORD>(1000 + i));
        text(cls), text(""), t.push_back(0);
    }
    return t;
}

INT_PTR CALLBACK DialogProc(HWND, UINT msg, WPARAM, LPARAM) { return msg == WM_INITDIALOG; }

struct Row {
    std::string what;
    std::vector<double> field, edit;
};

double Median(std::vector<double> v) {
    std::sort(v.begin(), v.end());
    return v.empty() ? 0 : v[v.size() / 2];
}
double Spread(const std::vector<double>& v) {  // (worst - best) / median, in per cent
    const auto [lo, hi] = std::minmax_element(v.begin(), v.end());
    const double med = Median(v);
    return med > 0 ? 100.0 * (*hi - *lo) / med : 0;
}

void PrintRows(const std::vector<Row>& rows) {
    std::printf("%-32s %10s %7s %10s %7s %7s\n", "measure", "field us", "spread", "edit us", "spread", "ratio");
    for (const Row& r : rows) {
        std::vector<double> ratios;
        for (size_t i = 0; i < r.field.size(); ++i) ratios.push_back(r.field[i] / r.edit[i]);
        std::printf("%-32s %10.1f %6.0f%% %10.1f %6.0f%% %7.2f\n", r.what.c_str(), Median(r.field), Spread(r.field),
                    Median(r.edit), Spread(r.edit), Median(ratios));
    }
}

// ---- validation and links

double CallsPerSecond(const std::function<void()>& call) {
    int n = 0;
    const double start = NowUs();
    do {
        for (int i = 0; i < 200; ++i) call();
        n += 200;
    } while (NowUs() - start < 300000);
    return n / ((NowUs() - start) / 1e6);
}

std::string WriteTable(int lines) {
    char dir[MAX_PATH];
    GetTempPathA(MAX_PATH, dir);
    const std::string path = std::string(dir) + "fkbench.tbl";
    std::string text;
    for (int i = 0; i < lines; ++i) text += "K" + std::to_string(i) + ",Line " + std::to_string(i) + ",x\r\n";
    HANDLE f = CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    DWORD written = 0;
    WriteFile(f, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
    CloseHandle(f);
    return path;
}

void Validations() {
    HWND h = Make(kFields[0]);
    std::vector<std::pair<const char*, double>> figures;
    {
        long value = 50;
        char method[] = "@RNG(1,100)";
        figures.push_back({"range, whole number", CallsPerSecond([&] { twValidate(h, 1, &value, method, nullptr); })});
    }
    {
        char value[] = "pear", method[] = "@CHC(apple,banana,cherry,pear)";
        figures.push_back({"choice list, text", CallsPerSecond([&] { twValidate(h, 4, value, method, value); })});
    }
    {
        struct tm date{};
        date.tm_mday = 15, date.tm_mon = 5, date.tm_year = 99;
        char method[] = "@RNG(01/01/1990,12/31/2010)";
        figures.push_back({"date with a range", CallsPerSecond([&] { twValidate(h, 14, &date, method, nullptr); })});
    }
    {
        const std::string path = WriteTable(10000);
        std::string m = "@TBL(" + path + ")@KEY(1)";
        std::vector<char> method(m.begin(), m.end());
        method.resize(method.size() + 3, 0);
        char value[] = "K9999";
        figures.push_back({"table lookup, last of 10,000 lines",
                           CallsPerSecond([&] { twValidate(h, 4, value, method.data(), value); })});
        DeleteFileA(path.c_str());
    }
    DestroyWindow(h);
    std::printf("\n%-36s %14s\n", "twValidate", "calls/s");
    for (const auto& [what, rate] : figures) std::printf("%-36s %14.0f\n", what, rate);
}

LRESULT CALLBACK HostProc(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    if (msg == GXN_ERROR) return 1;  // a refusal is noted, never shown: no box may stop the run
    if (msg == WM_DDE_INITIATE) {  // handed to the children, as a dialog of the application does
        for (HWND c = GetWindow(h, GW_CHILD); c; c = GetWindow(c, GW_HWNDNEXT)) SendMessageA(c, msg, wp, lp);
        return 0;
    }
    return DefWindowProcA(h, msg, wp, lp);
}

HWND TopLevel(int x) {
    return CreateWindowExA(0, "FkBenchHost", "", WS_POPUP | WS_VISIBLE, x, 0, 260, 200, nullptr, nullptr, g_instance,
                           nullptr);
}

void Links(int rounds) {
    HWND serverHost = TopLevel(300), clientHost = TopLevel(600);
    HWND server = CreateWindowExA(0, "gxString32", "", WS_CHILD | WS_VISIBLE, 0, 0, 200, 24, serverHost, nullptr,
                                  g_instance, nullptr);
    SendMessageA(server, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>("@SERVER(FkBench,Prices,Item)"));
    std::vector<HWND> clients;
    for (int i = 0; i < 5; ++i) {
        clients.push_back(CreateWindowExA(0, "gxString32", "", WS_CHILD | WS_VISIBLE, 0, 30 * i, 200, 24, clientHost,
                                          nullptr, g_instance, nullptr));
        SendMessageA(clients.back(), GXM_SETMETHOD, 0,
                     reinterpret_cast<LPARAM>("@CLIENT(FkBench,Prices,Item)NOAUTOSTART"));
    }
    Pump();
    std::vector<double> times;
    for (int i = 0; i < rounds * 20; ++i) {
        const std::string value = "v" + std::to_string(i);
        const double start = NowUs();
        SetWindowTextA(server, value.c_str());
        for (bool all = false; !all && NowUs() - start < 2e6;) {
            Pump();
            all = true;
            char got[32];
            for (HWND c : clients) all = all && GetWindowTextA(c, got, sizeof got) && value == got;
        }
        times.push_back(NowUs() - start);
    }
    std::printf("\n%-36s %10.1f us median, spread %.0f%% (%zu pushes)\n", "push from a server to five clients",
                Median(times), Spread(times), times.size());
    DestroyWindow(clientHost);
    DestroyWindow(serverHost);
    Pump();
}

}  // namespace

int main(int argc, char** argv) {
    const int rounds = argc > 1 ? std::max(1, std::atoi(argv[1])) : 7;
    g_instance = GetModuleHandleA(nullptr);
    WNDCLASSA wc{};
    wc.hInstance = g_instance, wc.lpfnWndProc = HostProc, wc.lpszClassName = "FkBenchHost";
    wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    RegisterClassA(&wc);
    g_host = CreateWindowExA(0, "FkBenchHost", "", WS_POPUP | WS_VISIBLE, 0, 0, 260, 100, nullptr, nullptr,
                             g_instance, nullptr);
    g_font = static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));
    Pump();

    const Measure measures[] = {
        {"keystroke with repaint", 20, 8, [](HWND h) { SetWindowTextA(h, ""), UpdateWindow(h); },
         [](HWND h, int i) { SendMessageA(h, WM_CHAR, '1' + i % 9, 1), UpdateWindow(h); }},
        {"caret move / selection by keys", 20, 8, [](HWND h) { SetWindowTextA(h, "12345678"), UpdateWindow(h); },
         [](HWND h, int i) {
             static const UINT keys[] = {VK_HOME, VK_END, VK_LEFT, VK_LEFT, VK_HOME, VK_RIGHT, VK_RIGHT, VK_END};
             KeyDown(h, keys[i], i == 2 || i == 3 || i == 5 || i == 6);
         }},
        {"full paint", 20, 10, [](HWND h) { SetWindowTextA(h, "12345678"), UpdateWindow(h); },
         [](HWND h, int) { InvalidateRect(h, nullptr, TRUE), UpdateWindow(h); }},
    };

    std::printf("fields against the system edit control: %d rounds, medians; ratio = field / edit\n", rounds);
    for (const Kind& k : kFields) {
        std::vector<Row> rows;
        for (const Measure& m : measures) rows.push_back({m.name, {}, {}});
        rows.push_back({"create + method + destroy", {}, {}});
        rows.push_back({"dialog of 40, open + close", {}, {}});
        const std::vector<WORD> fieldDialog = DialogTemplate(k.cls, 40), editDialog = DialogTemplate("edit", 40);
        for (int r = 0; r < rounds; ++r) {
            for (int pass = 0; pass < 2; ++pass) {
                const bool field = (pass == 0) == (r % 2 == 0);  // the order flips every round
                const Kind& kind = field ? k : kEdit;
                size_t i = 0;
                for (const Measure& m : measures) {
                    const double us = Run(kind, m);
                    (field ? rows[i].field : rows[i].edit).push_back(us);
                    ++i;
                }
                double t = NowUs();
                for (int n = 0; n < 100; ++n) DestroyWindow(Make(kind));
                (field ? rows[i].field : rows[i].edit).push_back((NowUs() - t) / 100);
                ++i;
                const std::vector<WORD>& tmpl = field ? fieldDialog : editDialog;
                t = NowUs();
                for (int n = 0; n < 5; ++n) {
                    HWND d = CreateDialogIndirectParamA(g_instance, reinterpret_cast<const DLGTEMPLATE*>(tmpl.data()),
                                                        g_host, DialogProc, 0);
                    DestroyWindow(d);
                }
                (field ? rows[i].field : rows[i].edit).push_back((NowUs() - t) / 5);
                Pump();
            }
        }
        std::printf("\n== %s (method %s)\n", k.cls, k.method);
        PrintRows(rows);
    }
    Validations();
    Links(rounds);
    DestroyWindow(g_host);
    return 0;
}
