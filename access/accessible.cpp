#include "access/accessible.h"

#include <oleacc.h>

#include <algorithm>
#include <new>
#include <vector>

#include "access/classes.h"
#include "access/com_ref.h"

// The interface is named by __uuidof(IAccessible), never IID_IAccessible:
// the x86-64 mingw-w64 import library of oleacc binds that name to an
// import thunk (oleacc.dll exports it as data), so a 64-bit build would
// hand out the thunk's bytes as the interface id.

namespace fk {

namespace {

// ---- texts ----

BSTR ToBstr(const std::string& s) {
    if (s.empty()) return SysAllocString(L"");
    const int n = MultiByteToWideChar(CP_ACP, 0, s.data(), static_cast<int>(s.size()), nullptr, 0);
    BSTR out = SysAllocStringLen(nullptr, static_cast<UINT>(n));
    if (out != nullptr) MultiByteToWideChar(CP_ACP, 0, s.data(), static_cast<int>(s.size()), out, n);
    return out;
}

std::string FromBstr(BSTR s) {
    if (s == nullptr) return {};
    const int len = static_cast<int>(SysStringLen(s));
    const int n = WideCharToMultiByte(CP_ACP, 0, s, len, nullptr, 0, nullptr, nullptr);
    std::string out(static_cast<size_t>(n), '\0');
    WideCharToMultiByte(CP_ACP, 0, s, len, out.data(), n, nullptr, nullptr);
    return out;
}

// S_OK with the text, S_FALSE for an empty one (a null BSTR), as oleacc's
// own objects answer.
HRESULT AnswerText(const std::string& s, BSTR* out) {
    if (s.empty()) return S_FALSE;
    *out = ToBstr(s);
    return *out ? S_OK : E_OUTOFMEMORY;
}

std::string ClassOf(HWND h) {
    char name[64] = "";
    GetClassNameA(h, name, sizeof name);
    return name;
}

bool IsStaticText(HWND h) {
    const std::string cls = ClassOf(h);
    if (lstrcmpiA(cls.c_str(), "gxText3D32") == 0) return true;
    if (lstrcmpiA(cls.c_str(), "static") != 0) return false;
    const LONG kind = GetWindowLongA(h, GWL_STYLE) & SS_TYPEMASK;
    return kind == SS_LEFT || kind == SS_CENTER || kind == SS_RIGHT || kind == SS_SIMPLE || kind == SS_LEFTNOWORDWRAP;
}

bool IsDecoration(HWND h) {
    const std::string cls = ClassOf(h);
    if (lstrcmpiA(cls.c_str(), "gxLine32") == 0 || lstrcmpiA(cls.c_str(), "gxFrame3D32") == 0) return true;
    if (lstrcmpiA(cls.c_str(), "static") == 0) return !IsStaticText(h);  // rectangles, frames, pictures
    if (lstrcmpiA(cls.c_str(), "button") == 0) return (GetWindowLongA(h, GWL_STYLE) & BS_TYPEMASK) == BS_GROUPBOX;
    return false;
}

HWND LabelWindow(HWND h) {
    for (HWND w = GetWindow(h, GW_HWNDPREV); w != nullptr; w = GetWindow(w, GW_HWNDPREV)) {
        if ((GetWindowLongA(w, GWL_STYLE) & WS_VISIBLE) == 0) continue;
        if (IsStaticText(w)) return w;
        if (!IsDecoration(w)) return nullptr;
    }
    return nullptr;
}

// ---- the objects ----

LONG ChildIdOf(const VARIANT& v) { return v.vt == VT_I4 ? v.lVal : v.vt == VT_EMPTY ? CHILDID_SELF : -1; }

void SetI4(VARIANT* v, LONG value) {
    VariantInit(v);
    v->vt = VT_I4;
    v->lVal = value;
}

bool ClientOnScreen(HWND h, RECT& r) {
    if (!GetClientRect(h, &r)) return false;
    MapWindowPoints(h, nullptr, reinterpret_cast<POINT*>(&r), 2);
    return true;
}

// Objects alive, whoever holds them (the table, readers, COM's stubs).
LONG g_alive = 0;

class ControlAccessible final : public IAccessible {
public:
    ControlAccessible(HWND h, const AccessClass& cls, const void* owner) : h_(h), cls_(cls), owner_(owner) {
        CreateStdAccessibleObject(h, OBJID_CLIENT, __uuidof(IAccessible), standard_.putVoid());
        ++g_alive;
    }

    bool describedBy(const AccessClass& cls) const { return &cls_ == &cls; }

    // The window goes: nothing is asked of it any more.
    void disconnect() {
        h_ = nullptr;
        standard_.reset();
    }

    // IUnknown
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        if (out == nullptr) return E_POINTER;
        if (iid == IID_IUnknown || iid == IID_IDispatch || iid == __uuidof(IAccessible)) {
            *out = static_cast<IAccessible*>(this);
            AddRef();
            return S_OK;
        }
        *out = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(InterlockedIncrement(&refs_)); }
    ULONG STDMETHODCALLTYPE Release() override {
        const LONG left = InterlockedDecrement(&refs_);
        if (left == 0) delete this;
        return static_cast<ULONG>(left);
    }

    // IDispatch: no type information; clients call the vtable.
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        if (count == nullptr) return E_POINTER;
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** info) override {
        if (info) *info = nullptr;
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
        return E_NOTIMPL;
    }

    // IAccessible
    HRESULT STDMETHODCALLTYPE get_accParent(IDispatch** out) override {
        if (out == nullptr) return E_POINTER;
        *out = nullptr;
        if (!alive()) return RPC_E_DISCONNECTED;
        return AccessibleObjectFromWindow(h_, static_cast<DWORD>(OBJID_WINDOW), IID_IDispatch, reinterpret_cast<void**>(out));
    }

    HRESULT STDMETHODCALLTYPE get_accChildCount(LONG* out) override {
        if (out == nullptr) return E_POINTER;
        *out = 0;
        if (!alive()) return RPC_E_DISCONNECTED;
        if (cls_.children != nullptr) {
            *out = std::max<LONG>(cls_.children->count(h_), 0);
            return S_OK;
        }
        LONG n = 0;
        for (HWND c = GetWindow(h_, GW_CHILD); c != nullptr; c = GetWindow(c, GW_HWNDNEXT)) ++n;
        *out = n;
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE get_accChild(VARIANT child, IDispatch** out) override {
        if (out == nullptr) return E_POINTER;
        *out = nullptr;
        if (!alive()) return RPC_E_DISCONNECTED;
        const LONG id = ChildIdOf(child);
        if (id == CHILDID_SELF) return E_INVALIDARG;
        if (!validChild(id)) return E_INVALIDARG;
        HWND w = childWindow(id);
        if (w == nullptr) return S_FALSE;  // a simple element: asked of its parent
        return AccessibleObjectFromWindow(w, static_cast<DWORD>(OBJID_WINDOW), IID_IDispatch, reinterpret_cast<void**>(out));
    }

    HRESULT STDMETHODCALLTYPE get_accName(VARIANT child, BSTR* out) override {
        return text(child, out, [](ControlAccessible& self, LONG id) {
            if (id != CHILDID_SELF) return self.cls_.children->name(self.h_, id);
            if (std::string given = GivenName(self.h_); !given.empty()) return given;
            return self.cls_.name ? self.cls_.name(self.h_, self.owner_) : LabelBefore(self.h_);
        });
    }

    HRESULT STDMETHODCALLTYPE get_accValue(VARIANT child, BSTR* out) override {
        return text(child, out, [](ControlAccessible& self, LONG id) {
            if (id != CHILDID_SELF) {
                const auto read = self.cls_.children->value;
                return read ? read(self.h_, id) : std::string();
            }
            return self.cls_.value ? self.cls_.value(self.h_, self.owner_) : std::string();
        });
    }

    HRESULT STDMETHODCALLTYPE get_accDescription(VARIANT child, BSTR* out) override {
        return text(child, out, [](ControlAccessible& self, LONG id) {
            if (id != CHILDID_SELF || self.cls_.description == nullptr) return std::string();
            return self.cls_.description(self.h_, self.owner_);
        });
    }

    HRESULT STDMETHODCALLTYPE get_accRole(VARIANT child, VARIANT* out) override {
        if (out == nullptr) return E_POINTER;
        VariantInit(out);
        if (!alive()) return RPC_E_DISCONNECTED;
        const LONG id = ChildIdOf(child);
        if (!validChild(id)) return E_INVALIDARG;
        SetI4(out, id == CHILDID_SELF ? cls_.role : cls_.children->role(h_, id));
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE get_accState(VARIANT child, VARIANT* out) override {
        if (out == nullptr) return E_POINTER;
        VariantInit(out);
        if (!alive()) return RPC_E_DISCONNECTED;
        const LONG id = ChildIdOf(child);
        if (!validChild(id)) return E_INVALIDARG;
        SetI4(out, id == CHILDID_SELF ? selfState() : childState(id));
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE get_accHelp(VARIANT child, BSTR* out) override {
        return text(child, out, [](ControlAccessible& self, LONG id) {
            if (id != CHILDID_SELF || self.cls_.help == nullptr) return std::string();
            return self.cls_.help(self.h_, self.owner_);
        });
    }

    HRESULT STDMETHODCALLTYPE get_accHelpTopic(BSTR* file, VARIANT child, LONG* topic) override {
        if (file) *file = nullptr;
        if (topic) *topic = -1;
        if (!alive()) return RPC_E_DISCONNECTED;
        return validChild(ChildIdOf(child)) ? S_FALSE : E_INVALIDARG;
    }

    HRESULT STDMETHODCALLTYPE get_accKeyboardShortcut(VARIANT child, BSTR* out) override {
        return text(child, out, [](ControlAccessible& self, LONG id) {
            char key = 0;
            if (id == CHILDID_SELF && self.cls_.shortcut) key = self.cls_.shortcut(self.h_);
            else if (id == CHILDID_SELF && self.cls_.name == nullptr) key = LabelMnemonic(self.h_);
            return key ? std::string("Alt+") + key : std::string();
        });
    }

    HRESULT STDMETHODCALLTYPE get_accFocus(VARIANT* out) override {
        if (out == nullptr) return E_POINTER;
        VariantInit(out);
        if (!alive()) return RPC_E_DISCONNECTED;
        HWND focus = GetFocus();
        if (focus != h_) {
            if (focus == nullptr || !IsChild(h_, focus)) return S_FALSE;
            out->vt = VT_DISPATCH;
            return AccessibleObjectFromWindow(focus, static_cast<DWORD>(OBJID_WINDOW), IID_IDispatch,
                                              reinterpret_cast<void**>(&out->pdispVal));
        }
        const LONG child = cls_.children && cls_.children->focused ? cls_.children->focused(h_) : 0;
        SetI4(out, child > 0 ? child : CHILDID_SELF);
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE get_accSelection(VARIANT* out) override {
        if (out == nullptr) return E_POINTER;
        VariantInit(out);
        if (!alive()) return RPC_E_DISCONNECTED;
        const LONG child = cls_.children && cls_.children->selected ? cls_.children->selected(h_) : 0;
        if (child <= 0) return S_FALSE;
        SetI4(out, child);
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE get_accDefaultAction(VARIANT child, BSTR* out) override {
        return text(child, out, [](ControlAccessible& self, LONG id) {
            if (id == CHILDID_SELF && self.cls_.hasDefault && !self.cls_.hasDefault(self.h_)) return std::string();
            const char* action = id == CHILDID_SELF ? self.cls_.defaultAction : self.cls_.children->defaultAction;
            return std::string(action ? action : "");
        });
    }

    HRESULT STDMETHODCALLTYPE accSelect(LONG flags, VARIANT child) override {
        if (!alive()) return RPC_E_DISCONNECTED;
        const LONG id = ChildIdOf(child);
        if (!validChild(id)) return E_INVALIDARG;
        if (id == CHILDID_SELF) {
            if (flags != SELFLAG_TAKEFOCUS || !cls_.focusable) return E_NOTIMPL;
            SetFocus(h_);
            return S_OK;
        }
        if (cls_.children->select == nullptr) return E_NOTIMPL;
        return cls_.children->select(h_, id, flags) ? S_OK : E_INVALIDARG;
    }

    HRESULT STDMETHODCALLTYPE accLocation(LONG* x, LONG* y, LONG* cx, LONG* cy, VARIANT child) override {
        if (x == nullptr || y == nullptr || cx == nullptr || cy == nullptr) return E_POINTER;
        *x = *y = *cx = *cy = 0;
        if (!alive()) return RPC_E_DISCONNECTED;
        const LONG id = ChildIdOf(child);
        if (!validChild(id)) return E_INVALIDARG;
        RECT r{};
        bool found = false;
        if (id == CHILDID_SELF) {
            found = ClientOnScreen(h_, r);
        } else if (HWND w = childWindow(id)) {
            found = GetWindowRect(w, &r) != FALSE;
        } else if (cls_.children->location) {
            found = cls_.children->location(h_, id, r);
        }
        if (!found) return S_FALSE;
        *x = r.left, *y = r.top, *cx = r.right - r.left, *cy = r.bottom - r.top;
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE accNavigate(LONG dir, VARIANT start, VARIANT* out) override {
        if (out == nullptr) return E_POINTER;
        VariantInit(out);
        if (!alive()) return RPC_E_DISCONNECTED;
        const LONG id = ChildIdOf(start);
        if (!validChild(id)) return E_INVALIDARG;
        LONG count = 0;
        get_accChildCount(&count);
        LONG to = 0;
        if (id == CHILDID_SELF) {
            if (dir == NAVDIR_FIRSTCHILD) to = count > 0 ? 1 : 0;
            else if (dir == NAVDIR_LASTCHILD) to = count;
            else if (standard_) return standard_->accNavigate(dir, start, out);
            else return S_FALSE;
        } else if (dir == NAVDIR_NEXT || dir == NAVDIR_DOWN || dir == NAVDIR_RIGHT) {
            to = id < count ? id + 1 : 0;
        } else if (dir == NAVDIR_PREVIOUS || dir == NAVDIR_UP || dir == NAVDIR_LEFT) {
            to = id > 1 ? id - 1 : 0;
        } else {
            return E_INVALIDARG;  // first and last child of a child: there is none
        }
        if (to <= 0) return S_FALSE;
        if (cls_.children == nullptr) {
            // Window children: their objects.
            HWND w = GetWindow(h_, GW_CHILD);
            for (LONG i = 1; w != nullptr && i < to; ++i) w = GetWindow(w, GW_HWNDNEXT);
            if (w == nullptr) return S_FALSE;
            out->vt = VT_DISPATCH;
            return AccessibleObjectFromWindow(w, static_cast<DWORD>(OBJID_WINDOW), IID_IDispatch,
                                              reinterpret_cast<void**>(&out->pdispVal));
        }
        if (HWND w = childWindow(to)) {
            out->vt = VT_DISPATCH;
            return AccessibleObjectFromWindow(w, static_cast<DWORD>(OBJID_WINDOW), IID_IDispatch,
                                              reinterpret_cast<void**>(&out->pdispVal));
        }
        SetI4(out, to);
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE accHitTest(LONG x, LONG y, VARIANT* out) override {
        if (out == nullptr) return E_POINTER;
        VariantInit(out);
        if (!alive()) return RPC_E_DISCONNECTED;
        RECT r{};
        const POINT screen{x, y};
        if (!ClientOnScreen(h_, r) || !PtInRect(&r, screen)) return S_FALSE;
        POINT client = screen;
        ScreenToClient(h_, &client);
        if (cls_.children != nullptr) {
            const LONG count = cls_.children->count(h_);
            for (LONG i = 1; i <= count; ++i) {
                RECT c{};
                HWND w = childWindow(i);
                const bool has = w ? GetWindowRect(w, &c) != FALSE
                                   : cls_.children->location && cls_.children->location(h_, i, c);
                if (!has || !PtInRect(&c, screen)) continue;
                if (w != nullptr) {
                    out->vt = VT_DISPATCH;
                    return AccessibleObjectFromWindow(w, static_cast<DWORD>(OBJID_WINDOW), IID_IDispatch,
                                                      reinterpret_cast<void**>(&out->pdispVal));
                }
                SetI4(out, i);
                return S_OK;
            }
        } else if (HWND w = ChildWindowFromPointEx(h_, client, CWP_SKIPINVISIBLE); w != nullptr && w != h_) {
            out->vt = VT_DISPATCH;
            return AccessibleObjectFromWindow(w, static_cast<DWORD>(OBJID_WINDOW), IID_IDispatch,
                                              reinterpret_cast<void**>(&out->pdispVal));
        }
        SetI4(out, CHILDID_SELF);
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE accDoDefaultAction(VARIANT child) override {
        if (!alive()) return RPC_E_DISCONNECTED;
        const LONG id = ChildIdOf(child);
        if (!validChild(id)) return E_INVALIDARG;
        if (id == CHILDID_SELF) {
            if (cls_.doDefault == nullptr || (cls_.hasDefault && !cls_.hasDefault(h_))) return DISP_E_MEMBERNOTFOUND;
            return cls_.doDefault(h_) ? S_OK : E_FAIL;
        }
        if (cls_.children->doDefault == nullptr) return DISP_E_MEMBERNOTFOUND;
        return cls_.children->doDefault(h_, id) ? S_OK : E_FAIL;
    }

    HRESULT STDMETHODCALLTYPE put_accName(VARIANT, BSTR) override { return alive() ? E_NOTIMPL : RPC_E_DISCONNECTED; }

    HRESULT STDMETHODCALLTYPE put_accValue(VARIANT child, BSTR value) override {
        if (!alive()) return RPC_E_DISCONNECTED;
        const LONG id = ChildIdOf(child);
        if (!validChild(id)) return E_INVALIDARG;
        const std::string text = FromBstr(value);
        if (id == CHILDID_SELF) {
            if (cls_.putValue == nullptr) return E_NOTIMPL;
            return cls_.putValue(h_, text.c_str()) ? S_OK : E_INVALIDARG;
        }
        if (cls_.children->putValue == nullptr) return E_NOTIMPL;
        return cls_.children->putValue(h_, id, text.c_str()) ? S_OK : E_INVALIDARG;
    }

private:
    ~ControlAccessible() { --g_alive; }

    bool alive() const { return h_ != nullptr && IsWindow(h_); }

    bool validChild(LONG id) const {
        if (id == CHILDID_SELF) return true;
        return id > 0 && cls_.children != nullptr && id <= cls_.children->count(h_);
    }

    HWND childWindow(LONG id) const {
        return cls_.children && cls_.children->window ? cls_.children->window(h_, id) : nullptr;
    }

    LONG selfState() const {
        const LONG style = GetWindowLongA(h_, GWL_STYLE);
        LONG state = 0;
        if (style & WS_DISABLED) state |= STATE_SYSTEM_UNAVAILABLE;
        if (!IsWindowVisible(h_)) state |= STATE_SYSTEM_INVISIBLE;
        if ((cls_.focusable || (style & WS_TABSTOP)) && (style & WS_DISABLED) == 0) state |= STATE_SYSTEM_FOCUSABLE;
        if (GetFocus() == h_) state |= STATE_SYSTEM_FOCUSED;
        if (cls_.state) state |= cls_.state(h_);
        return state;
    }

    LONG childState(LONG id) const {
        LONG state = cls_.children->state ? cls_.children->state(h_, id) : 0;
        if (GetWindowLongA(h_, GWL_STYLE) & WS_DISABLED) state |= STATE_SYSTEM_UNAVAILABLE;
        return state;
    }

    template <typename Read>
    HRESULT text(const VARIANT& child, BSTR* out, Read read) {
        if (out == nullptr) return E_POINTER;
        *out = nullptr;
        if (!alive()) return RPC_E_DISCONNECTED;
        const LONG id = ChildIdOf(child);
        if (!validChild(id)) return E_INVALIDARG;
        return AnswerText(read(*this, id), out);
    }

    LONG refs_ = 1;
    HWND h_;
    const AccessClass& cls_;
    const void* owner_;
    ComRef<IAccessible> standard_;
};

// COM on the control's thread: an assistive client's request is answered
// with a marshalled reference, which needs an apartment. A thread without
// one gets a single-threaded apartment on the first request and keeps it
// (objects handed out live on it); one that has its own is left as it is.
bool EnsureApartment() {
    static thread_local bool entered = false;
    if (entered) return true;
    const HRESULT hr = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    if (hr == S_OK) {
        entered = true;
        return true;
    }
    if (hr == S_FALSE) {
        CoUninitialize();  // already in one: our count is given back
        return true;
    }
    return hr == RPC_E_CHANGED_MODE;  // a multithreaded apartment serves as well
}

// The watches under way, innermost last; a library for one interface thread.
std::vector<HWND> g_watching;

// The objects handed out, one per window that was asked for one; an entry
// goes when its window is destroyed (or, made while the window was being
// destroyed, at the next request after it is gone).
struct Handed {
    HWND window;
    ComRef<ControlAccessible> object;
};
std::vector<Handed> g_handed;

// The window goes: its object lets go of it, remote readers are cut off,
// and the table's reference is given back.
void Drop(std::vector<Handed>::iterator at) {
    ComRef<ControlAccessible> object = std::move(at->object);
    g_handed.erase(at);
    object->disconnect();
    CoDisconnectObject(static_cast<IAccessible*>(object.get()), 0);
}

void DropGone() {
    for (auto at = g_handed.begin(); at != g_handed.end();) {
        if (IsWindow(at->window)) {
            ++at;
        } else {
            const auto offset = at - g_handed.begin();
            Drop(at);
            at = g_handed.begin() + offset;
        }
    }
}

}  // namespace

LRESULT AnswerGetObject(HWND h, WPARAM wp, LPARAM lp, const AccessClass& cls, const void* owner) {
    if (static_cast<LONG>(lp) != OBJID_CLIENT) return 0;
    if (!EnsureApartment()) return 0;
    DropGone();
    auto at = std::find_if(g_handed.begin(), g_handed.end(), [h](const Handed& e) { return e.window == h; });
    if (at != g_handed.end() && !at->object->describedBy(cls)) {
        Drop(at);
        at = g_handed.end();
    }
    ControlAccessible* object = nullptr;
    if (at != g_handed.end()) {
        object = at->object.get();
    } else {
        ComRef<ControlAccessible> made(new (std::nothrow) ControlAccessible(h, cls, owner));
        if (!made) return 0;
        object = made.get();
        g_handed.push_back({h, std::move(made)});
    }
    const LRESULT r = LresultFromObject(__uuidof(IAccessible), wp, static_cast<IAccessible*>(object));
    return FAILED(r) ? 0 : r;
}

void ForgetAccessible(HWND h) {
    auto at = std::find_if(g_handed.begin(), g_handed.end(), [h](const Handed& e) { return e.window == h; });
    if (at != g_handed.end()) Drop(at);
}

}  // namespace fk

extern "C" int WINAPI twCountAccessibleObjects() { return static_cast<int>(fk::g_alive); }

namespace fk {

std::string WindowTextOf(HWND h) {
    char text[1024] = "";
    GetWindowTextA(h, text, sizeof text);
    return text;
}

std::string LabelBefore(HWND h) {
    HWND label = LabelWindow(h);
    if (label == nullptr) return {};
    std::string text = WindowTextOf(label);
    std::string out;
    bool taken = false;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '&' && !taken) {
            taken = true;
            if (i + 1 < text.size() && text[i + 1] == '&') out += '&', ++i;
            continue;
        }
        out += text[i];
    }
    return out;
}

char LabelMnemonic(HWND h) {
    HWND label = LabelWindow(h);
    return label != nullptr ? MnemonicIn(WindowTextOf(label)) : 0;
}

char MnemonicIn(const std::string& text) {
    for (size_t i = 0; i + 1 < text.size(); ++i) {
        if (text[i] != '&') continue;
        if (text[i + 1] == '&') {
            ++i;
            continue;
        }
        return text[i + 1];
    }
    return 0;
}

void RaiseEvent(HWND h, DWORD event, LONG child) { NotifyWinEvent(event, h, OBJID_CLIENT, child); }

void RaiseValueChangeUnlessWatched(HWND h) {
    if (std::find(g_watching.begin(), g_watching.end(), h) == g_watching.end()) RaiseEvent(h, EVENT_OBJECT_VALUECHANGE);
}

ValueWatch::ValueWatch(HWND h, bool watched, Reader read, const void* owner) {
    if (!watched || std::find(g_watching.begin(), g_watching.end(), h) != g_watching.end()) return;
    h_ = h;
    read_ = read;
    owner_ = owner;
    before_ = read(h, owner);
    g_watching.push_back(h);
}

ValueWatch::~ValueWatch() {
    if (h_ == nullptr) return;
    g_watching.erase(std::find(g_watching.begin(), g_watching.end(), h_));
    if (!IsWindow(h_)) return;
    if (read_(h_, owner_) != before_) RaiseEvent(h_, EVENT_OBJECT_VALUECHANGE);
}

}  // namespace fk
