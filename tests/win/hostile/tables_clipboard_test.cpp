// Hostile tables through the table store and popup, hostile clipboard contents through the paste.
#include <algorithm>

#include "tests/win/hostile/hostile.h"
#include "tests/win/tables/popup_driver.h"

using namespace fktest;

// Random bytes; with lines, no NUL or Ctrl-Z either, so that the text is read far.
static std::string Binary(size_t n, uint32_t seed, bool lines = false) {
    std::string s = Random(n, seed);
    if (lines) std::replace_if(s.begin(), s.end(), [](char c) { return c == 0 || c == 0x1A; }, ',');
    return s;
}

static void ExpectCut(HGLOBAL line, int lineMax) {
    if (line == nullptr) return;
    const size_t len = strlen(static_cast<const char*>(GlobalLock(line)));
    EXPECT_LE(len, 255u);  // lines are kept cut to 255 characters
    if (lineMax > 0) EXPECT_LT(len, static_cast<size_t>(lineMax));
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
    std::string Write(const char* name, const std::string& text) { return files.emplace_back(WriteTable(name, text)); }
    bool Put(const char* bytes, size_t size) {  // size bytes as CF_TEXT, as they are
        HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, size);
        std::memcpy(GlobalLock(block), bytes, size);
        GlobalUnlock(block);
        const bool set = OpenClipboard(parent) && EmptyClipboard() && SetClipboardData(CF_TEXT, block);
        CloseClipboard();
        if (!set) GlobalFree(block);
        return set;
    }
    std::string Paste(int max) {  // into a buffer of exactly max bytes
        NowTrying("clipboard", "paste");
        GuardedBuffer out(max > 0 ? static_cast<size_t>(max) : 1);
        std::memset(out.data(), '#', out.len);
        pasted = Tried(twClipboardPasteText(parent, out.data(), max));
        return std::string(out.data(), strnlen(out.data(), out.len));
    }
    std::vector<std::string> files;
    int pasted = -1;
};

// Missing, binary and oversize tables through store, copy and popup; the popup hands back < lineMax characters.
TEST_F(HostileStores, Tables) {
    const std::string high = HighBytes(), empty = Write("fk_hostile_empty.tbl", "");
    const std::vector<std::string> names{
        "", "fk_no_such_table", "fk_no_such_dir\\fk_no_such.tbl", std::string(300, 'n'), std::string(70000, 'n'), high,
        "@RES", "@RES(", "@RES()", "@RES(FK_NO_SUCH)", "@RES(" + std::string(5000, 'R') + ")", "@res(#1)", "NUL", ".",
        "..\\", empty, Write("fk_hostile_blank.tbl", "\r\n\n\r   \t\r\n\x1A" "A,B\r\n"),
        Write("fk_hostile_binary.tbl", Binary(64 * 1024, 7)), Write("fk_hostile_ln.tbl", Binary(256 * 1024, 9, true)),
        Write("fk_hostile_longline.tbl", std::string(1 << 20, 'L') + ",KEY\r\nKEY,x\r\n"),
        Write("fk_hostile_delims.tbl", std::string(100000, ',') + "\r\n" + std::string(100000, '\n')),
        Write("fk_hostile_oversize.tbl", std::string((4u << 20) + 1, 'O'))};
    const std::vector<std::string> keys{"", " ", "KEY", "A", high, std::string(5000, 'L'), Binary(20, 3)};
    for (const auto& name : names) {
        NowTrying("twSearchTable", name.substr(0, 60).c_str());
        GuardedBuffer n(name);
        Tried(twLoadTable(n.data(), nullptr));
        for (const auto& key : keys) {
            GuardedBuffer k(key);
            for (int column : {INT_MIN, -1, 0, 1, 2, 255, 256, 100000, INT_MAX})
                for (char delimiter : {'\0', ',', '\xFF', '\n', 'L', ' '})
                    ExpectCut(Tried(twSearchTable(n.data(), column, k.data(), delimiter, nullptr, 0)), 0);
        }
        EXPECT_EQ(twSearchTable(n.data(), 1, nullptr, ',', nullptr, 0), nullptr);
        twFreeTable(n.data());
    }
    EXPECT_EQ(twSearchTable(nullptr, 1, "A", ',', nullptr, 0), nullptr);
    EXPECT_EQ(twLoadTable(nullptr, nullptr) | twLoadTable("", nullptr), 0);
    EXPECT_EQ(twLoadTable(files.back().c_str(), nullptr), 0);  // the oversize table is not read
    const std::string source = Write("fk_hostile_copy_src.tbl", "A,1\r\nB,2\r\n"), dest = source + ".copy";
    files.push_back(dest);
    const std::string longName(70000, 'd');
    const char *from = source.c_str(), *to = dest.c_str();  // onto itself: refused, the table kept
    for (auto [a, b] : {std::pair{(const char*)nullptr, to}, {from, nullptr}, {"", ""}, {"fk_no_such_table", to},
                        {from, longName.c_str()}, {from, from}})
        EXPECT_EQ(Tried(twCopyFile(a, b)), 0) << (a ? a : "null") << " " << (b ? std::string(b).substr(0, 9) : "null");
    HGLOBAL line = twSearchTable(source.c_str(), 1, "B", ',', nullptr, 0);
    EXPECT_NE(line, nullptr);
    ExpectCut(line, 0);
    EXPECT_EQ(twCopyFile(source.c_str(), dest.c_str()), 1);
    const std::string paths[] = {
        Write("fk_hostile_show_bin.tbl", Binary(32 * 1024, 5, true)),
        Write("fk_hostile_show_long.tbl", std::string(1 << 16, 'S') + "\r\n" + std::string(300, 'T') + ",x\r\n"),
        Write("fk_hostile_show_tabs.tbl", std::string(300, '\t') + "\r\n%s%n,%s%n\r\n")};
    const int M = INT_MAX, F = -30000;  // each line length, rectangle and column mask tried once per table
    const struct { int lineMax, x, y, cx, cy; DWORD mask; } cases[] = {
        {INT_MIN, 0, 0, 0, 0, 0}, {-1, F, F, 5, 5, 1}, {0, M, M, M, M, 0x80000000u}, {1, 10, 10, -50, -50, ~0u},
        {2, F, F, 5, 5, 0}, {17, 10, 10, -50, -50, 1}, {256, 0, 0, 0, 0, ~0u}, {M, M, M, M, M, 0x80000000u}};
    for (const auto& path : paths)
        for (const auto& c : cases) {
            NowTrying("twShowTable", path.c_str());
            PopupDriver driver(path, {VK_END, VK_RETURN});
            ExpectCut(Tried(twShowTable(parent, path.c_str(), c.mask, c.x, c.y, c.cx, c.cy, '\t', c.lineMax, 0, 0, 0,
                                        nullptr, 0)), c.lineMax);
            EXPECT_NE(driver.popup, nullptr) << path << " " << c.lineMax;
        }
    for (const char* name : {static_cast<const char*>(nullptr), "", "fk_no_such_table", empty.c_str()}) {
        for (HWND owner : {parent.get(), HWND{}})
            EXPECT_EQ(Tried(twShowTable(owner, name, 0, 0, 0, 50, 50, ',', 256, 0, 0, 0, nullptr, 0)), nullptr);
    }
}

// Clipboard text without a terminator, with embedded NULs, of 10 MB, and hostile arguments.
TEST_F(HostileStores, Clipboard) {
    // The text ends with its block; Wine makes the block's last byte a terminator: 99 or 100 arrive.
    ASSERT_TRUE(Put(std::string(100, 'U').data(), 100));
    for (int max : {1, 50, 99, 100, 101, 159, 4096}) {
        const std::string got = Paste(max);
        EXPECT_GE(got.size(), std::min(max, 99));
        EXPECT_LE(got.size(), std::min(max, 100));
        EXPECT_EQ(got.find_first_not_of('U'), std::string::npos);
    }
    ASSERT_TRUE(Put("ab\0cd\0\0ef", 10));
    for (auto [max, want] : {std::pair{159, "ab"}, {2, "ab"}, {1, "a"}}) EXPECT_EQ(Paste(max), want) << max;
    const size_t size = 10u << 20;
    std::string text(size, 'M');
    text[size - 1] = 'E';
    ASSERT_TRUE(Put(text.c_str(), size + 1));
    EXPECT_EQ(Paste(159), std::string(159, 'M'));
    EXPECT_EQ(Paste(static_cast<int>(size)), text);
    EXPECT_EQ(Paste(static_cast<int>(size) + 1), text);
    EXPECT_EQ(twClipboardCopyText(parent, text.c_str(), static_cast<int>(size)), 1);
    EXPECT_EQ(Paste(static_cast<int>(size) + 1).size(), size);
    EXPECT_EQ(twClipboardCopyText(parent, text.c_str(), 10), 1);  // cut to what the caller allows
    EXPECT_EQ(Paste(159), std::string(10, 'M'));
    ASSERT_TRUE(Put("xyz", 4));
    EXPECT_EQ(twClipboardPasteText(parent, nullptr, 100), 1);
    EXPECT_EQ((Paste(0), pasted), 1);
    EXPECT_EQ((Paste(-5), pasted), 1);
    EXPECT_EQ(twClipboardPasteText(reinterpret_cast<HWND>(0x1234), nullptr, 0), 0);  // cannot open the clipboard
    GuardedBuffer unterminated(8);
    std::memset(unterminated.data(), 'v', 8);
    const char* const v8 = unterminated.data();
    for (auto [text, n, want] : {std::tuple{(const char*)nullptr, 5, ""}, {"abc", -1, ""}, {v8, 8, "vvvvvvvv"}}) {
        EXPECT_EQ(twClipboardCopyText(parent, text, n), 1) << want;
        EXPECT_EQ(Paste(10), want);
    }
    ASSERT_TRUE(OpenClipboard(parent) && EmptyClipboard() && CloseClipboard());
    EXPECT_EQ((Paste(10), pasted), 0);  // an empty clipboard pastes nothing
}
