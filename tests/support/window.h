// Windows for tests: a top-level parent and RAII ownership of windows.
#pragma once

#include <windows.h>

#include <string>

namespace fktest {

// Destroys its window when it goes out of scope.
class UniqueWindow {
public:
    UniqueWindow() = default;
    explicit UniqueWindow(HWND h) : h_(h) {}
    ~UniqueWindow() { reset(); }
    UniqueWindow(UniqueWindow&& o) noexcept : h_(o.h_) { o.h_ = nullptr; }
    UniqueWindow& operator=(UniqueWindow&& o) noexcept {
        if (this != &o) reset(), h_ = o.h_, o.h_ = nullptr;
        return *this;
    }
    void reset() {
        if (h_ && IsWindow(h_)) DestroyWindow(h_);
        h_ = nullptr;
    }
    HWND get() const { return h_; }
    operator HWND() const { return h_; }

private:
    HWND h_ = nullptr;
};

// A visible top-level window of class cls (registered with proc on first use), given param at creation.
HWND CreateTopLevel(const char* cls, WNDPROC proc, int width, int height, DWORD style = 0, void* param = nullptr);

// A visible top-level window to hold controls (DefWindowProcA unless a procedure is given).
UniqueWindow MakeParent(WNDPROC proc = nullptr, int width = 400, int height = 300);

// A child control of the given class.
UniqueWindow MakeChild(HWND parent, const char* cls, DWORD style = 0, int id = 100, int width = 120,
                       int height = 24, const char* text = "");

// Dispatches pending messages of this thread.
void PumpMessages();

// The CF_TEXT the clipboard holds ("" when none).
std::string ClipboardText();

}  // namespace fktest
