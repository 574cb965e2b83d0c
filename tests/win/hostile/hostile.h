// Shared pieces of the hostile-input groups: the texts, buffers that end at
// an inaccessible page (so that a write or read past their end faults at
// once), the fifteen classes, and a fixture that checks after each group
// that the heaps validate and no window, atom or GDI object is left over.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "include/fldkit.h"
#include "tests/support/resources.h"

namespace fktest {

// len bytes that end right before a no-access page.
class GuardedBuffer {
public:
    explicit GuardedBuffer(size_t len) : len_(len) {
        const size_t page = 4096;
        pages_ = (len + page - 1) / page + 1;
        base_ = static_cast<char*>(VirtualAlloc(nullptr, pages_ * page, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE));
        DWORD old;
        VirtualProtect(base_ + (pages_ - 1) * page, page, PAGE_NOACCESS, &old);
        data_ = base_ + (pages_ - 1) * page - len;
    }
    // A copy of text (with its terminator) that ends at the guard page.
    static GuardedBuffer Text(const std::string& text) {
        GuardedBuffer b(text.size() + 1);
        std::memcpy(b.data(), text.c_str(), text.size() + 1);
        return b;
    }
    ~GuardedBuffer() {
        if (base_) VirtualFree(base_, 0, MEM_RELEASE);
    }
    GuardedBuffer(GuardedBuffer&& o) noexcept : base_(o.base_), data_(o.data_), len_(o.len_), pages_(o.pages_) {
        o.base_ = nullptr;
    }
    GuardedBuffer(const GuardedBuffer&) = delete;
    GuardedBuffer& operator=(const GuardedBuffer&) = delete;
    char* data() const { return data_; }
    size_t size() const { return len_; }

private:
    char* base_ = nullptr;
    char* data_ = nullptr;
    size_t len_ = 0;
    size_t pages_ = 0;
};

struct HostileText {
    const char* name;
    std::string text;
};

// Method strings no caller should write: empty, a lone "@", unbalanced and
// 10,000-deep parentheses, 64 KB, bytes 0x80-0xFF, printf directives in
// messages, a keyword ending the text, ");" cuts.
inline const std::vector<HostileText>& HostileMethods() {
    static const std::vector<HostileText> texts = [] {
        std::string high;
        for (int c = 0x80; c <= 0xFF; ++c) high.push_back(static_cast<char>(c));
        const std::string deep(10000, '(');
        const std::string undeep(10000, ')');
        std::string longest = "@MND@RNG(5,6)@CHC(7)@MSG(";
        longest += std::string(65536 - longest.size() - 2, 'A') + ")";
        return std::vector<HostileText>{
            {"empty", ""},
            {"lone @", "@"},
            {"lone @@", "@@"},
            {"unbalanced open", "@MND@RNG((1,5@CHC(a,(b@MSG((x"},
            {"unbalanced close", "@MND@RNG(1,5))))@CHC)a,b)@MSG)))("},
            {"deep parentheses", "@MND@RNG" + deep + "1,2" + undeep + "@CHC" + deep + undeep + "@MSG" + deep + "x"},
            {"deep only", deep},
            {"64 KB", longest},
            {"64 KB item", "@MBOX(" + std::string(65530, 'B') + ")"},
            {"high bytes", "@MND" + high + "@RNG(" + high + "," + high + ")@CHC(" + high + ")@MSG(" + high + ")"},
            {"high keyword", "@" + high},
            {"printf in message", "@MND@RNG(5,6)@CHC(9)@MSG(%s%n%s%n%p%x%99999999d)"},
            {"printf in box", "@MND@RNG(5,6)@MBOX(%s%n:%n%s%s%s)"},
            {"printf in status", "@MND@RNG(5,6)@STAT(%n%n%n%n)@WARN@BEEP"},
            {"keyword at end", "@RNG(5,6)@MSG"},
            {"open argument at end", "@MND@RNG(5,6)@MBOX("},
            {"semicolon cut", "@RNG(1,2);@MSG(x);@MBOX(a:b)"},
            {"empty groups", "@RNG()()()(,)@CHC()@MSG()@MBOX(:)@DLM()@KEY()@POS(,,,)"},
            {"bound of 200 characters", "@RNG(" + std::string(200, '9') + "," + std::string(200, '-') + ")@CHC(" +
                                            std::string(200, 'z') + ")"},
            {"missing table", "@TBL(" + high + ")@KEY(-5)@DLM(" + high + ")@DISPLAY(99999,-1)@POS(" + high + ")"},
            {"long table name", "@MND@TBL(" + std::string(600, 'T') + ")"},
        };
    }();
    return texts;
}

// The fifteen classes.
inline const std::vector<const char*>& AllClasses() {
    static const std::vector<const char*> classes{
        FK_CLASS_STRING,  FK_CLASS_NUMERIC, FK_CLASS_REAL,     FK_CLASS_BITMAP, FK_CLASS_ICON,
        FK_CLASS_DATE,    FK_CLASS_COLOR,   FK_CLASS_TABLE,    FK_CLASS_CBTABLE, FK_CLASS_TICKER,
        FK_CLASS_CURRENCY, FK_CLASS_BUTTON, FK_CLASS_LINE,     FK_CLASS_TEXT3D, FK_CLASS_FRAME3D,
    };
    return classes;
}

// The five entry fields: they keep the editing core's window words.
inline const std::vector<const char*>& EntryClasses() {
    static const std::vector<const char*> classes{FK_CLASS_STRING, FK_CLASS_NUMERIC, FK_CLASS_REAL,
                                                  FK_CLASS_CURRENCY, FK_CLASS_DATE};
    return classes;
}

// A top-level parent that answers GXN_ERROR with GXR_HANDLED (no message
// box) unless told to let errors through.
HWND MakeHostileParent();
extern bool g_parentHandlesErrors;
extern int g_errorsSeen;

// Names the input being tried, for the crash report.
void NowTrying(const char* group, const char* what);

// Closes any table popup of this thread that stays open longer than a few
// timer ticks, so that no hostile table waits for a user.
class PopupCanceller {
public:
    PopupCanceller();
    ~PopupCanceller();
    PopupCanceller(const PopupCanceller&) = delete;
    PopupCanceller& operator=(const PopupCanceller&) = delete;
    static int cancelled();

private:
    UINT_PTR timer_;
};

// One group of hostile inputs: takes the figures at the start, and at the
// end checks that every heap validates and that the windows, atoms and GDI
// objects are back where they were. count() the inputs tried.
class HostileGroup : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;
    void count(long n = 1) { inputs_ += n; }
    HWND parent() const { return parent_; }

private:
    ResourceFigures before_;
    HWND parent_ = nullptr;
    long inputs_ = 0;
};

// Random bytes from a fixed seed.
inline void FillRandom(char* p, size_t n, uint32_t seed) {
    uint32_t x = seed * 2654435761u + 1;
    for (size_t i = 0; i < n; ++i) {
        x ^= x << 13;
        x ^= x >> 17;
        x ^= x << 5;
        p[i] = static_cast<char>(x >> 24);
    }
}

}  // namespace fktest
