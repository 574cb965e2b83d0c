// twValidate: which test refuses a value, and what the parent is told.
#include <time.h>

#include "tests/win/tables/popup_driver.h"
#include "tests/win/validate/fixture.h"

namespace {

using fktest::ErrorFixture;
using fktest::MessageBoxWatcher;
using fktest::PopupDriver;
using fktest::PopupInput;
using fktest::RecordingField;

class Validate : public ErrorFixture {
protected:
    // Validates value under method; returns the result, and the only notice
    // (error 0 when none was sent).
    template <typename T>
    int Run(int type, T value, const char* method, const char* text = "x") {
        notices.clear();
        RecordingField field(parent, text);
        std::string m = method;
        m.resize(m.size() + 4, 0);
        std::string t = text;
        return twValidate(field, type, &value, m.data(), t.data());
    }
    int RunText(const char* value, const char* method) {
        notices.clear();
        RecordingField field(parent, value);
        std::string m = method;
        std::string v = value;
        return twValidate(field, 4, v.data(), m.data(), v.data());
    }
    LONG Error() const { return notices.empty() ? 0 : notices.back().error; }
};

struct tm Date(int year, int month, int day) {
    struct tm d;
    memset(&d, 0, sizeof d);
    d.tm_year = year;
    d.tm_mon = month;
    d.tm_mday = day;
    return d;
}

TEST_F(Validate, Numbers) {
    struct Case {
        int type;
        int32_t value;
        const char* method;
        const char* text;
        int result;
        LONG error;
    } cases[] = {
        {1, 12, "", "12", 1, 0},
        {1, 12, "@RNG(1,9)", "12", 0, 300},
        {1, 5, "@RNG(1,9)", "5", 1, 0},
        {1, 0, "@RNG(1,9)", "0", 1, 0},          // zero without @MND is not tested
        {2, 0, "@RNG(1,9)", "0", 1, 0},
        {1, 0, "@MND", "0", 0, 100},             // text not blank, value 0
        {2, 0, "@MND", "0", 0, 100},
        {1, 0, "@MND", "   ", 0, 100},           // blank text
        {1, 0, "@MND@RNG(0,5)", "0", 1, 0},      // a range accepted the 0
        {1, 0, "@MND@CHC(0,5)", "0", 1, 0},
        {1, 4, "@CHC(1,2,3)", "4", 0, 500},
        {1, 3, "@CHC(1,2,3)@RNG(5,9)", "3", 0, 300},  // range before choice
    };
    for (const Case& c : cases) {
        EXPECT_EQ(Run(c.type, c.value, c.method, c.text), c.result) << c.method << " " << c.value;
        EXPECT_EQ(Error(), c.error) << c.method << " " << c.value;
        if (!notices.empty()) EXPECT_EQ(notices.back().type, c.type);
    }
}

TEST_F(Validate, WarningEndsValidation) {
    answer = 0;  // not handled: the box warns and the value stands
    MessageBoxWatcher boxes;
    EXPECT_EQ(Run(1, 12, "@RNG(1,9)@WARN@CHC(5)"), 1);
    ASSERT_EQ(boxes.boxes().size(), 1u);  // the choice test did not run
    EXPECT_EQ(boxes.boxes()[0].caption, "Numeric Value");
}

TEST_F(Validate, RealsAndTheirCaption) {
    EXPECT_EQ(Run(3, 2.5, "@RNG(1,2)"), 0);
    ASSERT_EQ(notices.size(), 1u);
    EXPECT_EQ(notices[0].caption, "Numeric Value");
    EXPECT_EQ(Run(12, 2.5, "@RNG(1,2)"), 0);
    ASSERT_EQ(notices.size(), 1u);
    EXPECT_EQ(notices[0].type, 12);
    EXPECT_EQ(notices[0].caption, "Error Condition");
    EXPECT_EQ(Run(3, -0.0, "@RNG(1,2)"), 1);  // -0.0 is empty
    EXPECT_EQ(Run(12, 15.0, "@CHC(1.5)"), 1);
    EXPECT_EQ(Run(3, 15.0, "@CHC(1.5)"), 0);
}

TEST_F(Validate, NoticeCarriesTheFailingKeyword) {
    EXPECT_EQ(Run(1, 12, "@NUM@RNG(1,9)@MSG(One digit)"), 0);
    ASSERT_EQ(notices.size(), 1u);
    EXPECT_EQ(notices[0].method, "@RNG(1,9)@MSG(One digit)");
    EXPECT_EQ(notices[0].message, "One digit");
    EXPECT_EQ(notices[0].caption, "");
    EXPECT_EQ(notices[0].id, 42);
    EXPECT_EQ(Run(1, 12, "@MSG(x)@RNG(1,9)"), 0);
    EXPECT_EQ(notices[0].message, "Value out of range.");
    EXPECT_EQ(notices[0].caption, "Numeric Value");
}

TEST_F(Validate, Strings) {
    struct Case {
        const char* value;
        const char* method;
        int result;
        LONG error;
    } cases[] = {
        {"", "@RNG(a,m)@CHC(x)", 1, 0},   // empty without @MND
        {"  ", "@MND", 0, 100},
        {"b", "@MND", 1, 0},
        {"Apple", "@RNG(a,m)", 1, 0},     // the locale's order puts "Apple" after "a"
        {"zebra", "@RNG(a,m)", 0, 300},
        {"Zebra", "@RNGI(a,m)", 0, 300},
        {"Blue", "@CHC(Red, Blue)", 1, 0},
        {"blue", "@CHC(Red, Blue)", 0, 500},
        {"blue", "@CHCI(Red, Blue)", 1, 0},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(RunText(c.value, c.method), c.result) << c.value << " " << c.method;
        EXPECT_EQ(Error(), c.error) << c.value << " " << c.method;
        if (!notices.empty()) {
            EXPECT_EQ(notices.back().type, 4);
            EXPECT_EQ(notices.back().caption, "Character String");
        }
    }
}

TEST_F(Validate, Dates) {
    struct Case {
        int type;
        struct tm date;
        const char* method;
        int result;
        LONG error;
        const char* message;
    } cases[] = {
        {13, Date(0, -1, 0), "@RNG(01/01/90,)", 1, 0, ""},
        {13, Date(0, -1, 0), "@MND", 0, 100, "Value not entered."},
        {13, Date(100, 1, 29), "", 1, 0, ""},  // empty method: not checked at all
        {13, Date(100, 1, 29), "@RNG(,)", 0, 400, "Value is not valid."},
        {14, Date(0, 1, 29), "@RNG(,)", 1, 0, ""},
        {14, Date(-901, 0, 1), "@MSG(Mine)", 0, 400, "Year must be four digits and greater than 999"},
        {13, Date(-901, 0, 1), "@MSG(Mine)", 1, 0, ""},
        {16, Date(95, 5, 15), "@RNG(01.01.1996,)@MSG(Too early)", 0, 300, "Too early"},
        {13, Date(95, 5, 15), "@RNG(Jan 1 1990,)", 0, 300, "Value out of range."},
        {18, Date(95, 5, 15), "@CHC(1995-06-15)", 1, 0, ""},
        {5, Date(95, 5, 15), "@CHC(06/16/95)", 0, 500, "Not a valid choice."},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(Run(c.type, c.date, c.method), c.result) << c.type << " " << c.method;
        EXPECT_EQ(Error(), c.error) << c.type << " " << c.method;
        if (!notices.empty()) {
            EXPECT_EQ(notices.back().type, 5);
            EXPECT_EQ(notices.back().message, c.message);
            // Default messages come with the type's caption, "@MSG" ones with none.
            const bool own = strstr(c.message, "Value") == nullptr && strstr(c.message, "choice") == nullptr;
            EXPECT_EQ(notices.back().caption, own ? "" : "Date Value") << c.message;
        }
    }
}

TEST_F(Validate, ReservedAndOutOfRangeTypes) {
    for (int type : {6, 7, 8, 9, 10, 11, 0, 19, -1}) {
        EXPECT_EQ(Run(type, 0, "@MND@RNG(1,2)"), 0) << type;
        EXPECT_TRUE(notices.empty()) << type;
    }
    EXPECT_EQ(Run(1, 5, ""), 1);
}

TEST_F(Validate, NullPointersDoNotCrash) {
    RecordingField field(parent, "");
    char method[] = "@MND@RNG(1,2)";
    EXPECT_EQ(twValidate(field, 1, nullptr, nullptr, nullptr), 1);
    EXPECT_EQ(twValidate(field, 1, nullptr, method, nullptr), 0);  // blank text: not entered
    EXPECT_EQ(twValidate(field, 4, nullptr, method, nullptr), 0);
    EXPECT_EQ(twValidate(field, 13, nullptr, method, nullptr), 0);
    EXPECT_EQ(twValidateRange(1, nullptr, method), 0);
    EXPECT_EQ(twValidateChoice(1, nullptr, nullptr), 0);
    EXPECT_EQ(twValidate(nullptr, 4, nullptr, nullptr, nullptr), 1);
}

TEST_F(Validate, OverlongMethodIsCut) {
    std::string method = "@RNG(1,9)" + std::string(3000, 'x');
    EXPECT_EQ(Run(1, 12, method.c_str()), 0);
    EXPECT_EQ(Error(), 300);
}

// Lookup tables.
class TableValidate : public Validate {
protected:
    void SetUp() override {
        Validate::SetUp();
        path = fktest::WriteTable("fk_validate.tbl", "PAR,Paris,FR\r\nROM,Rome,IT\r\nOSL,Oslo,NO\r\n");
        twFreeTable(path.c_str());
    }
    void TearDown() override {
        twFreeTable(path.c_str());
        DeleteFileA(path.c_str());
    }
    std::string Tbl(const char* rest = "") const { return "@TBL(" + path + ")" + rest; }
    std::string path;
};

TEST_F(TableValidate, FoundEntriesPass) {
    EXPECT_EQ(RunText("ROM", Tbl().c_str()), 1);
    EXPECT_EQ(RunText("  ROM  ", Tbl().c_str()), 1);  // key clipped both ends
    EXPECT_EQ(RunText("Rome", Tbl("@KEY(2)").c_str()), 1);
    EXPECT_EQ(RunText("IT", Tbl("@KEY(3)@DLM(,)").c_str()), 1);
    EXPECT_EQ(RunText("ROM", Tbl("@RNG(A,M)").c_str()), 0);  // found, then the range refuses
    EXPECT_EQ(Error(), 300);
    EXPECT_TRUE(parent.Of(GXN_ERRORSHOWN).empty());
}

TEST_F(TableValidate, MissNoticeAndParentReply) {
    struct Case {
        std::string method;
        LRESULT reply;
        int result;
        const char* caption;
    } cases[] = {
        {Tbl(), GXR_HANDLED, 0, "Application Error"},
        {Tbl("@WARN@BEEP"), GXR_HANDLED | GXR_ACCEPT, 1, "Warning"},
        {"@WARN" + Tbl(), GXR_HANDLED, 0, "Application Error"},  // "@WARN" must follow "@TBL"
        {"@TBL(C:\\no\\such\\table.tbl)", GXR_HANDLED, 0, "Application Error"},
    };
    for (const Case& c : cases) {
        answer = c.reply;
        EXPECT_EQ(RunText("XXX", c.method.c_str()), c.result) << c.method;
        ASSERT_EQ(notices.size(), 1u) << c.method;
        const fktest::Notice& n = notices[0];
        EXPECT_EQ(n.message, "Table Entry not found.");
        EXPECT_EQ(n.caption, c.caption) << c.method;
        EXPECT_EQ(n.type, 4);
        EXPECT_EQ(n.error, 600);
        EXPECT_EQ(n.id, 42);
        EXPECT_EQ(n.method, c.method);
    }
}

TEST_F(TableValidate, AcceptedMissSkipsTheLaterTests) {
    answer = GXR_HANDLED | GXR_ACCEPT;
    EXPECT_EQ(RunText("XXX", Tbl("@RNG(A,B)").c_str()), 1);
    ASSERT_EQ(notices.size(), 1u);
    EXPECT_EQ(notices[0].error, 600);
}

TEST_F(TableValidate, MandatoryBlankOffersTheTable) {
    answer = GXR_HANDLED;
    EXPECT_EQ(RunText("   ", Tbl("@MND").c_str()), 0);
    ASSERT_EQ(notices.size(), 1u);
    EXPECT_EQ(notices[0].error, 600);
    EXPECT_EQ(notices[0].message, "Table Entry not found.");
}

TEST_F(TableValidate, PopupPickSetsTheKeyAndRefuses) {
    answer = 0;  // not handled: the popup opens
    RecordingField field(parent, "XXX");
    PopupDriver driver(path.c_str(), {{PopupInput::Key, VK_DOWN}, {PopupInput::Key, VK_RETURN}});
    std::string method = Tbl("@KEY(2)@DISPLAY(2,3)");
    char text[] = "Nowhere";
    EXPECT_EQ(twValidate(field, 4, text, method.data(), text), 0);
    ASSERT_TRUE(driver.seen());
    EXPECT_EQ(driver.items(), (std::vector<std::string>{"Paris\tFR", "Rome\tIT", "Oslo\tNO"}));
    EXPECT_EQ(driver.owner(), parent.hwnd());
    char now[32] = "";
    GetWindowTextA(field, now, sizeof now);
    EXPECT_STREQ(now, "Rome");
    auto shown = parent.Of(GXN_ERRORSHOWN);
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].wp, 42u);
    EXPECT_TRUE(RecordingField::Got(EM_SETSEL, 0, 500));
    EXPECT_EQ(GetFocus(), field.get());
    // The popup opened just below the field.
    RECT fieldRect;
    GetWindowRect(field, &fieldRect);
    EXPECT_NEAR(driver.rect().left, fieldRect.left, 4);
    EXPECT_NEAR(driver.rect().top, fieldRect.bottom, 4);
    // Validated afresh with the picked key, the value passes.
    char picked[] = "Rome";
    EXPECT_EQ(twValidate(field, 4, picked, method.data(), picked), 1);
}

TEST_F(TableValidate, PopupCancelLeavesTheText) {
    answer = 0;
    RecordingField field(parent, "XXX");
    PopupDriver driver(path.c_str(), {{PopupInput::Key, VK_ESCAPE}});
    std::string method = Tbl("@POS(5,6,120,60)");
    char text[] = "XXX";
    EXPECT_EQ(twValidate(field, 4, text, method.data(), text), 0);
    ASSERT_TRUE(driver.seen());
    char now[32] = "";
    GetWindowTextA(field, now, sizeof now);
    EXPECT_STREQ(now, "XXX");
    const LONG units = GetDialogBaseUnits();
    POINT at{MulDiv(5, LOWORD(units), 4), MulDiv(6, HIWORD(units), 8)};
    ClientToScreen(parent, &at);
    EXPECT_EQ(driver.rect().left, at.x);
    EXPECT_EQ(driver.rect().top, at.y);
    EXPECT_EQ(driver.rect().right - driver.rect().left, MulDiv(120, LOWORD(units), 4));
    EXPECT_EQ(parent.Of(GXN_ERRORSHOWN).size(), 1u);
}

TEST_F(TableValidate, MissingTableWithoutHandlerRefusesQuietly) {
    answer = 0;
    MessageBoxWatcher boxes;
    char method[] = "@TBL(C:\\no\\such\\table.tbl)@BEEP";
    EXPECT_EQ(RunText("XXX", method), 0);
    EXPECT_EQ(notices.size(), 1u);
    EXPECT_TRUE(boxes.boxes().empty());
    EXPECT_EQ(parent.Of(GXN_ERRORSHOWN).size(), 1u);
}

}  // namespace
