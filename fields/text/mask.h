// Input masks: "#" digit, "@" letter or blank, "?" letter, digit or blank,
// "*" any character; every other mask character is a literal the field
// shows and the user never types.
//
// Pure routines: no windows.h here, so they build natively as well.
#pragma once

#include <stdint.h>

#include "strings/fk_api.h"

#ifdef __cplusplus
extern "C" {
#endif

// Builds the screen text (typed characters merged into the mask) in screen,
// which must hold strlen(app) + strlen(mask) + 1 bytes, and returns the
// screen index of application index appPos (-1 for a negative appPos).
// noFill non-zero: the screen text ends after the last typed character.
int32_t FK_API twAppToScrMask(char* screen, const char* app, const char* mask, int32_t appPos, int32_t noFill);

#ifdef __cplusplus
}

namespace fk {

bool IsMaskPlaceholder(char c);
// Number of placeholders in the mask: the field's capacity.
int32_t MaskCapacity(const char* mask);
// Rebuilds the application text from a screen text, deleting the screen
// range selStart..selEnd. app must hold strlen(screen) + 1 bytes. Returns
// the application index of selStart.
int32_t ScrToAppMask(char* app, const char* screen, const char* mask, int32_t selStart, int32_t selEnd);

}  // namespace fk
#endif
