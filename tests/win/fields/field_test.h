// What the field tests share: a field of any entry class on a recording parent with a neighbour to take the focus,
// typed characters, keys with modifiers, the selection, WIN.INI's [intl] keys.
#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "include/fldkit.h"
#include "tests/support/pump.h"
#include "tests/support/recorder.h"
#include "tests/support/window.h"

namespace fieldtest {

using Notices = std::vector<WORD>;
using Keys = std::vector<UINT>;
using Span = std::pair<int, int>;
inline const char *const str = "gxString32", *const num = FK_CLASS_NUMERIC, *const real = FK_CLASS_REAL,
                         *const cur = "gxCurrency32", *const date = "gxDate32";

inline std::string Text(HWND h) { return fktest::WindowText(h); }

inline void Type(HWND h, const char* keys) {
    for (const char* k = keys; *k; ++k) SendMessageA(h, WM_CHAR, static_cast<unsigned char>(*k), 1);
}

// Presses the keys in turn; VK_SHIFT or VK_CONTROL in the list holds that key down from there on.
inline void Press(HWND h, const Keys& keys) {
    BYTE state[256] = {};
    for (UINT vk : keys) {
        state[vk] |= vk == VK_SHIFT || vk == VK_CONTROL ? 0x80 : 0;
        SetKeyboardState(state);
        if (!state[vk]) SendMessageA(h, WM_KEYDOWN, vk, 1);
    }
    std::memset(state, 0, sizeof state);
    SetKeyboardState(state);
}

inline Span Sel(HWND h) {
    DWORD start = 0, end = 0;
    SendMessageA(h, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    return {static_cast<int>(start), static_cast<int>(end)};
}

// Keys of WIN.INI's [intl] set for the length of a test, removed after: the tests' Wine prefix sets none.
struct IntlKeys {
    std::vector<std::pair<const char*, const char*>> keys;
    ~IntlKeys() {
        for (auto [key, value] : keys) WriteProfileStringA("intl", key, nullptr);
    }
    IntlKeys(std::initializer_list<std::pair<const char*, const char*>> set) : keys(set) {
        for (auto [key, value] : keys) WriteProfileStringA("intl", key, value);
    }
};

class Field : public ::testing::Test {
protected:
    void SetUp() override {  // the parent handles every error notice: no message box moves the focus
        parent_.reply = [](UINT msg, WPARAM, LPARAM) -> std::optional<LRESULT> {
            return msg == GXN_ERROR ? std::optional<LRESULT>(GXR_HANDLED) : std::nullopt;
        };
    }
    // A fresh focused field, the neighbour next in tab order, with a parent that has heard nothing yet.
    void Make(const char* cls, DWORD style = 0, const char* method = nullptr) {
        field_ = fktest::UniqueWindow(CreateWindowExA(0, cls, "", WS_CHILD | WS_VISIBLE | WS_TABSTOP | style, 10, 10,
                                                      240, 24, parent_, HMENU(42), GetModuleHandleA(nullptr), nullptr));
        if (method) Send(GXM_SETMETHOD, 0, method);
        SetFocus(field_);
        parent_.clear();
    }
    LRESULT Send(UINT msg, WPARAM wp = 0, const void* lp = nullptr) {
        return SendMessageA(field_, msg, wp, reinterpret_cast<LPARAM>(lp));
    }
    Notices Codes() const {  // the field's own notices, in order of arrival
        Notices ours;
        for (const auto& m : parent_.Of(WM_COMMAND))
            if (reinterpret_cast<HWND>(m.lp) == field_) ours.push_back(HIWORD(m.wp));
        return ours;
    }
    int Caret() const { return GetWindowLongA(field_, 16); }

    fktest::RecordingParent parent_;
    fktest::UniqueWindow other_{CreateWindowExA(0, "edit", "", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 10, 60, 80, 20,
                                                parent_, nullptr, GetModuleHandleA(nullptr), nullptr)};
    fktest::UniqueWindow field_;
};

}  // namespace fieldtest
