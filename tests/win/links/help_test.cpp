// What the library hands to the help viewer, the sound player and the program starter, seen through its hooks.
#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "include/fldkit.h"
#include "links/hooks.h"
#include "tests/support/msgbox_watch.h"
#include "tests/support/window.h"

namespace {

using Calls = std::vector<std::string>;
Calls g_calls;

// One recorded call: "what file number[ data]".
std::string Line(const char* what, const char* file, UINT n, const std::string& data = "") {
    return std::string(what) + " " + (file ? file : "") + " " + std::to_string(n) + (data.empty() ? "" : " " + data);
}
std::string Help(const char* file, UINT command, const std::string& data) { return Line("help", file, command, data); }
BOOL WINAPI FakeHelp(HWND, LPCSTR file, UINT command, ULONG_PTR data) {
    bool text = command == HELP_KEY || command == HELP_COMMAND;
    g_calls.push_back(Help(file, command, text ? reinterpret_cast<const char*>(data) : std::to_string(data)));
    return TRUE;
}
UINT WINAPI FakeExec(LPCSTR command, UINT show) { return g_calls.push_back(Line("exec", command, show)), 42; }
BOOL WINAPI FakeSound(LPCSTR file, UINT flags) { return g_calls.push_back(Line("sound", file, flags)), TRUE; }
HINSTANCE WINAPI FakeFind(LPCSTR file, LPCSTR, LPSTR result) {  // a file named "found" is found
    g_calls.push_back(Line("find", file, 0));
    return *result = 0, reinterpret_cast<HINSTANCE>(std::strstr(file, "found") ? 33 : 2);
}
const FkLinkHooks kFakes{FakeHelp, FakeExec, FakeSound, FakeFind, nullptr, nullptr};

class HelpTest : public ::testing::Test {
protected:
    HelpTest() : table_(*fkSetLinkHooks(&kFakes)) { g_calls.clear(); }
    ~HelpTest() override { fkSetLinkHooks(nullptr); }
    const FkLinkHooks& table_;
    fktest::UniqueWindow parent_ = fktest::MakeParent();
    fktest::UniqueWindow control_ = fktest::MakeChild(parent_, "edit");
};

// Help: a message box comes first; a command is carried out besides a topic. Programs start with their command
// line, unless a unique one's file is found: then it is not started, and its window is found by its module's file.
TEST_F(HelpTest, HelpAndProgramsReachTheirPlayersAndStarters) {
    const std::string force = Help("b.hlp", HELP_FORCEFILE, "0"), shown = " " + std::to_string(SW_SHOWNORMAL);
    const struct {
        bool program;
        const char* method;
        UINT result;
        Calls calls;
    } cases[] = {
        {false, "@HELPTOPIC(my.hlp , key word )", 1, {Help("my.hlp", HELP_KEY, "key word")}},
        {false, "@HELPTOPIC(my.hlp)", 1, {Help("my.hlp", HELP_CONTENTS, "0")}},
        {false, "@HELPTOPIC()", 1, {Help("", HELP_HELPONHELP, "0")}},
        {false, "@HELPTOPIC(,key)", 0, {}},
        {false, "", 1, {}},
        {false, "@HELPTOPIC(a.hlp,k)@HELPCOMMAND(b.hlp, 42)", 1,
         {Help("a.hlp", HELP_KEY, "k"), force, Help("b.hlp", HELP_COMMAND, "JumpId(\"b.hlp\", \"42\")")}},
        {false, "@HELPTOPIC(a.hlp,k)@HELPCOMMAND(b.hlp)", 1,  // the missing part is the topic's
         {Help("a.hlp", HELP_KEY, "k"), force, Help("b.hlp", HELP_COMMAND, "JumpId(\"b.hlp\", \"k\")")}},
        {false, "@HELPCOMMAND(b.hlp)", 0, {}},
        {false, "@HELPMSG1(Type a number)@HELPTOPIC(my.hlp)@HELPCOMMAND(b.hlp,7)", 1,
         {force, Help("b.hlp", HELP_COMMAND, "JumpId(\"b.hlp\", \"7\")")}},
        {false, "@HELPWAVE(ding.wav)", 1, {Line("sound", "ding.wav", SND_ASYNC)}},
        {true, "@PROG(C:\\tools\\prog.exe)@CMDLINE(-a b)", 42, {"exec C:\\tools\\prog.exe -a b" + shown}},
        {true, "@PROG(prog.exe)", 42, {"exec prog.exe" + shown}},
        {true, "@PROG(C:\\here\\found.exe)@UNIQUE", 1, {"find C:\\here\\found.exe 0"}},
        {true, "@PROG(absent.exe)@UNIQUE", 42, {"find absent.exe 0", "exec absent.exe" + shown}},
    };
    fktest::MessageBoxWatcher boxes;
    for (const auto& c : cases) {
        g_calls.clear();
        std::string method = std::string(c.method).append(4, '\0');
        const UINT result = c.program ? twExecProgram(control_, method.data()) : twProcessHelp(control_, method.data());
        EXPECT_EQ(result, c.result) << c.method;
        EXPECT_EQ(g_calls, c.calls) << c.method;
    }
    ASSERT_EQ(boxes.boxes().size(), 1u);
    EXPECT_EQ(boxes.boxes()[0].text + "/" + boxes.boxes()[0].caption, "Type a number/Help");
    EXPECT_EQ(GetFocus(), control_.get());
    char exe[MAX_PATH], owner[MAX_PATH] = {};  // a unique program's window is found by its module's file
    GetModuleFileNameA(nullptr, exe, MAX_PATH);
    SetActiveWindow(parent_);
    HWND found = twGetModuleWindow(exe);
    ASSERT_NE(found, nullptr);
    GetModuleFileNameA(reinterpret_cast<HINSTANCE>(GetWindowLongPtrA(found, GWLP_HINSTANCE)), owner, MAX_PATH);
    EXPECT_STRCASEEQ(owner, exe);
    EXPECT_EQ(twGetModuleWindow("C:\\nowhere\\nomatch.exe"), nullptr);
    EXPECT_EQ(twGetModuleWindow(nullptr), nullptr);
}

// The style dialogs' help looks in .\help, then for the bare name, and says so when neither is there.
TEST_F(HelpTest, LibraryHelpFindsItsFileOrSaysItIsMissing) {
    char previous[MAX_PATH], temp[MAX_PATH];
    GetCurrentDirectoryA(MAX_PATH, previous);
    GetTempPathA(MAX_PATH, temp);
    std::string dir = temp + ("fkhelp" + std::to_string(GetCurrentProcessId()));
    CreateDirectoryA(dir.c_str(), nullptr);
    ASSERT_TRUE(SetCurrentDirectoryA(dir.c_str()) && CreateDirectoryA("help", nullptr));
    auto touch = [](const char* file) { CloseHandle(CreateFileA(file, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr)); };
    auto help = table_.libraryHelp;
    touch("help\\FLDKIT.HLP");
    EXPECT_EQ(std::vector<int>({help(parent_, 6), help(parent_, 15), help(parent_, 16)}), std::vector<int>({1, 1, 0}));
    DeleteFileA("help\\FLDKIT.HLP"), touch("FLDKIT.HLP");
    EXPECT_EQ(help(parent_, 1), 1);
    DeleteFileA("FLDKIT.HLP");
    const char* inHelp = ".\\help\\FLDKIT.HLP";
    EXPECT_EQ(g_calls, (Calls{Help(inHelp, HELP_CONTEXT, "236"), Help(inHelp, HELP_CONTEXT, "228"),
                              Help("FLDKIT.HLP", HELP_CONTEXT, "103")}));
    g_calls.clear();
    fktest::MessageBoxWatcher boxes;
    EXPECT_EQ(help(parent_, 1), 0);
    ASSERT_EQ(boxes.boxes().size(), 1u);
    EXPECT_EQ(boxes.boxes()[0].text + "/" + boxes.boxes()[0].caption,
              "Unable to locate the help file: FLDKIT.HLP.  Please check your system to make sure this file exists "
              "and is available to Quintaval./Quintaval");
    EXPECT_TRUE(g_calls.empty());
    RemoveDirectoryA("help"), SetCurrentDirectoryA(previous), RemoveDirectoryA(dir.c_str());
}

}  // namespace
