// Help for the end user (F1 in a field), the library's own help for the
// style dialogs, and starting or activating another program.

#include <windows.h>
#include <mmsystem.h>

#include <cstdio>
#include <cstring>
#include <string>

#include "include/fldkit.h"
#include "links/links.h"
#include "strings/lstr.h"

namespace fk {
namespace {

constexpr int kPartSize = 257;  // a method-string argument copy and its terminator

void ShowWaitCursor() { SetCursor(LoadCursorA(nullptr, IDC_WAIT)); }

// Splits "first,second": a part is copied only when it is not empty, so a
// missing part keeps what the buffer held. The first part is trimmed at the
// end; the second (a key word or identifier) at both ends.
void SplitTwo(const char* argument, char* first, char* second) {
    std::string text = argument;
    size_t comma = text.find(',');
    std::string a = text.substr(0, comma);
    std::string b = comma == std::string::npos ? std::string() : text.substr(comma + 1);
    if (!a.empty()) {
        CopyCut(first, kPartSize, a);
        lstrclip(first);
    }
    if (!b.empty()) {
        CopyCut(second, kPartSize, b);
        lstrclip(second);
        lstrpreclip(second);
    }
}

struct HelpContext {
    int classNumber;
    DWORD context;
};
constexpr HelpContext kHelpContexts[] = {
    {1, 103},  {2, 105},  {3, 221},  {4, 223},  {5, 225},  {6, 236},  {7, 234},  {8, 232},
    {9, 230},  {10, 217}, {11, 195}, {12, 219}, {13, 194}, {14, 201}, {15, 228},
};

bool FileExists(const char* path) {
    OFSTRUCT of{};
    return OpenFile(path, &of, OF_EXIST) != HFILE_ERROR;
}

// Base name and extension of a path ("C:\dir\NAME.EXE" gives NAME and .EXE).
void SplitName(const char* path, std::string* base, std::string* ext) {
    std::string p = path;
    size_t slash = p.find_last_of("\\/:");
    std::string name = slash == std::string::npos ? p : p.substr(slash + 1);
    size_t dot = name.find_last_of('.');
    *base = dot == std::string::npos ? name : name.substr(0, dot);
    *ext = dot == std::string::npos ? std::string() : name.substr(dot);
}

bool ModuleMatches(HWND h, const std::string& wanted, bool* readable) {
    char file[80] = {};
    HINSTANCE inst = reinterpret_cast<HINSTANCE>(GetWindowLongPtrA(h, GWLP_HINSTANCE));
    *readable = GetModuleFileNameA(inst, file, sizeof file - 1) != 0;
    if (!*readable) return false;
    std::string base, ext;
    SplitName(file, &base, &ext);
    return lstricmp(base.c_str(), wanted.c_str()) == 0 || lstricmp((base + ext).c_str(), wanted.c_str()) == 0;
}

}  // namespace

int ShowLibraryHelp(HWND owner, int classNumber) {
    std::string directory = ".\\";
    if (HMODULE designer = GetModuleHandleA("XDSN32.EXE")) {
        char file[358] = {};
        if (GetModuleFileNameA(designer, file, 357) != 0) {
            std::string f = file;
            size_t slash = f.find_last_of("\\/");
            if (slash != std::string::npos) directory = f.substr(0, slash + 1);
        }
    }
    directory += "help\\";
    std::string path = directory + "FLDKIT.HLP";
    if (!FileExists(path.c_str())) {
        path = "FLDKIT.HLP";
        if (!FileExists(path.c_str())) {
            char text[256];
            std::snprintf(text, sizeof text,
                          "Unable to locate the help file: %s.  Please check your system to make sure this file "
                          "exists and is available to Quintaval.",
                          "FLDKIT.HLP");
            MessageBoxA(owner, text, "Quintaval", MB_ICONHAND);
            return 0;
        }
    }
    for (const auto& h : kHelpContexts) {
        if (h.classNumber == classNumber) {
            ShowWaitCursor();
            g_linkCalls.winHelp(owner, path.c_str(), HELP_CONTEXT, h.context);
            return 1;
        }
    }
    return 0;
}

}  // namespace fk

using namespace fk;

int WINAPI twProcessHelp(HWND hWnd, char* lpMethod) {
    MethodFull method(lpMethod);
    std::string argument = method.param("@HELPWAVE");
    if (method.found() && !g_linkCalls.sndPlaySound(argument.c_str(), SND_ASYNC)) MessageBeep(0);

    // Shared by the topic and the command: not cleared between them.
    char file[kPartSize] = {};
    char key[kPartSize] = {};
    argument = method.param("@HELPMSG1");
    if (method.found()) {
        MessageBoxA(GetParent(hWnd), argument.c_str(), "Help", MB_OK);
        SetFocus(hWnd);
    } else {
        argument = method.param("@HELPTOPIC");
        if (method.found()) {
            SplitTwo(argument.c_str(), file, key);
            ShowWaitCursor();
            if (file[0] != 0 && key[0] != 0) {
                g_linkCalls.winHelp(hWnd, file, HELP_KEY, reinterpret_cast<ULONG_PTR>(key));
            } else if (file[0] != 0) {
                g_linkCalls.winHelp(hWnd, file, HELP_CONTENTS, 0);
            } else if (key[0] == 0) {
                g_linkCalls.winHelp(hWnd, "", HELP_HELPONHELP, 0);
            } else {
                return 0;
            }
        }
    }

    argument = method.param("@HELPCOMMAND");
    if (!method.found()) return 1;
    SplitTwo(argument.c_str(), file, key);
    ShowWaitCursor();
    if (file[0] == 0 || key[0] == 0) return 0;
    char macro[2 * kPartSize + 16];
    std::snprintf(macro, sizeof macro, "JumpId(\"%s\", \"%s\")", file, key);
    g_linkCalls.winHelp(hWnd, file, HELP_FORCEFILE, 0);
    g_linkCalls.winHelp(hWnd, file, HELP_COMMAND, reinterpret_cast<ULONG_PTR>(macro));
    return 1;
}

UINT WINAPI twExecProgram(HWND, char* lpMethod) {
    MethodFull method(lpMethod);
    std::string path = method.param("@PROG");
    HCURSOR previous = SetCursor(LoadCursorA(nullptr, IDC_WAIT));
    if (method.has("@UNIQUE")) {
        char found[MAX_PATH] = {};
        HINSTANCE r = g_linkCalls.findExecutable(path.c_str(), nullptr, found);
        if (reinterpret_cast<INT_PTR>(r) > 32) {
            // The program is not started on this path, window or not, and
            // the wait cursor stays.
            if (HWND running = twGetModuleWindow(path.c_str())) {
                if (IsIconic(running)) ShowWindow(running, SW_RESTORE);
                SetForegroundWindow(running);
                SetActiveWindow(running);
            }
            return 1;
        }
    }
    std::string arguments = method.param("@CMDLINE");
    if (method.found()) path += " " + arguments;
    UINT result = g_linkCalls.winExec(path.c_str(), SW_SHOWNORMAL);
    SetCursor(previous);
    return result;
}

HWND WINAPI twGetModuleWindow(const char* lpPath) {
    if (lpPath == nullptr) return nullptr;
    std::string wanted, ext;
    SplitName(lpPath, &wanted, &ext);
    HWND active = GetActiveWindow();
    HWND h = active != nullptr ? GetWindow(active, GW_HWNDFIRST) : GetWindow(GetDesktopWindow(), GW_CHILD);
    bool first = true;
    for (; h != nullptr; h = GetWindow(h, GW_HWNDNEXT), first = false) {
        if (!first) {
            std::string cls = ClassOf(h);
            if (lstricmp(cls.c_str(), "ComboLBox") == 0 || lstricmp(cls.c_str(), "#32772") == 0) continue;
        }
        bool readable = false;
        if (ModuleMatches(h, wanted, &readable)) return h;
    }
    return nullptr;
}
