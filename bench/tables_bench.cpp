// Prints how long the table controls take to fill from a table of 100,000
// lines on this machine: the store reading the file, the list filled from
// the kept table, a method string that changes only the widths, and one
// that filters by a range (the old lines removed, the new ones added), for
// the table list and the combo table. Figures only; nothing here passes or fails on speed.

#include <windows.h>

#include <cstdio>
#include <string>

#include "include/fldkit.h"

namespace {

double Ms(LARGE_INTEGER from, LARGE_INTEGER to) {
    LARGE_INTEGER f;
    QueryPerformanceFrequency(&f);
    return 1000.0 * static_cast<double>(to.QuadPart - from.QuadPart) / static_cast<double>(f.QuadPart);
}

double TimeLoad(HWND h, const std::string& method) {
    LARGE_INTEGER a, b;
    QueryPerformanceCounter(&a);
    SendMessageA(h, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(method.c_str()));
    QueryPerformanceCounter(&b);
    return Ms(a, b);
}

}  // namespace

int main() {
    char dir[MAX_PATH];
    GetTempPathA(MAX_PATH, dir);
    const std::string path = std::string(dir) + "fk_bench_100k.tbl";
    std::string text;
    for (int i = 0; i < 100000; ++i)
        text += "C" + std::to_string(100000 + i) + ",Customer number " + std::to_string(i) + ",Town " +
                std::to_string(i % 977) + "\r\n";
    HANDLE f = CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    DWORD written = 0;
    WriteFile(f, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
    CloseHandle(f);

    HWND parent = CreateWindowExA(0, "STATIC", "bench", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 500, 300, nullptr,
                                  nullptr, GetModuleHandleA(nullptr), nullptr);
    const std::string method = "@TBL(" + path + ")@DISPLAY(1,2,3)@COLWIDTH(40,100,60)";
    std::printf("table: 100,000 lines, %lu bytes\n", static_cast<unsigned long>(text.size()));
    for (const char* cls : {FK_CLASS_TABLE, FK_CLASS_CBTABLE}) {
        twFreeTable(nullptr);
        HWND h = CreateWindowExA(0, cls, "", WS_CHILD | WS_VISIBLE | WS_BORDER | WS_VSCROLL | CBS_DROPDOWN, 10, 10,
                                 400, 200, parent, nullptr, GetModuleHandleA(nullptr), nullptr);
        LARGE_INTEGER a, b;
        QueryPerformanceCounter(&a);
        twLoadTable(path.c_str(), nullptr);
        QueryPerformanceCounter(&b);
        const double read = Ms(a, b);
        const double fill = TimeLoad(h, method);
        const double widths = TimeLoad(h, method + "@COLWIDTH(50,90,60)");
        const double again = TimeLoad(h, method + "@RNG(C150000,C159999)");
        const LRESULT count = SendMessageA(h, std::string(cls) == FK_CLASS_TABLE ? LB_GETCOUNT : CB_GETCOUNT, 0, 0);
        std::printf("%-12s table read %.0f ms; 100,000 lines filled in %.0f ms; new widths %.0f ms; "
                    "a range (%ld lines left) %.0f ms\n",
                    cls, read, fill, widths, static_cast<long>(count), again);
        DestroyWindow(h);
    }
    DestroyWindow(parent);
    DeleteFileA(path.c_str());
    return 0;
}
