// The design-time entries of each class, by class index (the ListClasses
// order): the exported ones, and gxLine32's, which are internal.
#pragma once

#include <windows.h>

#include "include/fldkit.h"

namespace fk {

struct DesignEntries {
    FARPROC info;
    FARPROC style;
    FARPROC flags;
    DLGPROC dialog;
};

DesignEntries DesignEntriesAt(int index);

// What the entries do, for the class at index.
HGLOBAL ClassInfo(int index);
BOOL ClassStyle(int index, HWND window, HGLOBAL block, LPFNSTRTOID strToId, LPFNIDTOSTR idToStr);
UINT ClassFlags(int index, DWORD style, LPSTR buffer, UINT size);
INT_PTR StyleDialogProc(int index, HWND dialog, UINT msg, WPARAM wp, LPARAM lp);

}  // namespace fk
