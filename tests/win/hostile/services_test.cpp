// Hostile input to the exported services: validation and error reporting
// with hostile method strings, and the method-string editors held to their
// buffer contract (buffers end at a guard page, so one byte too far faults).

#include <climits>
#include <ctime>
#include <string>
#include <vector>

#include "tests/support/msgbox_watch.h"
#include "tests/win/hostile/hostile.h"

namespace {

using fktest::GuardedBuffer;
using fktest::HostileGroup;
using fktest::HostileMethods;
using fktest::NowTrying;

const int kTypes[] = {INT_MIN, -1, 0, 1, 2, 3, 4, 5, 6, 7, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 1000};

// A value large enough for every type code (a double, a struct tm, a text),
// filled with a pattern; for text a terminator ends it early.
struct Value {
    explicit Value(int pattern) : bytes(256) {
        fktest::FillRandom(bytes.data(), bytes.size(), static_cast<uint32_t>(pattern));
        bytes[40] = 0;
    }
    void* get() { return bytes.data(); }
    std::vector<char> bytes;
};

HWND MakeField(HWND parent, const char* text) {
    return CreateWindowExA(0, "STATIC", text, WS_CHILD | WS_VISIBLE, 10, 10, 100, 20, parent,
                           reinterpret_cast<HMENU>(41), nullptr, nullptr);
}

class HostileServices : public HostileGroup {};

// Every type code with every hostile method string; the parent takes the
// errors, so no box is shown. Values: null, random bytes, the method text
// itself (as a text value), and a valid date.
TEST_F(HostileServices, ValidateWithHostileMethods) {
    fktest::PopupCanceller canceller;
    fktest::MessageBoxWatcher boxes;
    HWND field = MakeField(parent(), "   ");
    struct tm date{};
    date.tm_mday = 29;
    date.tm_mon = 1;
    date.tm_year = 100;
    for (const auto& m : HostileMethods()) {
        NowTrying("twValidate", m.name);
        GuardedBuffer method = GuardedBuffer::Text(m.text);
        GuardedBuffer asText = GuardedBuffer::Text(m.text);
        Value random(static_cast<int>(m.text.size()));
        for (int type : kTypes) {
            // A text value only where the type says text: the others read
            // a number or a date from it.
            void* const third = type == GXT_TEXT ? static_cast<void*>(asText.data()) : static_cast<void*>(&date);
            for (void* value : {static_cast<void*>(nullptr), random.get(), third}) {
                twValidate(field, type, value, method.data(), method.data());
                count();
            }
        }
        // Without a control the failures come up as boxes (a few types).
        for (int type : {GXT_LONG, GXT_DOUBLE, GXT_TEXT, GXT_DATE_YYYYMMDD}) {
            twValidate(nullptr, type, random.get(), method.data(), nullptr);
            count();
        }
        // The caller's method string is read, never written.
        EXPECT_EQ(std::string(method.data()), m.text) << m.name;
    }
    twValidate(field, GXT_TEXT, const_cast<char*>("x"), nullptr, nullptr);
    count();
    // Errors without a parent put up boxes; none may be left open.
    EXPECT_GE(boxes.boxes().size(), 1u);
    DestroyWindow(field);
    twFreeTable(nullptr);
}

TEST_F(HostileServices, RangeAndChoiceWithHostileMethods) {
    struct tm date{};
    date.tm_mday = 5;
    date.tm_mon = 4;
    date.tm_year = 99;
    for (const auto& m : HostileMethods()) {
        NowTrying("twValidateRange/Choice", m.name);
        GuardedBuffer method = GuardedBuffer::Text(m.text);
        Value random(7);
        for (int type : kTypes) {
            void* const third = type == GXT_TEXT ? static_cast<void*>(method.data()) : static_cast<void*>(&date);
            for (void* value : {static_cast<void*>(nullptr), random.get(), third}) {
                const int inRange = twValidateRange(type, value, method.data());
                const int chosen = twValidateChoice(type, value, method.data());
                EXPECT_TRUE(inRange == 0 || inRange == 1) << m.name << " type " << type;
                EXPECT_TRUE(chosen == 0 || chosen == 1) << m.name << " type " << type;
                count(2);
            }
        }
        EXPECT_EQ(std::string(method.data()), m.text) << m.name;
    }
    for (int type : kTypes) {
        EXPECT_EQ(twValidateRange(type, nullptr, nullptr), 0);
        EXPECT_EQ(twValidateChoice(type, nullptr, nullptr), 0);
        count(2);
    }
}

// Errors reported with hostile methods: taken by the parent, shown in a
// box owned by the parent, and shown without a control at all. The message
// and caption are copies that fit their buffers: "%s%n" is shown, not
// formatted.
TEST_F(HostileServices, ShowErrorWithHostileMethods) {
    fktest::MessageBoxWatcher boxes;
    HWND field = MakeField(parent(), "x");
    const int errors[] = {INT_MIN, -1, 0, 100, 200, 300, 400, 500, 600, 700, INT_MAX};
    for (const auto& m : HostileMethods()) {
        NowTrying("twShowError", m.name);
        GuardedBuffer method = GuardedBuffer::Text(m.text);
        fktest::g_parentHandlesErrors = true;
        for (int type : kTypes)
            for (int error : errors) {
                const int r = twShowError(field, method.data(), type, error);
                EXPECT_EQ(r, 0);
                count();
            }
        fktest::g_parentHandlesErrors = false;
        boxes.clear();
        const int shown = twShowError(field, method.data(), GXT_TEXT, GXE_RANGE);
        twShowError(nullptr, method.data(), GXT_DATE, GXE_INVALID);
        twShowError(reinterpret_cast<HWND>(0x4321), method.data(), 99, 0);
        count(3);
        EXPECT_TRUE(shown == 0 || shown == 1);
        ASSERT_EQ(boxes.boxes().size(), 3u) << m.name;
        for (const auto& box : boxes.boxes()) {
            EXPECT_LE(box.text.size(), 255u) << m.name;
            EXPECT_LE(box.caption.size(), 99u) << m.name;
        }
        if (m.text.find("%s%n") != std::string::npos && m.text.find("@MSG") != std::string::npos) {
            EXPECT_NE(boxes.boxes()[0].text.find("%s%n"), std::string::npos) << m.name;
        }
        EXPECT_EQ(std::string(method.data()), m.text) << m.name;
    }
    fktest::g_parentHandlesErrors = true;
    twShowError(field, nullptr, GXT_TEXT, GXE_RANGE);
    count();
    DestroyWindow(field);
}

// twGetMethodParam with the method in a buffer of exactly its length plus
// the two spare bytes, the argument in one of the method's length.
TEST_F(HostileServices, GetMethodParamKeepsToItsBuffers) {
    std::string high;
    for (int c = 0x80; c <= 0xFF; ++c) high.push_back(static_cast<char>(c));
    const std::vector<std::string> keywords{"", "@", "(", ")", ");", "@RNG", "@MSG", "@MBOX", "@TBL", "@" + high,
                                            std::string(300, '('), "@MND@RNG"};
    for (const auto& m : HostileMethods()) {
        for (const auto& k : keywords) {
            NowTrying("twGetMethodParam", m.name);
            GuardedBuffer method(m.text.size() + 3);
            std::memcpy(method.data(), m.text.c_str(), m.text.size() + 1);
            GuardedBuffer arg(m.text.size() + 1);
            const int found = twGetMethodParam(method.data(), k.c_str(), arg.data());
            EXPECT_TRUE(found == 0 || found == 1);
            EXPECT_LE(strlen(arg.data()), m.text.size());
            // The text itself is put back as it was.
            EXPECT_EQ(std::string(method.data()), m.text) << m.name << " / " << k.substr(0, 20);
            twGetMethodParam(method.data(), k.c_str(), nullptr);
            count(2);
        }
    }
    char arg[8] = "x";
    EXPECT_EQ(twGetMethodParam(nullptr, "@A", arg), 0);
    EXPECT_EQ(arg[0], 0);
    char method[8] = "@A(1)";
    EXPECT_EQ(twGetMethodParam(method, nullptr, arg), 0);
    count(2);
}

// twAddMethodParam into a buffer that just holds the result (the method,
// the item, the terminator), twRemoveMethodParam in place.
TEST_F(HostileServices, AddAndRemoveMethodParamKeepToTheirBuffers) {
    std::vector<std::string> items{"", "@", "(", ")", "@X(((", "@RNG(1,2)", "@MSG(%s%n)", std::string(70000, 'I'),
                                   "@TBL" + std::string(10000, '(')};
    for (const auto& m : HostileMethods()) items.push_back(m.text.substr(0, 2000));
    for (const auto& m : HostileMethods()) {
        for (const auto& item : items) {
            NowTrying("twAdd/RemoveMethodParam", m.name);
            GuardedBuffer method(m.text.size() + item.size() + 1);
            std::memcpy(method.data(), m.text.c_str(), m.text.size() + 1);
            const int added = twAddMethodParam(method.data(), item.c_str());
            EXPECT_TRUE(added == 0 || added == 1);
            EXPECT_LE(strlen(method.data()), m.text.size() + item.size());
            const int removed = twRemoveMethodParam(method.data(), item.c_str());
            EXPECT_TRUE(removed == 0 || removed == 1);
            count(2);
        }
        GuardedBuffer method = GuardedBuffer::Text(m.text);
        EXPECT_EQ(twAddMethodParam(method.data(), nullptr), 0);
        EXPECT_EQ(twRemoveMethodParam(method.data(), nullptr), 0);
        EXPECT_EQ(twAddMethodParam(nullptr, "@A"), 0);
        EXPECT_EQ(twRemoveMethodParam(nullptr, "@A"), 0);
        count(4);
    }
}

}  // namespace
