// What a screen reader learns of a control: each class answers WM_GETOBJECT
// for OBJID_CLIENT with an accessible object of its own, described by an
// AccessClass (role, name, value, description, states, children, default
// action), and raises WinEvents when what it shows changes.
//
// The object is kept in a process-wide table from the first WM_GETOBJECT
// until WM_DESTROY; afterwards it answers every call with
// RPC_E_DISCONNECTED. Location, parent and navigation between windows come
// from oleacc's standard object of the window.
#pragma once

#include <windows.h>

#include <string>

namespace fk {

// The children of a control that are not windows of their own (a list's
// rows, the colour control's components), or, where window() answers, that
// are. Children are numbered from 1.
struct AccessChildren {
    LONG (*count)(HWND h);
    LONG (*role)(HWND h, LONG child);
    std::string (*name)(HWND h, LONG child);
    std::string (*value)(HWND h, LONG child) = nullptr;
    LONG (*state)(HWND h, LONG child) = nullptr;
    // Screen rectangle; false: none.
    bool (*location)(HWND h, LONG child, RECT& screen) = nullptr;
    // A child that is a window of its own (its object is handed out); null
    // window or function: a simple element.
    HWND (*window)(HWND h, LONG child) = nullptr;
    // The child with the keyboard focus while the control has it, and the
    // selected one; 0: none.
    LONG (*focused)(HWND h) = nullptr;
    LONG (*selected)(HWND h) = nullptr;
    // The child under a client point; 0: none.
    LONG (*at)(HWND h, POINT client) = nullptr;
    // accSelect's SELFLAG_TAKESELECTION / SELFLAG_TAKEFOCUS.
    bool (*select)(HWND h, LONG child, LONG flags) = nullptr;
    // put_accValue on a child; false: refused.
    bool (*putValue)(HWND h, LONG child, const char* text) = nullptr;
    const char* defaultAction = nullptr;
    bool (*doDefault)(HWND h, LONG child) = nullptr;
};

// What a class tells. owner is what the class passed to AnswerGetObject
// (the entry fields' FieldClass); texts are the system's ANSI code page.
struct AccessClass {
    LONG role;
    // The name; null: the label before the control (LabelBefore).
    std::string (*name)(HWND h, const void* owner) = nullptr;
    // The value; null: none.
    std::string (*value)(HWND h, const void* owner) = nullptr;
    std::string (*description)(HWND h, const void* owner) = nullptr;
    // The help text; null: none.
    std::string (*help)(HWND h, const void* owner) = nullptr;
    // States beyond those every window has (unavailable, invisible,
    // focusable, focused).
    LONG (*state)(HWND h) = nullptr;
    // The key that goes to the control with Alt (0: none); null: the
    // label's, when the control is named by its label.
    char (*shortcut)(HWND h) = nullptr;
    // Takes the focus (false: only when the application made it a tab stop).
    bool focusable = true;
    // put_accValue; null: refused.
    bool (*putValue)(HWND h, const char* text) = nullptr;
    const char* defaultAction = nullptr;
    bool (*doDefault)(HWND h) = nullptr;
    // Whether the default action is there for this control (null: always).
    bool (*hasDefault)(HWND h) = nullptr;
    const AccessChildren* children = nullptr;
};

// WM_GETOBJECT: for OBJID_CLIENT the control's object (made on the first
// call); any other object id gets 0, so the system's own answers it.
LRESULT AnswerGetObject(HWND h, WPARAM wp, LPARAM lp, const AccessClass& cls, const void* owner = nullptr);
// WM_DESTROY: the object lets go of the window; later calls on it answer
// RPC_E_DISCONNECTED.
void ForgetAccessible(HWND h);


// The label a dialog gives a control: the nearest visible sibling before
// it, when that is static text (a "static" text control or gxText3D32),
// with its first "&" taken out; frames and lines between are passed over,
// any other control ends the search. Empty when there is none.
std::string LabelBefore(HWND h);
// The character after the label's "&" (0: none), and after the first
// single "&" of a text.
char LabelMnemonic(HWND h);
char MnemonicIn(const std::string& text);

// The window text (at most 1023 characters).
std::string WindowTextOf(HWND h);

// NotifyWinEvent for the control's client object.
void RaiseEvent(HWND h, DWORD event, LONG child = CHILDID_SELF);

// EVENT_OBJECT_VALUECHANGE for a change already made (an edit part's
// EN_CHANGE), unless a watch of h is under way: that one tells.
void RaiseValueChangeUnlessWatched(HWND h);

// Raises EVENT_OBJECT_VALUECHANGE once when what read() answers for h
// differs after a message from what it answered before. Nested watches of
// the same window (a message that sends itself another) leave it to the
// outermost one.
class ValueWatch {
public:
    using Reader = std::string (*)(HWND h, const void* owner);
    ValueWatch(HWND h, bool watched, Reader read, const void* owner = nullptr);
    ~ValueWatch();
    ValueWatch(const ValueWatch&) = delete;
    ValueWatch& operator=(const ValueWatch&) = delete;

private:
    HWND h_ = nullptr;  // null: not watching
    Reader read_ = nullptr;
    const void* owner_ = nullptr;
    std::string before_;
};

}  // namespace fk

// How many accessible objects are alive: those of live windows that a reader
// asked for, and those readers still hold. Exported for the tests and the
// soak run, which check that nothing keeps one once its window and its
// readers are gone; not in the public header.
extern "C" int WINAPI twCountAccessibleObjects(void);
