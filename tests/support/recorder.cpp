#include "tests/support/recorder.h"

#include "tests/support/window.h"

namespace fktest {

// Created in the body: the window's first messages are recorded into messages_.
RecordingParent::RecordingParent(int width, int height) {
    hwnd_ = CreateTopLevel("FkRecordingParent", Proc, width, height, WS_CLIPCHILDREN, this);
}

RecordingParent::~RecordingParent() {
    if (hwnd_ && IsWindow(hwnd_)) SetWindowLongPtrA(hwnd_, GWLP_USERDATA, 0), DestroyWindow(hwnd_);
}

std::vector<Msg> RecordingParent::Of(UINT msg) const {
    std::vector<Msg> out;
    for (const Msg& m : messages_)
        if (m.msg == msg) out.push_back(m);
    return out;
}

std::vector<WORD> RecordingParent::CommandCodes() const {
    std::vector<WORD> out;
    for (const Msg& m : Of(WM_COMMAND)) out.push_back(HIWORD(m.wp));
    return out;
}

LRESULT CALLBACK RecordingParent::Proc(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    auto* cs = reinterpret_cast<CREATESTRUCTA*>(lp);
    if (msg == WM_NCCREATE) SetWindowLongPtrA(h, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(cs->lpCreateParams));
    auto* self = reinterpret_cast<RecordingParent*>(GetWindowLongPtrA(h, GWLP_USERDATA));
    if (self != nullptr) {
        self->messages_.push_back({msg, wp, lp});
        if (std::optional<LRESULT> r = self->reply ? self->reply(msg, wp, lp) : std::nullopt) return *r;
    }
    return DefWindowProcA(h, msg, wp, lp);
}

}  // namespace fktest
