// The style dialog every class shows, driven by the class's style table.
#pragma once

#include <windows.h>

#include <stdint.h>

#include "include/fldkit.h"

namespace fk {

// What the dialog edits: a copy of the editor's record, written back only
// when the user presses OK.
struct StyleEdit {
    StyleEdit(int classIndex, uint32_t style, const char* text, size_t textSize);
    int classIndex;
    uint32_t style;
    char text[256];
    size_t textSize;  // the editor's room for the text, terminator included
    bool hasId = false;
    UINT id = 0;
    LPFNSTRTOID strToId = nullptr;
    LPFNIDTOSTR idToStr = nullptr;
    bool showingText = false;  // the dialog is writing its names line
};

// Runs the class's style dialog; true when the user pressed OK.
bool RunStyleDialog(StyleEdit& edit, HWND owner);

}  // namespace fk
