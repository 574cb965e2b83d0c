#include "links/control_links.h"

#include <dde.h>

#include <cstring>

#include "frame/buffers.h"
#include "include/fldkit.h"
#include "strings/lstr.h"

namespace fk {

namespace {

// A method copy with the spare bytes the link service's lookups need.
struct Copy {
    char s[kMethodCopy + 1 + 2] = {};
    explicit Copy(const char* method) {
        if (method) lstrncpy(s, method, kMethodCopy);
    }
};
static_assert(sizeof(Copy::s) == sizeof g_fieldText);

}  // namespace

bool IsDdeMessage(UINT msg) { return msg >= WM_DDE_FIRST && msg <= WM_DDE_LAST; }

void OpenControlLinks(HWND control, const char* method) {
    if (method == nullptr) return;
    const bool client = lstristr(method, "@CLIENT") != nullptr;
    const bool server = lstristr(method, "@SERVER") != nullptr;
    if (client) {
        Copy copy(method);
        twInitiateDDE(control, copy.s);
    }
    if (server) {
        Copy copy(method);
        twInitiateDDE(control, copy.s);
    }
}

void CloseControlLinks(HWND control) {
    if (GetPropA(control, "CLIENT") != nullptr || GetPropA(control, "SERVER") != nullptr) {
        twUnadviseDDE(control);
        RemovePropA(control, "CLIENT");
        RemovePropA(control, "SERVER");
    }
    // A server that never gained a client, or a client whose server let it
    // go, still owns its item atom.
    const auto item = static_cast<ATOM>(reinterpret_cast<UINT_PTR>(RemovePropA(control, "ITEM")));
    if (item != 0) GlobalDeleteAtom(item);
}

LRESULT RouteControlDde(HWND control, UINT msg, WPARAM wp, LPARAM lp, const char* method) {
    Copy copy(method);
    if (msg != WM_DDE_INITIATE) return twProcessDDE(control, msg, wp, lp, copy.s);
    std::memcpy(g_fieldText, copy.s, sizeof g_fieldText);
    return twProcessDDE(control, msg, wp, lp, g_fieldText);
}

}  // namespace fk
