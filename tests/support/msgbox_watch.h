// Answers modal message boxes shown on this thread and records them, so that no test waits for a user.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace fktest {

struct ShownBox {
    std::string text;
    std::string caption;
    HWND owner;
};

class MessageBoxWatcher {
public:
    // answer: the button to press; when the box has no such button, the first of IDOK, IDCANCEL, IDNO it has.
    explicit MessageBoxWatcher(int answer = IDOK);
    ~MessageBoxWatcher();
    MessageBoxWatcher(const MessageBoxWatcher&) = delete;
    MessageBoxWatcher& operator=(const MessageBoxWatcher&) = delete;
    const std::vector<ShownBox>& boxes() const { return boxes_; }
    void clear() { boxes_.clear(); }

private:
    static LRESULT CALLBACK Hook(int code, WPARAM wp, LPARAM lp);
    HHOOK hook_;
    int answer_;
    MessageBoxWatcher* previous_;
    std::vector<ShownBox> boxes_;
};

}  // namespace fktest
