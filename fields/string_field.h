// gxString32's window words, behind the words every entry field shares.
#pragma once

#include <windows.h>

#include "display/text/border_rule.h"
#include "fields/field_words.h"

namespace fk {

struct StringWords : FieldWords {
    using Limit = ShortWord<20>;     // character limit; 0 = none
    using Modified = ShortWord<22>;  // set to 1 when the user changes the text
    using Flags = ShortWord<24>;     // 0x0100 mask in force, 0x0200 "@AUTOFILL"
    using Method = PtrWord<char, 26>;
    using Mask = PtrWord<char, 30>;
};

// WM_NCPAINT of an entry field: nothing while hidden; a field with a
// vertical scroll bar lets the system paint first; then the border its 3D
// style bit picks (kFieldBorder for the text and number fields).
LRESULT PaintFieldBorder(HWND field, WPARAM wp, LPARAM lp, const BorderRule& rule);
// Wipes the border around a hidden field.
void RefreshFieldBorder(HWND field);

}  // namespace fk
