// What the design-time entries know of each class: its style table, its
// control types with their default sizes and styles, its default text, its
// toolbox picture and its page in the library help.
#pragma once

#include <stdint.h>

#include "design/style_text.h"

namespace fk {

struct DesignType {
    uint16_t width, height;  // dialog units
    uint32_t style;
    const char* descr;
};

struct DesignClass {
    const char* name;
    const char* title;  // the default text of a new control
    int helpNumber;     // the class number of the library help
    StyleTable styles;
    const DesignType* types;
    uint8_t typeCount;
    uint32_t typeMask;  // the bits that tell the types apart
};

inline constexpr int kDesignClasses = 15;

// By class index, the ListClasses order (gxString32 ... gxLine32).
const DesignClass& DesignClassAt(int index);

}  // namespace fk
