#include "tests/support/msgbox_watch.h"

namespace fktest {

namespace {
thread_local MessageBoxWatcher* current = nullptr;
constexpr int kMessageTextId = 0xFFFF;  // the static text of a message box
}  // namespace

MessageBoxWatcher::MessageBoxWatcher(int answer)
    : hook_(SetWindowsHookExA(WH_CBT, Hook, nullptr, GetCurrentThreadId())), answer_(answer), previous_(current) {
    current = this;
}

MessageBoxWatcher::~MessageBoxWatcher() {
    current = previous_;
    if (hook_) UnhookWindowsHookEx(hook_);
}

LRESULT CALLBACK MessageBoxWatcher::Hook(int code, WPARAM wp, LPARAM lp) {
    HWND box = reinterpret_cast<HWND>(wp);
    char cls[32] = "", text[1024] = "", caption[256] = "";
    if (code == HCBT_ACTIVATE && current != nullptr && GetClassNameA(box, cls, sizeof cls) &&
        lstrcmpA(cls, "#32770") == 0 && GetDlgItem(box, kMessageTextId) != nullptr) {
        GetDlgItemTextA(box, kMessageTextId, text, sizeof text);
        GetWindowTextA(box, caption, sizeof caption);
        current->boxes_.push_back({text, caption, GetWindow(box, GW_OWNER)});
        int button = current->answer_;  // the answer, else the first of IDOK, IDCANCEL, IDNO the box has
        for (int fallback : {IDNO, IDCANCEL, IDOK, current->answer_})
            if (GetDlgItem(box, fallback) != nullptr) button = fallback;
        PostMessageA(box, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED),
                     reinterpret_cast<LPARAM>(GetDlgItem(box, button)));
    }
    return CallNextHookEx(nullptr, code, wp, lp);
}

}  // namespace fktest
