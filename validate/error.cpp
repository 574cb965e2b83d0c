// twShowError: tells the control's parent, or the user, that a value was
// refused.
#include <windows.h>

#include <string.h>

#include "frame/gdi.h"
#include "frame/method.h"
#include "include/fldkit.h"
#include "strings/lstr.h"
#include "validate/buffers.h"
#include "validate/error_notice.h"

namespace {

constexpr int kCaptionMax = 99;

const char* DefaultMessage(int error) {
    switch (error) {
        case 100: return "Value not entered.";
        case 200: return "Value not filled.";
        case 300: return "Value out of range.";
        case 400: return "Value is not valid.";
        case 500: return "Not a valid choice.";
        case 600: return "Value could not be found.";
        default: return "No message specified.";
    }
}

// Real values are reported with type 12 and so get "Error Condition";
// applications test for that caption.
const char* DefaultCaption(int type) {
    switch (type) {
        case 1:
        case 2:
        case 3: return "Numeric Value";
        case 4:
        case 10: return "Character String";
        case 5: return "Date Value";
        case 6: return "Time Value";
        case 7: return "Floating Point";
        default: return "Error Condition";
    }
}

bool Has(const char* method, const char* keyword) {
    return lstristr(method, keyword) != nullptr;
}

// Splits "message:caption" (or, without ":", "message;caption").
void SplitMessageBox(char* caption, bool warn) {
    char* at = strchr(fk::g_errorMessage, ':');
    if (at == nullptr) {
        at = strchr(fk::g_errorMessage, ';');
    }
    if (at != nullptr) {
        *at = 0;
        fk::CopyCut(caption, kCaptionMax + 1, at + 1);
    } else {
        fk::CopyCut(caption, kCaptionMax + 1, warn ? "Warning" : "Application Error");
    }
}

// Message and caption for a refusal, from the message keywords of method
// (the first that is present wins) or the default tables.
void Compose(char* method, int type, int error, char* caption) {
    caption[0] = 0;
    char* const arg = fk::g_methodArg;
    if (twGetMethodParam(method, "@MBOX", arg)) {
        fk::CopyCut(fk::g_errorMessage, fk::kErrorMessage, arg);
        SplitMessageBox(caption, Has(method, "@WARN"));
    } else if (twGetMethodParam(method, "@STAT", arg) || twGetMethodParam(method, "@MSG", arg)) {
        fk::CopyCut(fk::g_errorMessage, fk::kErrorMessage, arg);
    } else {
        fk::CopyCut(fk::g_errorMessage, fk::kErrorMessage, DefaultMessage(error));
        fk::CopyCut(caption, kCaptionMax + 1, DefaultCaption(type));
    }
}

}  // namespace

int WINAPI twShowError(HWND hWnd, char* lpMethod, int nType, int nError) {
    // No control (null) is a call of its own: the box is shown. A handle that
    // is not a window (HWND_BROADCAST among them) names nobody to tell: the
    // selection message would otherwise reach every top-level window.
    if (hWnd != nullptr && !IsWindow(hWnd)) return 0;
    char caption[kCaptionMax + 1] = "";
    fk::CopyMethod(fk::g_errorMethod, lpMethod);
    char* const method = fk::g_errorMethod;

    const HWND parent = hWnd != nullptr ? GetParent(hWnd) : nullptr;
    const int id = hWnd != nullptr ? GetDlgCtrlID(hWnd) : 0;
    fk::NoticeBlock block(parent != nullptr);
    if (parent != nullptr) {
        if (!block) {
            return 0;
        }
        Compose(method, nType, nError, caption);
        const LRESULT reply = block.Send(parent, hWnd, id, nType, nError, lpMethod, fk::g_errorMessage, caption);
        if (reply & GXR_HANDLED) {
            return (reply & GXR_ACCEPT) ? 1 : 0;
        }
    }

    if (Has(method, "@BEEP")) {
        MessageBeep(0);
    }
    MessageBoxA(parent, fk::g_errorMessage, caption, MB_OK | MB_ICONHAND);
    if (hWnd != nullptr) {
        SendMessageA(hWnd, EM_SETSEL, 0, 500);
        InvalidateRect(hWnd, nullptr, TRUE);
    }
    if (parent != nullptr) {
        SendMessageA(parent, GXN_ERRORSHOWN, static_cast<WPARAM>(id),
                     static_cast<LPARAM>(LOWORD(reinterpret_cast<UINT_PTR>(hWnd))));
    }
    return Has(method, "@WARN") ? 1 : 0;
}
