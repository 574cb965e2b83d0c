// twShowError: what the parent is told, and the box shown when it does not
// handle the failure.
#include "tests/win/validate/fixture.h"

namespace {

using fktest::ErrorFixture;
using fktest::MessageBoxWatcher;
using fktest::RecordingField;

class ShowError : public ErrorFixture {};

TEST_F(ShowError, ComposesMessageAndCaption) {
    struct Case {
        const char* method;
        int type, error;
        const char* message;
        const char* caption;
    } cases[] = {
        {"@MBOX(Too large:Quantity)", 1, 300, "Too large", "Quantity"},
        {"@MBOX(Too large;Quantity)", 1, 300, "Too large", "Quantity"},
        {"@MBOX(a;b:c)", 1, 300, "a;b", "c"},  // ":" is tried first over the whole text
        {"@MBOX(Too large)@WARN", 1, 300, "Too large", "Warning"},
        {"@MBOX(Too large)", 1, 300, "Too large", "Application Error"},
        {"@MBOX(x)@MSG(y)", 1, 300, "x", "Application Error"},
        {"@STAT(On the status line)", 4, 100, "On the status line", ""},
        {"@MSG(One digit)", 1, 300, "One digit", ""},
        {"@RNG(1,9)", 1, 100, "Value not entered.", "Numeric Value"},
        {"", 2, 200, "Value not filled.", "Numeric Value"},
        {"", 3, 300, "Value out of range.", "Numeric Value"},
        {"", 4, 400, "Value is not valid.", "Character String"},
        {"", 10, 500, "Not a valid choice.", "Character String"},
        {"", 5, 600, "Value could not be found.", "Date Value"},
        {"", 6, 100, "Value not entered.", "Time Value"},
        {"", 7, 100, "Value not entered.", "Floating Point"},
        {"", 12, 300, "Value out of range.", "Error Condition"},
        {"", 8, 250, "No message specified.", "Error Condition"},
        {"", 99, 0, "No message specified.", "Error Condition"},
    };
    RecordingField field(parent);
    for (const Case& c : cases) {
        notices.clear();
        char method[128];
        strcpy(method, c.method);
        EXPECT_EQ(twShowError(field, method, c.type, c.error), 0) << c.method;
        ASSERT_EQ(notices.size(), 1u) << c.method;
        const fktest::Notice& n = notices[0];
        EXPECT_EQ(n.message, c.message) << c.method;
        EXPECT_EQ(n.caption, c.caption) << c.method;
        EXPECT_EQ(n.type, c.type);
        EXPECT_EQ(n.error, c.error);
        EXPECT_EQ(n.method, c.method);
        EXPECT_EQ(n.hWnd, field.get());
        EXPECT_EQ(n.id, 42);
        EXPECT_EQ(n.wParam, 42u);
        EXPECT_GE(n.blockSize, 60u);
        EXPECT_TRUE(n.restZero);
    }
}

TEST_F(ShowError, CaptionIsCutAt99) {
    RecordingField field(parent);
    std::string method = "@MBOX(m:" + std::string(150, 'c') + ")";
    twShowError(field, method.data(), 1, 300);
    ASSERT_EQ(notices.size(), 1u);
    EXPECT_EQ(notices[0].caption, std::string(99, 'c'));
}

TEST_F(ShowError, ParentReplyDecides) {
    RecordingField field(parent);
    MessageBoxWatcher boxes;
    char method[] = "@MSG(x)";
    answer = GXR_HANDLED | GXR_ACCEPT;
    EXPECT_EQ(twShowError(field, method, 1, 300), 1);
    answer = GXR_HANDLED;
    EXPECT_EQ(twShowError(field, method, 1, 300), 0);
    answer = GXR_ACCEPT;  // without bit 0 the box is shown all the same
    EXPECT_EQ(twShowError(field, method, 1, 300), 0);
    EXPECT_EQ(boxes.boxes().size(), 1u);
    EXPECT_TRUE(parent.Of(GXN_ERRORSHOWN).size() == 1u);
}

TEST_F(ShowError, BoxPathSelectsAndTellsTheParent) {
    RecordingField field(parent);
    MessageBoxWatcher boxes;
    answer = 0;
    char method[] = "@RNG(1,9)@MSG(One digit)";
    EXPECT_EQ(twShowError(field, method + 9, 1, 300), 0);
    ASSERT_EQ(boxes.boxes().size(), 1u);
    EXPECT_EQ(boxes.boxes()[0].text, "One digit");
    EXPECT_EQ(boxes.boxes()[0].caption, "");
    EXPECT_EQ(boxes.boxes()[0].owner, parent.hwnd());
    EXPECT_TRUE(RecordingField::Got(EM_SETSEL, 0, 500));
    auto shown = parent.Of(GXN_ERRORSHOWN);
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].wp, 42u);
    EXPECT_EQ(shown[0].lp, static_cast<LPARAM>(LOWORD(reinterpret_cast<UINT_PTR>(field.get()))));
    // GXN_ERROR came first, GXN_ERRORSHOWN after the box.
    auto all = parent.messages();
    size_t error = 0, after = 0;
    for (size_t i = 0; i < all.size(); ++i) {
        if (all[i].msg == GXN_ERROR) error = i + 1;
        if (all[i].msg == GXN_ERRORSHOWN) after = i + 1;
    }
    EXPECT_LT(error, after);
}

TEST_F(ShowError, WarnAcceptsAfterTheBox) {
    RecordingField field(parent);
    MessageBoxWatcher boxes;
    answer = 0;
    char method[] = "@MBOX(Too large)@WARN@BEEP";
    EXPECT_EQ(twShowError(field, method, 1, 300), 1);
    ASSERT_EQ(boxes.boxes().size(), 1u);
    EXPECT_EQ(boxes.boxes()[0].text, "Too large");
    EXPECT_EQ(boxes.boxes()[0].caption, "Warning");
}

TEST_F(ShowError, KeywordsBeforeThePositionAreNotSeen) {
    RecordingField field(parent);
    char method[] = "@MSG(x)@RNG(1,9)";
    twShowError(field, strstr(method, "@RNG"), 1, 300);
    ASSERT_EQ(notices.size(), 1u);
    EXPECT_EQ(notices[0].message, "Value out of range.");
    EXPECT_EQ(notices[0].caption, "Numeric Value");
}

TEST_F(ShowError, WithoutParentShowsTheLastMessageUncaptioned) {
    RecordingField child(parent);
    char first[] = "@MSG(Remembered)";
    twShowError(child, first, 1, 300);  // composes into the shared buffer
    RecordingField lone(nullptr);
    MessageBoxWatcher boxes;
    char method[] = "@MSG(Not composed)@WARN";
    EXPECT_EQ(twShowError(lone, method, 1, 300), 1);
    ASSERT_EQ(boxes.boxes().size(), 1u);
    EXPECT_EQ(boxes.boxes()[0].text, "Remembered");
    EXPECT_EQ(boxes.boxes()[0].caption, "");
    EXPECT_EQ(boxes.boxes()[0].owner, nullptr);
}

TEST_F(ShowError, NullMethodAndWindowDoNotCrash) {
    RecordingField field(parent);
    EXPECT_EQ(twShowError(field, nullptr, 3, 400), 0);
    ASSERT_EQ(notices.size(), 1u);
    EXPECT_EQ(notices[0].message, "Value is not valid.");
    EXPECT_EQ(notices[0].method, "<null>");
    MessageBoxWatcher boxes;
    EXPECT_EQ(twShowError(nullptr, nullptr, 3, 400), 0);
    EXPECT_EQ(boxes.boxes().size(), 1u);
}

}  // namespace
