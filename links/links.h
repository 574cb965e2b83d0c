// Internal pieces shared by the link services (DDE, drag and drop, help).
#pragma once

#include <windows.h>

#include <string>
#include <string_view>
#include <vector>

#include "frame/buffers.h"
#include "frame/method_text.h"
#include "links/hooks.h"

namespace fk {

// The platform calls the link services go through (see links/hooks.h).
extern FkLinkHooks g_linkCalls;

// Opens the library's help file at the page of one control class (the
// style dialogs' Help button). 1 when help was opened, 0 when the file is
// missing or the class number unknown.
int ShowLibraryHelp(HWND owner, int classNumber);

// Splits text at "," the way the link keywords read their arguments: empty
// pieces are skipped, at most max pieces are returned.
std::vector<std::string> SplitTokens(std::string_view text, size_t max);

// Copies text into a fixed buffer of size bytes, cut and terminated.
void CopyCut(char* dst, size_t size, std::string_view text);

// The picture controls drag the name of their picture: a drag from an
// armed picture control (the button went down on it with "@DRAGSRC") carries
// name as its text. 1 when a drag took place.
LRESULT DragPictureName(HWND source, const char* name);
// A drop (GXM_DROPDATA) on a picture control that takes drops: the first
// line of the dropped text. The data block is freed and a move is completed
// at the source, as for every target. False when nothing was taken.
bool TakeDroppedText(HWND target, LPARAM block, std::string* text);

// The class name of a window ("" when unreadable).
std::string ClassOf(HWND h);

}  // namespace fk
