// gxDate32 as a dialog drives it: digits zeroed, the mask drawn, the century completed, values, validation.
#include <ctime>
#include <memory>

#include "tests/support/msgbox_watch.h"
#include "tests/win/fields/number_test.h"

namespace {

using namespace numtest;


std::vector<COLORREF> Pixels(HWND h) {
    RECT r;
    GetClientRect(h, &r);
    HDC dc = GetDC(h);
    std::vector<COLORREF> out;
    for (int y = 0; y < r.bottom; ++y)
        for (int x = 0; x < r.right; ++x) out.push_back(GetPixel(dc, x, y));
    ReleaseDC(h, dc);
    return out;
}

class DateField : public NumberField {
protected:
    DateField() : NumberField("gxDate32") {}
    LONG Style() const { return GetWindowLongA(field_, GWL_STYLE) & 0xFFFF; }
    int Caret() const { return GetWindowLongA(field_, 16); }
    LRESULT Validate() { return SendMessageA(field_, GXM_VALIDATE, 0, 0); }
};

// The field paints its raw text through the mask: the pixels the core draws for the screen text on a twin window.
TEST_F(DateField, ShowsTheDigitsThroughItsMask) {
    Make(DATE_YYYYMMDD, "@DOT");
    EXPECT_EQ(SendMessageA(field_, GXM_DATE_GETFORMAT, 0, 0), MAKELONG('.', 7));
    Type(field_, "19991231");
    EXPECT_EQ(Text(field_), "19991231");
    Leave();
    RedrawWindow(field_, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    WNDCLASSA wc{0, DefWindowProcA, 0, 28, GetModuleHandleA(nullptr), nullptr, nullptr, nullptr, nullptr, "FkDateRef"};
    RegisterClassA(&wc);
    fktest::UniqueWindow ref(CreateWindowExA(0, "FkDateRef", "", WS_CHILD | WS_VISIBLE, 10, 100, 240, 24,
                                             parent_, nullptr, wc.hInstance, nullptr));
    SetWindowLongA(ref, 8, GetWindowLongA(field_, 8));
    UpdateWindow(ref);
    auto drawn = [&](const char* screen) {
        twDrawField(ref, screen, GXDF_ANY | GXDF_NOCARET, 0);
        return Pixels(ref);
    };
    const std::vector<COLORREF> field = Pixels(field_);
    EXPECT_EQ(field, drawn("1999.12.31"));
    EXPECT_NE(field, drawn("1999/12/31")) << "the comparison sees a different separator";
}

// Digits are zeroed or overwritten, never removed; the caret moves in raw positions; every edit is announced.
TEST_F(DateField, KeysZeroDigitsAndKeepTheLength) {
    // VK_SHIFT in the list of keys: the keys after it are shifted.
    const struct { const char* start; std::vector<UINT> keys; const char *typed, *text; int caret; } cases[] = {
        {"12311999", {VK_END, VK_BACK}, "", "12311990", 7}, {"12311999", {VK_END, VK_DELETE}, "", "12311999", 8},
        {"12311999", {VK_HOME, VK_DELETE, VK_DELETE}, "", "00311999", 2},
        {"12311999", {VK_HOME, VK_BACK}, "", "12311999", 0}, {"1231", {VK_HOME, VK_RIGHT}, "9", "19231", 2},
        {"12311999", {VK_HOME, VK_SHIFT, VK_RIGHT, VK_RIGHT, VK_RIGHT}, "5", "50011999", 1},
        {"12311999", {VK_HOME, VK_SHIFT, VK_RIGHT, VK_RIGHT, VK_RIGHT, VK_BACK}, "", "00011999", 0},
        {"12311999", {VK_END}, "5", "12311999", 8},  // full, caret behind the last slot
        {"", {}, "1a2/3", "123", 3}};
    for (const auto& c : cases) {
        Make(DATE_MMDDYYYY);
        SetWindowTextA(field_, c.start);
        std::unique_ptr<Held> shift;
        for (UINT vk : c.keys) vk == VK_SHIFT ? shift.reset(new Held({VK_SHIFT})) : Key(field_, vk);
        shift.reset();
        Type(field_, c.typed);
        EXPECT_EQ(Text(field_), c.text) << c.start << " / " << c.typed;
        EXPECT_EQ(Caret(), c.caret) << c.start << " / " << c.typed;
    }
    Key(field_, VK_BACK);  // the three digits of the last case and the Backspace are announced
    EXPECT_EQ(Codes(), (std::vector<WORD>(4, EN_CHANGE)));
    EXPECT_EQ(SendMessageA(field_, EM_GETMODIFY, 0, 0), 1);
}

TEST_F(DateField, SystemShortDateFormatAndCentury) {
    IntlKeys pattern{{"sShortDate", "dd.MM.yy"}};
    Make(DATE_DEFAULT);
    EXPECT_EQ(Style(), DATE_DDMMYYYY | DATE_DOT);
    EXPECT_EQ(SendMessageA(field_, GXM_DATE_GETFORMAT, 0, 0), MAKELONG('.', 5));
    Make(DATE_MMDDYY, "@FORMAT(DDMMYY)@DASH");
    EXPECT_EQ(Style(), 6 | DATE_DASH) << "@FORMAT is ORed in; @DASH wins over the system's dot";
    Make(DATE_MMDDYY);
    EXPECT_EQ(Style(), DATE_MMDDYY) << "a chosen order is not resolved at creation";
    // Leaving completes the century of four-digit years, unless the day is 00.
    const struct { DWORD style; const char* typed; const char* after; } cases[] = {
        {DATE_MMDDYYYY, "123195", "12311995"}, {DATE_MMDDYY, "123195", "123195"},
        {DATE_MMDDYYYY, "120095", "120095"}, {DATE_DEFAULT, "311299", "31121999"}};
    for (const auto& c : cases) {
        Make(c.style);
        Type(field_, c.typed);
        Leave();
        EXPECT_EQ(Text(field_), c.after) << c.typed;
        EXPECT_EQ(Codes().back(), EN_KILLFOCUS);
    }
}

TEST_F(DateField, ValuesInEveryForm) {
    const struct { DWORD style; int year, month, day; const char* raw; } cases[] = {
        {DATE_MMDDYYYY, 99, 11, 31, "12311999"},
        {DATE_DDMMYYYY, 104, 1, 29, "29022004"},
        {DATE_MMDDYY, 101, 0, 1, "0101101"}};  // the year of 2001 in a two-digit field
    for (const auto& c : cases) {
        Make(c.style);
        struct tm in{0, 0, 0, c.day, c.month, c.year};
        SendMessageA(field_, GXM_SETVALUE, GXT_TMSTRUCT, reinterpret_cast<LPARAM>(&in));
        EXPECT_EQ(Text(field_), c.raw);
        struct tm out{0, 0, 7};
        SendMessageA(field_, GXM_GETVALUE, GXT_TMSTRUCT, reinterpret_cast<LPARAM>(&out));
        EXPECT_EQ(out.tm_year * 10000 + out.tm_mon * 100 + out.tm_mday, c.year * 10000 + c.month * 100 + c.day);
        EXPECT_EQ(out.tm_hour, 7) << "only the date is written";
        if (c.style == DATE_MMDDYY) continue;
        in.tm_isdst = -1;  // calendar time: local midnight of the day comes back as it went
        const LONG seconds = static_cast<LONG>(mktime(&in));
        Make(c.style | DATE_LONG);
        SendMessageA(field_, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>(&seconds));
        EXPECT_EQ(Text(field_), c.raw);
        LONG back = 0;
        SendMessageA(field_, GXM_GETVALUE, 0, reinterpret_cast<LPARAM>(&back));
        EXPECT_EQ(back, seconds) << c.raw;
    }
    // The empty date: zeros of the width, month 0 when read; nothing with @BLNK.
    Make(DATE_MMDDYYYY);
    SendMessageA(field_, GXM_SETVALUE, 0, 0);
    EXPECT_EQ(Text(field_), "00000000");
    struct tm empty{0, 0, 0, 0, 5};
    SendMessageA(field_, GXM_GETVALUE, GXT_TMSTRUCT, reinterpret_cast<LPARAM>(&empty));
    EXPECT_EQ(empty.tm_mon, 0);
    EXPECT_EQ(empty.tm_mday, 0);
    SetMethod("@BLNK");
    SendMessageA(field_, GXM_SETVALUE, GXT_TMSTRUCT, reinterpret_cast<LPARAM>(&empty));
    EXPECT_EQ(Text(field_), "");
    // "@DATE" makes every value today; text is the raw text of at most 20 characters.
    Make(DATE_MMDDYYYY | DATE_CHAR, "@DATE");
    const std::time_t now = std::time(nullptr);
    char today[16];
    std::strftime(today, sizeof today, "%m%d%Y", std::localtime(&now));
    EXPECT_EQ(Text(field_), today);
    SendMessageA(field_, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>("01011990"));
    EXPECT_EQ(Text(field_), today) << "every value set is today";
    LONG size = 0;
    EXPECT_EQ(SendMessageA(field_, GXM_GETTYPE, 0, reinterpret_cast<LPARAM>(&size)), GXT_TEXT);
    EXPECT_EQ(size, 20);
    Make(DATE_MMDDYY | DATE_CHAR);
    SendMessageA(field_, GXM_SETVALUE, 0, reinterpret_cast<LPARAM>("0102034455667788991122334455"));
    char out[32];
    std::memset(out, '#', sizeof out);
    SendMessageA(field_, GXM_GETVALUE, 0, reinterpret_cast<LPARAM>(out));
    EXPECT_STREQ(out, "01020344556677889911") << "the raw text is at most 20 characters";
    EXPECT_EQ(out[21], '#');
    Make(DATE_MMDDYY | DATE_LONG);
    EXPECT_EQ(SendMessageA(field_, GXM_GETTYPE, 0, 0), GXT_INTEGER);
    Make(DATE_MMDDYY, "@PRT(gray)");
    EXPECT_EQ(SendMessageA(field_, GXM_GETTYPE, 0, 0), GXT_TMSTRUCT);
    EXPECT_FALSE(IsWindowEnabled(field_));
}

// Validation passes the type code of the order, which reads the bounds in that order; the parent takes the error.
TEST_F(DateField, ValidatesWithTheTypeCodeOfItsOrder) {
    fktest::MessageBoxWatcher boxes;
    parent_.reply = [](UINT msg, WPARAM, LPARAM) -> std::optional<LRESULT> {
        return msg == GXN_ERROR ? std::optional<LRESULT>(GXR_HANDLED) : std::nullopt;
    };
    const struct { DWORD style; const char* method; const char* below; const char* at; } cases[] = {
        {DATE_MMDDYY, "@RNG(06/15/95,)", "061495", "061595"}, {DATE_DDMMYY, "@RNG(15/06/95,)", "140695", "150695"},
        {DATE_YYMMDD, "@RNG(95/06/15,)", "950614", "950615"},
        {DATE_MMDDYYYY, "@RNG(06/15/1995,)", "06141995", "06151995"},
        {DATE_DDMMYYYY, "@RNG(15/06/1995,)", "14061995", "15061995"},
        {DATE_YYYYMMDD, "@RNG(1995/06/15,)", "19950614", "19950615"}};
    for (const auto& c : cases) {
        Make(c.style, c.method);
        EXPECT_EQ(Validate(), 0) << "empty without @MND";
        SetWindowTextA(field_, c.below);
        EXPECT_EQ(Validate(), -1) << c.method;
        EXPECT_EQ(parent_.Of(GXN_ERROR).size(), 1u) << c.method;
        SetWindowTextA(field_, c.at);
        EXPECT_EQ(Validate(), 0) << c.method;
    }
    Make(DATE_MMDDYYYY, "@MND");
    EXPECT_EQ(Validate(), -1);
    EXPECT_TRUE(boxes.boxes().empty());
}

}  // namespace
