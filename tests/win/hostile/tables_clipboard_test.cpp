// Hostile tables through the table store, hostile clipboard contents through the paste.
#include <algorithm>

#include "tests/support/files.h"
#include "tests/win/hostile/hostile.h"

using namespace fktest;

namespace {

void ExpectCut(HGLOBAL line) {  // lines are kept cut to 255 characters
    if (line == nullptr) return;
    EXPECT_LE(strlen(static_cast<const char*>(GlobalLock(line))), 255u);
    GlobalUnlock(line), GlobalFree(line);
}

class HostileStores : public HostileGroup {
protected:
    void TearDown() override {
        twFreeTable(nullptr);
        for (const auto& p : files) DeleteFileA(p.c_str());
        if (OpenClipboard(parent)) EmptyClipboard(), CloseClipboard();
        HostileGroup::TearDown();
    }
    std::string Write(const char* name, std::string text, bool lines = false) {  // lines: no NUL or Ctrl-Z, read far
        if (lines) std::replace_if(text.begin(), text.end(), [](char c) { return c == 0 || c == 0x1A; }, ',');
        return files.emplace_back(WriteTable(name, text));
    }
    std::vector<std::string> files;
};

}  // namespace

// Missing, binary and oversize tables searched with hostile keys, columns and delimiters (a line comes back cut to
// 255 characters), loaded (the oversize one refused) and copied (onto itself refused).
TEST_F(HostileStores, TablesMissingBinaryOrOversizeAreSearchedLoadedAndCopiedSafely) {
    const std::string empty = Write("fk_hostile_empty.tbl", ""), source = Write("fk_hostile_src.tbl", "A,1\r\nB,2\r\n");
    const std::string oversize = Write("fk_hostile_oversize.tbl", std::string((4u << 20) + 1, 'O'));
    const std::vector<std::string> names{
        "", "fk_no_such_table", "fk_no_such_dir\\fk_no_such.tbl", std::string(300, 'n'), std::string(70000, 'n'), kHigh,
        "@RES", "@RES(", "@RES()", "@RES(FK_NO_SUCH)", "@RES(" + std::string(5000, 'R') + ")", "@res(#1)", "NUL", ".",
        "..\\", empty, oversize, source, Write("fk_hostile_blank.tbl", "\r\n\n\r   \t\r\n\x1A" "A,B\r\n"),
        Write("fk_hostile_binary.tbl", Random(64 * 1024, 7)), Write("fk_hostile_ln.tbl", Random(256 * 1024, 9), true),
        Write("fk_hostile_longline.tbl", std::string(1 << 20, 'L') + ",KEY\r\nKEY,x\r\n"),
        Write("fk_hostile_delims.tbl", std::string(100000, ',') + "\r\n" + std::string(100000, '\n')),
        Write("fk_hostile_tabs.tbl", std::string(300, '\t') + "\r\n%s%n,%s%n\r\n")};
    const std::vector<std::string> keys{"", " ", "KEY", "B", kHigh, std::string(5000, 'L'), Random(20, 3)};
    for (const auto& name : names) {
        NowTrying("twSearchTable", name.substr(0, 60));
        GuardedBuffer n(name);
        Tried(twLoadTable(n.data(), nullptr));
        for (const auto& key : keys) {
            GuardedBuffer k(key);
            for (int column : {INT_MIN, -1, 0, 1, 2, 3, 255, 256, 100000, INT_MAX})
                for (char delimiter : {'\0', ',', '\xFF', '\n', 'L', ' '})
                    ExpectCut(Tried(twSearchTable(n.data(), column, k.data(), delimiter, nullptr, 0)));
        }
        EXPECT_EQ(Tried(twSearchTable(n.data(), 1, nullptr, ',', nullptr, 0)), nullptr);
        twFreeTable(n.data());
    }
    EXPECT_EQ(Tried(twSearchTable(nullptr, 1, "A", ',', nullptr, 0)), nullptr);
    EXPECT_EQ(Tried(twLoadTable(nullptr, nullptr) + twLoadTable(oversize.c_str(), nullptr)), 0) << "oversize is not read";
    EXPECT_EQ(Tried(twCopyFile(nullptr, source.c_str()) + twCopyFile(source.c_str(), nullptr)), 0);
    EXPECT_EQ(Tried(twCopyFile(source.c_str(), source.c_str())), 0) << "a table copied onto itself";
}

// Clipboard text without a terminator, with embedded NULs, of 10 MB, and hostile arguments; the paste fills a buffer
// of exactly max bytes, the copy reads no further than its count.
TEST_F(HostileStores, ClipboardPastesWithinTheBufferAndCopiesWithinTheCount) {
    const int size = 10 << 20;
    const std::string u100(100, 'U'), m10(size, 'M');
    GuardedBuffer unterminated(8);
    std::memset(unterminated.data(), 'v', 8);
    const struct {
        bool copy;         // through twClipboardCopyText (count n), else n bytes put as CF_TEXT as they are
        const char* text;  // put nothing: an empty clipboard
        int n, max;        // max: the paste's buffer, of exactly that size
        int want;          // the length pasted (the text's first bytes); with no buffer or text, what it returns
    } cases[] = {  // the 100 bytes end with their block: Wine makes the last one a terminator
        {false, u100.c_str(), 100, 50, 50}, {false, u100.c_str(), 100, 99, 99}, {false, u100.c_str(), 100, 100, 99},
        {false, u100.c_str(), 100, 4096, 99}, {false, "ab\0cd\0\0ef", 10, 159, 2}, {false, "ab\0cd\0\0ef", 10, 1, 1},
        {false, m10.c_str(), size + 1, 159, 159}, {false, m10.c_str(), size + 1, size, size},
        {true, m10.c_str(), 10, 159, 10}, {true, m10.c_str(), size, size + 1, size}, {false, "xyz", 4, 0, 1},
        {false, "xyz", 4, -5, 1}, {true, nullptr, 5, 10, 0}, {true, "abc", -1, 10, 0},
        {true, unterminated.data(), 8, 10, 8}, {false, nullptr, 0, 10, 0}};
    for (const auto& c : cases) {
        NowTrying("clipboard", std::to_string(c.n) + " bytes into " + std::to_string(c.max));
        HGLOBAL block = c.copy || c.text == nullptr ? nullptr : GlobalAlloc(GMEM_MOVEABLE, c.n);
        if (block != nullptr) std::memcpy(GlobalLock(block), c.text, c.n), GlobalUnlock(block);
        ASSERT_TRUE(OpenClipboard(parent) && EmptyClipboard());
        ASSERT_TRUE((!block || SetClipboardData(CF_TEXT, block)) && CloseClipboard());
        if (c.copy) EXPECT_EQ(Tried(twClipboardCopyText(parent, c.text, c.n)), 1) << g_trying;
        GuardedBuffer out(std::max(c.max, 1));
        std::memset(out.data(), '#', out.len);
        const int pasted = Tried(twClipboardPasteText(parent, out.data(), c.max));
        const bool text = c.max > 0 && (c.copy || c.text != nullptr);
        const std::string got = text ? std::string(out.data(), strnlen(out.data(), out.len)) : std::to_string(pasted);
        EXPECT_EQ(got, text ? std::string(c.text ? c.text : "", c.want) : std::to_string(c.want)) << g_trying;
    }
    EXPECT_EQ(Tried(twClipboardPasteText(parent, nullptr, 100)), 0) << "an empty clipboard pastes nothing";
    EXPECT_EQ(Tried(twClipboardPasteText(reinterpret_cast<HWND>(0x1234), nullptr, 0)), 0) << "cannot open";
}
