#include "tests/support/recorder.h"

namespace fktest {

namespace {
const char* const kClass = "FkRecordingParent";
}

RecordingParent::RecordingParent(int width, int height) {
    WNDCLASSA wc{};
    if (!GetClassInfoA(GetModuleHandleA(nullptr), kClass, &wc)) {
        wc.lpfnWndProc = Proc;
        wc.hInstance = GetModuleHandleA(nullptr);
        wc.hCursor = LoadCursorA(nullptr, IDC_ARROW);
        wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
        wc.lpszClassName = kClass;
        RegisterClassA(&wc);
    }
    hwnd_ = CreateWindowExA(0, kClass, "FieldKit test", WS_OVERLAPPEDWINDOW | WS_VISIBLE | WS_CLIPCHILDREN, 10, 10,
                            width, height, nullptr, nullptr, GetModuleHandleA(nullptr), this);
}

RecordingParent::~RecordingParent() {
    if (hwnd_ && IsWindow(hwnd_)) {
        SetWindowLongPtrA(hwnd_, GWLP_USERDATA, 0);
        DestroyWindow(hwnd_);
    }
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
    if (msg == WM_NCCREATE) {
        auto* cs = reinterpret_cast<CREATESTRUCTA*>(lp);
        SetWindowLongPtrA(h, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(cs->lpCreateParams));
    }
    auto* self = reinterpret_cast<RecordingParent*>(GetWindowLongPtrA(h, GWLP_USERDATA));
    if (self != nullptr) {
        self->messages_.push_back({msg, wp, lp});
        if (self->reply) {
            if (std::optional<LRESULT> r = self->reply(msg, wp, lp)) return *r;
        }
    }
    return DefWindowProcA(h, msg, wp, lp);
}

}  // namespace fktest
