// A top-level parent that records what it receives: controls are its children, tests compare what it saw.
#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <vector>

namespace fktest {

struct Msg { UINT msg; WPARAM wp; LPARAM lp; };

class RecordingParent {
public:
    explicit RecordingParent(int width = 400, int height = 300);
    ~RecordingParent();
    RecordingParent(const RecordingParent&) = delete;
    RecordingParent& operator=(const RecordingParent&) = delete;

    HWND hwnd() const { return hwnd_; }
    operator HWND() const { return hwnd_; }

    // Messages received so far (all of them; use Of() to pick some).
    const std::vector<Msg>& messages() const { return messages_; }
    std::vector<Msg> Of(UINT msg) const;
    // WM_COMMAND notification codes (HIWORD(wParam)) in order of arrival.
    std::vector<WORD> CommandCodes() const;
    void clear() { messages_.clear(); }

    // Answers a message instead of DefWindowProcA when it returns a value.
    std::function<std::optional<LRESULT>(UINT, WPARAM, LPARAM)> reply;

private:
    static LRESULT CALLBACK Proc(HWND h, UINT msg, WPARAM wp, LPARAM lp);
    HWND hwnd_ = nullptr;
    std::vector<Msg> messages_;
};

}  // namespace fktest
