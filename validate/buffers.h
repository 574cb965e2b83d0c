// Work buffers of the validation engine and of error reporting. They are
// shared by every control of the process: validation runs on the one
// user-interface thread and is not reentrant.
#pragma once

#include "frame/buffers.h"

namespace fk {

// The message a refusal shows: composed here by twShowError and written here
// by the table-miss notice. A box shown for a control without a parent shows
// whatever this last held.
inline constexpr int kErrorMessage = 256;
inline char g_errorMessage[kErrorMessage] = {};

// twShowError's copy of the method string from the failing keyword on, where
// the message keywords are looked for (two spare bytes for twGetMethodParam).
inline char g_errorMethod[kMethodMax + 1 + 2] = {};

// twValidate's copy of the method string, taken afresh by every call.
inline char g_validateMethod[kMethodMax + 1 + 2] = {};
// The field's text as the string tests see it.
inline char g_validateText[kFieldText] = {};
// "@TBL" table name and the key text looked up in it.
inline constexpr int kTableWork = 256;
inline char g_tableName[kTableWork] = {};
inline char g_tableKey[kTableWork] = {};

// The argument of one method keyword, as twGetMethodParam hands it out (it can
// be as long as the method string).
inline char g_methodArg[kMethodMax + 1 + 2] = {};

// Copies at most kMethodMax characters of method (none when null) into a
// method buffer and clears its two spare bytes.
inline void CopyMethod(char (&dst)[kMethodMax + 1 + 2], const char* method) {
    int n = 0;
    if (method != nullptr) {
        while (n < kMethodMax && method[n] != 0) {
            dst[n] = method[n];
            ++n;
        }
    }
    dst[n] = 0;
    dst[n + 1] = 0;
    dst[n + 2] = 0;
}

// Copies at most size - 1 characters of src into dst.
inline void CopyCut(char* dst, int size, const char* src) {
    int n = 0;
    if (src != nullptr) {
        while (n < size - 1 && src[n] != 0) {
            dst[n] = src[n];
            ++n;
        }
    }
    dst[n] = 0;
}

}  // namespace fk
