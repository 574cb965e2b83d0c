// gxString32's window words, behind the words every entry field shares.
#pragma once

#include <windows.h>

#include "fields/field_common.h"
#include "frame/extra_bytes.h"

namespace fk {

struct StringWords : FieldWords {
    using Limit = ShortWord<20>;     // character limit; 0 = none
    using Modified = ShortWord<22>;  // set to 1 when the user changes the text
    using Flags = ShortWord<24>;     // 0x0100 mask in force, 0x0200 "@AUTOFILL"
    using Method = PtrWord<char, 26>;
    using Mask = PtrWord<char, 30>;
};
static_assert(StringWords::Mask::kEnd == kStringBytes);

}  // namespace fk
