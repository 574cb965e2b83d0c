// Help and program launch: what the library decides and hands to the help
// viewer, the sound player and the program starter, watched through the
// library's test hooks.

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

#include "include/fldkit.h"
#include "link_control.h"
#include "tests/support/msgbox_watch.h"

namespace {

struct Call {
    std::string what;
    std::string file;
    UINT command;
    std::string data;
    bool operator==(const Call&) const = default;
};
std::ostream& operator<<(std::ostream& o, const Call& c) {
    return o << c.what << "(" << c.file << ", " << c.command << ", " << c.data << ")";
}

std::vector<Call> g_calls;
BOOL g_soundResult = TRUE;
INT_PTR g_findResult = 2;

BOOL WINAPI FakeHelp(HWND, LPCSTR file, UINT command, ULONG_PTR data) {
    std::string text = (command == HELP_KEY || command == HELP_COMMAND) ? reinterpret_cast<const char*>(data)
                                                                        : std::to_string(data);
    g_calls.push_back({"help", file ? file : "(null)", command, text});
    return TRUE;
}
UINT WINAPI FakeExec(LPCSTR command, UINT show) {
    g_calls.push_back({"exec", command, show, ""});
    return 42;
}
BOOL WINAPI FakeSound(LPCSTR file, UINT flags) {
    g_calls.push_back({"sound", file, flags, ""});
    return g_soundResult;
}
HINSTANCE WINAPI FakeFind(LPCSTR file, LPCSTR, LPSTR result) {
    g_calls.push_back({"find", file, 0, ""});
    if (result) result[0] = 0;
    return reinterpret_cast<HINSTANCE>(g_findResult);
}

class HelpTest : public ::testing::Test {
protected:
    HelpTest() : hooks_(Table()) { g_calls.clear(); }
    static FkLinkHooks Table() {
        FkLinkHooks t{};
        t.winHelp = FakeHelp;
        t.winExec = FakeExec;
        t.sndPlaySound = FakeSound;
        t.findExecutable = FakeFind;
        return t;
    }
    int Help(const char* method) {
        char copy[300] = {};
        std::snprintf(copy, sizeof copy, "%s", method);
        return twProcessHelp(control_, copy);
    }
    linktest::Hooks hooks_;
    fktest::UniqueWindow parent_ = fktest::MakeParent();
    fktest::UniqueWindow control_ = fktest::MakeChild(parent_, "edit");
};

TEST_F(HelpTest, TopicAndCommandReachTheHelpViewer) {
    const struct {
        const char* method;
        int result;
        std::vector<Call> calls;
    } cases[] = {
        {"@HELPTOPIC(my.hlp , key word )", 1, {{"help", "my.hlp", HELP_KEY, "key word"}}},
        {"@HELPTOPIC(my.hlp)", 1, {{"help", "my.hlp", HELP_CONTENTS, "0"}}},
        {"@HELPTOPIC()", 1, {{"help", "", HELP_HELPONHELP, "0"}}},
        {"@HELPTOPIC(,key)", 0, {}},
        {"", 1, {}},
        {"@HELPTOPIC(a.hlp,k)@HELPCOMMAND(b.hlp, 42)",
         1,
         {{"help", "a.hlp", HELP_KEY, "k"},
          {"help", "b.hlp", HELP_FORCEFILE, "0"},
          {"help", "b.hlp", HELP_COMMAND, "JumpId(\"b.hlp\", \"42\")"}}},
        // A missing part of the command keeps the topic's.
        {"@HELPTOPIC(a.hlp,k)@HELPCOMMAND(b.hlp)",
         1,
         {{"help", "a.hlp", HELP_KEY, "k"},
          {"help", "b.hlp", HELP_FORCEFILE, "0"},
          {"help", "b.hlp", HELP_COMMAND, "JumpId(\"b.hlp\", \"k\")"}}},
        {"@HELPCOMMAND(b.hlp)", 0, {}},
        {"@HELPWAVE(ding.wav)", 1, {{"sound", "ding.wav", SND_ASYNC, ""}}},
    };
    for (const auto& c : cases) {
        g_calls.clear();
        EXPECT_EQ(Help(c.method), c.result) << c.method;
        EXPECT_EQ(g_calls, c.calls) << c.method;
    }
}

TEST_F(HelpTest, MessageTakesPrecedenceOverTopic) {
    fktest::MessageBoxWatcher boxes;
    EXPECT_EQ(Help("@HELPMSG1(Type a number)@HELPTOPIC(my.hlp)@HELPCOMMAND(c.hlp,7)"), 1);
    ASSERT_EQ(boxes.boxes().size(), 1u);
    EXPECT_EQ(boxes.boxes()[0].text, "Type a number");
    EXPECT_EQ(boxes.boxes()[0].caption, "Help");
    ASSERT_EQ(g_calls.size(), 2u) << "the command is carried out in addition";
    EXPECT_EQ(g_calls[0].command, static_cast<UINT>(HELP_FORCEFILE));
    EXPECT_EQ(GetFocus(), control_.get());
}

// The library's help for the style dialogs looks in .\help first, then for
// the bare file name, and says so when neither is there.
TEST_F(HelpTest, LibraryHelpFindsItsFileOrSaysItIsMissing) {
    char previous[MAX_PATH], temp[MAX_PATH];
    GetCurrentDirectoryA(MAX_PATH, previous);
    GetTempPathA(MAX_PATH, temp);
    std::string dir = std::string(temp) + "fkhelp" + std::to_string(GetCurrentProcessId());
    CreateDirectoryA(dir.c_str(), nullptr);
    CreateDirectoryA((dir + "\\help").c_str(), nullptr);
    ASSERT_TRUE(SetCurrentDirectoryA(dir.c_str()));
    auto touch = [](const std::string& path) {
        HANDLE h = CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
        CloseHandle(h);
    };
    auto libraryHelp = hooks_.table().libraryHelp;
    ASSERT_NE(libraryHelp, nullptr);

    touch(dir + "\\help\\FLDKIT.HLP");
    EXPECT_EQ(libraryHelp(parent_, 6), 1);
    EXPECT_EQ(libraryHelp(parent_, 15), 1);
    EXPECT_EQ(libraryHelp(parent_, 16), 0);
    EXPECT_EQ(g_calls, (std::vector<Call>{{"help", ".\\help\\FLDKIT.HLP", HELP_CONTEXT, "236"},
                                          {"help", ".\\help\\FLDKIT.HLP", HELP_CONTEXT, "228"}}));

    g_calls.clear();
    DeleteFileA((dir + "\\help\\FLDKIT.HLP").c_str());
    touch(dir + "\\FLDKIT.HLP");
    EXPECT_EQ(libraryHelp(parent_, 1), 1);
    EXPECT_EQ(g_calls, (std::vector<Call>{{"help", "FLDKIT.HLP", HELP_CONTEXT, "103"}}));

    g_calls.clear();
    DeleteFileA((dir + "\\FLDKIT.HLP").c_str());
    {
        fktest::MessageBoxWatcher boxes;
        EXPECT_EQ(libraryHelp(parent_, 1), 0);
        ASSERT_EQ(boxes.boxes().size(), 1u);
        EXPECT_EQ(boxes.boxes()[0].text,
                  "Unable to locate the help file: FLDKIT.HLP.  Please check your system to make sure this file exists "
                  "and is available to Quintaval.");
        EXPECT_EQ(boxes.boxes()[0].caption, "Quintaval");
    }
    EXPECT_TRUE(g_calls.empty());
    SetCurrentDirectoryA(previous);
    RemoveDirectoryA((dir + "\\help").c_str());
    RemoveDirectoryA(dir.c_str());
}

TEST_F(HelpTest, ProgramStartsWithItsCommandLine) {
    char method[] = "@PROG(C:\\tools\\prog.exe)@CMDLINE(-a b)\0\0";
    EXPECT_EQ(twExecProgram(control_, method), 42u);
    char bare[] = "@PROG(prog.exe)\0\0";
    EXPECT_EQ(twExecProgram(control_, bare), 42u);
    EXPECT_EQ(g_calls, (std::vector<Call>{{"exec", "C:\\tools\\prog.exe -a b", SW_SHOWNORMAL, ""},
                                          {"exec", "prog.exe", SW_SHOWNORMAL, ""}}));
}

TEST_F(HelpTest, UniqueProgramIsNeverStartedWhenItsFileIsFound) {
    char exe[MAX_PATH];
    GetModuleFileNameA(nullptr, exe, MAX_PATH);
    SetActiveWindow(parent_);
    for (std::string program : {std::string(exe), std::string("C:\\nowhere\\absent.exe")}) {
        g_calls.clear();
        g_findResult = 33;
        std::string method = "@PROG(" + program + ")@UNIQUE";
        EXPECT_EQ(twExecProgram(control_, method.data()), 1u) << program;
        EXPECT_EQ(g_calls.size(), 1u) << "found, not started";
    }
    g_calls.clear();
    g_findResult = 2;  // not found: started
    char method[] = "@PROG(absent.exe)@UNIQUE\0\0";
    EXPECT_EQ(twExecProgram(control_, method), 42u);
    ASSERT_EQ(g_calls.size(), 2u);
    EXPECT_EQ(g_calls[1].what, "exec");
}

TEST_F(HelpTest, ModuleWindowIsFoundByTheProgramsBaseName) {
    char exe[MAX_PATH];
    GetModuleFileNameA(nullptr, exe, MAX_PATH);
    SetActiveWindow(parent_);
    HWND found = twGetModuleWindow(exe);
    ASSERT_NE(found, nullptr);
    char owner[MAX_PATH] = {};
    GetModuleFileNameA(reinterpret_cast<HINSTANCE>(GetWindowLongPtrA(found, GWLP_HINSTANCE)), owner, MAX_PATH);
    EXPECT_STRCASEEQ(owner, exe);
    EXPECT_EQ(twGetModuleWindow("C:\\nowhere\\nomatch.exe"), nullptr);
    EXPECT_EQ(twGetModuleWindow(nullptr), nullptr);
}

}  // namespace
