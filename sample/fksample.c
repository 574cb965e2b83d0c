/* fksample: loads FLDKIT32.dll, creates one window of each class and prints
   the class list that ListClasses hands a dialog editor. */
#include <stdio.h>
#include <windows.h>

#include "fldkit.h"

static const char* const kClasses[] = {
    FK_CLASS_STRING, FK_CLASS_NUMERIC, FK_CLASS_REAL,    FK_CLASS_BITMAP,  FK_CLASS_ICON,
    FK_CLASS_DATE,   FK_CLASS_COLOR,   FK_CLASS_TABLE,   FK_CLASS_CBTABLE, FK_CLASS_TICKER,
    FK_CLASS_CURRENCY, FK_CLASS_BUTTON, FK_CLASS_LINE,   FK_CLASS_TEXT3D,  FK_CLASS_FRAME3D,
};

int main(void) {
    HWND parent = CreateWindowExA(0, "STATIC", "FieldKit sample", WS_OVERLAPPEDWINDOW, 0, 0, 400, 300,
                                  NULL, NULL, GetModuleHandleA(NULL), NULL);
    int created = 0;
    int failed = 0;
    unsigned i;
    HGLOBAL block;
    const CTLCLASSLIST* list;

    for (i = 0; i < sizeof kClasses / sizeof kClasses[0]; ++i) {
        char method[257] = "";
        HWND h = CreateWindowExA(0, kClasses[i], "", WS_CHILD, 0, 0, 80, 20, parent, (HMENU)(UINT_PTR)(100 + i),
                                 GetModuleHandleA(NULL), NULL);
        if (h == NULL) {
            printf("could not create %s\n", kClasses[i]);
            ++failed;
            continue;
        }
        SendMessageA(h, GXM_SETMETHOD, 0, (LPARAM) "@LIMIT(10)@AUTOTAB");
        SendMessageA(h, GXM_GETMETHOD, 256, (LPARAM)method);
        printf("created %-13s method \"%s\"\n", kClasses[i], method);
        DestroyWindow(h);
        ++created;
    }

    block = ListClasses(NULL, 0, NULL, NULL);
    if (block == NULL) {
        printf("ListClasses failed\n");
        return 1;
    }
    list = (const CTLCLASSLIST*)GlobalLock(block);
    printf("\nListClasses: %ld classes\n", (long)list->nClasses);
    for (i = 0; i < (unsigned)list->nClasses; ++i)
        printf("  %2u  %s\n", i + 1, list->Classes[i].szClass);
    GlobalUnlock(block);
    GlobalFree(block);
    DestroyWindow(parent);
    WEP(0);
    printf("\n%d windows created, %d failed\n", created, failed);
    return failed == 0 ? 0 : 1;
}
