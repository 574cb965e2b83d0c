/*
 * fldkit.h - public interface of FLDKIT32.dll and FLDKIT64.dll, the FieldKit
 * control library, for 32-bit and 64-bit programs.
 *
 * Usable from C and C++. Link with libfldkit32.a / libfldkit64.a (the import
 * libraries) or load the DLL of the program's bitness at run time. All
 * exported functions use the standard Windows calling convention (WINAPI)
 * and are exported under their plain names.
 */
#ifndef FLDKIT_H
#define FLDKIT_H

#include <stddef.h>
#include <windows.h>

#ifdef __cplusplus
extern "C" {
#endif

/* The DLL that goes with the program being compiled: a 32-bit program
   loads FLDKIT32.dll, a 64-bit one FLDKIT64.dll (the system refuses the
   other). For LoadLibraryA and GetModuleHandleA. */
#ifdef _WIN64
#define FK_DLL_NAME "FLDKIT64.dll"
#else
#define FK_DLL_NAME "FLDKIT32.dll"
#endif

/* ------------------------------------------------------------------------
 * Window classes (registered as global classes when the DLL is loaded)
 * ---------------------------------------------------------------------- */
#define FK_CLASS_STRING    "gxString32"
#define FK_CLASS_NUMERIC   "gxNumeric32"
#define FK_CLASS_REAL      "gxReal32"
#define FK_CLASS_BITMAP    "gxBitmap32"
#define FK_CLASS_ICON      "gxIcon32"
#define FK_CLASS_DATE      "gxDate32"
#define FK_CLASS_COLOR     "gxColor32"
#define FK_CLASS_TABLE     "gxTable32"
#define FK_CLASS_CBTABLE   "gxCBTable32"
#define FK_CLASS_TICKER    "gxTicker32"
#define FK_CLASS_CURRENCY  "gxCurrency32"
#define FK_CLASS_BUTTON    "gxButton32"
#define FK_CLASS_LINE      "gxLine32"
#define FK_CLASS_TEXT3D    "gxText3D32"
#define FK_CLASS_FRAME3D   "gxFrame3D32"

/* ------------------------------------------------------------------------
 * Control message set
 * ---------------------------------------------------------------------- */
#define GXM_SETMETHOD      0x0522  /* lP: method string text, or 0 to clear */
#define GXM_SETVALUE       0x0D00  /* wP: type code (0 = by style); lP: value */
#define GXM_GETVALUE       0x0D01  /* wP: type code (0 = by style); lP: buffer */
#define GXM_GETMETHOD      0x0D04  /* wP: 256 (ignored); lP: buffer of 257 bytes */
#define GXM_VALIDATE       0x0D05  /* returns 0 when valid, -1 when refused */
#define GXM_GETLIMIT       0x0D06  /* returns the character limit (0 = none) */
#define GXM_GETTYPE        0x0D07  /* wP: requested type; lP: LONG* size or 0 */
#define GXN_ERROR          0x0D09  /* to parent; wP: id; lP: FieldErrorNotice* */
#define GXN_ERRORSHOWN     0x0D10  /* to parent; wP: id; lP: low word of hwnd */
#define GXN_DRAGNOTIFY     0x0D11  /* to source's parent; wP: drag code; lP: drag block */
#define GXM_DROPDATA       0x0D12  /* to target's parent, then target; lP: drag block */
#define GXM_DRAGQUERY      0x0D13  /* to window under the cursor; lP: drag block */
#define GXM_DRAGEND        0x0D14  /* to the source: remove the dragged data */
#define GXM_SETLIMIT       0x0D18  /* wP: 0 removes the limit; lP: the new limit */
#define GXM_SETDROPTARGET  0x0D19  /* wP: non-zero accepts drops */
#define GXM_MASK           0x0D20  /* wP 0 + lP buffer: read; else set (lP text or 0) */
#define GXM_EXCLUDE        0x0D21  /* wP 0 + lP buffer: read; wP != 0: set */
#define GXM_INCLUDE        0x0D22  /* as GXM_EXCLUDE, for "@INCLUDE" */
#define GXM_AUTOTAB        0x0D23  /* wP 0: query; else set from lP */
#define GXM_AUTOFILL       0x0D24  /* wP 0: query; else set from lP */
#define GXM_SETTABLE       0x0D28  /* lP: table name ("@TBL") */
#define GXM_SETDISPLAY     0x0D29  /* lP: display columns ("@DISPLAY") */
#define GXM_SETDELIMITER   0x0D30  /* lP: delimiter ("@DLM") */
#define GXM_SETTABSTOPS    0x0D31  /* lP: tab stops ("@TABSTOP") */
#define GXM_SETCOLWIDTHS   0x0D32  /* lP: column widths ("@COLWIDTH") */

#define GXM_FIRST          0x0D00
#define GXM_LAST           0x0D32

/* Messages of single classes */
#define GXM_TICKER_STOP        0x0401  /* wP 0: restart with the stored interval */
#define GXM_TICKER_SETINTERVAL 0x0402  /* wP: interval in ms */
#define GXM_TICKER_GETINTERVAL 0x0403
#define GXM_DATE_GETFORMAT     0x040A  /* HIWORD: order 1-7, LOWORD: separator */

/* Notifications through WM_COMMAND (HIWORD(wParam)); the entry fields use
   the edit-control codes EN_SETFOCUS 0x0100, EN_KILLFOCUS 0x0200 and
   EN_CHANGE 0x0300. */
#define GXN_SETFOCUS       0x0100
#define GXN_KILLFOCUS      0x0200
#define GXN_CHANGE         0x0300
#define GXN_COLORCHANGED   0x0050  /* colour control: a component changed */

/* Replies to GXN_ERROR */
#define GXR_HANDLED        0x0001  /* the parent dealt with the error: no box */
#define GXR_ACCEPT         0x0002  /* with GXR_HANDLED: accept the value */

/* ------------------------------------------------------------------------
 * Value type codes (wParam of the value messages; type of the validation
 * and error services). Codes 1 and 2 both carry a signed 32-bit value.
 * ---------------------------------------------------------------------- */
#define GXT_BYSTYLE        0
#define GXT_LONG           1
#define GXT_INTEGER        2
#define GXT_DOUBLE         3
#define GXT_TEXT           4
#define GXT_DATE           5
#define GXT_TIME           6
#define GXT_FLOATPOINT     7
#define GXT_FLOAT          9
#define GXT_STRING         10
#define GXT_TMSTRUCT       11
#define GXT_LONGDOUBLE     12
#define GXT_DATE_MMDDYY    13
#define GXT_DATE_MMDDYYYY  14
#define GXT_DATE_DDMMYY    15
#define GXT_DATE_DDMMYYYY  16
#define GXT_DATE_YYMMDD    17
#define GXT_DATE_YYYYMMDD  18
#define GXT_TABLE          19

/* Error codes of the validation service */
#define GXE_NOTENTERED     100
#define GXE_NOTFILLED      200
#define GXE_RANGE          300
#define GXE_INVALID        400
#define GXE_CHOICE         500
#define GXE_NOTFOUND       600

/* ------------------------------------------------------------------------
 * Style constants (low word of the window style)
 * ---------------------------------------------------------------------- */
/* gxString32 */
#define STR_NUMERIC        0x0001
#define STR_ALPHA          0x0002
#define STR_ALPHANUM       0x0004
#define STR_UPPER          0x0008
#define STR_LOWER          0x0010
#define STR_FIRSTCHARUPPER 0x0020
#define STR_3D1            0x0400
#define STR_3D2            0x0800
#define STR_3D3            0x1000
#define STR_3D4            0x2000
#define STR_3D5            0x4000

/* gxNumeric32 */
#define NUM_CHAR           0x0001
#define NUM_INTEGER        0x0002
#define NUM_LONG           0x0004
#define NUM_RIGHTJUST      0x0010
#define NUM_3D1            0x0400
#define NUM_3D2            0x0800
#define NUM_3D3            0x1000
#define NUM_3D4            0x2000
#define NUM_3D5            0x4000

/* gxReal32 */
#define REAL_CHAR          0x0001
#define REAL_FLOAT         0x0002
#define REAL_DOUBLE        0x0004
#define REAL_LONGDOUBLE    0x0008
#define REAL_RIGHTJUST     0x0010
#define REAL_3D1           0x0400
#define REAL_3D2           0x0800
#define REAL_3D3           0x1000
#define REAL_3D4           0x2000
#define REAL_3D5           0x4000

/* gxCurrency32 */
#define CURR_CHAR          0x0001
#define CURR_DOUBLE        0x0002
#define CURR_LONG          0x0004
#define CURR_LONGDOUBLE    0x0008
#define CURR_RIGHTJUST     0x0010
#define CURR_SUPPRESS      0x0020
#define CURR_3D1           0x0400
#define CURR_3D2           0x0800
#define CURR_3D3           0x1000
#define CURR_3D4           0x2000
#define CURR_3D5           0x4000

/* gxDate32 */
#define DATE_DEFAULT       0x0001
#define DATE_MMDDYY        0x0002
#define DATE_MMDDYYYY      0x0003
#define DATE_DDMMYY        0x0004
#define DATE_DDMMYYYY      0x0005
#define DATE_YYMMDD        0x0006
#define DATE_YYYYMMDD      0x0007
#define DATE_DOT           0x0010
#define DATE_DASH          0x0020
#define DATE_SLASH         0x0040
#define DATE_3D1           0x0100
#define DATE_3D2           0x0200
#define DATE_3D3           0x0300
#define DATE_3D4           0x0400
#define DATE_3D5           0x0800
#define DATE_CHAR          0x1000
#define DATE_TMSTRUCT      0x2000
#define DATE_LONG          0x4000
#define DATE_TODAY         0x8000  /* set by "@DATE" */

/* gxFrame3D32 and gxText3D32 lettering */
#define TEXT3D_FLAT        0x0001
#define TEXT3D_LIGHTRAISED 0x0002
#define TEXT3D_HEAVYRAISED 0x0004
#define TEXT3D_LIGHTINSET  0x0008
#define TEXT3D_HEAVYINSET  0x0010
/* gxText3D32 */
#define TEXT3D_3D1         0x0020
#define TEXT3D_3D2         0x0040
#define TEXT3D_3D3         0x0080
#define TEXT3D_3D4         0x0100
#define TEXT3D_3D5         0x1000
#define TEXT3D_LEFT        0x0200
#define TEXT3D_CENTER      0x0400
#define TEXT3D_RIGHT       0x0800
/* gxFrame3D32 */
#define FRAME3D_DARKGREY   0x0020
#define FRAME3D_BLACK      0x0040
#define FRAME3D_INSET      0x0080
#define FRAME3D_RAISED     0x0100
#define FRAME3D_LEFT       0x0200
#define FRAME3D_CENTER     0x0400
#define FRAME3D_RIGHT      0x0800

/* gxLine32 */
#define GXLINE_VERTICAL    0x0010
#define GXLINE_HORIZONTAL  0x0020

/* gxTicker32 */
#define TICK_3D1           0x0400
#define TICK_3D2           0x0800
#define TICK_3D3           0x1000
#define TICK_3D4           0x2000
#define TICK_3D5           0x4000

/* gxColor32 */
#define COLOR_3D1          0x0400
#define COLOR_3D2          0x0800
#define COLOR_3D3          0x1000
#define COLOR_3D4          0x2000
#define COLOR_3D5          0x4000

/* gxBitmap32 and gxIcon32: where the picture goes (none: its own size in
   the top left corner) and the border */
#define BMP_STRETCH        0x0001  /* fills the client area */
#define BMP_CENTER         0x0002  /* its own size, centred */
#define BMP_SIZETOFIT      0x0004  /* the window takes the picture's size */
#define BMP_3D1            0x0400
#define BMP_3D2            0x0800
#define BMP_3D3            0x1000
#define BMP_3D4            0x2000
#define BMP_3D5            0x4000
#define ICON_STRETCH       0x0001
#define ICON_CENTER        0x0002
#define ICON_SIZETOFIT     0x0004
#define ICON_3D1           0x0400
#define ICON_3D2           0x0800
#define ICON_3D3           0x1000
#define ICON_3D4           0x2000
#define ICON_3D5           0x4000

/* gxButton32: the kind in the low four bits, BTN_TOGGLE beside it */
#define BTN_PUSH           0x0000  /* push button drawn from bitmaps */
#define BTN_DEFPUSH        0x0001  /* the same, the dialog's default */
#define BTN_TOOLBAR        0x0002  /* takes no focus on a click, never the default */
#define BTN_TEXT           0x0003  /* the system's look with the window text */
#define BTN_KINDMASK       0x000F
#define BTN_TOGGLE         0x0010  /* stays down when clicked (BM_GETCHECK) */

/* Border levels of twDraw3D */
#define DRAW3D_HEAVYINDENT 1
#define DRAW3D_SHADOW      2
#define DRAW3D_OUTDENT     4
#define DRAW3D_INDENTFRAME 8
#define DRAW3D_LIGHTINDENT 16

/* ------------------------------------------------------------------------
 * Records
 * ---------------------------------------------------------------------- */

/* Sent with GXN_ERROR: a moveable global block (60 bytes from FLDKIT32.dll,
   80 from FLDKIT64.dll), valid only during the notification (copy what you
   keep). */
typedef struct tagFieldErrorNotice {
    HWND  hWnd;        /* the control */
    LONG  nId;         /* its identifier */
    LONG  nType;       /* value type code */
    LONG  nError;      /* error code, GXE_* */
    LPSTR lpMethod;    /* method string (from the failing keyword on) */
    LPSTR lpMessage;   /* message text */
    LPSTR lpCaption;   /* caption text, at most 99 characters */
    BYTE  reserved[32];
} FieldErrorNotice;

/* One record of the class list handed to a dialog editor. */
typedef struct tagCTLCLASS {
    FARPROC lpfnInfo;
    FARPROC lpfnStyle;
    FARPROC lpfnFlags;
    char    szClass[20];
} CTLCLASS;

/* The block returned by ListClasses (global memory, owned by the caller). */
typedef struct tagCTLCLASSLIST {
    LONG     nClasses;   /* always 15 */
    CTLCLASS Classes[15];
} CTLCLASSLIST;

/* The drag block: the handle in lParam of the drag-and-drop messages
   (0x0D11-0x0D13), a GMEM_MOVEABLE | GMEM_ZEROINIT | GMEM_DDESHARE block
   (64 bytes from FLDKIT32.dll, 80 from FLDKIT64.dll). */
typedef struct tagFieldDragBlock {
    HWND    hSource;        /* the control the text comes from */
    LONG    nId;            /* its identifier */
    DWORD   dwFlags;        /* bit 0: move (the source loses the text) */
    DWORD   dwKind;         /* always 1; a target refuses any other */
    char    szChannel[30];  /* drag channel, zero-terminated */
    BYTE    reserved1[2];
    HCURSOR hCursor;        /* 0: the library's drag cursor */
    BYTE    reserved2[8];
    HGLOBAL hData;          /* the text, a block of the same kind */
} FieldDragBlock;

/* Layout checks: these records are interchange formats. FLDKIT32.dll keeps
   the layouts of 32-bit Windows; FLDKIT64.dll the same fields in the same
   order, each at its natural 64-bit alignment. FK_LAYOUT(a, b) is a in a
   32-bit build and b in a 64-bit one. */
#ifdef _WIN64
#define FK_LAYOUT(bits32, bits64) (bits64)
#else
#define FK_LAYOUT(bits32, bits64) (bits32)
#endif
#define FK_LAYOUT_CHECK(name, cond) typedef char fk_layout_##name[(cond) ? 1 : -1]
FK_LAYOUT_CHECK(notice_size, sizeof(FieldErrorNotice) == FK_LAYOUT(60, 80));
FK_LAYOUT_CHECK(notice_type, offsetof(FieldErrorNotice, nType) == FK_LAYOUT(8, 12));
FK_LAYOUT_CHECK(notice_error, offsetof(FieldErrorNotice, nError) == FK_LAYOUT(12, 16));
FK_LAYOUT_CHECK(notice_caption, offsetof(FieldErrorNotice, lpCaption) == FK_LAYOUT(24, 40));
FK_LAYOUT_CHECK(notice_reserved, offsetof(FieldErrorNotice, reserved) == FK_LAYOUT(28, 48));
FK_LAYOUT_CHECK(ctlclass_size, sizeof(CTLCLASS) == FK_LAYOUT(32, 48));
FK_LAYOUT_CHECK(ctlclass_name, offsetof(CTLCLASS, szClass) == FK_LAYOUT(12, 24));
FK_LAYOUT_CHECK(classlist_size, sizeof(CTLCLASSLIST) == FK_LAYOUT(484, 728));
FK_LAYOUT_CHECK(classlist_first, offsetof(CTLCLASSLIST, Classes) == FK_LAYOUT(4, 8));
FK_LAYOUT_CHECK(drag_size, sizeof(FieldDragBlock) == FK_LAYOUT(64, 80));
FK_LAYOUT_CHECK(drag_channel, offsetof(FieldDragBlock, szChannel) == FK_LAYOUT(16, 20));
FK_LAYOUT_CHECK(drag_cursor, offsetof(FieldDragBlock, hCursor) == FK_LAYOUT(48, 56));
FK_LAYOUT_CHECK(drag_data, offsetof(FieldDragBlock, hData) == FK_LAYOUT(60, 72));

/* ------------------------------------------------------------------------
 * Library frame
 * ---------------------------------------------------------------------- */
HGLOBAL WINAPI ListClasses(LPSTR appClass, UINT version, FARPROC loadResource, FARPROC editResource);
int WINAPI WEP(int exitType);

/* Method strings. A method string handed to twGetMethodParam must be
   writable and keep two spare bytes behind its terminator. */
int WINAPI twGetMethodParam(char* method, const char* keyword, char* argument);
int WINAPI twAddMethodParam(char* method, const char* item);
int WINAPI twRemoveMethodParam(char* method, const char* item);

/* String utilities. The numeric ones (lstrright, lstrcomma, lstrdecp,
   lstrnocomma, lstrnodecp, lstrminus) work on at most 159 characters. */
char* WINAPI lstrncpy(char* dst, const char* src, int n);
int   WINAPI lstrncmp(const char* s1, const char* s2, int n);
int   WINAPI lstrnicmp(const char* s1, const char* s2, int n);
int   WINAPI lstricmp(const char* s1, const char* s2);
char* WINAPI lstrchr(const char* text, char c);
char* WINAPI lstristr(const char* text, const char* pattern);
void  WINAPI lstrpad(char* text, int width);
char* WINAPI lstrclip(char* text);
char* WINAPI lstrpreclip(char* text);
char* WINAPI lstrright(char* text, int width);
int   WINAPI lstrcount(const char* text, char c);
int   WINAPI lstrdigits(const char* text);
char* WINAPI lstrremove(char* text, const char* set);
char* WINAPI lstrremovestr(char* text, const char* pattern);
char* WINAPI lstrnocomma(char* text, char sep);
char* WINAPI lstrnodecp(char* text, char dp);
char* WINAPI lstrcomma(char* text, char sep, char dp);
char* WINAPI lstrdecp(char* text, int places, char dp);
void  WINAPI lstrminus(char* text);

/* ------------------------------------------------------------------------
 * Entry-field core: masks, drawing, mouse, clipboard, auto-tab
 * ---------------------------------------------------------------------- */
/* twDrawField flags */
#define GXDF_ANY        0x01  /* passed by callers outside painting */
#define GXDF_RIGHT      0x04  /* right-aligned text */
#define GXDF_NOCARET    0x08  /* do not place the caret */
#define GXDF_PAINT      0x10  /* called from WM_PAINT: BeginPaint/EndPaint */

int  WINAPI twAppToScrMask(char* screen, const char* app, const char* mask, int appPos, int noFill);
int  WINAPI twDrawField(HWND hField, const char* text, UINT flags, int reserved);
void WINAPI MouseButtonDown(HWND hField, int x, char* text, char* mask, int rightAligned, UINT flags);
void WINAPI MouseMove(HWND hField, int x, char* text, int rightAligned);
int  WINAPI twClipboardCopyText(HWND owner, const char* text, int max);
int  WINAPI twClipboardPasteText(HWND owner, char* buffer, int max);
LRESULT WINAPI twAutoTab(HWND hField);

/* ------------------------------------------------------------------------
 * Validation, error reporting, dates
 * ---------------------------------------------------------------------- */
int WINAPI twValidate(HWND hWnd, int nType, void* lpValue, char* lpMethod, char* lpText);
int WINAPI twValidateRange(int nType, void* lpValue, char* lpRange);
int WINAPI twValidateChoice(int nType, void* lpValue, char* lpChoice);
int WINAPI twShowError(HWND hWnd, char* lpMethod, int nType, int nError);

/* Date forms of twTMToDate / twDateToTM */
#define GXDATE_MMDDYY    1
#define GXDATE_MMDDYYYY  2
#define GXDATE_DDMMYY    4
#define GXDATE_DDMMYYYY  8
#define GXDATE_YYMMDD    16
#define GXDATE_YYYYMMDD  32

struct tm;
int        WINAPI twTMToDate(char* buffer, const struct tm* date, int form, char separator);
void       WINAPI twDateToTM(struct tm* date, const char* text, int form);
int        WINAPI twDateCmp(const struct tm* a, const struct tm* b);
int        WINAPI twIsDateValid(const struct tm* date);
int        WINAPI twIsTimeValid(const struct tm* time);
struct tm* WINAPI twTimeNow(struct tm* time);

/* Lookup tables: text files of delimited lines (or, named "@RES(name)",
   text resources of type "TABLE" or RCDATA of the calling module), loaded
   once and kept by name. Lines are handed out as moveable global blocks that
   the caller frees with GlobalFree. */
int     WINAPI twLoadTable(const char* lpName, HINSTANCE hInstance);
int     WINAPI twFreeTable(const char* lpName);
int     WINAPI twCopyFile(const char* lpSource, const char* lpDest);
HGLOBAL WINAPI twSearchTable(const char* lpName, int nKeyColumn, const char* lpKey, char cDelimiter,
                             HINSTANCE hInstance, int nReserved);
HGLOBAL WINAPI twShowTable(HWND hParent, const char* lpName, DWORD dwColumns, int x, int y, int cx, int cy,
                           char cDelimiter, int nLineMax, int nReserved1, int nReserved2, int nReserved3,
                           void* lpReserved, int nReserved4);
LRESULT WINAPI TableListBoxProc(HWND, UINT, WPARAM, LPARAM);

/* ------------------------------------------------------------------------
 * Links: DDE, drag and drop, help and program launch
 * ---------------------------------------------------------------------- */
int     WINAPI twInitiateDDE(HWND hWnd, char* lpMethod);
LRESULT WINAPI twProcessDDE(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam, char* lpMethod);
int     WINAPI twProcessDDEData(HWND hWnd, char* lpText);
int     WINAPI twRequestDDEData(HWND hWnd);
int     WINAPI twUnadviseDDE(HWND hWnd);

LRESULT WINAPI twProcessDragDrop(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam);

int  WINAPI twProcessHelp(HWND hWnd, char* lpMethod);
UINT WINAPI twExecProgram(HWND hWnd, char* lpMethod);
HWND WINAPI twGetModuleWindow(const char* lpPath);

/* ------------------------------------------------------------------------
 * Display
 * ---------------------------------------------------------------------- */
int WINAPI twDraw3D(HWND hWnd, WORD level);
LRESULT WINAPI ColorScrollProc(HWND, UINT, WPARAM, LPARAM);

/* Pictures. twOpenDib reads a BMP file (with or without its file header;
   core, info, V4 and V5 headers; 1, 4, 8, 16, 24, 32 bits; RLE4, RLE8, bit
   fields; bottom-up or top-down) into a packed DIB in a moveable global
   block (info header, masks, colour table, rows uncompressed) that the
   caller frees; 0 when the file is no such picture. twBitmapFromDib makes a
   device bitmap for the screen of a packed DIB (palette: realized first,
   or 0). twLoadDIBitmap loads a bitmap resource of hInstance, or with a
   null hInstance the BMP file lpName. The caller deletes the bitmaps. */
HGLOBAL WINAPI twOpenDib(LPCSTR lpFile);
HBITMAP WINAPI twBitmapFromDib(HGLOBAL hDib, HPALETTE hPalette);
HBITMAP WINAPI twLoadDIBitmap(HINSTANCE hInstance, LPCSTR lpName);

/* Window procedures of the classes */
LRESULT WINAPI gxStringWndFn(HWND, UINT, WPARAM, LPARAM);
LRESULT WINAPI gxNumericWndFn(HWND, UINT, WPARAM, LPARAM);
LRESULT WINAPI gxRealWndFn(HWND, UINT, WPARAM, LPARAM);
LRESULT WINAPI gxBitmapWndFn(HWND, UINT, WPARAM, LPARAM);
LRESULT WINAPI gxIconWndFn(HWND, UINT, WPARAM, LPARAM);
LRESULT WINAPI gxDateWndFn(HWND, UINT, WPARAM, LPARAM);
LRESULT WINAPI gxColorWndFn(HWND, UINT, WPARAM, LPARAM);
LRESULT WINAPI gxTableWndFn(HWND, UINT, WPARAM, LPARAM);
LRESULT WINAPI gxCBTableWndFn(HWND, UINT, WPARAM, LPARAM);
LRESULT WINAPI gxTickerWndFn(HWND, UINT, WPARAM, LPARAM);
LRESULT WINAPI gxCurrencyWndFn(HWND, UINT, WPARAM, LPARAM);
LRESULT WINAPI gxButtonWndFn(HWND, UINT, WPARAM, LPARAM);
LRESULT WINAPI gxText3DWndFn(HWND, UINT, WPARAM, LPARAM);
LRESULT WINAPI gxFrame3DWndFn(HWND, UINT, WPARAM, LPARAM);

/* ------------------------------------------------------------------------
 * Design time: what a dialog editor calls for each class. ListClasses hands
 * out each class's Info, Style and Flags entries; Style runs the class's
 * style dialog (its procedure is the DlgFn entry). CustomControlInfoA
 * serves the editors of the Win32 custom-control interface (custcntl.h).
 * ---------------------------------------------------------------------- */
#define FK_CTLTYPES   12
#define FK_CTLDESCR   22
#define FK_CTLCLASS   20
#define FK_CTLTITLE   94

/* One control type of a class: default size (dialog units) and style. */
typedef struct tagCTLTYPE {
    UINT    wType;
    UINT    wWidth;
    UINT    wHeight;
    DWORD   dwStyle;
    char    szDescr[FK_CTLDESCR];
    HBITMAP hToolBit;   /* 24 x 24 toolbox picture; the editor deletes it */
    HCURSOR hDropCurs;  /* 0: the editor's own cursor */
} CTLTYPE;

/* The block Info returns (moveable global memory; the editor frees it). */
typedef struct tagCTLINFO {
    UINT    wVersion;
    UINT    wCtlTypes;
    char    szClass[FK_CTLCLASS];
    char    szTitle[FK_CTLTITLE];   /* the default text of a new control */
    char    szReserved[10];
    CTLTYPE Type[FK_CTLTYPES];
} CTLINFO;

/* The block Style edits in place. CtlDataSize and CtlData exist only when
   the block is at least sizeof(CTLSTYLE) bytes; Style never touches them. */
typedef struct tagCTLSTYLE {
    UINT  wX, wY, wCx, wCy, wId;
    DWORD dwStyle;
    char  szClass[FK_CTLCLASS];
    char  szTitle[FK_CTLTITLE];
    BYTE  CtlDataSize;
    BYTE  CtlData[255];
} CTLSTYLE;
#define FK_CTLSTYLE_BASE 138   /* the part every editor's block holds */

/* The editor's identifier callbacks. strToId: low word non-zero when the
   text names an identifier, the identifier in the high word. */
typedef DWORD (WINAPI *LPFNSTRTOID)(LPSTR text);
typedef UINT  (WINAPI *LPFNIDTOSTR)(UINT id, LPSTR buffer, UINT size);

FK_LAYOUT_CHECK(ctltype_size, sizeof(CTLTYPE) == FK_LAYOUT(48, 56));
FK_LAYOUT_CHECK(ctltype_bits, offsetof(CTLTYPE, hToolBit) == 40);
FK_LAYOUT_CHECK(ctlinfo_size, sizeof(CTLINFO) == FK_LAYOUT(708, 808));
FK_LAYOUT_CHECK(ctlinfo_types, offsetof(CTLINFO, Type) == FK_LAYOUT(132, 136));
FK_LAYOUT_CHECK(ctlstyle_title, offsetof(CTLSTYLE, szTitle) == 44);
FK_LAYOUT_CHECK(ctlstyle_data, offsetof(CTLSTYLE, CtlDataSize) == FK_CTLSTYLE_BASE);
FK_LAYOUT_CHECK(ctlstyle_size, sizeof(CTLSTYLE) == 396);

#define FK_DESIGN_ENTRIES(word) \
    HGLOBAL WINAPI gx##word##Info(void); \
    BOOL    WINAPI gx##word##Style(HWND window, HGLOBAL ctlStyle, LPFNSTRTOID strToId, LPFNIDTOSTR idToStr); \
    UINT    WINAPI gx##word##Flags(DWORD style, LPSTR buffer, UINT size); \
    INT_PTR WINAPI gx##word##DlgFn(HWND dialog, UINT msg, WPARAM wParam, LPARAM lParam);
FK_DESIGN_ENTRIES(String)
FK_DESIGN_ENTRIES(Numeric)
FK_DESIGN_ENTRIES(Real)
FK_DESIGN_ENTRIES(Bitmap)
FK_DESIGN_ENTRIES(Icon)
FK_DESIGN_ENTRIES(Color)
FK_DESIGN_ENTRIES(Table)
FK_DESIGN_ENTRIES(CBTable)
FK_DESIGN_ENTRIES(Ticker)
FK_DESIGN_ENTRIES(Date)
FK_DESIGN_ENTRIES(Frame3D)
FK_DESIGN_ENTRIES(Button)
FK_DESIGN_ENTRIES(Currency)
FK_DESIGN_ENTRIES(Text3D)
#undef FK_DESIGN_ENTRIES

/* The Win32 interface: with a null pointer the number of classes (15);
   otherwise fills that many CCINFOA records (custcntl.h). */
struct tagCCINFOA;
UINT WINAPI CustomControlInfoA(struct tagCCINFOA* info);

#ifdef __cplusplus
}
#endif

#endif /* FLDKIT_H */
