// String utilities on NUL-terminated single-byte text.
//
// Pure routines: no windows.h here, so they build natively as well.
// Characters compare as signed bytes; case folding is the C runtime's
// single-byte toupper in the default locale (only a-z fold).
//
// The numeric routines (lstrright, lstrcomma, lstrdecp, lstrnocomma,
// lstrnodecp, lstrminus, lstrinsc) build their result in the library-wide
// 160-byte work buffer: texts handed to them are at most 159 characters.
#pragma once

#include <stdint.h>

#include "fk_api.h"

#ifdef __cplusplus
extern "C" {
#endif

char* FK_API lstrncpy(char* dst, const char* src, int32_t n);
int32_t FK_API lstrncmp(const char* s1, const char* s2, int32_t n);
int32_t FK_API lstrnicmp(const char* s1, const char* s2, int32_t n);
int32_t FK_API lstricmp(const char* s1, const char* s2);
char* FK_API lstrchr(const char* text, char c);
char* FK_API lstristr(const char* text, const char* pattern);
void FK_API lstrpad(char* text, int32_t width);
char* FK_API lstrclip(char* text);
char* FK_API lstrpreclip(char* text);
char* FK_API lstrright(char* text, int32_t width);
int32_t FK_API lstrcount(const char* text, char c);
int32_t FK_API lstrdigits(const char* text);
char* FK_API lstrremove(char* text, const char* set);
char* FK_API lstrremovestr(char* text, const char* pattern);
char* FK_API lstrnocomma(char* text, char sep);
char* FK_API lstrnodecp(char* text, char dp);
char* FK_API lstrcomma(char* text, char sep, char dp);
char* FK_API lstrdecp(char* text, int32_t places, char dp);
void FK_API lstrminus(char* text);

#ifdef __cplusplus
}
#endif

// Internal editing routines of the entry fields (not exported).
#ifdef __cplusplus
namespace fk {
// Overwrites text[index] with c; index == length appends. Returns the old
// character, or 0 when index is beyond the length (nothing changes).
char lstrputc(char* text, char c, int32_t index);
// Removes text[index]. Returns the removed character, or 0 when index is at
// or beyond the length.
char lstrdelc(char* text, int32_t index);
// Inserts c before text[index] (through the work buffer). Returns text.
char* lstrinsc(char* text, char c, int32_t index);
}  // namespace fk
#endif
