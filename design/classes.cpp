// The fifteen classes as a dialog editor sees them. Each class has one
// table of style names; Flags, the style dialog (its check boxes, radio
// groups and border list are the table's entries, in order) and the Win32
// custom-control records are all read from it.

#include "design/classes.h"

#include "include/fldkit.h"

namespace fk {

namespace {

// An entry named after its constant, so that every name is written once.
#define BOX(c) {#c, c, c, kOwnBox}
#define RADIO(c, g) {#c, c, c, g}
#define PICK(c, mask, g) {#c, c, mask, g}
#define BORDER(c) {#c, c, c, kBorderList}
#define TABLE(names, rules) {names, sizeof names / sizeof names[0], rules, sizeof rules / sizeof rules[0]}
#define NAMES_ONLY(names) {names, sizeof names / sizeof names[0], nullptr, 0}
#define TYPES(types) types, sizeof types / sizeof types[0]

constexpr uint32_t kField = WS_VISIBLE | WS_BORDER | WS_TABSTOP;

const StyleName kString[] = {
    BOX(STR_NUMERIC), BOX(STR_ALPHA), BOX(STR_ALPHANUM), BOX(STR_UPPER), BOX(STR_LOWER), BOX(STR_FIRSTCHARUPPER),
    BORDER(STR_3D1),  BORDER(STR_3D2), BORDER(STR_3D3),  BORDER(STR_3D4), BORDER(STR_3D5),
};
const StyleName kNumeric[] = {
    RADIO(NUM_CHAR, 1), RADIO(NUM_INTEGER, 1), RADIO(NUM_LONG, 1), BOX(NUM_RIGHTJUST), BORDER(NUM_3D1),
    BORDER(NUM_3D2),    BORDER(NUM_3D3),       BORDER(NUM_3D4),    BORDER(NUM_3D5),
};
const StyleName kReal[] = {
    RADIO(REAL_CHAR, 1), RADIO(REAL_FLOAT, 1), RADIO(REAL_DOUBLE, 1), RADIO(REAL_LONGDOUBLE, 1), BOX(REAL_RIGHTJUST),
    BORDER(REAL_3D1),    BORDER(REAL_3D2),     BORDER(REAL_3D3),      BORDER(REAL_3D4),          BORDER(REAL_3D5),
};
// Placement: one of three, or none (the picture's own size in the top left corner).
const StyleName kBitmap[] = {RADIO(BMP_STRETCH, 1), RADIO(BMP_CENTER, 1), RADIO(BMP_SIZETOFIT, 1), BORDER(BMP_3D1),
                             BORDER(BMP_3D2),       BORDER(BMP_3D3),      BORDER(BMP_3D4),         BORDER(BMP_3D5)};
const StyleName kIcon[] = {RADIO(ICON_STRETCH, 1), RADIO(ICON_CENTER, 1), RADIO(ICON_SIZETOFIT, 1), BORDER(ICON_3D1),
                           BORDER(ICON_3D2),       BORDER(ICON_3D3),      BORDER(ICON_3D4),         BORDER(ICON_3D5)};
const StyleName kColor[] = {BORDER(COLOR_3D1), BORDER(COLOR_3D2), BORDER(COLOR_3D3), BORDER(COLOR_3D4),
                            BORDER(COLOR_3D5)};
const StyleName kTable[] = {
    BOX(LBS_NOTIFY),           BOX(LBS_SORT),           BOX(LBS_MULTIPLESEL),       BOX(LBS_EXTENDEDSEL),
    BOX(LBS_USETABSTOPS),      BOX(LBS_NOINTEGRALHEIGHT), BOX(LBS_DISABLENOSCROLL),
};
// The list kinds are values of the two low bits (the drop-down list is both).
const StyleName kCBTable[] = {
    PICK(CBS_SIMPLE, 0x0003, 1), PICK(CBS_DROPDOWN, 0x0003, 1), PICK(CBS_DROPDOWNLIST, 0x0003, 1),
    BOX(CBS_AUTOHSCROLL),        BOX(CBS_SORT),                 BOX(CBS_NOINTEGRALHEIGHT),
    BOX(CBS_DISABLENOSCROLL),
};
const StyleName kTicker[] = {BORDER(TICK_3D1), BORDER(TICK_3D2), BORDER(TICK_3D3), BORDER(TICK_3D4),
                             BORDER(TICK_3D5)};
// The order is a value of the low four bits and the border one of bits
// 8-11 (DATE_3D3 is DATE_3D1 | DATE_3D2).
const StyleName kDate[] = {
    PICK(DATE_DEFAULT, 0x000F, 1),  PICK(DATE_MMDDYY, 0x000F, 1),   PICK(DATE_MMDDYYYY, 0x000F, 1),
    PICK(DATE_DDMMYY, 0x000F, 1),   PICK(DATE_DDMMYYYY, 0x000F, 1), PICK(DATE_YYMMDD, 0x000F, 1),
    PICK(DATE_YYYYMMDD, 0x000F, 1), BOX(DATE_DOT),                  BOX(DATE_DASH),
    BOX(DATE_SLASH),                RADIO(DATE_CHAR, 2),            RADIO(DATE_TMSTRUCT, 2),
    RADIO(DATE_LONG, 2),            PICK(DATE_3D1, 0x0F00, kBorderList), PICK(DATE_3D2, 0x0F00, kBorderList),
    PICK(DATE_3D3, 0x0F00, kBorderList), PICK(DATE_3D4, 0x0F00, kBorderList), PICK(DATE_3D5, 0x0F00, kBorderList),
};
// A frame always names one lettering, one colour, one look and one caption
// position; the colour, look and position default to black, raised, right.
const StyleName kFrame3D[] = {
    RADIO(TEXT3D_FLAT, 1),      RADIO(TEXT3D_LIGHTRAISED, 1), RADIO(TEXT3D_HEAVYRAISED, 1),
    RADIO(TEXT3D_LIGHTINSET, 1), RADIO(TEXT3D_HEAVYINSET, 1),  RADIO(FRAME3D_DARKGREY, 2),
    RADIO(FRAME3D_BLACK, 2),    RADIO(FRAME3D_INSET, 3),      RADIO(FRAME3D_RAISED, 3),
    RADIO(FRAME3D_LEFT, 4),     RADIO(FRAME3D_CENTER, 4),     RADIO(FRAME3D_RIGHT, 4),
};
const StyleGroupRule kFrame3DRules[] = {
    {1, true, 0, false}, {2, true, 6, false}, {3, true, 8, false}, {4, true, 11, false}};
// The kind is a value of the low four bits (push is 0, named when no other
// kind is); the toggle is a bit beside any kind.
const StyleName kButton[] = {PICK(BTN_PUSH, BTN_KINDMASK, 1), PICK(BTN_DEFPUSH, BTN_KINDMASK, 1),
                             PICK(BTN_TOOLBAR, BTN_KINDMASK, 1), PICK(BTN_TEXT, BTN_KINDMASK, 1), BOX(BTN_TOGGLE)};
const StyleGroupRule kButtonRules[] = {{1, true, 0, true}};
// The value types are read in this order, one only: CURR_LONG is a prefix
// of CURR_LONGDOUBLE.
const StyleName kCurrency[] = {
    RADIO(CURR_CHAR, 1), RADIO(CURR_DOUBLE, 1), RADIO(CURR_LONGDOUBLE, 1), RADIO(CURR_LONG, 1),
    BOX(CURR_RIGHTJUST), BOX(CURR_SUPPRESS),    BORDER(CURR_3D1),          BORDER(CURR_3D2),
    BORDER(CURR_3D3),    BORDER(CURR_3D4),      BORDER(CURR_3D5),
};
const StyleGroupRule kCurrencyRules[] = {{1, false, -1, true}};
const StyleName kText3D[] = {
    RADIO(TEXT3D_FLAT, 1), RADIO(TEXT3D_LIGHTRAISED, 1), RADIO(TEXT3D_HEAVYRAISED, 1), RADIO(TEXT3D_LIGHTINSET, 1),
    RADIO(TEXT3D_HEAVYINSET, 1), RADIO(TEXT3D_LEFT, 2),  RADIO(TEXT3D_CENTER, 2),      RADIO(TEXT3D_RIGHT, 2),
    BORDER(TEXT3D_3D1),    BORDER(TEXT3D_3D2),           BORDER(TEXT3D_3D3),           BORDER(TEXT3D_3D4),
    BORDER(TEXT3D_3D5),
};
// Vertical wins both ways.
const StyleName kLine[] = {RADIO(GXLINE_VERTICAL, 1), RADIO(GXLINE_HORIZONTAL, 1)};
const StyleGroupRule kLineRules[] = {{1, true, -1, true}};

const DesignType kStringTypes[] = {{60, 12, kField, "String field"}};
const DesignType kNumericTypes[] = {{40, 12, kField | NUM_INTEGER, "Numeric values"}};
const DesignType kRealTypes[] = {{30, 12, kField | REAL_DOUBLE, "Real numbers"}};
const DesignType kBitmapTypes[] = {{40, 40, WS_VISIBLE, "Bitmap"}};
const DesignType kIconTypes[] = {{20, 20, WS_VISIBLE, "Icon"}};
const DesignType kColorTypes[] = {{100, 60, WS_VISIBLE | WS_TABSTOP, "Colour picker"}};
const DesignType kTableTypes[] = {{80, 60, kField | WS_VSCROLL | LBS_NOTIFY, "Table list"}};
const DesignType kCBTableTypes[] = {{80, 60, WS_VISIBLE | WS_TABSTOP | WS_VSCROLL | CBS_SIMPLE, "Table combo"},
                                    {80, 60, WS_VISIBLE | WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWN, "Table drop-down"},
                                    {80, 60, WS_VISIBLE | WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST, "Table pick list"}};
const DesignType kTickerTypes[] = {{100, 12, WS_VISIBLE, "Ticker"}};
const DesignType kDateTypes[] = {{48, 12, kField | DATE_DEFAULT | DATE_CHAR, "Date field"}};
const DesignType kFrame3DTypes[] = {
    {100, 60, WS_VISIBLE | TEXT3D_FLAT | FRAME3D_DARKGREY | FRAME3D_INSET | FRAME3D_LEFT, "Inset frame"},
    {100, 60, WS_VISIBLE | TEXT3D_FLAT | FRAME3D_DARKGREY | FRAME3D_RAISED | FRAME3D_LEFT, "Raised frame"}};
const DesignType kButtonTypes[] = {{40, 14, WS_VISIBLE | WS_TABSTOP | BTN_PUSH, "Push button"},
                                   {40, 14, WS_VISIBLE | WS_TABSTOP | BTN_DEFPUSH, "Default button"},
                                   {40, 14, WS_VISIBLE | WS_TABSTOP | BTN_TOGGLE, "Toggle button"},
                                   {16, 16, WS_VISIBLE | BTN_TOOLBAR, "Toolbar button"},
                                   {40, 14, WS_VISIBLE | WS_TABSTOP | BTN_TEXT, "Text button"}};
const DesignType kCurrencyTypes[] = {{40, 12, kField | CURR_DOUBLE, "Currency values"}};
const DesignType kText3DTypes[] = {{60, 12, WS_VISIBLE | TEXT3D_FLAT | TEXT3D_LEFT, "Flat text"},
                                   {60, 12, WS_VISIBLE | TEXT3D_LIGHTRAISED | TEXT3D_LEFT, "Raised text"},
                                   {60, 12, WS_VISIBLE | TEXT3D_LIGHTINSET | TEXT3D_LEFT, "Inset text"}};
const DesignType kLineTypes[] = {{4, 40, WS_VISIBLE | GXLINE_VERTICAL, "Vertical line"},
                                 {60, 4, WS_VISIBLE | GXLINE_HORIZONTAL, "Horizontal line"}};

// ListClasses order; the help numbers are the library help's class numbers.
const DesignClass kClasses[kDesignClasses] = {
    {"gxString32", "", 8, NAMES_ONLY(kString), TYPES(kStringTypes), 0},
    {"gxNumeric32", "Numeric Control", 6, NAMES_ONLY(kNumeric), TYPES(kNumericTypes), 0},
    {"gxReal32", "0", 7, NAMES_ONLY(kReal), TYPES(kRealTypes), 0},
    {"gxBitmap32", "", 1, NAMES_ONLY(kBitmap), TYPES(kBitmapTypes), 0},
    {"gxIcon32", "", 5, NAMES_ONLY(kIcon), TYPES(kIconTypes), 0},
    {"gxColor32", "", 12, NAMES_ONLY(kColor), TYPES(kColorTypes), 0},
    {"gxTable32", "", 9, NAMES_ONLY(kTable), TYPES(kTableTypes), 0},
    {"gxCBTable32", "", 10, NAMES_ONLY(kCBTable), TYPES(kCBTableTypes), 0x0003},
    {"gxTicker32", "Ticker text", 15, NAMES_ONLY(kTicker), TYPES(kTickerTypes), 0},
    {"gxDate32", "", 4, NAMES_ONLY(kDate), TYPES(kDateTypes), 0},
    {"gxFrame3D32", "Frame", 13, TABLE(kFrame3D, kFrame3DRules), TYPES(kFrame3DTypes), FRAME3D_INSET | FRAME3D_RAISED},
    {"gxButton32", "Button", 2, TABLE(kButton, kButtonRules), TYPES(kButtonTypes), 0x001F},
    {"gxCurrency32", "0", 3, TABLE(kCurrency, kCurrencyRules), TYPES(kCurrencyTypes), 0},
    {"gxText3D32", "Text", 14, NAMES_ONLY(kText3D), TYPES(kText3DTypes), 0x001F},
    {"gxLine32", "", 11, TABLE(kLine, kLineRules), TYPES(kLineTypes), GXLINE_VERTICAL | GXLINE_HORIZONTAL},
};

}  // namespace

const DesignClass& DesignClassAt(int index) { return kClasses[index]; }

}  // namespace fk
