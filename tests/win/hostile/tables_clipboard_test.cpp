// Hostile tables (missing, empty, binary, oversize, device names) through
// the table store and popup, and hostile clipboard contents through the
// editing core's paste.

#include <climits>
#include <string>
#include <vector>

#include "tests/win/hostile/hostile.h"
#include "tests/win/tables/popup_driver.h"

namespace {

using fktest::GuardedBuffer;
using fktest::HostileGroup;
using fktest::NowTrying;

std::string Binary(size_t n, uint32_t seed) {
    std::string s(n, 0);
    fktest::FillRandom(s.data(), n, seed);
    return s;
}

// Binary text without a NUL or Ctrl-Z early on, so that it is read far.
std::string BinaryLines(size_t n, uint32_t seed) {
    std::string s = Binary(n, seed);
    for (char& c : s)
        if (c == 0 || c == 0x1A) c = ',';
    return s;
}

class HostileTables : public HostileGroup {
protected:
    void TearDown() override {
        twFreeTable(nullptr);
        for (const auto& p : files) DeleteFileA(p.c_str());
        HostileGroup::TearDown();
    }
    std::string Write(const char* name, const std::string& text) {
        files.push_back(fktest::WriteTable(name, text));
        return files.back();
    }
    std::vector<std::string> files;
};

TEST_F(HostileTables, SearchMissingEmptyAndBinaryTables) {
    std::vector<std::string> names{
        "",
        "fk_no_such_table",
        "fk_no_such_dir\\fk_no_such.tbl",
        std::string(300, 'n'),
        std::string(70000, 'n'),
        "@RES",
        "@RES(",
        "@RES()",
        "@RES(FK_NO_SUCH)",
        "@RES(" + std::string(5000, 'R') + ")",
        "@res(#1)",
        "NUL",
        ".",
        "..\\",
        Write("fk_hostile_empty.tbl", ""),
        Write("fk_hostile_blank.tbl", "\r\n\n\r   \t\r\n\x1A" "A,B\r\n"),
        Write("fk_hostile_binary.tbl", Binary(64 * 1024, 7)),
        Write("fk_hostile_binlines.tbl", BinaryLines(256 * 1024, 9)),
        Write("fk_hostile_longline.tbl", std::string(1 << 20, 'L') + ",KEY\r\nKEY,x\r\n"),
        Write("fk_hostile_delims.tbl", std::string(100000, ',') + "\r\n" + std::string(100000, '\n')),
        Write("fk_hostile_oversize.tbl", std::string((4u << 20) + 1, 'O')),
    };
    std::string high;
    for (int c = 0x80; c <= 0xFF; ++c) high.push_back(static_cast<char>(c));
    names.push_back(high);
    const std::vector<std::string> keys{"", " ", "KEY", "A", high, std::string(5000, 'L'), Binary(40, 3).substr(0, 20)};
    const int columns[] = {INT_MIN, -1, 0, 1, 2, 255, 256, 100000, INT_MAX};
    const char delimiters[] = {0, ',', '\xFF', '\n', 'L', ' '};
    for (const auto& name : names) {
        NowTrying("twSearchTable", name.substr(0, 60).c_str());
        GuardedBuffer n = GuardedBuffer::Text(name);
        twLoadTable(n.data(), nullptr);
        for (const auto& key : keys) {
            GuardedBuffer k = GuardedBuffer::Text(key);
            for (int column : columns) {
                for (char delimiter : delimiters) {
                    HGLOBAL line = twSearchTable(n.data(), column, k.data(), delimiter, nullptr, 0);
                    if (line != nullptr) {
                        // Lines are kept cut to 255 characters.
                        const char* text = static_cast<const char*>(GlobalLock(line));
                        EXPECT_LE(strlen(text), 255u);
                        GlobalUnlock(line);
                        GlobalFree(line);
                    }
                    count();
                }
            }
        }
        EXPECT_EQ(twSearchTable(n.data(), 1, nullptr, ',', nullptr, 0), nullptr);
        twFreeTable(n.data());
        count(2);
    }
    EXPECT_EQ(twSearchTable(nullptr, 1, "A", ',', nullptr, 0), nullptr);
    EXPECT_EQ(twLoadTable(nullptr, nullptr), 0);
    EXPECT_EQ(twLoadTable("", nullptr), 0);
    EXPECT_EQ(twLoadTable(files.back().c_str(), nullptr), 0);  // the oversize table is not read
    count(4);
}

// The popup over hostile tables: what it hands back is cut to lineMax - 1
// characters, whatever the lines and the rectangle.
TEST_F(HostileTables, ShowTableOverHostileTables) {
    const std::vector<std::string> paths{
        Write("fk_hostile_show_bin.tbl", BinaryLines(32 * 1024, 5)),
        Write("fk_hostile_show_long.tbl", std::string(1 << 16, 'S') + "\r\n" + std::string(300, 'T') + ",x\r\n"),
        Write("fk_hostile_show_tabs.tbl", std::string(300, '\t') + "\r\n%s%n,%s%n\r\n"),
    };
    const int lineMaxes[] = {INT_MIN, -1, 0, 1, 2, 17, 256, INT_MAX};
    const struct {
        int x, y, cx, cy;
    } rects[] = {{0, 0, 0, 0}, {-30000, -30000, 5, 5}, {INT_MAX, INT_MAX, INT_MAX, INT_MAX}, {10, 10, -50, -50}};
    const DWORD masks[] = {0, 1, 0x80000000u, 0xFFFFFFFFu};
    for (const auto& path : paths) {
        for (int lineMax : lineMaxes) {
            for (const auto& r : rects) {
                for (DWORD mask : masks) {
                    NowTrying("twShowTable", path.c_str());
                    fktest::PopupDriver driver(path.c_str(), {{fktest::PopupInput::Key, VK_END},
                                                              {fktest::PopupInput::Key, VK_RETURN}});
                    HGLOBAL line = twShowTable(parent(), path.c_str(), mask, r.x, r.y, r.cx, r.cy, '\t', lineMax,
                                               0, 0, 0, nullptr, 0);
                    EXPECT_TRUE(driver.seen()) << path;
                    if (line != nullptr) {
                        const char* text = static_cast<const char*>(GlobalLock(line));
                        if (lineMax > 0) EXPECT_LT(strlen(text), static_cast<size_t>(lineMax));
                        EXPECT_LE(strlen(text), 255u);
                        GlobalUnlock(line);
                        GlobalFree(line);
                    }
                    count();
                }
            }
        }
    }
    // Missing and empty tables show nothing and return at once.
    const std::string empty = Write("fk_hostile_show_empty.tbl", "");
    for (const char* name : {static_cast<const char*>(nullptr), "", "fk_no_such_table", empty.c_str()}) {
        EXPECT_EQ(twShowTable(parent(), name, 0, 0, 0, 50, 50, ',', 256, 0, 0, 0, nullptr, 0), nullptr);
        EXPECT_EQ(twShowTable(nullptr, name, 0, 0, 0, 50, 50, ',', 256, 0, 0, 0, nullptr, 0), nullptr);
        count(2);
    }
}

TEST_F(HostileTables, CopyFileWithHostileNames) {
    const std::string source = Write("fk_hostile_copy_src.tbl", "A,1\r\nB,2\r\n");
    const std::string dest = source + ".copy";
    files.push_back(dest);
    EXPECT_EQ(twCopyFile(nullptr, dest.c_str()), 0);
    EXPECT_EQ(twCopyFile(source.c_str(), nullptr), 0);
    EXPECT_EQ(twCopyFile("", ""), 0);
    EXPECT_EQ(twCopyFile("fk_no_such_table", dest.c_str()), 0);
    EXPECT_EQ(twCopyFile(source.c_str(), std::string(70000, 'd').c_str()), 0);
    // Onto itself: refused, and the table is still there.
    EXPECT_EQ(twCopyFile(source.c_str(), source.c_str()), 0);
    HGLOBAL line = twSearchTable(source.c_str(), 1, "B", ',', nullptr, 0);
    EXPECT_NE(line, nullptr);
    if (line) GlobalFree(line);
    EXPECT_EQ(twCopyFile(source.c_str(), dest.c_str()), 1);
    count(7);
}

class HostileClipboard : public HostileGroup {
protected:
    // Puts size bytes of text on the clipboard as CF_TEXT, as they are.
    bool Put(const char* bytes, size_t size) {
        HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, size);
        if (block == nullptr) return false;
        std::memcpy(GlobalLock(block), bytes, size);
        GlobalUnlock(block);
        if (!OpenClipboard(parent())) {
            GlobalFree(block);
            return false;
        }
        EmptyClipboard();
        const bool set = SetClipboardData(CF_TEXT, block) != nullptr;
        if (!set) GlobalFree(block);
        CloseClipboard();
        return set;
    }
    // Pastes into a buffer of exactly max bytes.
    std::string Paste(int max, int* result = nullptr) {
        GuardedBuffer out(max > 0 ? static_cast<size_t>(max) : 1);
        std::memset(out.data(), '#', out.size());
        const int r = twClipboardPasteText(parent(), out.data(), max);
        if (result) *result = r;
        count();
        return std::string(out.data(), strnlen(out.data(), out.size()));
    }
    void TearDown() override {
        if (OpenClipboard(parent())) {
            EmptyClipboard();
            CloseClipboard();
        }
        HostileGroup::TearDown();
    }
};

TEST_F(HostileClipboard, TextWithoutTerminator) {
    const std::string text(100, 'U');
    ASSERT_TRUE(Put(text.data(), text.size()));
    // The text ends with its block. Wine hands the block back with its
    // last byte made a terminator, so 99 or 100 characters arrive.
    for (int max : {1, 50, 99, 100, 101, 159, 4096}) {
        NowTrying("paste without terminator", std::to_string(max).c_str());
        const std::string got = Paste(max);
        EXPECT_GE(got.size(), std::min<size_t>(max, 99));
        EXPECT_LE(got.size(), std::min<size_t>(max, 100));
        EXPECT_EQ(got.find_first_not_of('U'), std::string::npos);
    }
}

TEST_F(HostileClipboard, TextWithEmbeddedNul) {
    const char text[] = "ab\0cd\0\0ef";
    ASSERT_TRUE(Put(text, sizeof text));
    EXPECT_EQ(Paste(159), "ab");
    EXPECT_EQ(Paste(2), "ab");
    EXPECT_EQ(Paste(1), "a");
}

TEST_F(HostileClipboard, TenMegabytes) {
    const size_t size = 10u << 20;
    std::string text(size, 'M');
    text[size - 1] = 'E';
    ASSERT_TRUE(Put(text.c_str(), size + 1));
    EXPECT_EQ(Paste(159), std::string(159, 'M'));
    EXPECT_EQ(Paste(static_cast<int>(size)), text);
    const std::string whole = Paste(static_cast<int>(size) + 1);
    EXPECT_EQ(whole, text);
    // And back through the copy routine, cut to what the caller allows.
    EXPECT_EQ(twClipboardCopyText(parent(), text.c_str(), static_cast<int>(size)), 1);
    EXPECT_EQ(Paste(static_cast<int>(size) + 1).size(), size);
    EXPECT_EQ(twClipboardCopyText(parent(), text.c_str(), 10), 1);
    EXPECT_EQ(Paste(159), std::string(10, 'M'));
    count(2);
}

TEST_F(HostileClipboard, HostileArguments) {
    ASSERT_TRUE(Put("xyz", 4));
    int r = -1;
    EXPECT_EQ(twClipboardPasteText(parent(), nullptr, 100), 1);
    Paste(0, &r);
    EXPECT_EQ(r, 1);
    Paste(-5, &r);
    EXPECT_EQ(r, 1);
    // A foreign owner cannot open the clipboard.
    EXPECT_EQ(twClipboardPasteText(reinterpret_cast<HWND>(0x1234), nullptr, 0), 0);
    EXPECT_EQ(twClipboardCopyText(parent(), nullptr, 5), 1);
    EXPECT_EQ(Paste(10), "");
    EXPECT_EQ(twClipboardCopyText(parent(), "abc", -1), 1);
    EXPECT_EQ(Paste(10), "");
    GuardedBuffer unterminated(8);
    std::memset(unterminated.data(), 'v', 8);
    EXPECT_EQ(twClipboardCopyText(parent(), unterminated.data(), 8), 1);
    EXPECT_EQ(Paste(10), "vvvvvvvv");
    count(6);
    // An empty clipboard pastes nothing.
    OpenClipboard(parent());
    EmptyClipboard();
    CloseClipboard();
    Paste(10, &r);
    EXPECT_EQ(r, 0);
}

}  // namespace
