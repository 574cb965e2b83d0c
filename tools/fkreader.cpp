// fkreader: reads a dialog as a screen reader does and writes what it would
// announce for each control, in tab order, as a Markdown transcript.
//
//   fkreader.exe --window HWND [--out FILE]
//
// HWND is the dialog's handle in hexadecimal. The reader is another process:
// it asks each control for its object through oleacc (WM_GETOBJECT,
// OBJID_CLIENT) and reads role, name, value, description and states over
// COM, as an assistive program does. The demo starts it at the end of its
// scripted run (fkdemo.exe --auto --transcript FILE) and keeps its dialog
// answering until the reader is done.

#include <windows.h>
#include <oleacc.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

struct Releaser {
    IAccessible* p = nullptr;
    ~Releaser() {
        if (p) p->Release();
    }
};

VARIANT Child(LONG id) {
    VARIANT v;
    VariantInit(&v);
    v.vt = VT_I4;
    v.lVal = id;
    return v;
}

std::string Narrow(BSTR s) {
    std::string out;
    if (s == nullptr) return out;
    const int n = WideCharToMultiByte(CP_ACP, 0, s, static_cast<int>(SysStringLen(s)), nullptr, 0, nullptr, nullptr);
    out.resize(static_cast<size_t>(n));
    WideCharToMultiByte(CP_ACP, 0, s, static_cast<int>(SysStringLen(s)), out.data(), n, nullptr, nullptr);
    SysFreeString(s);
    return out;
}

// A table cell: no line breaks or bars.
std::string Cell(std::string s) {
    for (char& c : s)
        if (c == '|' || c == '\r' || c == '\n') c = ' ';
    return s;
}

// Roles and states in English words of our own, so that the page reads the
// same whatever the language of the system it was made on; a role not in
// the table is named by the system.
std::string RoleText(LONG role) {
    static const struct {
        LONG role;
        const char* text;
    } kRoles[] = {{ROLE_SYSTEM_CLIENT, "client"},       {ROLE_SYSTEM_GROUPING, "grouping"},
                  {ROLE_SYSTEM_SEPARATOR, "separator"}, {ROLE_SYSTEM_LIST, "list"},
                  {ROLE_SYSTEM_LISTITEM, "list item"},  {ROLE_SYSTEM_GRAPHIC, "graphic"},
                  {ROLE_SYSTEM_STATICTEXT, "static text"}, {ROLE_SYSTEM_TEXT, "editable text"},
                  {ROLE_SYSTEM_PUSHBUTTON, "push button"}, {ROLE_SYSTEM_COMBOBOX, "combo box"},
                  {ROLE_SYSTEM_SLIDER, "slider"}};
    for (const auto& r : kRoles)
        if (r.role == role) return r.text;
    char text[128] = "";
    GetRoleTextA(static_cast<DWORD>(role), text, sizeof text);
    return text;
}

// The states a reader speaks of (not focusable, which every control is, nor
// off-screen, which depends on the fonts of the machine).
std::string StateText(LONG state) {
    static const struct {
        DWORD bit;
        const char* text;
    } kSpoken[] = {{STATE_SYSTEM_UNAVAILABLE, "unavailable"}, {STATE_SYSTEM_SELECTED, "selected"},
                   {STATE_SYSTEM_FOCUSED, "focused"},         {STATE_SYSTEM_PRESSED, "pressed"},
                   {STATE_SYSTEM_CHECKED, "checked"},         {STATE_SYSTEM_READONLY, "read only"},
                   {STATE_SYSTEM_DEFAULT, "default"},         {STATE_SYSTEM_PROTECTED, "protected"},
                   {STATE_SYSTEM_MARQUEED, "marqueed"}};
    std::string out;
    for (const auto& s : kSpoken) {
        if ((static_cast<DWORD>(state) & s.bit) == 0) continue;
        if (!out.empty()) out += ", ";
        out += s.text;
    }
    return out;
}

struct Heard {
    LONG role = 0, state = 0;
    std::string name, value, description;
};

Heard Hear(IAccessible* a, LONG child) {
    Heard h;
    VARIANT v;
    VariantInit(&v);
    if (SUCCEEDED(a->get_accRole(Child(child), &v)) && v.vt == VT_I4) h.role = v.lVal;
    VariantClear(&v);
    if (SUCCEEDED(a->get_accState(Child(child), &v)) && v.vt == VT_I4) h.state = v.lVal;
    VariantClear(&v);
    BSTR s = nullptr;
    if (a->get_accName(Child(child), &s) == S_OK) h.name = Narrow(s);
    s = nullptr;
    if (a->get_accValue(Child(child), &s) == S_OK) h.value = Narrow(s);
    s = nullptr;
    if (a->get_accDescription(Child(child), &s) == S_OK) h.description = Narrow(s);
    return h;
}

// "Quantity, editable text, 12, whole number, unavailable"
std::string Announce(const Heard& h) {
    std::string out = h.name.empty() ? "(no name)" : h.name;
    out += ", " + RoleText(h.role);
    if (!h.value.empty()) out += ", " + h.value;
    if (!h.description.empty()) out += " (" + h.description + ")";
    const std::string states = StateText(h.state);
    if (!states.empty()) out += "; " + states;
    return out;
}

std::string ClassOf(HWND h) {
    char name[64] = "";
    GetClassNameA(h, name, sizeof name);
    return name;
}

// The rows or parts of a control that are simple elements of it.
std::vector<std::string> Children(IAccessible* a, LONG role) {
    std::vector<std::string> out;
    if (role != ROLE_SYSTEM_LIST && role != ROLE_SYSTEM_GROUPING) return out;
    LONG count = 0;
    if (FAILED(a->get_accChildCount(&count))) return out;
    for (LONG i = 1; i <= count && i <= 50; ++i) {
        IDispatch* d = nullptr;
        if (a->get_accChild(Child(i), &d) == S_OK && d != nullptr) {  // a window of its own: read where it stands
            d->Release();
            continue;
        }
        out.push_back(Announce(Hear(a, i)));
    }
    return out;
}

}  // namespace

int main(int argc, char** argv) {
    HWND dialog = nullptr;
    const char* outPath = nullptr;
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--window") == 0 && i + 1 < argc)
            dialog = reinterpret_cast<HWND>(static_cast<UINT_PTR>(std::strtoull(argv[++i], nullptr, 16)));
        else if (std::strcmp(argv[i], "--out") == 0 && i + 1 < argc)
            outPath = argv[++i];
    }
    if (dialog == nullptr || !IsWindow(dialog)) {
        std::fprintf(stderr, "fkreader: --window HWND names no window\n");
        return 2;
    }
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    std::FILE* out = outPath ? std::fopen(outPath, "wb") : stdout;  // the same bytes on every system
    if (out == nullptr) {
        std::fprintf(stderr, "fkreader: cannot write %s\n", outPath);
        return 2;
    }
    char caption[256] = "";
    GetWindowTextA(dialog, caption, sizeof caption);
    std::fprintf(out, "# What a screen reader announces on the demo form\n\n");
    std::fprintf(out,
                 "Written by `tools/fkreader.exe` at the end of the demo's scripted run\n"
                 "(`scripts/demo.sh`; `fkdemo.exe --auto --transcript FILE`): it reads the\n"
                 "dialog \"%s\" from another process through oleacc, as an assistive\n"
                 "program does, control by control in tab order (the order of the template).\n"
                 "Each line is name, role, value, (description); states. Labels are not listed:\n"
                 "they are the names of the controls after them. Do not edit: run the demo.\n\n",
                 caption);
    std::fprintf(out, "| # | class | tab stop | announced |\n|---|---|---|---|\n");
    int n = 0, read = 0;
    for (HWND w = GetWindow(dialog, GW_CHILD); w != nullptr; w = GetWindow(w, GW_HWNDNEXT)) {
        const std::string cls = ClassOf(w);
        if (lstrcmpiA(cls.c_str(), "static") == 0 || !IsWindowVisible(w)) continue;
        Releaser acc;
        if (FAILED(AccessibleObjectFromWindow(w, static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible),
                                              reinterpret_cast<void**>(&acc.p))) ||
            acc.p == nullptr) {
            std::fprintf(out, "| %d | %s | | (no object) |\n", ++n, cls.c_str());
            continue;
        }
        const Heard h = Hear(acc.p, CHILDID_SELF);
        const bool tab = (GetWindowLongA(w, GWL_STYLE) & WS_TABSTOP) != 0;
        std::fprintf(out, "| %d | %s | %s | %s |\n", ++n, cls.c_str(), tab ? "yes" : "", Cell(Announce(h)).c_str());
        for (const std::string& child : Children(acc.p, h.role))
            std::fprintf(out, "| | | | &nbsp;&nbsp;%s |\n", Cell(child).c_str());
        ++read;
    }
    if (out != stdout) std::fclose(out);
    std::printf("Screen reader transcript: %d controls read%s%s\n", read, outPath ? " into " : "", outPath ? outPath : "");
    CoUninitialize();
    return read > 0 ? 0 : 1;
}
