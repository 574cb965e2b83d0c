// Shared pieces of the hostile-input groups: the texts, buffers that end at a no-access page (one byte too
// far faults at once), the fifteen classes, and a fixture that checks after each group that the heaps
// validate and no window, atom or GDI object is left over.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "include/fldkit.h"
#include "tests/support/resources.h"

namespace fktest {

// len bytes that end right before a no-access page.
class GuardedBuffer {
public:
    explicit GuardedBuffer(size_t len) : len_(len), pages_((len + 4095) / 4096 + 1) {
        base_ = static_cast<char*>(VirtualAlloc(nullptr, pages_ * 4096, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE));
        DWORD old;
        VirtualProtect(base_ + (pages_ - 1) * 4096, 4096, PAGE_NOACCESS, &old);
    }
    static GuardedBuffer Text(const std::string& text) {  // text and its terminator
        GuardedBuffer b(text.size() + 1);
        std::memcpy(b.data(), text.c_str(), text.size() + 1);
        return b;
    }
    GuardedBuffer(GuardedBuffer&& o) noexcept : base_(o.base_), len_(o.len_), pages_(o.pages_) { o.base_ = nullptr; }
    ~GuardedBuffer() { if (base_) VirtualFree(base_, 0, MEM_RELEASE); }
    char* data() const { return base_ + (pages_ - 1) * 4096 - len_; }
    size_t size() const { return len_; }

private:
    char* base_;
    size_t len_, pages_;
};

struct HostileText {
    const char* name;
    std::string text;
};
const std::vector<HostileText>& HostileMethods();
std::string HighBytes();  // 0x80-0xFF
extern const char* const kAllClasses[15];
extern const char* const kEntryClasses[5];  // the fields of the editing core

HWND MakeHostileParent();          // answers GXN_ERROR with GXR_HANDLED unless g_parentHandlesErrors is false
extern bool g_parentHandlesErrors;
void NowTrying(const char* group, const char* what);  // named in the crash report
void FillRandom(char* p, size_t n, uint32_t seed);

// Closes any table popup of this thread that stays open a few timer ticks: no hostile table waits for a user.
class PopupCanceller {
public:
    PopupCanceller() : timer_(SetTimer(nullptr, 0, 20, Tick)) {}
    ~PopupCanceller() { KillTimer(nullptr, timer_); }

private:
    static void CALLBACK Tick(HWND, UINT, UINT_PTR, DWORD);
    UINT_PTR timer_;
};

class HostileGroup : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;
    HWND parent() const { return parent_; }

private:
    ResourceFigures before_;
    HWND parent_ = nullptr;
};

}  // namespace fktest
