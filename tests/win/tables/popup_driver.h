// Drives a table popup from a thread timer while twShowTable runs its modal
// loop: finds the popup list by its window name, notes what it shows, then
// posts the scripted input to it. Every wait is bounded: after kGiveUpTicks
// the popup is destroyed, which cancels it.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace fktest {

struct PopupInput {
    enum Kind { Key, DoubleClick } kind;
    int value;  // virtual key, or the item to double-click
};

class PopupDriver {
public:
    PopupDriver(const char* name, std::vector<PopupInput> script) : name_(name), script_(std::move(script)) {
        current_ = this;
        timer_ = SetTimer(nullptr, 0, 20, Tick);
    }
    ~PopupDriver() {
        KillTimer(nullptr, timer_);
        current_ = nullptr;
    }
    PopupDriver(const PopupDriver&) = delete;
    PopupDriver& operator=(const PopupDriver&) = delete;

    bool seen() const { return popup_ != nullptr; }
    HWND popup() const { return popup_; }
    HWND owner() const { return owner_; }
    RECT rect() const { return rect_; }
    const std::vector<std::string>& items() const { return items_; }
    int selectedAtStart() const { return selected_; }

private:
    static constexpr int kGiveUpTicks = 250;  // 5 seconds

    static void CALLBACK Tick(HWND, UINT, UINT_PTR, DWORD) {
        PopupDriver* d = current_;
        if (d == nullptr) return;
        ++d->ticks_;
        HWND list = FindWindowA("ListBox", d->name_.c_str());
        if (list == nullptr || !IsWindowVisible(list)) return;
        if (d->ticks_ > kGiveUpTicks) {
            DestroyWindow(list);
            return;
        }
        if (d->posted_ && list == d->popup_) return;
        d->Capture(list);
        d->Post(list);
    }

    void Capture(HWND list) {
        popup_ = list;
        owner_ = GetWindow(list, GW_OWNER);
        GetWindowRect(list, &rect_);
        selected_ = static_cast<int>(SendMessageA(list, LB_GETCURSEL, 0, 0));
        items_.clear();
        const int n = static_cast<int>(SendMessageA(list, LB_GETCOUNT, 0, 0));
        for (int i = 0; i < n; ++i) {
            char text[512] = "";
            if (SendMessageA(list, LB_GETTEXTLEN, i, 0) < static_cast<LRESULT>(sizeof text)) {
                SendMessageA(list, LB_GETTEXT, i, reinterpret_cast<LPARAM>(text));
            }
            items_.push_back(text);
        }
    }

    void Post(HWND list) {
        posted_ = true;
        for (const PopupInput& in : script_) {
            if (in.kind == PopupInput::Key) {
                PostMessageA(list, WM_KEYDOWN, static_cast<WPARAM>(in.value), 1);
            } else {
                RECT r{};
                SendMessageA(list, LB_GETITEMRECT, static_cast<WPARAM>(in.value), reinterpret_cast<LPARAM>(&r));
                PostMessageA(list, WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(r.left + 2, r.top + 2));
            }
        }
    }

    static inline PopupDriver* current_ = nullptr;
    std::string name_;
    std::vector<PopupInput> script_;
    UINT_PTR timer_ = 0;
    int ticks_ = 0;
    bool posted_ = false;
    HWND popup_ = nullptr;
    HWND owner_ = nullptr;
    RECT rect_{};
    int selected_ = -1;
    std::vector<std::string> items_;
};

// Writes a table file into the temporary folder and returns its path.
inline std::string WriteTable(const char* fileName, const std::string& text) {
    char dir[MAX_PATH];
    GetTempPathA(MAX_PATH, dir);
    std::string path = std::string(dir) + fileName;
    HANDLE f = CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (f != INVALID_HANDLE_VALUE) {
        DWORD written = 0;
        WriteFile(f, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
        CloseHandle(f);
    }
    return path;
}

}  // namespace fktest
