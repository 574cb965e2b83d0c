/* A program that links FLDKIT32.dll (FLDKIT64.dll when 64-bit) through its
   import library: a string field from the DLL's class and a string routine.
   Exit code 0 when both answered as expected. */
#include <stdio.h>
#include <string.h>

#include "fldkit.h"

int main(void) {
    char number[32] = "1234567", text[64] = "";
    HWND field = CreateWindowExA(0, FK_CLASS_STRING, "", WS_POPUP, 0, 0, 120, 24, NULL, NULL,
                                 GetModuleHandleA(NULL), NULL);
    if (field == NULL) {
        puts("no gxString32 window");
        return 2;
    }
    SendMessageA(field, GXM_SETMETHOD, 0, (LPARAM) "@LIMIT(10)");
    SetWindowTextA(field, "order 42");
    GetWindowTextA(field, text, sizeof text);
    DestroyWindow(field);
    lstrcomma(number, ',', '.');
    printf("%s | %s | %s\n", number, text, GetModuleHandleA(FK_DLL_NAME) != NULL ? FK_DLL_NAME : "no DLL");
    if (GetModuleHandleA(FK_DLL_NAME) == NULL) return 3;
    return strcmp(number, "1,234,567") == 0 && strcmp(text, "order 42") == 0 ? 0 : 1;
}
