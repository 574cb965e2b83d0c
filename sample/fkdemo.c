/* fkdemo: the order-entry form. A dialog from a template holds every entry
   field of FLDKIT32.dll, the 3D display controls, a ticker and the colour
   picker, configured with method strings as an application would.

     fkdemo.exe                 shows the form; OK validates every field
                                and prints the values
     fkdemo.exe --auto [--shot FILE.bmp] [--transcript FILE.md]
                                fills the form as a user would (typing,
                                leaving fields, setting values), validates,
                                prints what each field holds, optionally
                                saves a picture of the form and has
                                fkreader.exe write what a screen reader
                                announces on it, and closes

   Validation errors reach the dialog as GXN_ERROR notices; in --auto mode the
   demo prints them and answers "handled" so that no message box waits for a
   user. Written in C to show that the header serves C callers. */
#include <stdio.h>
#include <string.h>
#include <time.h>
#include <windows.h>

#include "fldkit.h"
#include "fkdemo.h"

#define WM_RUN_SCRIPT (WM_APP + 1)

static BOOL g_auto = FALSE;
static const char* g_shot = NULL;
static const char* g_transcript = NULL;
static int g_errors = 0;

struct FieldSetup {
    int id;
    const char* method;
};

static const struct FieldSetup kSetup[] = {
    {IDC_CUSTOMER, "@MND@MSG(Please enter the customer's name.)@AUTOTAB"},
    {IDC_PHONE, "@MASK(###-###-####)@AUTOTAB"},
    {IDC_QUANTITY, "@MND@RNG(1,99)@LIMIT(2)@MSG(A quantity is 1 to 99.)"},
    {IDC_WEIGHT, "@DECP(2)@RNG(0.1,500)@MSG(We ship 0.1 to 500 kg.)"},
    {IDC_PRICE, "@CF_UNITEDSTATES"},
    {IDC_DATE, "@MND@MSG(When should it arrive?)"},
    {IDC_COLOUR, ""},
};

/* ---- The table controls: customer lookup and order lines ---------------
   The customer code is a combo table fed by the CUSTOMERS table that the
   demo ships as a resource; typing completes a code, the drop-down shows
   code, name and town in columns. The order lines are a table list that
   its template text configures. A typed code is checked with twValidate. */
static const char kCustomerMethod[] =
    "@TBL(@RES(CUSTOMERS))@KEY(1)@DISPLAY(1,2,3)@COLWIDTH(30,90,70)@3D5"
    "@MSG(No customer has that code.)";

static void ConfigureTables(HWND dlg) {
    SendDlgItemMessageA(dlg, IDC_CUSTCODE, GXM_SETMETHOD, 0, (LPARAM)kCustomerMethod);
}

/* The customer's name beside the code, from the table line of the key. */
static void ShowCustomerName(HWND dlg) {
    char code[256] = "", name[80] = "";
    HGLOBAL line;
    SendDlgItemMessageA(dlg, IDC_CUSTCODE, GXM_GETVALUE, 0, (LPARAM)code);
    line = twSearchTable("@RES(CUSTOMERS)", 1, code, ',', GetModuleHandleA(NULL), 0);
    if (line != NULL) {
        const char* text = (const char*)GlobalLock(line);
        const char* comma = text != NULL ? strchr(text, ',') : NULL;
        if (comma != NULL) lstrcpynA(name, comma + 1, sizeof name);
        if (strchr(name, ',') != NULL) *strchr(name, ',') = '\0';
        GlobalUnlock(line);
        GlobalFree(line);
    }
    SetDlgItemTextA(dlg, IDC_CUSTNAME, name);
}

/* twValidate with type 4 checks a typed code against the table: nonzero
   when a line has it. A miss reaches the dialog as GXN_ERROR (600). */
static int CustomerCodeKnown(HWND dlg) {
    char code[256] = "", method[sizeof kCustomerMethod];
    HWND combo = GetDlgItem(dlg, IDC_CUSTCODE);
    SendMessageA(combo, GXM_GETVALUE, 0, (LPARAM)code);
    lstrcpyA(method, kCustomerMethod);
    return twValidate(combo, GXT_TEXT, code, method, code) != 0;
}

static void FillTables(HWND dlg) {
    HWND combo = GetDlgItem(dlg, IDC_CUSTCODE);
    HWND edit = FindWindowExA(combo, NULL, "Edit", NULL);
    HWND lines = GetDlgItem(dlg, IDC_ORDERLINES);
    const char* typed;
    /* An unknown code first, then "b": the code completes to BLUE. */
    SendMessageA(combo, GXM_SETVALUE, 0, (LPARAM)"ZZZ");
    printf("Customer code \"ZZZ\": %s\n", CustomerCodeKnown(dlg) ? "known" : "not in the table");
    SendMessageA(combo, GXM_SETVALUE, 0, (LPARAM)"");
    SetFocus(edit != NULL ? edit : combo);
    for (typed = "b"; *typed; ++typed) SendMessageA(edit != NULL ? edit : combo, WM_CHAR, (unsigned char)*typed, 1);
    printf("Customer code typed \"b\", completed: %s\n", CustomerCodeKnown(dlg) ? "known" : "not in the table");
    ShowCustomerName(dlg);
    /* Type-ahead in the order lines: "gr" finds the grease. */
    SetFocus(lines);
    for (typed = "gr"; *typed; ++typed) SendMessageA(lines, WM_CHAR, (unsigned char)*typed, 1);
}

static void ReportTables(HWND dlg) {
    char code[256] = "", line[256] = "";
    SendDlgItemMessageA(dlg, IDC_CUSTCODE, GXM_GETVALUE, 0, (LPARAM)code);
    SendDlgItemMessageA(dlg, IDC_ORDERLINES, GXM_GETVALUE, 0, (LPARAM)line);
    printf("  customer code  \"%s\"\n", code);
    printf("  order line     \"%s\" of %ld\n", line,
           (long)SendDlgItemMessageA(dlg, IDC_ORDERLINES, LB_GETCOUNT, 0, 0));
}
/* ---- End of the table controls ------------------------------------------ */

static void Configure(HWND dlg) {
    unsigned i;
    for (i = 0; i < sizeof kSetup / sizeof kSetup[0]; ++i)
        SendDlgItemMessageA(dlg, kSetup[i].id, GXM_SETMETHOD, 0, (LPARAM)kSetup[i].method);
    ConfigureTables(dlg);
    SetDlgItemTextA(dlg, IDC_BANNER, "Welcome to FieldKit: whole numbers, real numbers, money and dates, "
                                     "validated as you ask.          ");
}

/* A user at the keyboard: the field takes the focus, then each character. */
static void Type(HWND dlg, int id, const char* text) {
    HWND field = GetDlgItem(dlg, id);
    SetFocus(field);
    for (; *text; ++text) SendMessageA(field, WM_CHAR, (unsigned char)*text, 1);
}

static void Pump(void) {
    MSG msg;
    while (PeekMessageA(&msg, NULL, 0, 0, PM_REMOVE)) {
        if (msg.message == WM_TIMER) continue;
        TranslateMessage(&msg);
        DispatchMessageA(&msg);
    }
}

/* Messages, timers included, for a while: the banner scrolls in. */
static void RunBanner(DWORD ms) {
    DWORD start = GetTickCount();
    MSG msg;
    while (GetTickCount() - start < ms) {
        while (PeekMessageA(&msg, NULL, 0, 0, PM_REMOVE)) {
            TranslateMessage(&msg);
            DispatchMessageA(&msg);
        }
        Sleep(10);
    }
}

static void Fill(HWND dlg) {
    double price = 1234.5;
    struct tm delivery;
    COLORREF colour = RGB(0, 128, 192);

    Type(dlg, IDC_CUSTOMER, "acme tools");
    Type(dlg, IDC_PHONE, "5551234567");
    Type(dlg, IDC_QUANTITY, "120"); /* the limit is two digits: the 0 beeps */
    Type(dlg, IDC_WEIGHT, "3.14159"); /* two decimals once the field is left */
    SendDlgItemMessageA(dlg, IDC_PRICE, GXM_SETVALUE, GXT_DOUBLE, (LPARAM)&price);
    memset(&delivery, 0, sizeof delivery);
    delivery.tm_mday = 24;
    delivery.tm_mon = 11;
    delivery.tm_year = 126;
    SendDlgItemMessageA(dlg, IDC_DATE, GXM_SETVALUE, 0, (LPARAM)&delivery);
    SendDlgItemMessageA(dlg, IDC_COLOUR, GXM_SETVALUE, 0, (LPARAM)&colour);
    FillTables(dlg);
    SetFocus(GetDlgItem(dlg, IDOK));
    Pump();
}

static void Report(HWND dlg) {
    char text[160];
    LONG quantity = 0;
    double weight = 0, price = 0;
    struct tm date;
    COLORREF colour = 0;
    static const struct { int id; const char* name; } kFields[] = {
        {IDC_CUSTOMER, "customer"}, {IDC_PHONE, "phone"}, {IDC_QUANTITY, "quantity"},
        {IDC_WEIGHT, "weight"},     {IDC_PRICE, "price"}, {IDC_DATE, "delivery"},
    };
    unsigned i;

    printf("As shown:\n");
    for (i = 0; i < sizeof kFields / sizeof kFields[0]; ++i) {
        GetDlgItemTextA(dlg, kFields[i].id, text, sizeof text);
        printf("  %-9s \"%s\"\n", kFields[i].name, text);
    }
    memset(&date, 0, sizeof date);
    SendDlgItemMessageA(dlg, IDC_QUANTITY, GXM_GETVALUE, 0, (LPARAM)&quantity);
    SendDlgItemMessageA(dlg, IDC_WEIGHT, GXM_GETVALUE, 0, (LPARAM)&weight);
    SendDlgItemMessageA(dlg, IDC_PRICE, GXM_GETVALUE, 0, (LPARAM)&price);
    SendDlgItemMessageA(dlg, IDC_DATE, GXM_GETVALUE, 0, (LPARAM)&date);
    SendDlgItemMessageA(dlg, IDC_COLOUR, GXM_GETVALUE, 0, (LPARAM)&colour);
    printf("As values:\n");
    printf("  quantity  %ld\n", (long)quantity);
    printf("  weight    %.2f kg\n", weight);
    printf("  price     %.2f\n", price);
    printf("  delivery  %04d-%02d-%02d\n", date.tm_year + 1900, date.tm_mon + 1, date.tm_mday);
    printf("  colour    #%02X%02X%02X\n", GetRValue(colour), GetGValue(colour), GetBValue(colour));
    ReportTables(dlg);
}

static int ValidateAll(HWND dlg);

/* ---- Pictures: the logo, the status icon and the toolbar ----
   The toolbar acts on the form: Clear empties the typed fields, Check
   validates them and shows the outcome in the status icon, the Lock toggle
   disables the entry fields while it is down. The status icon's window text
   names the icon resource it shows. */
static const int kLockable[] = {IDC_CUSTOMER, IDC_PHONE, IDC_QUANTITY, IDC_WEIGHT, IDC_PRICE, IDC_DATE};

static void ShowStatus(HWND dlg, const char* icon) {
    SetDlgItemTextA(dlg, IDC_STATUS, icon);
    printf("  status icon %s\n", icon);
}

static BOOL OnToolbar(HWND dlg, int id) {
    unsigned i;
    BOOL locked;
    switch (id) {
    case IDC_TB_CLEAR:
        for (i = 0; i < 4; ++i) SetDlgItemTextA(dlg, kLockable[i], "");
        printf("Toolbar: Clear\n");
        return TRUE;
    case IDC_TB_CHECK:
        printf("Toolbar: Check\n");
        ShowStatus(dlg, ValidateAll(dlg) == 0 ? "FKOK" : "FKWARN");
        return TRUE;
    case IDC_TB_LOCK:
        locked = SendDlgItemMessageA(dlg, IDC_TB_LOCK, BM_GETCHECK, 0, 0) == BST_CHECKED;
        for (i = 0; i < sizeof kLockable / sizeof kLockable[0]; ++i) EnableWindow(GetDlgItem(dlg, kLockable[i]), !locked);
        printf("Toolbar: Lock %s, the entry fields %s\n", locked ? "down" : "up", locked ? "disabled" : "enabled");
        ShowStatus(dlg, locked ? "FKLOCK" : "FKOK");
        return TRUE;
    }
    return FALSE;
}

/* The pictures have no text a screen reader could speak: "@ACCNAME" names
   them. */
static void ConfigurePictures(HWND dlg) {
    SendDlgItemMessageA(dlg, IDC_LOGO, GXM_SETMETHOD, 0,
                        (LPARAM)"@INVERT@PROG(notepad.exe)@CMDLINE(README.md)@ACCNAME(FieldKit logo)");
    SendDlgItemMessageA(dlg, IDC_TB_CLEAR, GXM_SETMETHOD, 0, (LPARAM)"@ACCNAME(Clear)");
    SendDlgItemMessageA(dlg, IDC_TB_CHECK, GXM_SETMETHOD, 0, (LPARAM)"@ACCNAME(Check)");
    SendDlgItemMessageA(dlg, IDC_TB_LOCK, GXM_SETMETHOD, 0, (LPARAM)"@ACCNAME(Lock)");
    SendDlgItemMessageA(dlg, IDC_STATUS, GXM_SETMETHOD, 0, (LPARAM)"@ACCNAME(Status)");
}

/* The script presses Check and Lock as a user would click them. */
static void PicturesScript(HWND dlg) {
    RECT r;
    char name[MAX_PATH] = "";
    GetClientRect(GetDlgItem(dlg, IDC_LOGO), &r);
    SendDlgItemMessageA(dlg, IDC_LOGO, GXM_GETVALUE, 0, (LPARAM)name);
    printf("Logo: %s, %ld x %ld\n", name, (long)r.right, (long)r.bottom);
    if (r.right == 0) printf("The logo picture missing\n");
    SendDlgItemMessageA(dlg, IDC_TB_CHECK, BM_CLICK, 0, 0);
    SendDlgItemMessageA(dlg, IDC_TB_LOCK, BM_CLICK, 0, 0);
    Pump();
}

static void PicturesScriptEnd(HWND dlg) {
    SendDlgItemMessageA(dlg, IDC_TB_LOCK, BM_CLICK, 0, 0);
}
/* ---- end of the pictures ---- */

/* GXM_VALIDATE on every entry field; 0 means accepted. */
static int ValidateAll(HWND dlg) {
    unsigned i;
    int refused = 0;
    for (i = 0; i < sizeof kSetup / sizeof kSetup[0]; ++i) {
        if (kSetup[i].id == IDC_COLOUR) continue;
        if (SendDlgItemMessageA(dlg, kSetup[i].id, GXM_VALIDATE, 0, 0) != 0) ++refused;
    }
    return refused;
}

/* A 24-bit BMP of the dialog, as the screen shows it now (no repaint: the
   ticker draws only on its timer). */
static void SaveShot(HWND dlg, const char* path) {
    RECT r;
    HDC screen, mem;
    HBITMAP dib;
    HGDIOBJ old;
    void* bits = NULL;
    BITMAPINFO bi;
    BITMAPFILEHEADER fh;
    DWORD stride, size;
    FILE* f;
    int w, h;

    GetWindowRect(dlg, &r);
    w = r.right - r.left;
    h = r.bottom - r.top;
    memset(&bi, 0, sizeof bi);
    bi.bmiHeader.biSize = sizeof bi.bmiHeader;
    bi.bmiHeader.biWidth = w;
    bi.bmiHeader.biHeight = h;
    bi.bmiHeader.biPlanes = 1;
    bi.bmiHeader.biBitCount = 24;
    bi.bmiHeader.biCompression = BI_RGB;
    screen = GetWindowDC(dlg);
    mem = CreateCompatibleDC(screen);
    dib = CreateDIBSection(mem, &bi, DIB_RGB_COLORS, &bits, NULL, 0);
    old = SelectObject(mem, dib);
    BitBlt(mem, 0, 0, w, h, screen, 0, 0, SRCCOPY);
    GdiFlush();
    stride = ((DWORD)w * 3 + 3) & ~3u;
    size = stride * (DWORD)h;
    memset(&fh, 0, sizeof fh);
    fh.bfType = 0x4D42;
    fh.bfOffBits = sizeof fh + sizeof bi.bmiHeader;
    fh.bfSize = fh.bfOffBits + size;
    f = fopen(path, "wb");
    if (f != NULL) {
        fwrite(&fh, sizeof fh, 1, f);
        fwrite(&bi.bmiHeader, sizeof bi.bmiHeader, 1, f);
        fwrite(bits, size, 1, f);
        fclose(f);
        printf("Picture of the form: %s (%d x %d)\n", path, w, h);
    } else {
        printf("Could not write %s\n", path);
    }
    SelectObject(mem, old);
    DeleteObject(dib);
    DeleteDC(mem);
    ReleaseDC(dlg, screen);
}

/* fkreader.exe (beside this program) reads the form from its own process,
   as a screen reader does; the form answers it while this waits. */
static void WriteTranscript(HWND dlg, const char* path) {
    char exe[MAX_PATH], command[2 * MAX_PATH + 64];
    char* slash;
    STARTUPINFOA si;
    PROCESS_INFORMATION pi;
    DWORD start = GetTickCount();
    GetModuleFileNameA(NULL, exe, sizeof exe);
    slash = strrchr(exe, '\\');
    if (slash != NULL) slash[1] = 0;
    sprintf(command, "\"%sfkreader.exe\" --window %p --out \"%s\"", exe, (void*)dlg, path);
    memset(&si, 0, sizeof si);
    si.cb = sizeof si;
    if (!CreateProcessA(NULL, command, NULL, NULL, FALSE, 0, NULL, NULL, &si, &pi)) {
        printf("The screen reader transcript could not be started (error %lu)\n", GetLastError());
        return;
    }
    while (MsgWaitForMultipleObjects(1, &pi.hProcess, FALSE, 1000, QS_ALLINPUT) != WAIT_OBJECT_0) {
        MSG m;
        while (PeekMessageA(&m, NULL, 0, 0, PM_REMOVE)) DispatchMessageA(&m);
        if (GetTickCount() - start > 120000) {
            printf("The screen reader transcript took too long\n");
            TerminateProcess(pi.hProcess, 1);
            break;
        }
    }
    printf("Screen reader transcript: %s\n", path);
    CloseHandle(pi.hThread);
    CloseHandle(pi.hProcess);
}

static void RunScript(HWND dlg) {
    int refused;
    printf("Filling the form as a user would...\n");
    Fill(dlg);
    Report(dlg);
    refused = ValidateAll(dlg);
    printf("Validation: %d field(s) refused, %d error notice(s)\n", refused, g_errors);
    PicturesScript(dlg);
    if (g_shot != NULL) {
        RunBanner(6000);
        SaveShot(dlg, g_shot);
    }
    PicturesScriptEnd(dlg);
    if (g_transcript != NULL) WriteTranscript(dlg, g_transcript);
    printf("Leaving the quantity empty and validating again:\n");
    SetDlgItemTextA(dlg, IDC_QUANTITY, "");
    refused = ValidateAll(dlg);
    printf("Validation: %d field(s) refused\n", refused);
    EndDialog(dlg, IDOK);
}

static INT_PTR OnError(HWND dlg, const FieldErrorNotice* notice) {
    ++g_errors;
    if (notice != NULL)
        printf("  GXN_ERROR from control %ld, error %ld: \"%s\"\n", (long)notice->nId, (long)notice->nError,
               notice->lpMessage ? notice->lpMessage : "");
    if (!g_auto) return FALSE; /* the field shows its message box */
    SetWindowLongPtrA(dlg, DWLP_MSGRESULT, GXR_HANDLED);
    return TRUE;
}

static INT_PTR CALLBACK OrderProc(HWND dlg, UINT msg, WPARAM wp, LPARAM lp) {
    switch (msg) {
    case WM_INITDIALOG:
        Configure(dlg);
        ConfigurePictures(dlg);
        if (g_auto) PostMessageA(dlg, WM_RUN_SCRIPT, 0, 0);
        return TRUE;
    case WM_RUN_SCRIPT:
        RunScript(dlg);
        return TRUE;
    case GXN_ERROR:
        return OnError(dlg, (const FieldErrorNotice*)lp);
    case WM_COMMAND:
        if (OnToolbar(dlg, LOWORD(wp))) return TRUE;
        if (LOWORD(wp) == IDC_CUSTCODE && (HIWORD(wp) == CBN_EDITCHANGE || HIWORD(wp) == CBN_SELCHANGE)) {
            ShowCustomerName(dlg);
            return TRUE;
        }
        if (LOWORD(wp) == IDOK) {
            if (ValidateAll(dlg) == 0 && CustomerCodeKnown(dlg)) {
                Report(dlg);
                EndDialog(dlg, IDOK);
            }
            return TRUE;
        }
        if (LOWORD(wp) == IDCANCEL) {
            EndDialog(dlg, IDCANCEL);
            return TRUE;
        }
        return FALSE;
    }
    return FALSE;
}

static BOOL PrintClasses(void) {
    HGLOBAL block = ListClasses(NULL, 0, NULL, NULL);
    const CTLCLASSLIST* list;
    long n, i;
    if (block == NULL) {
        printf("%s gave no class list\n", FK_DLL_NAME);
        return FALSE;
    }
    list = (const CTLCLASSLIST*)GlobalLock(block);
    n = (long)list->nClasses;
    printf("%s: %ld classes:", FK_DLL_NAME, n);
    for (i = 0; i < n; ++i) printf(" %s", list->Classes[i].szClass);
    printf("\n\n");
    GlobalUnlock(block);
    GlobalFree(block);
    return TRUE;
}

int main(int argc, char** argv) {
    int i;
    INT_PTR result;
    for (i = 1; i < argc; ++i) {
        if (strcmp(argv[i], "--auto") == 0)
            g_auto = TRUE;
        else if (strcmp(argv[i], "--shot") == 0 && i + 1 < argc)
            g_shot = argv[++i];
        else if (strcmp(argv[i], "--transcript") == 0 && i + 1 < argc)
            g_transcript = argv[++i];
    }
    /* Loading the DLL registers the classes the template names; the
       class list is what a dialog editor asks for. */
    if (!PrintClasses()) return 1;
    result = DialogBoxParamA(GetModuleHandleA(NULL), MAKEINTRESOURCEA(IDD_ORDER), NULL, OrderProc, 0);
    if (result == -1) {
        printf("The form could not be created (error %lu)\n", GetLastError());
        return 1;
    }
    return result == IDOK ? 0 : 2;
}
