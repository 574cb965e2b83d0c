// Hostile input to validation, error reporting and the method-string editors (buffers end at a guard page).
#include "tests/win/hostile/hostile.h"

using namespace fktest;

namespace {

class HostileServices : public HostileGroup {};

}  // namespace

// Every type, value and method validates and reports within its buffers ("%s%n" shown as is) and leaves the method
// as it was; the editors keep their bounds; a handle that is not a window (HWND_BROADCAST) is a quiet no-op.
TEST_F(HostileServices, ValidationErrorsAndMethodEditorsKeepTheirBounds) {
    MessageBoxWatcher boxes;
    RecordingParent bystander;
    HWND field = CreateWindowExA(0, "STATIC", "   ", WS_CHILD | WS_VISIBLE, 10, 10, 99, 20, parent, HMENU(41), 0, 0);
    struct tm date{0, 0, 0, 29, 1, 100};  // 29 February 2000
    const std::vector<std::string> keywords{"", "@", "(", ")", ");", "@RNG", "@MSG", "@MBOX", "@TBL", "@" + kHigh,
                                            std::string(300, '('), "@MND@RNG"};
    std::vector<std::string> items{"", "@", "(", ")", "@X(((", "@RNG(1,2)", "@MSG(%s%n)", std::string(70000, 'I'),
                                   "@TBL" + std::string(10000, '(')};
    for (const auto& m : HostileMethods()) items.push_back(m.text.substr(0, 2000));
    for (const auto& m : HostileMethods()) {
        NowTrying("validation", m.name);
        GuardedBuffer method(m.text), asText(m.text), read(m.text.size() + 3);  // read: looked at 2 bytes beyond
        std::memcpy(read.data(), m.text.c_str(), m.text.size() + 1);
        std::string random = Random(256, static_cast<uint32_t>(m.text.size()));
        random[40] = 0;
        g_parentHandlesErrors = true;
        for (int type : {INT_MIN, -1, 0, 1, 2, 3, 4, 5, 6, 7, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 1000}) {
            void* const real = type == GXT_TEXT ? static_cast<void*>(asText.data()) : static_cast<void*>(&date);
            for (void* value : {static_cast<void*>(nullptr), static_cast<void*>(random.data()), real}) {
                Tried(twValidate(field, type, value, method.data(), method.data()));
                EXPECT_LE(unsigned(Tried(twValidateRange(type, value, method.data()))), 1u) << m.name << " " << type;
                EXPECT_LE(unsigned(Tried(twValidateChoice(type, value, method.data()))), 1u) << m.name << " " << type;
            }
            for (int error : {INT_MIN, -1, 0, 100, 200, 300, 400, 500, 600, 700, INT_MAX})
                EXPECT_EQ(Tried(twShowError(field, method.data(), type, error)), 0);
        }
        g_parentHandlesErrors = false;
        boxes.clear();
        Tried(twShowError(field, method.data(), GXT_TEXT, GXE_RANGE));
        for (int type : {GXT_LONG, GXT_DOUBLE, GXT_TEXT, GXT_DATE_YYYYMMDD})  // without a control: boxes
            Tried(twValidate(nullptr, type, random.data(), method.data(), nullptr));
        ASSERT_FALSE(boxes.boxes().empty()) << m.name;
        for (const auto& box : boxes.boxes())
            EXPECT_TRUE(box.text.size() <= 255 && box.caption.size() <= 99) << m.name << ": " << box.caption;
        if (m.text.find("@MSG(%s%n") != std::string::npos)
            EXPECT_NE(boxes.boxes()[0].text.find("%s%n"), std::string::npos) << m.name;
        NowTrying("method editors", m.name);
        for (const auto& k : keywords) {
            GuardedBuffer arg(m.text.size() + 1);
            EXPECT_LE(unsigned(Tried(twGetMethodParam(read.data(), k.c_str(), arg.data()))), 1u);
            Tried(twGetMethodParam(read.data(), k.c_str(), nullptr));
        }
        for (const auto& item : items) {
            GuardedBuffer edited(m.text.size() + item.size() + 1);
            std::memcpy(edited.data(), m.text.c_str(), m.text.size() + 1);
            EXPECT_LE(unsigned(Tried(twAddMethodParam(edited.data(), item.c_str()))), 1u);
            EXPECT_LE(unsigned(Tried(twRemoveMethodParam(edited.data(), item.c_str()))), 1u);
        }
        EXPECT_EQ(Tried(twAddMethodParam(method.data(), nullptr) | twRemoveMethodParam(method.data(), nullptr)), 0);
        EXPECT_EQ(std::string(method.data()) + read.data(), m.text + m.text) << m.name;
    }
    g_parentHandlesErrors = true;
    char arg[8] = "x";
    EXPECT_EQ(Tried(twGetMethodParam(nullptr, "@A", arg) | twGetMethodParam(arg, nullptr, arg)), 0);
    EXPECT_EQ(Tried(twAddMethodParam(nullptr, "@A") | twRemoveMethodParam(nullptr, "@A")) + arg[0], 0);
    Tried(twValidate(field, GXT_TEXT, arg, nullptr, nullptr) + twShowError(field, nullptr, GXT_TEXT, GXE_RANGE));
    DestroyWindow(field);  // from here on a dead handle
    NowTrying("non-window handles", "twAutoTab, twShowError");
    boxes.clear();
    bystander.clear();
    for (HWND h : {HWND_BROADCAST, reinterpret_cast<HWND>(0x4321), reinterpret_cast<HWND>(-1), field}) {
        EXPECT_EQ(Tried(twAutoTab(h)), 0) << h;
        EXPECT_EQ(Tried(twShowError(h, const_cast<char*>("@MSG(x)@WARN"), GXT_TEXT, GXE_RANGE)), 0) << h;
    }
    PumpMessages();
    for (UINT msg : {UINT(GXM_VALIDATE), UINT(WM_KEYDOWN), UINT(EM_SETSEL)})
        EXPECT_TRUE(bystander.Of(msg).empty()) << "a non-window handle sent 0x" << std::hex << msg;
    EXPECT_TRUE(boxes.boxes().empty());
}
