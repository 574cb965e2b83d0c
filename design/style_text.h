// A class's style names as the text a dialog editor writes into a resource
// script (" | STR_UPPER | STR_NUMERIC") and back, and the choices of the
// style dialogs, all driven by one table of names per class.
//
// Pure routines: no windows.h here, so they build natively as well.
#pragma once

#include <stddef.h>
#include <stdint.h>

namespace fk {

inline constexpr uint8_t kOwnBox = 0;       // a check box of its own
inline constexpr uint8_t kBorderList = 15;  // an entry of the border list

struct StyleName {
    const char* name;  // the constant's name
    uint16_t value;
    uint16_t mask;     // the style names it when (style & mask) == value
    uint8_t group;     // kOwnBox, a radio group (1-14) or kBorderList
};

// How one group reads and writes; groups without a rule write every name
// that matches and read every name found.
struct StyleGroupRule {
    uint8_t group;
    bool firstOnly;      // bits to text: the first name that matches, ...
    int8_t fallback;     // ... else this entry of the table (-1: nothing)
    bool textFirstOnly;  // text to bits: the first name found ends the group
};

struct StyleTable {
    const StyleName* names;
    uint8_t count;
    const StyleGroupRule* rules;
    uint8_t ruleCount;
};

bool StyleNamed(const StyleName& entry, uint32_t style);

// Writes " | NAME" for the style's names into out, whole or not at all:
// when the text and its terminator do not fit in size bytes, out is left
// empty (size > 0). Returns the length of the whole text.
size_t StyleText(const StyleTable& table, uint32_t style, char* out, size_t size);

// The bits of every name found in text (case-insensitive substrings, as
// resource scripts are read). A null text has none.
uint32_t StyleBits(const StyleTable& table, const char* text);

// Every bit the entries of one group compare.
uint32_t GroupMask(const StyleTable& table, uint8_t group);

// The style after the user sets or clears entry index in a style dialog: a
// check box adds or removes its bits; a radio button or border choice
// replaces its group's bits.
uint32_t ApplyChoice(const StyleTable& table, uint32_t style, size_t index, bool on);

// The entry a radio group or the border list shows for a style: the first
// that matches, or -1.
int ChosenEntry(const StyleTable& table, uint32_t style, uint8_t group);

}  // namespace fk
