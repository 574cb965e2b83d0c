// The Info, Style, Flags and DlgFn entries of every class: thin doors to the
// shared design-time code, one set per class.

#include "design/entries.h"

#include "design/classes.h"
#include "include/fldkit.h"

#define FK_CLASS_ENTRIES(word, index)                                                                  \
    HGLOBAL WINAPI gx##word##Info() { return fk::ClassInfo(index); }                                  \
    BOOL WINAPI gx##word##Style(HWND window, HGLOBAL block, LPFNSTRTOID strToId, LPFNIDTOSTR idToStr) { \
        return fk::ClassStyle(index, window, block, strToId, idToStr);                                 \
    }                                                                                                  \
    UINT WINAPI gx##word##Flags(DWORD style, LPSTR buffer, UINT size) {                               \
        return fk::ClassFlags(index, style, buffer, size);                                             \
    }                                                                                                  \
    INT_PTR WINAPI gx##word##DlgFn(HWND dialog, UINT msg, WPARAM wp, LPARAM lp) {                     \
        return fk::StyleDialogProc(index, dialog, msg, wp, lp);                                        \
    }

extern "C" {
FK_CLASS_ENTRIES(String, 0)
FK_CLASS_ENTRIES(Numeric, 1)
FK_CLASS_ENTRIES(Real, 2)
FK_CLASS_ENTRIES(Bitmap, 3)
FK_CLASS_ENTRIES(Icon, 4)
FK_CLASS_ENTRIES(Color, 5)
FK_CLASS_ENTRIES(Table, 6)
FK_CLASS_ENTRIES(CBTable, 7)
FK_CLASS_ENTRIES(Ticker, 8)
FK_CLASS_ENTRIES(Date, 9)
FK_CLASS_ENTRIES(Frame3D, 10)
FK_CLASS_ENTRIES(Button, 11)
FK_CLASS_ENTRIES(Currency, 12)
FK_CLASS_ENTRIES(Text3D, 13)
}

// gxLine32's entries have no exported names.
namespace {
FK_CLASS_ENTRIES(Line, 14)
}

namespace fk {

namespace {

// The class list holds the entries untyped, as the editor's interface has it.
template <typename F>
FARPROC Untyped(F entry) {
    return reinterpret_cast<FARPROC>(reinterpret_cast<void (*)()>(entry));
}

#define FK_ENTRY_ROW(word) \
    {Untyped(gx##word##Info), Untyped(gx##word##Style), Untyped(gx##word##Flags), gx##word##DlgFn}

const DesignEntries kEntries[kDesignClasses] = {
    FK_ENTRY_ROW(String),  FK_ENTRY_ROW(Numeric), FK_ENTRY_ROW(Real),     FK_ENTRY_ROW(Bitmap),
    FK_ENTRY_ROW(Icon),    FK_ENTRY_ROW(Color),   FK_ENTRY_ROW(Table),    FK_ENTRY_ROW(CBTable),
    FK_ENTRY_ROW(Ticker),  FK_ENTRY_ROW(Date),    FK_ENTRY_ROW(Frame3D),  FK_ENTRY_ROW(Button),
    FK_ENTRY_ROW(Currency), FK_ENTRY_ROW(Text3D), FK_ENTRY_ROW(Line),
};

}  // namespace

DesignEntries DesignEntriesAt(int index) { return kEntries[index]; }

}  // namespace fk
