#include "links/control_links.h"

#include <dde.h>

#include <cstring>

#include "frame/buffers.h"
#include "frame/method_text.h"
#include "include/fldkit.h"
#include "strings/lstr.h"

namespace fk {

// An initiate hands the link service its method copy in the entry fields'
// scratch buffer.
static_assert(MethodShort::kSize == sizeof g_fieldText);

bool IsDdeMessage(UINT msg) { return msg >= WM_DDE_FIRST && msg <= WM_DDE_LAST; }

void OpenControlLinks(HWND control, const char* method) {
    if (method == nullptr) return;
    const bool client = lstristr(method, "@CLIENT") != nullptr;
    const bool server = lstristr(method, "@SERVER") != nullptr;
    if (client) {
        MethodShort copy(method);
        twInitiateDDE(control, copy.get());
    }
    if (server) {
        MethodShort copy(method);
        twInitiateDDE(control, copy.get());
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
    MethodShort copy(method);
    if (msg != WM_DDE_INITIATE) return twProcessDDE(control, msg, wp, lp, copy.get());
    std::memcpy(g_fieldText, copy.get(), sizeof g_fieldText);
    return twProcessDDE(control, msg, wp, lp, g_fieldText);
}

}  // namespace fk
