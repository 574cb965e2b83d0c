// A parent that records and answers GXN_ERROR, with a plain child window as
// the control (the entry fields are not needed to drive the engine).
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <string.h>

#include <optional>
#include <string>
#include <vector>

#include "include/fldkit.h"
#include "tests/support/msgbox_watch.h"
#include "tests/support/recorder.h"
#include "tests/support/window.h"

namespace fktest {

// What the parent read from the FieldErrorNotice while it was being sent.
struct Notice {
    WPARAM wParam;
    HWND hWnd;
    LONG id, type, error;
    std::string method, message, caption;
    SIZE_T blockSize;
    bool restZero;
};

// A child window that keeps its text with DefWindowProcA and records the
// messages it gets.
class RecordingField {
public:
    RecordingField(HWND parent, const char* text = "", int id = 42) {
        WNDCLASSA wc{};
        if (!GetClassInfoA(GetModuleHandleA(nullptr), "FkTestField", &wc)) {
            wc.lpfnWndProc = Proc;
            wc.hInstance = GetModuleHandleA(nullptr);
            wc.lpszClassName = "FkTestField";
            RegisterClassA(&wc);
        }
        h_ = CreateWindowExA(0, "FkTestField", text, (parent ? WS_CHILD : WS_POPUP) | WS_VISIBLE, 20, 30, 100, 24,
                             parent, parent ? reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)) : nullptr,
                             GetModuleHandleA(nullptr), nullptr);
        messages().clear();
    }
    ~RecordingField() {
        if (IsWindow(h_)) DestroyWindow(h_);
    }
    operator HWND() const { return h_; }
    HWND get() const { return h_; }
    static std::vector<Msg>& messages() {
        static std::vector<Msg> all;
        return all;
    }
    static bool Got(UINT msg, WPARAM wp, LPARAM lp) {
        for (const Msg& m : messages())
            if (m.msg == msg && m.wp == wp && m.lp == lp) return true;
        return false;
    }

private:
    static LRESULT CALLBACK Proc(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
        messages().push_back({msg, wp, lp});
        return DefWindowProcA(h, msg, wp, lp);
    }
    HWND h_;
};

class ErrorFixture : public ::testing::Test {
protected:
    void SetUp() override {
        parent.reply = [this](UINT msg, WPARAM wp, LPARAM lp) -> std::optional<LRESULT> {
            if (msg != GXN_ERROR) return std::nullopt;
            const auto* n = reinterpret_cast<const FieldErrorNotice*>(lp);
            Notice seen{wp, n->hWnd, n->nId, n->nType, n->nError, n->lpMethod ? n->lpMethod : "<null>",
                        n->lpMessage ? n->lpMessage : "<null>", n->lpCaption ? n->lpCaption : "<null>", 0, true};
            HGLOBAL block = GlobalHandle(n);
            seen.blockSize = block ? GlobalSize(block) : 0;
            for (BYTE b : n->reserved) seen.restZero = seen.restZero && b == 0;
            notices.push_back(seen);
            return answer;
        };
    }
    RecordingParent parent;
    std::vector<Notice> notices;
    LRESULT answer = GXR_HANDLED;  // handled, value refused: no box
};

}  // namespace fktest
