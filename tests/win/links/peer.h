// The DDE partner that nobody here wrote: the system's DDE management
// library, run in a second process (this test program started again with
// an argument).
#pragma once

#include <windows.h>

#include <string>

namespace linktest {

// Names of the peer's conversation.
inline constexpr char kPeerService[] = "FkPeer";
inline constexpr char kPeerTopic[] = "PeerTopic";
inline constexpr char kPeerItem[] = "Value";
// Names under which the library's server control answers the peer client.
inline constexpr char kLibService[] = "FkLibApp";
inline constexpr char kLibTopic[] = "LibTopic";

// Runs a peer mode when argv asks for one; returns true (and the exit code)
// when it did.
bool RunPeer(int argc, char** argv, int* exitCode);

// A peer process started with the given mode arguments; it is waited for
// (bounded) and killed if still running when the object goes.
class PeerProcess {
public:
    explicit PeerProcess(const std::string& arguments);
    ~PeerProcess();
    bool started() const { return pi_.hProcess != nullptr; }
    // Waits, pumping this thread's messages, at most ms; true when it ended.
    bool Wait(DWORD ms);
    DWORD exitCode() const;

private:
    PROCESS_INFORMATION pi_{};
};

// Named events shared with a peer (unique per test process).
std::string EventName(const char* what);

}  // namespace linktest
