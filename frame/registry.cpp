// Start-up and teardown: the fifteen class registrations, ListClasses, WEP.

#include "frame/alloc.h"
#include "frame/registry.h"

#include <cstring>
#include <initializer_list>

#include "design/classes.h"
#include "design/entries.h"
#include "display/line.h"
#include "frame/extra_bytes.h"
#include "frame/library.h"
#include "frame/trace.h"
#include "include/fldkit.h"

namespace fk {

HINSTANCE hInstLib;
BYTE bNewLook;
WNDPROC lpfnListBoxProc;
WNDPROC lpfnComboBoxProc;
int nBaseWndExtra;
HBRUSH hbrColorRed;
HBRUSH hbrColorGreen;
HBRUSH hbrColorBlue;
HBITMAP hbmSlots[kBitmapSlots];

namespace {

enum class Base { None, ListBox, ComboBox };

struct ClassRow {
    const char* name;
    WNDPROC proc;
    UINT style;
    int wndExtra;         // for superclasses: added to the base class's count
    LPCSTR cursor;
    int background;       // raw hbrBackground value (system colour + 1)
    Base base;
    void (*before)();     // extra work before RegisterClassA
    void (*after)();      // extra work after RegisterClassA
};

// Registration order. The text-entry classes carry the I-beam; the button
// and line classes leave out CS_DBLCLKS; the frame's background is 15, not
// COLOR_WINDOW + 1 like the others.
const ClassRow kClasses[] = {
    {"gxString32", gxStringWndFn, 0x400B, kStringBytes, IDC_IBEAM, 6, Base::None, nullptr, nullptr},
    {"gxNumeric32", gxNumericWndFn, 0x400B, kNumericBytes, IDC_IBEAM, 6, Base::None, nullptr, nullptr},
    {"gxReal32", gxRealWndFn, 0x400B, kRealBytes, IDC_IBEAM, 6, Base::None, nullptr, nullptr},
    {"gxBitmap32", gxBitmapWndFn, 0x400B, kBitmapBytes, IDC_ARROW, 6, Base::None, nullptr, nullptr},
    {"gxIcon32", gxIconWndFn, 0x400B, kIconBytes, IDC_ARROW, 6, Base::None, nullptr, nullptr},
    {"gxDate32", gxDateWndFn, 0x400B, kDateBytes, IDC_IBEAM, 6, Base::None, nullptr, nullptr},
    {"gxColor32", gxColorWndFn, 0x400B, kColorBytes, IDC_ARROW, 6, Base::None, CreateColorBrushes, nullptr},
    {"gxTable32", gxTableWndFn, 0x4088, kTableBytes, IDC_ARROW, 6, Base::ListBox, nullptr, nullptr},
    {"gxCBTable32", gxCBTableWndFn, 0x4088, kCBTableBytes, IDC_ARROW, 6, Base::ComboBox, nullptr, nullptr},
    {"gxTicker32", gxTickerWndFn, 0x400B, kTickerBytes, IDC_ARROW, 6, Base::None, nullptr, nullptr},
    {"gxCurrency32", gxCurrencyWndFn, 0x400B, kCurrencyBytes, IDC_IBEAM, 6, Base::None, nullptr, ReadCurrencyDefaults},
    {"gxButton32", gxButtonWndFn, 0x4003, kButtonBytes, IDC_ARROW, 6, Base::None, nullptr, nullptr},
    {"gxLine32", gxLineWndFn, 0x4003, kLineBytes, IDC_ARROW, 6, Base::None, nullptr, nullptr},
    {"gxText3D32", gxText3DWndFn, 0x400B, kText3DBytes, IDC_ARROW, 6, Base::None, nullptr, nullptr},
    {"gxFrame3D32", gxFrame3DWndFn, 0x400B, kFrame3DBytes, IDC_ARROW, 15, Base::None, nullptr, nullptr},
};

// A superclass starts from the system class's record; its procedure and
// window-extra count are saved for the control's own use.
void FillFromBase(WNDCLASSA& wc, Base base) {
    const char* sysName = base == Base::ListBox ? "listbox" : "combobox";
    GetClassInfoA(nullptr, sysName, &wc);
    if (base == Base::ListBox)
        lpfnListBoxProc = wc.lpfnWndProc;
    else
        lpfnComboBoxProc = wc.lpfnWndProc;
    nBaseWndExtra = wc.cbWndExtra;
}

// The result of RegisterClassA is deliberately not examined: a second load
// in the same process keeps the first registration.
void RegisterRow(const ClassRow& row) {
    if (row.before) row.before();
    WNDCLASSA wc{};
    int extra = row.wndExtra;
    if (row.base != Base::None) {
        FillFromBase(wc, row.base);
        extra += wc.cbWndExtra;
    }
    wc.style = row.style;
    wc.lpfnWndProc = row.proc;
    wc.cbClsExtra = 0;
    wc.cbWndExtra = extra;
    wc.hInstance = hInstLib;
    wc.hIcon = nullptr;
    wc.hCursor = LoadCursorA(nullptr, row.cursor);
    wc.hbrBackground = reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(row.background));
    wc.lpszMenuName = nullptr;
    wc.lpszClassName = row.name;
    RegisterClassA(&wc);
    if (row.after) row.after();
}

void DeleteTraced(HGDIOBJ obj, const char* format) {
    if (obj == nullptr) return;
    DeleteObject(obj);
    Trace(format, static_cast<unsigned long>(HandleToULong(obj)));
}

}  // namespace

}  // namespace fk

extern "C" BOOL WINAPI LibMain(HINSTANCE instance, DWORD reason, LPVOID /*reserved*/) {
    using namespace fk;
    // Nothing per thread and nothing at detach: classes stay registered for
    // the life of the process.
    if (reason != DLL_PROCESS_ATTACH) return 1;
    hInstLib = instance;
    for (const ClassRow& row : kClasses) RegisterRow(row);
    // Set after the registrations: nothing a registration does may depend on it.
    bNewLook = LOBYTE(LOWORD(GetVersion())) >= 4;
    return 1;
}

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID reserved) {
    return LibMain(instance, reason, reserved);
}

extern "C" int WINAPI WEP(int exitType) {
    using namespace fk;
    if (exitType != 0) return 1;
    // The handles are not cleared: WEP runs once, when no control is left.
    for (HBRUSH brush : {hbrColorRed, hbrColorGreen, hbrColorBlue})
        DeleteTraced(brush, "FLDKIT Brush has been deleted: %lX\r\n");
    for (HBITMAP bitmap : hbmSlots) DeleteTraced(bitmap, "FLDKIT Bitmap has been deleted: %lX\r\n");
    return 1;
}

extern "C" HGLOBAL WINAPI ListClasses(LPSTR, UINT, FARPROC, FARPROC) {
    using namespace fk;
    HGLOBAL block = fk::GlobalAllocate(GMEM_SHARE | GMEM_ZEROINIT, sizeof(CTLCLASSLIST));
    if (block == nullptr) return nullptr;
    auto* list = static_cast<CTLCLASSLIST*>(GlobalLock(block));
    if (list == nullptr) {
        GlobalFree(block);
        return nullptr;
    }
    // The design-time class order, which differs from the registration
    // order on purpose: it is the order dialog editors have always been shown.
    list->nClasses = kDesignClasses;
    for (int i = 0; i < kDesignClasses; ++i) {
        const DesignEntries entries = DesignEntriesAt(i);
        list->Classes[i].lpfnInfo = entries.info;
        list->Classes[i].lpfnStyle = entries.style;
        list->Classes[i].lpfnFlags = entries.flags;
        std::strncpy(list->Classes[i].szClass, DesignClassAt(i).name, sizeof list->Classes[i].szClass);
    }
    GlobalUnlock(block);
    return block;
}
