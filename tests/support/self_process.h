// This test program started again with other arguments, as a partner in a second process (program: its build
// of the other bitness instead); killed when the object goes, so that no partner outlives its test.
#pragma once

#include <windows.h>

#include <string>

#include "tests/support/pump.h"

namespace fktest {

struct SelfProcess {
    explicit SelfProcess(const std::string& arguments, const char* program = nullptr) {
        char exe[MAX_PATH] = {};
        if (program == nullptr) GetModuleFileNameA(nullptr, exe, MAX_PATH);
        std::string path = program ? program : exe, command = "\"" + path + "\" " + arguments;
        STARTUPINFOA si{sizeof si};
        if (!CreateProcessA(path.c_str(), command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &si, &pi)) pi = {};
    }
    SelfProcess(const SelfProcess&) = delete;
    ~SelfProcess() { Kill(); }
    bool Exited(DWORD ms) const {  // pumps this thread's messages meanwhile
        return PumpUntil([&] { return WaitForSingleObject(pi.hProcess, 0) == WAIT_OBJECT_0; }, ms);
    }
    DWORD ExitCode(DWORD ms) {  // 99: ended by force after ms
        DWORD code = 99;
        if (Exited(ms)) GetExitCodeProcess(pi.hProcess, &code);
        return Kill(), code;
    }
    void Kill() {
        if (pi.hProcess == nullptr) return;
        TerminateProcess(pi.hProcess, 99);
        WaitForSingleObject(pi.hProcess, 5000);
        CloseHandle(pi.hProcess), CloseHandle(pi.hThread), pi = {};
    }
    PROCESS_INFORMATION pi{};
};

}  // namespace fktest
