// What a dialog editor reads of a class: the control-information block of
// Info, the style text of Flags, and the Win32 custom-control records.

#include <windows.h>
#include <custcntl.h>

#include <utility>
#include <vector>

#include "design/classes.h"
#include "design/entries.h"
#include "design/style_dialog.h"
#include "frame/alloc.h"
#include "frame/gdi.h"
#include "frame/library.h"
#include "include/fldkit.h"
#include "resources/design_ids.h"

namespace fk {

namespace {

// The Win32 records' style lists point into these, made from the tables;
// editors only read them.
std::vector<CCSTYLEFLAGA> g_styleFlags[kDesignClasses];

CCSTYLEFLAGA* StyleFlagsOf(int index) {
    const StyleTable& table = DesignClassAt(index).styles;
    std::vector<CCSTYLEFLAGA>& flags = g_styleFlags[index];
    flags.clear();
    for (uint8_t i = 0; i < table.count; ++i)
        flags.push_back({table.names[i].value, table.names[i].mask, const_cast<LPSTR>(table.names[i].name)});
    return flags.data();
}

// The Win32 editors' style entry carries no class: one per class.
template <int Index>
BOOL CALLBACK CcStyle(HWND parent, LPCCSTYLEA record) {
    if (record == nullptr) return FALSE;
    StyleEdit edit(Index, record->flStyle, record->szText, sizeof record->szText);
    if (!RunStyleDialog(edit, parent)) return FALSE;
    record->flStyle = edit.style;
    lstrcpynA(record->szText, edit.text, sizeof record->szText);
    return TRUE;
}

template <int... I>
constexpr LPFNCCSTYLEA kCcStyles[] = {CcStyle<I>...};

template <size_t... I>
constexpr const LPFNCCSTYLEA* CcStyleTable(std::index_sequence<I...>) {
    return kCcStyles<static_cast<int>(I)...>;
}

}  // namespace

HGLOBAL ClassInfo(int index) {
    const DesignClass& c = DesignClassAt(index);
    HGLOBAL block = GlobalAllocate(GHND, sizeof(CTLINFO));
    if (block == nullptr) return nullptr;
    {
        GlobalLocked<CTLINFO> info(block);
        if (!info) return GlobalFree(block), nullptr;
        info.get()->wCtlTypes = c.typeCount;
        lstrcpynA(info.get()->szClass, c.name, FK_CTLCLASS);
        lstrcpynA(info.get()->szTitle, c.title, FK_CTLTITLE);
        for (uint8_t i = 0; i < c.typeCount; ++i) {
            CTLTYPE& type = info.get()->Type[i];
            type.wType = i;
            type.wWidth = c.types[i].width;
            type.wHeight = c.types[i].height;
            type.dwStyle = c.types[i].style;
            lstrcpynA(type.szDescr, c.types[i].descr, FK_CTLDESCR);
            type.hToolBit = LoadBitmapA(hInstLib, MAKEINTRESOURCEA(IDB_FK_TOOL_BASE + index));
        }
    }
    return block;
}

// All of the text or none of it; always 0, as editors expect.
UINT ClassFlags(int index, DWORD style, LPSTR buffer, UINT size) {
    if (buffer != nullptr && size > 0) StyleText(DesignClassAt(index).styles, style, buffer, size);
    return 0;
}

}  // namespace fk

extern "C" UINT WINAPI CustomControlInfoA(LPCCINFOA records) {
    using namespace fk;
    if (records == nullptr) return kDesignClasses;
    const LPFNCCSTYLEA* styles = CcStyleTable(std::make_index_sequence<kDesignClasses>());
    for (int i = 0; i < kDesignClasses; ++i) {
        const DesignClass& c = DesignClassAt(i);
        CCINFOA& r = records[i];
        r = CCINFOA{};
        lstrcpynA(r.szClass, c.name, sizeof r.szClass);
        lstrcpynA(r.szDesc, c.types[0].descr, sizeof r.szDesc);
        r.cxDefault = c.types[0].width;
        r.cyDefault = c.types[0].height;
        r.flStyleDefault = c.types[0].style;
        r.flCtrlTypeMask = c.typeMask;
        lstrcpynA(r.szTextDefault, c.title, sizeof r.szTextDefault);
        r.cStyleFlags = c.styles.count;
        r.aStyleFlags = StyleFlagsOf(i);
        r.lpfnStyle = styles[i];
    }
    return kDesignClasses;
}
