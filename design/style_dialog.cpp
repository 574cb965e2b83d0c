// The style dialogs. Each class's template (resources/design.rc) holds one
// button per entry of its style table (IDC_FK_STYLE + entry), the
// identifier, the text, the border list, OK, Cancel and Help; the procedure
// keeps the style in step with the buttons and writes nothing back before OK.

#include "design/style_dialog.h"

#include <cstdio>
#include <cstdlib>

#include "design/classes.h"
#include "design/entries.h"
#include "frame/gdi.h"
#include "frame/library.h"
#include "links/links.h"
#include "resources/design_ids.h"

namespace fk {

namespace {

// The border list shows the levels in this order; each item names the
// table's border entry (0 for _3D1 ... 4 for _3D5), "None" none.
const char* const kBorderLabels[] = {"None", "Heavy Indent", "OutDent", "Indent Frame", "Shadow", "Light Indent"};
const int kBorderEntry[] = {-1, 0, 2, 3, 1, 4};

constexpr int kIdTextMax = 256;

const StyleTable& TableOf(const StyleEdit& edit) { return DesignClassAt(edit.classIndex).styles; }

// The table index of the n-th border entry, or -1.
int BorderEntry(const StyleTable& table, int n) {
    for (int i = 0; i < table.count; ++i)
        if (table.names[i].group == kBorderList && n-- == 0) return i;
    return -1;
}

StyleEdit* EditOf(HWND h) { return reinterpret_cast<StyleEdit*>(GetWindowLongPtrA(h, DWLP_USER)); }

// The names line, as a resource script writes the style.
void ShowStyleText(HWND h, StyleEdit& edit) {
    char text[512];
    StyleText(TableOf(edit), edit.style, text, sizeof text);
    edit.showingText = true;
    SetDlgItemTextA(h, IDC_FK_FLAGS, text[0] ? text + 3 : "");
    edit.showingText = false;
}

// Buttons and border list as the style says.
void ShowButtons(HWND h, const StyleEdit& edit) {
    const StyleTable& table = TableOf(edit);
    for (int i = 0; i < table.count; ++i) {
        const StyleName& entry = table.names[i];
        if (entry.group == kBorderList) continue;
        const bool on = entry.group == kOwnBox ? StyleNamed(entry, edit.style)
                                               : ChosenEntry(table, edit.style, entry.group) == i;
        CheckDlgButton(h, IDC_FK_STYLE + i, on ? BST_CHECKED : BST_UNCHECKED);
    }
    const int border = ChosenEntry(table, edit.style, kBorderList);
    int item = 0;
    for (int n = 1; n < 6; ++n)
        if (border >= 0 && BorderEntry(table, kBorderEntry[n]) == border) item = n;
    SendDlgItemMessageA(h, IDC_FK_BORDER, CB_SETCURSEL, item, 0);
}

void ShowStyle(HWND h, StyleEdit& edit) {
    ShowButtons(h, edit);
    ShowStyleText(h, edit);
}

void ShowIdentifier(HWND h, const StyleEdit& edit) {
    HWND ident = GetDlgItem(h, IDC_FK_IDENT);
    SendMessageA(ident, EM_LIMITTEXT, kIdTextMax - 1, 0);
    if (!edit.hasId) {
        EnableWindow(ident, FALSE);
        return;
    }
    char name[kIdTextMax] = {};
    if (edit.idToStr != nullptr) edit.idToStr(edit.id, name, sizeof name - 1);
    name[sizeof name - 1] = '\0';  // whatever the editor wrote
    if (name[0] == '\0') std::snprintf(name, sizeof name, "%u", edit.id);
    SetWindowTextA(ident, name);
}

INT_PTR OnInitDialog(HWND h, StyleEdit* edit) {
    if (edit == nullptr) return EndDialog(h, IDCANCEL), TRUE;
    SetWindowLongPtrA(h, DWLP_USER, reinterpret_cast<LONG_PTR>(edit));
    ShowIdentifier(h, *edit);
    SendDlgItemMessageA(h, IDC_FK_TEXT, EM_LIMITTEXT, edit->textSize - 1, 0);
    SetDlgItemTextA(h, IDC_FK_TEXT, edit->text);
    const bool borders = BorderEntry(TableOf(*edit), 0) >= 0;
    for (const char* label : kBorderLabels) {
        SendDlgItemMessageA(h, IDC_FK_BORDER, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(label));
        if (!borders) break;
    }
    EnableWindow(GetDlgItem(h, IDC_FK_BORDER), borders);
    ShowStyle(h, *edit);
    return TRUE;
}

// A name the editor knows, else a number (decimal or 0x hexadecimal) that
// fits an identifier.
bool ReadIdentifier(HWND h, StyleEdit& edit) {
    char text[kIdTextMax] = {};
    GetDlgItemTextA(h, IDC_FK_IDENT, text, sizeof text);
    if (edit.strToId != nullptr) {
        const DWORD found = edit.strToId(text);
        if (LOWORD(found) != 0) return edit.id = HIWORD(found), true;
    }
    char* end = nullptr;
    const unsigned long number = std::strtoul(text, &end, 0);
    if (end == text || *end != '\0' || number > 0xFFFF) return false;
    edit.id = static_cast<UINT>(number);
    return true;
}

void OnOk(HWND h, StyleEdit& edit) {
    if (edit.hasId && !ReadIdentifier(h, edit)) {
        MessageBoxA(h, "The identifier is neither a known name nor a number from 0 to 65535.", "Style",
                    MB_OK | MB_ICONEXCLAMATION);
        SetFocus(GetDlgItem(h, IDC_FK_IDENT));
        SendDlgItemMessageA(h, IDC_FK_IDENT, EM_SETSEL, 0, -1);
        return;
    }
    GetDlgItemTextA(h, IDC_FK_TEXT, edit.text, static_cast<int>(edit.textSize));
    EndDialog(h, IDOK);
}

void OnStyleButton(HWND h, StyleEdit& edit, int entry) {
    const bool on = IsDlgButtonChecked(h, IDC_FK_STYLE + entry) == BST_CHECKED;
    edit.style = ApplyChoice(TableOf(edit), edit.style, entry, on);
    ShowStyle(h, edit);
}

// Names typed into the names line replace the class's bits.
void OnNamesTyped(HWND h, StyleEdit& edit) {
    if (edit.showingText) return;
    char text[512] = {};
    GetDlgItemTextA(h, IDC_FK_FLAGS, text, sizeof text);
    const StyleTable& table = TableOf(edit);
    uint32_t classBits = 0;
    for (int i = 0; i < table.count; ++i) classBits |= table.names[i].mask;
    edit.style = (edit.style & ~classBits) | StyleBits(table, text);
    ShowButtons(h, edit);
}

void OnBorder(HWND h, StyleEdit& edit) {
    const StyleTable& table = TableOf(edit);
    const LRESULT item = SendDlgItemMessageA(h, IDC_FK_BORDER, CB_GETCURSEL, 0, 0);
    const int entry = item > 0 && item < 6 ? BorderEntry(table, kBorderEntry[item]) : -1;
    edit.style = entry >= 0 ? ApplyChoice(table, edit.style, entry, true)
                            : edit.style & ~GroupMask(table, kBorderList);
    ShowStyle(h, edit);
}

INT_PTR OnCommand(HWND h, StyleEdit& edit, WORD id, WORD code) {
    switch (id) {
    case IDOK:
        OnOk(h, edit);
        return TRUE;
    case IDCANCEL:
        EndDialog(h, IDCANCEL);
        return TRUE;
    case IDHELP:
        ShowLibraryHelp(h, DesignClassAt(edit.classIndex).helpNumber);
        return TRUE;
    case IDC_FK_BORDER:
        if (code == CBN_SELCHANGE) OnBorder(h, edit);
        return TRUE;
    case IDC_FK_FLAGS:
        if (code == EN_CHANGE) OnNamesTyped(h, edit);
        return TRUE;
    default:
        if (id >= IDC_FK_STYLE && id < IDC_FK_STYLE + TableOf(edit).count && code == BN_CLICKED)
            OnStyleButton(h, edit, id - IDC_FK_STYLE);
        return FALSE;
    }
}

}  // namespace

StyleEdit::StyleEdit(int index, uint32_t s, const char* t, size_t size)
    : classIndex(index), style(s), text(), textSize(size < sizeof text ? size : sizeof text) {
    if (t != nullptr) lstrcpynA(text, t, static_cast<int>(textSize));
}

bool RunStyleDialog(StyleEdit& edit, HWND owner) {
    const INT_PTR result = DialogBoxParamA(hInstLib, MAKEINTRESOURCEA(IDD_FK_STYLE_BASE + edit.classIndex), owner,
                                           DesignEntriesAt(edit.classIndex).dialog, reinterpret_cast<LPARAM>(&edit));
    return result == IDOK;
}

INT_PTR StyleDialogProc(int, HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    if (msg == WM_INITDIALOG) return OnInitDialog(h, reinterpret_cast<StyleEdit*>(lp));
    StyleEdit* edit = EditOf(h);
    if (edit == nullptr) return FALSE;
    if (msg == WM_COMMAND) return OnCommand(h, *edit, LOWORD(wp), HIWORD(wp));
    return FALSE;
}

// The editor's record is edited in place, never moved or freed; a block
// smaller than the record's common part is refused.
BOOL ClassStyle(int index, HWND window, HGLOBAL block, LPFNSTRTOID strToId, LPFNIDTOSTR idToStr) {
    if (block == nullptr) return FALSE;
    GlobalLocked<CTLSTYLE> record(block);
    if (!record || record.size() < FK_CTLSTYLE_BASE) return FALSE;
    CTLSTYLE& r = *record.get();
    StyleEdit edit(index, r.dwStyle, nullptr, sizeof r.szTitle);
    lstrcpynA(edit.text, r.szTitle, sizeof r.szTitle);
    edit.hasId = true;
    edit.id = r.wId;
    edit.strToId = strToId;
    edit.idToStr = idToStr;
    if (!RunStyleDialog(edit, window)) return FALSE;
    const bool changed = edit.style != r.dwStyle || edit.id != r.wId || lstrcmpA(edit.text, r.szTitle) != 0;
    r.dwStyle = edit.style;
    r.wId = edit.id;
    lstrcpynA(r.szTitle, edit.text, sizeof r.szTitle);
    return changed;
}

}  // namespace fk
