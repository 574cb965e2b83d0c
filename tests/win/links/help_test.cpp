// What the library hands to the help viewer, the sound player and the program starter, seen through its hooks.
#include <gtest/gtest.h>

#include <vector>

#include "include/fldkit.h"
#include "links/hooks.h"
#include "tests/support/msgbox_watch.h"
#include "tests/support/window.h"

namespace {

using Calls = std::vector<std::string>;
Calls g_calls;
INT_PTR g_findResult = 2;

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
HINSTANCE WINAPI FakeFind(LPCSTR file, LPCSTR, LPSTR result) {
    g_calls.push_back(Line("find", file, 0));
    return *result = 0, reinterpret_cast<HINSTANCE>(g_findResult);
}
const FkLinkHooks kFakes{FakeHelp, FakeExec, FakeSound, FakeFind, nullptr, nullptr};

class HelpTest : public ::testing::Test {
protected:
    HelpTest() : table_(*fkSetLinkHooks(&kFakes)) { g_calls.clear(); }
    ~HelpTest() override { fkSetLinkHooks(nullptr); }
    int Run(std::string method) { return twProcessHelp(control_, method.append(4, '\0').data()); }
    UINT Exec(std::string method) { return twExecProgram(control_, method.append(4, '\0').data()); }
    const FkLinkHooks& table_;
    fktest::UniqueWindow parent_ = fktest::MakeParent();
    fktest::UniqueWindow control_ = fktest::MakeChild(parent_, "edit");
};

// A message box comes first; a command is carried out besides a topic.
TEST_F(HelpTest, MessageTopicCommandAndSoundReachTheirPlayers) {
    const std::string force = Help("b.hlp", HELP_FORCEFILE, "0");
    const struct {
        const char* method;
        int result;
        Calls calls;
    } cases[] = {
        {"@HELPTOPIC(my.hlp , key word )", 1, {Help("my.hlp", HELP_KEY, "key word")}},
        {"@HELPTOPIC(my.hlp)", 1, {Help("my.hlp", HELP_CONTENTS, "0")}},
        {"@HELPTOPIC()", 1, {Help("", HELP_HELPONHELP, "0")}},
        {"@HELPTOPIC(,key)", 0, {}},
        {"", 1, {}},
        {"@HELPTOPIC(a.hlp,k)@HELPCOMMAND(b.hlp, 42)", 1,
         {Help("a.hlp", HELP_KEY, "k"), force, Help("b.hlp", HELP_COMMAND, "JumpId(\"b.hlp\", \"42\")")}},
        {"@HELPTOPIC(a.hlp,k)@HELPCOMMAND(b.hlp)", 1,  // the missing part is the topic's
         {Help("a.hlp", HELP_KEY, "k"), force, Help("b.hlp", HELP_COMMAND, "JumpId(\"b.hlp\", \"k\")")}},
        {"@HELPCOMMAND(b.hlp)", 0, {}},
        {"@HELPMSG1(Type a number)@HELPTOPIC(my.hlp)@HELPCOMMAND(b.hlp,7)", 1,
         {force, Help("b.hlp", HELP_COMMAND, "JumpId(\"b.hlp\", \"7\")")}},
        {"@HELPWAVE(ding.wav)", 1, {Line("sound", "ding.wav", SND_ASYNC)}},
    };
    fktest::MessageBoxWatcher boxes;
    for (const auto& c : cases) {
        g_calls.clear();
        EXPECT_EQ(Run(c.method), c.result) << c.method;
        EXPECT_EQ(g_calls, c.calls) << c.method;
    }
    ASSERT_EQ(boxes.boxes().size(), 1u);
    EXPECT_EQ(boxes.boxes()[0].text, "Type a number");
    EXPECT_EQ(boxes.boxes()[0].caption, "Help");
    EXPECT_EQ(GetFocus(), control_.get());
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
    EXPECT_EQ(boxes.boxes()[0].text,
              "Unable to locate the help file: FLDKIT.HLP.  Please check your system to make sure this file exists "
              "and is available to Quintaval.");
    EXPECT_EQ(boxes.boxes()[0].caption, "Quintaval");
    EXPECT_TRUE(g_calls.empty());
    RemoveDirectoryA("help"), SetCurrentDirectoryA(previous), RemoveDirectoryA(dir.c_str());
}

// A unique program whose file is found is not started; its window, found by its base name, comes forward.
TEST_F(HelpTest, ProgramsStartWithTheirCommandLineUnlessAUniqueOneIsFound) {
    const std::string shown = " " + std::to_string(SW_SHOWNORMAL);
    EXPECT_EQ(Exec("@PROG(C:\\tools\\prog.exe)@CMDLINE(-a b)"), 42u);
    EXPECT_EQ(Exec("@PROG(prog.exe)"), 42u);
    g_findResult = 33;  // found: not started
    EXPECT_EQ(Exec("@PROG(C:\\nowhere\\absent.exe)@UNIQUE"), 1u);
    g_findResult = 2;
    EXPECT_EQ(Exec("@PROG(absent.exe)@UNIQUE"), 42u);
    EXPECT_EQ(g_calls, (Calls{"exec C:\\tools\\prog.exe -a b" + shown, "exec prog.exe" + shown,
                              "find C:\\nowhere\\absent.exe 0", "find absent.exe 0", "exec absent.exe" + shown}));
    char exe[MAX_PATH], owner[MAX_PATH] = {};
    GetModuleFileNameA(nullptr, exe, MAX_PATH);
    SetActiveWindow(parent_);
    HWND found = twGetModuleWindow(exe);
    ASSERT_NE(found, nullptr);
    GetModuleFileNameA(reinterpret_cast<HINSTANCE>(GetWindowLongPtrA(found, GWLP_HINSTANCE)), owner, MAX_PATH);
    EXPECT_STRCASEEQ(owner, exe);
    EXPECT_EQ(twGetModuleWindow("C:\\nowhere\\nomatch.exe"), nullptr);
    EXPECT_EQ(twGetModuleWindow(nullptr), nullptr);
}

}  // namespace
