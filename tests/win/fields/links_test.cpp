// The library's own controls linked over DDE, each in a window of its own, the way a dialog hands the initiate
// broadcast to its children.
#include <dde.h>

#include "tests/support/pump.h"
#include "tests/win/fields/field_test.h"

namespace {

using fieldtest::Text;

// Passes an initiate on to the children, as an application's dialog does.
void ForwardInitiates(fktest::RecordingParent& parent) {
    parent.reply = [self = parent.hwnd()](UINT msg, WPARAM wp, LPARAM lp) -> std::optional<LRESULT> {
        if (msg != WM_DDE_INITIATE) return std::nullopt;
        for (HWND c = GetWindow(self, GW_CHILD); c; c = GetWindow(c, GW_HWNDNEXT)) SendMessageA(c, msg, wp, lp);
        return 0;
    };
}

HWND Child(HWND parent, const char* cls, int id, const char* method) {
    HWND h = CreateWindowExA(0, cls, "", WS_CHILD | WS_VISIBLE, 10, 10 + 30 * id, 200, 24, parent,
                             reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleA(nullptr), nullptr);
    SendMessageA(h, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(method));
    return h;
}

TEST(ControlLinks, StringFieldServesText3DAndTickerClients) {
    fktest::RecordingParent serverWindow, clientWindow;
    ForwardInitiates(serverWindow);
    ForwardInitiates(clientWindow);
    HWND server = Child(serverWindow, "gxString32", 1, "@SERVER(FkApp,Prices,Item)");
    HWND text = Child(clientWindow, "gxText3D32", 1, "@CLIENT(FkApp,Prices,Item)NOAUTOSTART");
    HWND ticker = Child(clientWindow, "gxTicker32", 2, "@CLIENT(FkApp,Prices,Item)NOAUTOSTART");
    fktest::PumpIdle();  // what the links posted to one another has arrived
    SetFocus(server);
    fieldtest::Type(server, "42.5");
    fktest::PumpIdle();
    EXPECT_EQ(Text(text) + " " + Text(ticker), "42.5 42.5");
    DestroyWindow(server);
}

}  // namespace
