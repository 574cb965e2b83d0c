// What the field tests share: a field on a recording parent with a neighbour to take the focus, keys, modifiers.
#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "include/fldkit.h"
#include "tests/support/recorder.h"
#include "tests/support/window.h"

namespace numtest {

inline std::string Text(HWND h) {
    char buffer[400] = "";
    GetWindowTextA(h, buffer, sizeof buffer);
    return buffer;
}

inline void Type(HWND h, const char* keys) {
    for (const char* k = keys; *k; ++k) SendMessageA(h, WM_CHAR, static_cast<unsigned char>(*k), 1);
}

inline void Key(HWND h, UINT vk) { SendMessageA(h, WM_KEYDOWN, vk, 1); }

class Held {  // holds modifier keys down in this thread's keyboard state
public:
    explicit Held(std::initializer_list<int> keys) {
        GetKeyboardState(saved_);
        BYTE state[256];
        std::memcpy(state, saved_, sizeof state);
        for (int k : keys) state[k] = 0x80;
        SetKeyboardState(state);
    }
    ~Held() { SetKeyboardState(saved_); }
private:
    BYTE saved_[256];
};

inline std::pair<int, int> Sel(HWND h) {
    DWORD start = 0, end = 0;
    SendMessageA(h, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    return {static_cast<int>(start), static_cast<int>(end)};
}

// Keys of WIN.INI's [intl] set for the length of a test, put back after (removed when there were none).
class IntlKeys {
public:
    IntlKeys(std::initializer_list<std::pair<const char*, const char*>> keys) {
        for (auto [key, value] : keys) {
            char old[64];
            GetProfileStringA("intl", key, "\x01", old, sizeof old);
            saved_.push_back({key, old});
            WriteProfileStringA("intl", key, value);
        }
    }
    ~IntlKeys() {
        for (const auto& [key, old] : saved_) WriteProfileStringA("intl", key, old == "\x01" ? nullptr : old.c_str());
    }

private:
    std::vector<std::pair<const char*, std::string>> saved_;
};

class NumberField : public ::testing::Test {
protected:
    explicit NumberField(const char* cls) : cls_(cls) {}
    void SetUp() override {
        other_ = CreateWindowExA(0, "edit", "", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 10, 60, 80, 20, parent_, nullptr,
                                 GetModuleHandleA(nullptr), nullptr);
        Make(0);
    }
    void TearDown() override {
        if (field_) DestroyWindow(field_);
        DestroyWindow(other_);
    }
    void Make(DWORD style, const char* method = nullptr) {
        if (field_) DestroyWindow(field_);
        field_ = CreateWindowExA(0, cls_, "", WS_CHILD | WS_VISIBLE | WS_TABSTOP | style, 10, 10, 240, 24, parent_,
                                 reinterpret_cast<HMENU>(42), GetModuleHandleA(nullptr), nullptr);
        ASSERT_NE(field_, nullptr);
        SetWindowPos(field_, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);  // first in tab order
        if (method) SetMethod(method);
        SetFocus(field_);
        parent_.clear();
    }
    void SetMethod(const char* method) { SendMessageA(field_, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(method)); }
    std::vector<WORD> Codes() const {  // the field's own notices, in order of arrival
        std::vector<WORD> ours;
        for (const auto& m : parent_.Of(WM_COMMAND))
            if (reinterpret_cast<HWND>(m.lp) == field_) ours.push_back(HIWORD(m.wp));
        return ours;
    }
    void Leave() { SetFocus(other_); }

    const char* cls_;
    fktest::RecordingParent parent_;
    HWND other_ = nullptr;
    HWND field_ = nullptr;
};

}  // namespace numtest
