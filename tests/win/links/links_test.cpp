// DDE links of string fields with each other and with a partner that speaks the protocol as another application
// would; drag and drop between edits, lists and fields; what the library hands to the help viewer and the program
// starter, seen through its hooks.
#include <windows.h>
#include <gtest/gtest.h>

#include <cstring>

#include "include/fldkit.h"
#include "frame/alloc.h"
#include "links/hooks.h"
#include "tests/support/msgbox_watch.h"
#include "tests/support/pump.h"
#include "tests/support/recorder.h"
#include "tests/support/window.h"

using namespace fktest;
using Strings = std::vector<std::string>;
using Words = std::vector<UINT_PTR>;

namespace {

// The one partner of the program: the other application of the DDE tests, the parent of the dragged controls.
RecordingParent& Partner() {
    static auto* partner = new RecordingParent(500, 300);
    return *partner;
}
class Links : public ::testing::Test {
protected:
    Links() { partner.clear(), partner.reply = nullptr; }
    RecordingParent& partner = Partner();
};

// A top-level string field: a DDE initiate reaches top-level windows only.
UniqueWindow Field(const std::string& method, int y = 0) {
    UniqueWindow f(CreateWindowExA(0, FK_CLASS_STRING, "", WS_POPUP | WS_VISIBLE | WS_BORDER, 200, y, 150, 24,
                                   nullptr, nullptr, GetModuleHandleA(nullptr), nullptr));
    SendMessageA(f, GXM_SETMETHOD, 0, reinterpret_cast<LPARAM>(method.c_str()));
    return f;
}
HWND Prop(HWND h, const std::string& name) { return static_cast<HWND>(GetPropA(h, name.c_str())); }
// Sends a control a DDE message from the partner.
void FromPartner(HWND control, UINT msg, LPARAM lp) {
    SendMessageA(control, msg, reinterpret_cast<WPARAM>(Partner().hwnd()), lp);
}

// The first message of a kind the partner is sent (waited for): its sender and two values, unpacked and freed; the
// record is cleared.
Words Got(UINT msg) {
    UINT_PTR lo = 0, hi = 0;
    if (!PumpUntil([&] { return !Partner().Of(msg).empty(); })) return {};
    const Msg m = Partner().Of(msg)[0];
    UnpackDDElParam(msg, m.lp, &lo, &hi);
    FreeDDElParam(msg, m.lp);
    Partner().clear();
    return {m.wp, lo, hi};
}

// A DDE block as "flags format text", the flags masked; the block is freed.
std::string Take(UINT_PTR block, WORD mask) {
    const auto h = reinterpret_cast<HGLOBAL>(block);
    const auto* w = static_cast<const WORD*>(GlobalLock(h));
    const std::string s = std::to_string(w[0] & mask) + " " + std::to_string(w[1]) + " " +
                          (GlobalSize(h) > 4 ? reinterpret_cast<const char*>(w + 2) : "");
    GlobalUnlock(h), GlobalFree(h);
    return s;
}

// A DDE block of the given flags, CF_TEXT and the bytes.
HGLOBAL Block(WORD flags, const std::string& bytes) {
    const std::string all = std::string(reinterpret_cast<const char*>(&flags), 2) + "\1" + '\0' + bytes;
    HGLOBAL h = GlobalAlloc(GMEM_MOVEABLE | GMEM_DDESHARE, all.size());
    std::memcpy(GlobalLock(h), all.data(), all.size());
    GlobalUnlock(h);
    return h;
}
LPARAM Pack(UINT msg, HGLOBAL block, ATOM item) { return PackDDElParam(msg, reinterpret_cast<UINT_PTR>(block), item); }

// Six clients wait for a server, which answers them on its announcement; it pushes its value (trimmed) to five; a
// client's end frees its slot.
TEST_F(Links, FieldsLinkBothWaysPushToFiveSlotsAndUnlink) {
    UniqueWindow server;
    std::vector<UniqueWindow> clients;
    for (int i = 0; i < 6; ++i) {
        clients.push_back(Field("@CLIENT(FkApp,FkTopic,Value)NOAUTOSTART", 30 * i));
        if (i == 0) server = Field("@SERVER(FkApp,FkTopic,Value)");
        EXPECT_EQ(Prop(clients[i], "CLIENT"), server.get());
        EXPECT_EQ(Prop(server, "SERVER" + std::to_string(i + 1)), clients[i].get());
    }
    PumpIdle();  // the advises and their acknowledgements
    SetWindowTextA(server, "42   ");
    EXPECT_TRUE(PumpUntil([&] { return WindowText(clients[4]) == "42"; }));
    EXPECT_EQ(WindowText(clients[0]) + "/" + WindowText(clients[5]), "42/");
    clients[1].reset();
    EXPECT_TRUE(PumpUntil([&] { return GetPropA(server, "SERVER2") == nullptr; }));
}

// The partner as server: the client's advise asks for a hot link of CF_TEXT, a refresh requests CF_TEXT. Data lose
// their line end and released blocks are freed; data that ask for it, an execute (the last message of the DDE set)
// and an unadvise from the client's own server are acknowledged. The partner as client:
// an initiate is answered with the names asked for, a request with at most 158 characters in a block the partner
// releases; one the server cannot allocate an answer for is refused with 0xFFFF, not the usual negative ack.
TEST_F(Links, TextLosesItsLineEndAndBlocksAreFreedOrAcknowledged) {
    partner.reply = [&](UINT msg, WPARAM wp, LPARAM lp) -> std::optional<LRESULT> {
        if (msg != WM_DDE_INITIATE || LOWORD(lp) != GlobalFindAtomA("FkRaw")) return std::nullopt;
        SendMessageA(reinterpret_cast<HWND>(wp), WM_DDE_ACK, reinterpret_cast<WPARAM>(partner.hwnd()),
                     MAKELPARAM(GlobalAddAtomA("FkRaw"), GlobalAddAtomA("RawTopic")));
        return 0;
    };
    auto client = Field("@CLIENT(FkRaw,RawTopic,Value)NOAUTOSTART");
    const auto from = reinterpret_cast<UINT_PTR>(client.get());
    EXPECT_EQ(Prop(client, "CLIENT"), partner.hwnd());
    EXPECT_EQ(Take(Got(WM_DDE_ADVISE).at(1), 0xC000), "32768 1 ") << "a hot link of CF_TEXT";
    SendMessageA(client, GXM_SETVALUE, 0, 0);
    EXPECT_EQ(Got(WM_DDE_REQUEST).at(1), CF_TEXT);
    const std::pair<std::string, std::string> cases[] = {  // "noend": the block ends the text
        {{"abc\r\n", 6}, "abc"}, {{"a\nb\n", 5}, "a\nb"}, {{"x\ry", 4}, "x"}, {"noend", "noend"}};
    for (const auto& [bytes, shown] : cases) {
        HGLOBAL block = Block(0x2000, bytes);  // fRelease: the client frees it
        FromPartner(client, WM_DDE_DATA, Pack(WM_DDE_DATA, block, GlobalAddAtomA("FkDataItem")));
        EXPECT_EQ(WindowText(client) + "/" + std::to_string(GlobalSize(block)), shown + "/0");
    }
    HGLOBAL block = Block(0x8000, {"kept", 5}), command = Block(0, {"[run()]", 8});  // a command is only looked at
    const ATOM acked = GlobalAddAtomA("FkAckItem"), unadvised = GlobalAddAtomA("FkUnadvised");
    FromPartner(client, WM_DDE_DATA, Pack(WM_DDE_DATA, block, acked));
    EXPECT_EQ(WindowText(client) + "/" + std::to_string(GlobalSize(block) > 0), "kept/1") << "the sender's block";
    EXPECT_EQ(Got(WM_DDE_ACK), (Words{from, 0x8000, acked}));
    FromPartner(client, WM_DDE_EXECUTE, reinterpret_cast<LPARAM>(command));
    EXPECT_EQ(Got(WM_DDE_ACK).at(0), from);
    FromPartner(client, WM_DDE_UNADVISE, MAKELPARAM(CF_TEXT, unadvised));
    EXPECT_EQ(GetPropA(client, "CLIENT"), nullptr);
    EXPECT_EQ(Got(WM_DDE_ACK), (Words{from, 0x8000, unadvised}));
    GlobalFree(block), GlobalFree(command);
    auto server = Field("@SERVER(FkApp,FkTopic,Value)");
    const LPARAM names = MAKELPARAM(GlobalAddAtomA("FkApp"), GlobalAddAtomA("FkTopic"));
    FromPartner(server, WM_DDE_INITIATE, names);
    EXPECT_EQ(partner.Of(WM_DDE_ACK).at(0).lp, names);
    SetWindowTextA(server, std::string(300, 'x').c_str());
    const ATOM item = GlobalAddAtomA("Value");
    FromPartner(server, WM_DDE_REQUEST, MAKELPARAM(CF_TEXT, item));
    const Words answer = Got(WM_DDE_DATA);
    EXPECT_EQ(Take(answer.at(1), 0xB000) + std::to_string(answer.at(2) == item),
              "12288 1 " + std::string(158, 'x') + "1");
    fkFailAllocation(1);
    twProcessDDE(server, WM_DDE_REQUEST, reinterpret_cast<WPARAM>(partner.hwnd()), MAKELPARAM(CF_TEXT, item), nullptr);
    fkFailAllocation(0);
    EXPECT_EQ(Got(WM_DDE_ACK), (Words{reinterpret_cast<UINT_PTR>(server.get()), 0xFFFF, item}));
    EXPECT_TRUE(partner.Of(WM_DDE_DATA).empty());
    for (ATOM a : {item, acked, unadvised}) GlobalDeleteAtom(a);
}

// Controls subclassed to answer as a drag-aware control, their method string and base procedure kept as properties.
LRESULT CALLBACK DragProc(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
    const auto* method = static_cast<const char*>(GetPropA(h, "FkMethod"));
    if (msg == GXM_GETMETHOD && lp) return lstrcpynA(reinterpret_cast<char*>(lp), method, 257), 0;
    if (msg >= GXM_DROPDATA && msg <= GXM_DRAGEND) return twProcessDragDrop(h, msg, wp, lp);
    return CallWindowProcA(reinterpret_cast<WNDPROC>(GetPropA(h, "FkBase")), h, msg, wp, lp);
}

// Drags are driven by mouse messages posted before the drag's own loop takes them.
class Drag : public Links {
protected:
    UniqueWindow Make(const char* cls, const char* method, int x, const char* text = "", Strings items = {}) {
        const DWORD style = std::strcmp(cls, "listbox") == 0 ? LBS_EXTENDEDSEL | WS_BORDER : 0;
        UniqueWindow c(CreateWindowExA(0, cls, text, WS_CHILD | WS_VISIBLE | style, x, 10, 150, 150, partner, nullptr,
                                       GetModuleHandleA(nullptr), nullptr));
        if (std::strstr(method, "@DROPTARG")) SetPropA(c, "@WANTDROP", reinterpret_cast<HANDLE>(5));
        SetPropA(c, "FkMethod", const_cast<char*>(method));  // the rows' string literals outlive the controls
        const LONG_PTR base = SetWindowLongPtrA(c, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(DragProc));
        SetPropA(c, "FkBase", reinterpret_cast<HANDLE>(base));
        for (auto& s : items) SendMessageA(c, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(s.c_str()));
        return c;
    }
    // Arms the source, queues a move and release over target (at: its client point), drags.
    static LRESULT Over(HWND source, HWND target, POINT at = {5, 5}, bool escape = false) {
        MapWindowPoints(target, source, &at, 1);
        twProcessDragDrop(source, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(2, 2));
        PostMessageA(source, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(at.x, at.y));
        if (escape) PostMessageA(source, WM_KEYDOWN, VK_ESCAPE, 0);
        PostMessageA(source, WM_LBUTTONUP, 0, MAKELPARAM(at.x, at.y));
        const LRESULT r = twProcessDragDrop(source, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(4, 4));
        for (MSG m; PeekMessageA(&m, nullptr, WM_MOUSEFIRST, WM_MOUSELAST, PM_REMOVE);) continue;
        return r;
    }
    // A list's items, each followed by a comma.
    static std::string Items(HWND list) {
        std::string items;
        char text[128];
        for (LRESULT i = 0, n = SendMessageA(list, LB_GETCOUNT, 0, 0); i < n; ++i) {
            SendMessageA(list, LB_GETTEXT, i, reinterpret_cast<LPARAM>(text));
            items += text + std::string(",");
        }
        return items;
    }
};

// Numeric fields take the text up to the first blank (a real field up to other punctuation than "."); letters are
// dropped but leave their place empty. Channels must match in case; a move empties the source; Escape drops nothing.
TEST_F(Drag, DropsFromAnEdit) {
    const struct { const char *from, *cls, *to, *dropped, *shown, *left; bool escape = false; LRESULT started = 1; }
        cases[] = {
        {"@DRAGSRC", "gxNumeric32", "@DROPTARG", "1 000", "1", "1 000"},
        {"@DRAGSRC", "gxReal32", "@DROPTARG", "3,5", "3", "3,5"},
        {"@DRAGSRC", "gxCurrency32", "@DROPTARG", "a1b2", "", "a1b2"},
        {"@DRAGSRC(1)", "edit", "@DROPTARG(4)", "moved", "moved", ""},  // no selection: the whole text
        {"@DRAGSRC", "edit", "@DROPTARG(4)", "a\nb", "a b", "a\nb"},  // a one-line edit takes no line end
        {"@DRAGSRC(1)@DRAGCHANNEL(X)", "edit", "@DROPTARG@DROPCHANNEL(x)", "text", "kept", "text"},
        {"@DRAGSRC(1)", "edit", "@DROPTARG@DROPCHANNEL(X)", "text", "kept", "text"},
        {"@DRAGSRC(1)@DRAGCHANNEL(X)", "edit", "@DROPTARG", "text", "kept", "text"},
        {"@DRAGSRC@DRAGCHANNEL(X)", "edit", "@DROPTARG@DROPCHANNEL(X)", "text", "text", "text"},
        {"@DRAGSRC(1)", "edit", "@DROPTARG", "text", "kept", "text", true},
        {"@DRAGSRC(1)", "edit", "@DROPTARG", "", "kept", "", false, 0},  // an empty source starts no drag
    };
    for (const auto& c : cases) {
        UniqueWindow source = Make("edit", c.from, 10, c.dropped), target = Make(c.cls, c.to, 250, "kept");
        EXPECT_EQ(Over(source, target, {5, 5}, c.escape), c.started);
        EXPECT_EQ(WindowText(target) + "/" + WindowText(source), c.shown + ("/" + std::string(c.left))) << c.cls;
        EXPECT_EQ(GetPropA(source, "@DRAGSRC"), nullptr);
        if (c.escape) EXPECT_EQ(GetCapture(), source.get()) << "nothing is restored on this path";
    }
}

// A move into a list inserts at the drop point; the source loses what was moved. A directory list drags no
// directories.
TEST_F(Drag, MovesInsertAtTheDropPointAndListsSkipDirectories) {
    UniqueWindow source = Make("listbox", "@DRAGSRC(1)", 10, "", {"a", "b", "c", "d"});
    UniqueWindow target = Make("listbox", "@DROPTARG(0)", 250, "", {"x", "y"});
    for (int i : {1, 3}) SendMessageA(source, LB_SETSEL, TRUE, i);
    EXPECT_EQ(Over(source, target, {5, static_cast<LONG>(SendMessageA(target, LB_GETITEMHEIGHT, 0, 0)) + 1}), 1);
    EXPECT_EQ(Items(target) + "/" + Items(source), "x,b,d,y,/a,c,");
    source = Make("listbox", "@DRAGSRC DIRLST", 10, "", {"[sub]", "file.txt"});
    target = Make("listbox", "@DROPTARG(4)", 250, "", {});
    SendMessageA(source, LB_SETSEL, TRUE, -1);
    EXPECT_EQ(Over(source, target), 1);
    EXPECT_EQ(Items(target), "file.txt,");
}

// What the hooks are handed: "what file number[ data]" (the help commands: 3 contents, 4 help on help, 9 force file,
// 257 key, 258 command; a program is shown 1, normal).
Strings g_calls;
std::string Line(const char* what, const char* file, UINT n, const std::string& data = "") {
    return std::string(what) + " " + (file ? file : "") + " " + std::to_string(n) + (data.empty() ? "" : " " + data);
}
BOOL WINAPI FakeHelp(HWND, LPCSTR file, UINT command, ULONG_PTR data) {
    const bool text = command == HELP_KEY || command == HELP_COMMAND;
    g_calls.push_back(Line("help", file, command, text ? reinterpret_cast<const char*>(data) : std::to_string(data)));
    return TRUE;
}
UINT WINAPI FakeExec(LPCSTR command, UINT show) { return g_calls.push_back(Line("exec", command, show)), 42; }
HINSTANCE WINAPI FakeFind(LPCSTR file, LPCSTR, LPSTR result) {  // a file named "found" is found
    g_calls.push_back(Line("find", file, 0));
    return *result = 0, reinterpret_cast<HINSTANCE>(std::strstr(file, "found") ? 33 : 2);
}

class HelpTest : public Links {
protected:
    HelpTest() { fkSetLinkHooks(&kFakes), g_calls.clear(); }
    ~HelpTest() override { fkSetLinkHooks(nullptr); }
    static constexpr FkLinkHooks kFakes{FakeHelp, FakeExec, nullptr, FakeFind, nullptr, nullptr};
    UniqueWindow control = MakeChild(partner, "edit");
};

// Help: a message box comes first; a command is carried out besides a topic. Programs start with their command
// line, unless a unique one's file is found; a program's window is found by its module name.
TEST_F(HelpTest, HelpAndProgramsReachTheirPlayersAndStarters) {
    const struct { bool program; const char* method; UINT result; Strings calls; } cases[] = {
        {false, "@HELPTOPIC(my.hlp , key word )", 1, {"help my.hlp 257 key word"}},
        {false, "@HELPTOPIC()", 1, {"help  4 0"}},
        {false, "@HELPMSG1(Type a number)@HELPTOPIC(my.hlp)@HELPCOMMAND(b.hlp,7)", 1,
         {"help b.hlp 9 0", "help b.hlp 258 JumpId(\"b.hlp\", \"7\")"}},
        {false, "@HELPTOPIC(my.hlp)", 1, {"help my.hlp 3 0"}},
        {true, "@PROG(C:\\tools\\prog.exe)@CMDLINE(-a b)", 42, {"exec C:\\tools\\prog.exe -a b 1"}},
        {true, "@PROG(C:\\here\\found.exe)@UNIQUE", 1, {"find C:\\here\\found.exe 0"}},
        {true, "@PROG(absent.exe)@UNIQUE", 42, {"find absent.exe 0", "exec absent.exe 1"}},
    };
    MessageBoxWatcher boxes;
    for (const auto& c : cases) {
        g_calls.clear();
        std::string method = std::string(c.method).append(4, '\0');
        const UINT result = c.program ? twExecProgram(control, method.data()) : twProcessHelp(control, method.data());
        EXPECT_EQ(result, c.result) << c.method;
        EXPECT_EQ(g_calls, c.calls) << c.method;
    }
    EXPECT_EQ(GetFocus(), control.get());
    EXPECT_EQ(twGetModuleWindow("C:\\here\\found.exe"), nullptr) << "no window of that module";
    EXPECT_EQ(GetWindowThreadProcessId(twGetModuleWindow("LINKS_TESTS"), nullptr), GetCurrentThreadId());
    EXPECT_EQ(boxes.boxes().size() == 1 ? boxes.boxes()[0].text + "/" + boxes.boxes()[0].caption : "", "Type a number/Help");
}

}  // namespace
